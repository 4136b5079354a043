// What every settings store does, whatever it is made of: the twins in memory and on files, and the
// platform's own private-profile functions. Only what can be seen by reading values and key lists: how a
// whole file looks after a write differs between back ends.
//
// A rig makes one store and the files it works on, empty at the start:
//   ports::SettingsStore& store();
//   std::string path();                     a file in a scratch folder, missing until it is put or written
//   std::string otherPath();                another one
//   void put(const std::string& bytes);     the raw bytes of path(), changed from outside the store
//   std::string makeUnwritable();           a path that no write can reach (a vanished folder)
//   std::string makeWritable();             a path that writes reach again
#pragma once
#include "ports/SettingsStore.h"

#include <gtest/gtest.h>

#include <string>

namespace contract {

template <class Rig> class SettingsContract : public testing::Test {
 protected:
  std::string read(const std::string& section, const std::string& key,
                   const std::string& fallback = "fallback", int capacity = 255) {
    return rig.store().read(rig.path(), section, key, fallback, capacity);
  }
  // With ',' for every NUL.
  std::string keys(const std::string& section, int capacity = 255) {
    std::string list = rig.store().keyList(rig.path(), section, capacity);
    for (char& c : list)
      if (c == '\0') c = ',';
    return list;
  }
  bool write(const std::string& section, const std::string& key, const std::string& value) {
    return rig.store().write(rig.path(), section, key, value);
  }

  Rig rig;
};

TYPED_TEST_SUITE_P(SettingsContract);

TYPED_TEST_P(SettingsContract, missingFileSectionOrKeyGivesTheFallback) {
  EXPECT_EQ(this->read("Hardware", "TxPower", "63.5"), "63.5");
  this->rig.put("[Loop]\r\nP=1\r\n");
  EXPECT_EQ(this->read("Hardware", "TxPower", "63.5"), "63.5");
  EXPECT_EQ(this->read("Loop", "I", "50"), "50");
}

TYPED_TEST_P(SettingsContract, emptyFileGivesTheFallback) {
  this->rig.put("");
  EXPECT_EQ(this->read("Hardware", "TxPower", "63.5"), "63.5");
  EXPECT_EQ(this->keys("Hardware"), "");
}

TYPED_TEST_P(SettingsContract, fallbackLosesItsTrailingBlanks) {
  EXPECT_EQ(this->read("Hardware", "LockSolvent", "two  "),
            "two"); // a blank alone: back ends differ, readers trim
}

TYPED_TEST_P(SettingsContract, namesMatchInAnyCase) {
  this->rig.put("[HARDWARE]\r\ntxpower=20\r\n");
  EXPECT_EQ(this->read("Hardware", "TxPower"), "20");
}

TYPED_TEST_P(SettingsContract, nonAsciiBytesPassUnchanged) {
  this->rig.put("[Solvents]\r\n\xE9t=\xB5\xFF\r\n");
  EXPECT_EQ(this->read("Solvents", "\xE9t"), "\xB5\xFF");
  EXPECT_EQ(this->keys("Solvents"), "\xE9t,");
}

TYPED_TEST_P(SettingsContract, firstOfTwoEqualKeysWins) {
  this->rig.put("[a]\r\nk=1\r\nK=2\r\n");
  EXPECT_EQ(this->read("a", "k"), "1");
}

TYPED_TEST_P(SettingsContract, onlyTheFirstOfTwoEqualSectionsIsRead) {
  this->rig.put("[a]\r\nk=1\r\n[b]\r\nk=2\r\n[A]\r\nm=3\r\n");
  EXPECT_EQ(this->read("a", "m"), "fallback");
  EXPECT_EQ(this->keys("a"), "k,");
}

TYPED_TEST_P(SettingsContract, blanksAndTabsAroundNamesAndValuesAreTrimmed) {
  this->rig.put(" [ a ] \r\n \t k \t = \t 1 2 \t \r\n");
  EXPECT_EQ(this->read("a", "k"), "1 2");
  EXPECT_EQ(this->keys("a"), "k,");
}

TYPED_TEST_P(SettingsContract, onePairOfQuotesIsTakenOff) {
  this->rig.put("[a]\r\nd=\" x \"\r\ns=' x '\r\nn=\"\"\r\ntwice=\"\"x\"\"\r\n");
  EXPECT_EQ(this->read("a", "d"), " x ");
  EXPECT_EQ(this->read("a", "s"), " x ");
  EXPECT_EQ(this->read("a", "n"), "");
  EXPECT_EQ(this->read("a", "twice"), "\"x\"");
}

TYPED_TEST_P(SettingsContract, loneQuoteStays) {
  this->rig.put("[a]\r\none='\r\nfront=\"x\r\nmixed=\"x'\r\n");
  EXPECT_EQ(this->read("a", "one"), "'");
  EXPECT_EQ(this->read("a", "front"), "\"x");
  EXPECT_EQ(this->read("a", "mixed"), "\"x'");
}

TYPED_TEST_P(SettingsContract, semicolonFirstOnALineIsAComment) {
  this->rig.put("[a]\r\n;k=1\r\n  ;m=2\r\nn=3 ; note\r\n#o=4\r\n");
  EXPECT_EQ(this->read("a", "k"), "fallback");
  EXPECT_EQ(this->read("a", "m"), "fallback");
  EXPECT_EQ(this->read("a", "n"), "3 ; note");
  EXPECT_EQ(this->read("a", "#o"), "4");
  EXPECT_EQ(this->keys("a"), "n,#o,");
}

TYPED_TEST_P(SettingsContract, valueStartsAtTheFirstEqualsSign) {
  this->rig.put("[a]\r\nk=b=c\r\n");
  EXPECT_EQ(this->read("a", "k"), "b=c");
}

TYPED_TEST_P(SettingsContract, lineWithoutEqualsSignIsNoKey) {
  this->rig.put("[a]\r\nk\r\nm=1\r\n");
  EXPECT_EQ(this->read("a", "k"), "fallback");
  EXPECT_EQ(this->keys("a"), "m,");
}

TYPED_TEST_P(SettingsContract, emptyValueIsNotTheFallback) {
  this->rig.put("[a]\r\nk=\r\nm=   \r\n");
  EXPECT_EQ(this->read("a", "k"), "");
  EXPECT_EQ(this->read("a", "m"), "");
}

TYPED_TEST_P(SettingsContract, bracketNeverClosedOpensNoSection) {
  this->rig.put("[a]\r\nk=1\r\n[b\r\nm=2\r\n");
  EXPECT_EQ(this->read("b", "m"), "fallback");
  EXPECT_EQ(this->read("a", "m"), "2");
}

TYPED_TEST_P(SettingsContract, everyKindOfLineEnd) {
  for (const std::string eol : {"\r\n", "\n", "\r"}) {
    this->rig.put("[a]" + eol + "k=1" + eol + eol + "m=2" + eol + "[b]" + eol + "n=3");
    EXPECT_EQ(this->read("a", "k"), "1");
    EXPECT_EQ(this->read("a", "m"), "2");
    EXPECT_EQ(this->read("b", "n"), "3");
    EXPECT_EQ(this->keys("a"), "k,m,");
  }
}

TYPED_TEST_P(SettingsContract, longValueIsCutOneBelowTheCapacity) {
  this->rig.put("[a]\r\nk=" + std::string(300, 'x') + "\r\n");
  EXPECT_EQ(this->read("a", "k"), std::string(254, 'x'));
  EXPECT_EQ(this->read("a", "k", "", 5), "xxxx");
  EXPECT_EQ(this->read("a", "k", "", 1), "");
  EXPECT_EQ(this->read("a", "missing", "fallback", 5), "fall");
}

TYPED_TEST_P(SettingsContract, keyListIsInFileOrder) {
  this->rig.put("[Solvents]\r\nD2O=4.8\r\nAcetone-d6=2.05\r\nCDCl3=7.24\r\n[Loop]\r\nP=1\r\n[Empty]\r\n");
  EXPECT_EQ(this->keys("solvents"), "D2O,Acetone-d6,CDCl3,");
  EXPECT_EQ(this->keys("Empty"), "");
  EXPECT_EQ(this->keys("Missing"), "");
}

TYPED_TEST_P(SettingsContract, keyListOfAMissingFileIsEmpty) { EXPECT_EQ(this->keys("Solvents"), ""); }

TYPED_TEST_P(SettingsContract, keyListIsCutTwoBelowTheCapacity) {
  this->rig.put("[s]\r\naa=1\r\nbbb=1\r\ncccc=1\r\n");
  const struct {
    int capacity;
    const char* list;
  } rows[] = {{3, "a,"},
              {4, "aa,"},
              {5, "aa,"},
              {6, "aa,b,"},
              {7, "aa,bb,"},
              {8, "aa,bbb,"},
              {9, "aa,bbb,"},
              {10, "aa,bbb,c,"},
              {11, "aa,bbb,cc,"},
              {12, "aa,bbb,ccc,"},
              {13, "aa,bbb,cccc,"},
              {14, "aa,bbb,cccc,"},
              {255, "aa,bbb,cccc,"}};
  for (const auto& row : rows) EXPECT_EQ(this->keys("s", row.capacity), row.list) << row.capacity;
}

TYPED_TEST_P(SettingsContract, keyListOver255CharactersKeepsTheNamesThatFit) {
  std::string text = "[s]\r\n", expected;
  for (int i = 100; i < 200; ++i) {
    text += "key" + std::to_string(i) + "=1\r\n";
    expected += "key" + std::to_string(i) + ",";
  }
  this->rig.put(text);
  EXPECT_EQ(this->keys("s"), expected.substr(0, 253) + ",");
}

TYPED_TEST_P(SettingsContract, writeMakesFileSectionAndKey) {
  EXPECT_TRUE(this->write("Hardware", "TxPower", "63.5"));
  EXPECT_TRUE(this->write("Loop", "P", "10000"));
  EXPECT_TRUE(this->write("Hardware", "RxGain", "30"));
  EXPECT_EQ(this->read("Hardware", "TxPower"), "63.5");
  EXPECT_EQ(this->read("Loop", "P"), "10000");
  EXPECT_EQ(this->keys("Hardware"), "TxPower,RxGain,");
}

TYPED_TEST_P(SettingsContract, writeChangesOneValueAndKeepsTheRest) {
  this->rig.put("; top\r\n[a]\r\nk = 1\r\n\r\n; note\r\nunknown key= 7\r\nm=2\r\n[b]\r\nk=3\r\n");
  EXPECT_TRUE(this->write("A", "K", "9"));
  EXPECT_EQ(this->read("a", "k"), "9");
  EXPECT_EQ(this->read("a", "unknown key"), "7");
  EXPECT_EQ(this->read("b", "k"), "3");
  EXPECT_EQ(this->keys("a"), "k,unknown key,m,");
}

TYPED_TEST_P(SettingsContract, newKeyGoesToTheEndOfItsSection) {
  this->rig.put("[Solvents_RxGain]\r\nD2O=1000\r\nCDCl3=2000\r\n; end\r\n\r\n[Loop]\r\nP=1\r\n");
  EXPECT_TRUE(this->write("Solvents_RxGain", "Benzene", "30"));
  EXPECT_EQ(this->keys("Solvents_RxGain"), "D2O,CDCl3,Benzene,");
  EXPECT_EQ(this->keys("Loop"), "P,");
}

TYPED_TEST_P(SettingsContract, writingChangesTheFirstOfEqualKeys) {
  this->rig.put("[a]\r\nk=1\r\nk=2\r\n[a]\r\nk=3\r\n");
  EXPECT_TRUE(this->write("a", "k", "9"));
  EXPECT_EQ(this->read("a", "k"), "9");
}

TYPED_TEST_P(SettingsContract, writtenValueReadsBackTrimmed) {
  EXPECT_TRUE(this->write("a", "k", "  v w  "));
  EXPECT_EQ(this->read("a", "k"), "v w");
  EXPECT_TRUE(this->write("a", "k", ""));
  EXPECT_EQ(this->read("a", "k"), "");
}

TYPED_TEST_P(SettingsContract, keyWithAnEmptyNameIsWrittenOnceAndFoundAgain) {
  this->rig.put("[a]\r\nk=1\r\n");
  EXPECT_TRUE(this->write("a", "", "1000"));
  EXPECT_TRUE(this->write("a", "", "2000"));
  EXPECT_EQ(this->read("a", ""), "2000");
  EXPECT_EQ(this->keys("a"), "k,,");
}

TYPED_TEST_P(SettingsContract, sameKeyWrittenManyTimesStaysOneKey) {
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(this->write("a", " CDCl3 ", std::to_string(i)));
  EXPECT_EQ(this->keys("a"), "CDCl3,");
  EXPECT_EQ(this->read("a", "CDCl3"), "4");
}

TYPED_TEST_P(SettingsContract, editFromOutsideIsSeenAtOnce) {
  for (int i = 100; i < 120; ++i) {
    this->rig.put("[a]\r\nk=" + std::to_string(i) + "\r\n");
    EXPECT_EQ(this->read("a", "k"), std::to_string(i));
  }
  EXPECT_TRUE(this->write("a", "k", "1"));
  this->rig.put("[a]\r\nm=2\r\n");
  EXPECT_EQ(this->read("a", "k"), "fallback");
  EXPECT_TRUE(this->write("a", "n", "3"));
  EXPECT_EQ(this->keys("a"), "m,n,");
}

TYPED_TEST_P(SettingsContract, failedWriteSaysWhy) {
  const std::string path = this->rig.makeUnwritable();
  EXPECT_FALSE(this->rig.store().write(path, "a", "k", "1"));
  EXPECT_NE(this->rig.store().error(), "");
  const std::string good = this->rig.makeWritable();
  EXPECT_TRUE(this->rig.store().write(good, "a", "k", "1"));
  EXPECT_EQ(this->rig.store().error(), "");
}

TYPED_TEST_P(SettingsContract, copyMakesOrReplacesAFile) {
  this->rig.put("[a]\r\nk=1\r\n");
  EXPECT_TRUE(this->rig.store().copyFile(this->rig.path(), this->rig.otherPath()));
  this->rig.put("[a]\r\nk=2\r\n");
  EXPECT_EQ(this->rig.store().read(this->rig.otherPath(), "a", "k", "", 255), "1");
  EXPECT_TRUE(this->rig.store().copyFile(this->rig.path(), this->rig.otherPath()));
  EXPECT_EQ(this->rig.store().read(this->rig.otherPath(), "a", "k", "", 255), "2");
  EXPECT_EQ(this->read("a", "k"), "2");
}

TYPED_TEST_P(SettingsContract, copyOntoItselfIsDone) {
  this->rig.put("[a]\r\nk=1\r\n");
  EXPECT_TRUE(this->rig.store().copyFile(this->rig.path(), this->rig.path()));
  EXPECT_EQ(this->rig.store().error(), "");
  EXPECT_EQ(this->read("a", "k"), "1");
}

TYPED_TEST_P(SettingsContract, copyOfAMissingFileFailsAndSaysWhy) {
  EXPECT_FALSE(this->rig.store().copyFile(this->rig.path(), this->rig.otherPath()));
  EXPECT_NE(this->rig.store().error(), "");
  EXPECT_EQ(this->rig.store().read(this->rig.otherPath(), "a", "k", "missing", 255), "missing");
}

TYPED_TEST_P(SettingsContract, binaryFileReadsAsDefaults) {
  std::string junk;
  unsigned state = 1;
  for (int i = 0; i < 100000; ++i) {
    state = state * 1103515245u + 12345u;
    junk += static_cast<char>(state >> 16);
  }
  this->rig.put(junk);
  EXPECT_EQ(this->read("Hardware", "TxPower", "63.5"), "63.5");
  EXPECT_EQ(this->keys("Solvents"), "");
}

TYPED_TEST_P(SettingsContract, nulEndsNamesAndValues) {
  using namespace std::string_literals;
  this->rig.put("[a]\r\nk=1\0 2\r\nm\0x=3\r\nn=4\r\n"s);
  EXPECT_EQ(this->read("a", "k"), "1");
  EXPECT_EQ(this->read("a", "n"), "4");
}

TYPED_TEST_P(SettingsContract, tenMegabytesOfOtherLinesAreReadThrough) {
  std::string text = "[a]\r\nk=1\r\n[junk]\r\n";
  while (text.size() < 10'000'000) text += "some other key=some other value\r\n";
  this->rig.put(text + "[z]\r\nk=2\r\n");
  EXPECT_EQ(this->read("a", "k"), "1");
  EXPECT_EQ(this->read("z", "k"), "2");
}

REGISTER_TYPED_TEST_SUITE_P(
    SettingsContract, missingFileSectionOrKeyGivesTheFallback, emptyFileGivesTheFallback,
    fallbackLosesItsTrailingBlanks, namesMatchInAnyCase, nonAsciiBytesPassUnchanged, firstOfTwoEqualKeysWins,
    onlyTheFirstOfTwoEqualSectionsIsRead, blanksAndTabsAroundNamesAndValuesAreTrimmed,
    onePairOfQuotesIsTakenOff, loneQuoteStays, semicolonFirstOnALineIsAComment,
    valueStartsAtTheFirstEqualsSign, lineWithoutEqualsSignIsNoKey, emptyValueIsNotTheFallback,
    bracketNeverClosedOpensNoSection, everyKindOfLineEnd, longValueIsCutOneBelowTheCapacity,
    keyListIsInFileOrder, keyListOfAMissingFileIsEmpty, keyListIsCutTwoBelowTheCapacity,
    keyListOver255CharactersKeepsTheNamesThatFit, writeMakesFileSectionAndKey,
    writeChangesOneValueAndKeepsTheRest, newKeyGoesToTheEndOfItsSection, writingChangesTheFirstOfEqualKeys,
    writtenValueReadsBackTrimmed, keyWithAnEmptyNameIsWrittenOnceAndFoundAgain,
    sameKeyWrittenManyTimesStaysOneKey, editFromOutsideIsSeenAtOnce, failedWriteSaysWhy,
    copyMakesOrReplacesAFile, copyOntoItselfIsDone, copyOfAMissingFileFailsAndSaysWhy,
    binaryFileReadsAsDefaults, nulEndsNamesAndValues, tenMegabytesOfOtherLinesAreReadThrough);

} // namespace contract
