#include "headless/IniFile.h"
#include "ports/SettingsStore.h"

#include <gtest/gtest.h>

#include <string>

using headless::IniFile;

namespace {

std::string edited(const std::string& text, const std::string& section, const std::string& key,
                   const std::string& value) {
  IniFile file(text);
  file.set(section, key, value);
  return file.text();
}

} // namespace

TEST(SettingsText, writeEditsTheOneValueAndNothingElse) {
  EXPECT_EQ(
      edited("; top\r\n\r\n[a]\r\n  k\t=  1 \t\r\n\r\n junk\r\nK=2\r\n ; x\r\n[a]\r\nk=3", "A", "k", "10"),
      "; top\r\n\r\n[a]\r\n  k\t=  10 \t\r\n\r\n junk\r\nK=2\r\n ; x\r\n[a]\r\nk=3");
}

TEST(SettingsText, emptyValuesAreFilledAndEmptied) {
  EXPECT_EQ(edited("[a]\nk=\n", "a", "k", "1"), "[a]\nk=1\n");
  EXPECT_EQ(edited("[a]\nk=", "a", "k", "1"), "[a]\nk=1");
  EXPECT_EQ(edited("[a]\nk = 1\n", "a", "k", ""), "[a]\nk = \n");
}

TEST(SettingsText, sameValueLeavesTheTextUntouched) {
  IniFile file("[a]\nk = \"1\" \n");
  EXPECT_FALSE(file.set("a", "k", " 1 "));
  EXPECT_FALSE(file.set("a", "k", "'1'"));
  EXPECT_EQ(file.text(), "[a]\nk = \"1\" \n");
  EXPECT_TRUE(file.set("a", "k", "2"));
  EXPECT_EQ(file.text(), "[a]\nk = 2 \n");
}

TEST(SettingsText, newKeyStandsBeforeTheBlankLinesOfItsSection) {
  EXPECT_EQ(edited("[a]\r\nk=1\r\n; end  \r\n\r\n \r\n[b]\r\n", "a", "m", "2"),
            "[a]\r\nk=1\r\n; end  \r\nm=2\r\n\r\n \r\n[b]\r\n");
  EXPECT_EQ(edited("[a]\n[b]\n", "a", "m", "2"), "[a]\nm=2\n[b]\n");
  EXPECT_EQ(edited("[a]\n\n\n", "a", "m", "2"), "[a]\nm=2\n\n\n");
}

TEST(SettingsText, lastLineWithoutLineEndIsEndedFirst) {
  EXPECT_EQ(edited("[a]\nk=1", "a", "m", "2"), "[a]\nk=1\nm=2\n");
  EXPECT_EQ(edited("[a]", "a", "m", "2"), "[a]\r\nm=2\r\n");
  EXPECT_EQ(edited("[a]\nk=1", "b", "m", "2"), "[a]\nk=1\n[b]\nm=2\n");
}

TEST(SettingsText, newSectionGoesToTheEnd) {
  EXPECT_EQ(edited("", "b", "m", "2"), "[b]\r\nm=2\r\n");
  EXPECT_EQ(edited("[a]\r\nk=1\r\n", "b", "m", "2"), "[a]\r\nk=1\r\n[b]\r\nm=2\r\n");
}

TEST(SettingsText, fileKeepsItsStyleOfLineEnds) {
  EXPECT_EQ(edited("[a]\rk=1\r", "b", "m", "2"), "[a]\rk=1\r[b]\rm=2\r");
  EXPECT_EQ(edited("[a]\nk=1\n", "b", "m", "2"), "[a]\nk=1\n[b]\nm=2\n");
}

TEST(SettingsText, byteOrderMarkIsSkippedAndKept) {
  IniFile file("\xEF\xBB\xBF[a]\nk=1\n");
  EXPECT_EQ(file.read("a", "k", "", 255), "1");
  EXPECT_EQ(edited("\xEF\xBB\xBF", "a", "k", "1"), "\xEF\xBB\xBF[a]\r\nk=1\r\n");
  EXPECT_EQ(edited("\xEF\xBB\xBF", "", "k", "1"), "\xEF\xBB\xBFk=1\r\n");
}

TEST(SettingsText, linesBeforeAnySectionBelongToTheNamelessOne) {
  IniFile file("k=1\n[]\nm=2\n");
  EXPECT_EQ(file.read("", "k", "none", 255), "1");
  EXPECT_EQ(file.read("", "m", "none", 255), "none");
  EXPECT_EQ(edited("k=1\n[a]\n", "", "m", "2"), "k=1\nm=2\n[a]\n");
  EXPECT_EQ(edited("[a]\n", "", "m", "2"), "m=2\n[a]\n");
}

TEST(SettingsText, valueAndNamesEndAtTheirFirstLineEndOrNul) {
  EXPECT_EQ(edited("[a]\n", "a", "k", "x\r\n[b]\r\nm=2"), "[a]\nk=x\n");
  EXPECT_EQ(edited("[a]\n", "a\n[b]", "k\ny", std::string("x\0y", 3)), "[a]\nk=x\n");
}

TEST(SettingsText, commentIsEditedOnlyUnderItsOwnName) {
  IniFile file("[a]\n;k=1\n");
  EXPECT_EQ(file.read("a", "k", "none", 255), "none");
  EXPECT_TRUE(file.set("a", "k", "2"));
  EXPECT_TRUE(file.set("a", ";k", "3"));
  EXPECT_EQ(file.text(), "[a]\n;k=3\nk=2\n");
}

TEST(SettingsText, fallbackLosesItsTrailingBlanksOnly) {
  IniFile file;
  EXPECT_EQ(file.read("Hardware", "LockSolvent", " ", 255), "");
  EXPECT_EQ(file.read("Hardware", "LockSolvent", "  two  ", 255), "  two");
  EXPECT_EQ(file.read("Hardware", "LockSolvent", "\"two\"\t", 255), "\"two\"\t");
}

TEST(SettingsText, noCapacityNoText) {
  IniFile file("[a]\nk=1\n");
  for (int capacity : {-5, 0, 1}) EXPECT_EQ(file.read("a", "k", "x", capacity), "");
  for (int capacity : {-5, 0, 1, 2}) EXPECT_EQ(file.keyList("a", capacity), "");
}

TEST(SettingsText, lastOfManyKeysIsFoundAndEdited) {
  std::string text = "[a]\n";
  for (int i = 0; i < 300000; ++i) text += "key" + std::to_string(i) + "=1\n";
  IniFile file(text);
  EXPECT_EQ(file.read("a", "key299999", "", 255), "1");
  EXPECT_TRUE(file.set("a", "key299999", "2"));
  EXPECT_EQ(file.read("a", "key299999", "", 255), "2");
}

TEST(SettingsKeyName, namesThatCouldNotBeReadBackAreRefused) {
  for (const char* name : {"", "CDCl3", " CDCl3 ", "a[b]", ";x", "Acetone-d6", "unknown key"})
    EXPECT_EQ(ports::keyNameProblem(name), "") << name;
  for (const char* name : {"[z]", " [z]", "D2O=heavy", "="})
    EXPECT_NE(ports::keyNameProblem(name), "") << name;
}
