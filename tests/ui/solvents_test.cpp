#include "base/NumberText.h"
#include "core/modConvertStrToFloatVal.h"
#include "display/PlotScale.h"
#include "support/Panel.h"
#include "support/RecordingSettings.h"

namespace {

using support::Panel;
using Names = std::vector<std::string>;

// A program whose panel is open on a file with these sections.
struct Open {
  explicit Open(const std::string& sections, const std::string& solvent = "CDCl3")
      : p("[Hardware]\r\nLockSolvent=" + solvent +
          "\r\nTxPower=20\r\nRxGain=1200\r\n[Display]\r\nShowControls=1\r\n" + sections) {
    p.startUp();
  }
  frmControls& panel() { return p.controls(); }
  const SolventTables& tables() { return p.program().solvents; }
  Panel p;
};

TEST(Solvents, theStoredOneIsChosenAndRetunesTheLock) {
  Open open("[Solvents]\r\nD2O=4.8\r\nCDCl3=7.24\r\n");
  EXPECT_EQ(open.panel().cmbSolvents.items(), (Names{"D2O", "CDCl3"}));
  EXPECT_EQ(open.panel().cmbSolvents.listIndex(), 1);
  EXPECT_EQ(open.p.record().SolventPPM, 7.24F);
  const double expected = PlotScale::SolventLockFrequency(open.p.program(), 7.24F);
  EXPECT_EQ(open.p.record().Frequency, expected);
  EXPECT_EQ(open.p.calls().back(), host::frequency(expected));
  EXPECT_EQ(open.panel().txtLockFreq.text().substr(0, 5), "46.04");
}

TEST(Solvents, namesMatchExactly) {
  for (const char* stored : {"cdcl3", "CDCl3 x", "none", ""}) {
    Open open("[Solvents]\r\nD2O=4.8\r\nCDCl3=7.24\r\n", stored);
    EXPECT_EQ(open.panel().cmbSolvents.listIndex(), 0) << stored;
    EXPECT_EQ(open.p.record().LockSolvent, "D2O") << stored;
    EXPECT_EQ(open.p.record().SolventPPM, 4.8F);
  }
}

TEST(Solvents, theLastOfTwoEqualNamesIsChosen) {
  Open open("[Solvents]\r\nCDCl3=7\r\nD2O=4.8\r\nCDCl3=8\r\n");
  EXPECT_EQ(open.panel().cmbSolvents.listIndex(), 2);
  EXPECT_EQ(open.tables().Shift[2], 7) << "the reader finds the first of that name";
}

TEST(Solvents, choosingOneSetsShiftFrequencyGainAndPower) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.clear();
  p.choose(p.controls().cmbSolvents, "D2O");
  const double expected = PlotScale::SolventLockFrequency(p.program(), 4.8F);
  p.expectCalls({host::frequency(expected)});
  EXPECT_EQ(p.record().LockSolvent, "D2O");
  EXPECT_EQ(p.record().SolventPPM, 4.8F);
  EXPECT_EQ(p.controls().txtSolventPPM.text(), "4.8");
  EXPECT_EQ(p.controls().vsRxGain.value(), 800);
  EXPECT_EQ(p.controls().vsTxPwr.value(), 60);
  EXPECT_EQ(p.record().TxPower, 30);
  EXPECT_EQ(p.record().PendingRxGain, -1);
  EXPECT_EQ(p.record().PendingTxPower, -1);
  p.pass();
  p.expectCalls({host::txPower(30)});
}

TEST(Solvents, theTablesPairByPosition) {
  Open open("[Solvents]\r\nCDCl3=7.24\r\nD2O=4.8\r\n[Solvents_RxGain]\r\nD2O=111\r\nCDCl3=222\r\n"
            "[Solvents_TxPwr]\r\nD2O=11\r\nCDCl3=22\r\n");
  EXPECT_EQ(open.panel().vsRxGain.value(), 111) << "CDCl3 is first, and so is the gain of D2O";
  EXPECT_EQ(open.p.record().TxPower, 11);
}

TEST(Solvents, aKeyAddedBySavingBelongsToItsPosition) {
  Open open("[Solvents]\r\nA=1\r\nB=2\r\nC=3\r\n[Solvents_RxGain]\r\nA=100\r\n[Solvents_TxPwr]\r\nA=10\r\n",
            "C");
  open.p.scroll(open.panel().vsRxGain, 777);
  open.panel().mnuMain(20).click();
  EXPECT_EQ(open.tables().RxGain[1], 777) << "saved for C, stands at B's place";
  EXPECT_EQ(open.tables().RxGain[2], 0);
}

TEST(Solvents, missingValuesHaveDefaults) {
  Open open("[Solvents]\r\nA=\r\nB=abc\r\n[Solvents_RxGain]\r\nA=12abc\r\nB=2.5\r\n[Solvents_TxPwr]\r\nA="
            "30\r\nB=4,5\r\n",
            "A");
  EXPECT_EQ(open.tables().Shift[0], 0);
  EXPECT_EQ(open.tables().Shift[1], 0);
  EXPECT_EQ(open.tables().RxGain[0], 12);
  EXPECT_EQ(open.tables().RxGain[1], 2);
  EXPECT_EQ(open.tables().TxPower[1], 4.5);
  EXPECT_EQ(open.panel().vsTxPwr.value(), 60);
  EXPECT_EQ(open.p.record().TxPower, 30.0);
}

TEST(Solvents, theListIsReadIntoTheReadersBuffer) {
  Panel p;
  support::RecordingSettings store(p.platform.memorySettings());
  p.platform.useSettings(store);
  p.started();
  store.reads.clear();
  p.controls();
  EXPECT_EQ(store.lists, (Names{"Solvents", "Solvents_RxGain", "Solvents_TxPwr"}));
  ASSERT_EQ(store.reads.size(), 9U);
  EXPECT_EQ(store.reads[0].key, "[Solvents] CDCl3");
  EXPECT_EQ(store.reads[0].fallback, "4.0");
  EXPECT_EQ(store.reads[3].key, "[Solvents_RxGain] CDCl3");
  EXPECT_EQ(store.reads[3].fallback, "5000");
  EXPECT_EQ(store.reads[8].key, "[Solvents_TxPwr] Acetone");
  EXPECT_EQ(store.reads[8].fallback, "50");
}

TEST(Solvents, withoutTheOtherTablesOnlyTheFrequencyChanges) {
  Open open("[Solvents]\r\nCDCl3=7.24\r\nD2O=4.8\r\n[Solvents_RxGain]\r\n");
  EXPECT_EQ(open.tables().RxGainPresent, 0);
  EXPECT_EQ(open.tables().TxPowerPresent, 0);
  open.p.clear();
  open.p.choose(open.panel().cmbSolvents, "D2O");
  open.p.pass(3);
  open.p.expectCalls({host::frequency(open.p.record().Frequency)});
  EXPECT_EQ(open.p.record().RxGain, 1200);
  EXPECT_EQ(open.p.record().TxPower, 20);
}

TEST(Solvents, aTableOfOneLetterIsPresent) {
  Open open("[Solvents]\r\nA=1\r\n[Solvents_RxGain]\r\nA=5\r\n");
  EXPECT_EQ(open.tables().RxGainPresent, -1);
  EXPECT_EQ(open.panel().vsRxGain.value(), 5);
}

TEST(Solvents, aShortTableLeavesTheRestAtTheirOldValues) {
  Open open("[Solvents]\r\nA=1\r\nB=2\r\n[Solvents_RxGain]\r\nA=5\r\n", "B");
  EXPECT_EQ(open.panel().vsRxGain.value(), 0) << "no entry of its own: nothing was ever read there";
}

TEST(Solvents, aListOver255CharactersIsCut) {
  // Nine characters a name with its end: 28 names fit whole, of the 29th one letter.
  std::string sections = "[Solvents]\r\n";
  for (int i = 0; i < 40; ++i)
    sections += "Solv" + std::to_string(1000 + i) + "=" + std::to_string(i) + "\r\n";
  Open open(sections, "Solv1003");
  const Names& items = open.panel().cmbSolvents.items();
  ASSERT_EQ(items.size(), 29U);
  EXPECT_EQ(items[27], "Solv1027");
  EXPECT_EQ(items[28], "S");
  EXPECT_EQ(open.tables().Shift[27], 27);
  EXPECT_EQ(open.tables().Shift[28], 4) << "no key of that name: the default";
  EXPECT_EQ(open.panel().cmbSolvents.listIndex(), 3);
}

// Names of one character, so that more than 101 fit the reader's list.
std::string manyKeys(const std::string& section, int count) {
  std::string text = "[" + section + "]\r\n";
  for (int i = 0; i < count; ++i) text += std::string(1, static_cast<char>('A' + i % 26)) + "=5\r\n";
  return text;
}

TEST(Solvents, a101Fit) {
  Open open(manyKeys("Solvents", 101), "A");
  EXPECT_EQ(open.panel().cmbSolvents.items().size(), 101U);
}

class TooMany : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Solvents, TooMany, testing::Values("Solvents", "Solvents_RxGain", "Solvents_TxPwr"));

TEST_P(TooMany, a102ndIsASubscriptErrorThatNamesIt) {
  std::string sections;
  for (const char* section : {"Solvents", "Solvents_RxGain", "Solvents_TxPwr"})
    sections += manyKeys(section, section == std::string(GetParam()) ? 102 : 3);
  Panel p("[Display]\r\nShowControls=0\r\n" + sections);
  p.started();
  p.expectBox(std::string("Run-time error '9':\r\n\r\nSubscript out of range\r\n\r\n") + Panel::kIniPath +
                  ": [" + GetParam() + "] X=5",
              ports::Answer::Ok);
  p.menu("Controls/NMR Controls");
  EXPECT_FALSE(p.program().frmControls.loaded());
}

TEST(Solvents, anEmptySectionCannotBeChosenFrom) {
  Panel p("[Display]\r\nShowControls=0\r\n[Solvents]\r\n[Solvents_RxGain]\r\nA=1\r\n");
  p.started();
  p.expectBox(std::string("Run-time error '380':\r\n\r\nInvalid property value\r\n\r\n") + Panel::kIniPath +
                  ": [Solvents] lists no solvent",
              ports::Answer::Ok);
  p.menu("Controls/NMR Controls");
  EXPECT_EQ(p.program().solvents.RxGainPresent, -1) << "the other tables were read before";
}

TEST(Solvents, aBadEntryIsNamedWhenItIsChosen) {
  Open open("[Solvents]\r\nA=1\r\nB=2\r\n[Solvents_RxGain]\r\nA=5\r\nQ=10001\r\n", "A");
  open.p.expectBox(std::string("Run-time error '380':\r\n\r\nInvalid property value\r\n\r\n") +
                       Panel::kIniPath + ": [Solvents_RxGain] Q=10001",
                   ports::Answer::Ok);
  open.p.choose(open.panel().cmbSolvents, "B");
  EXPECT_EQ(open.panel().vsRxGain.value(), 5);
}

TEST(Solvents, aTypedShiftOnlyRetunes) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.clear();
  p.typeInto(p.controls().txtSolventPPM, "5");
  const double expected = PlotScale::SolventLockFrequency(p.program(), 5);
  p.expectCalls({host::frequency(expected)});
  EXPECT_EQ(p.record().Frequency, expected);
  EXPECT_EQ(p.record().SolventPPM, 7.24F);
  EXPECT_EQ(StrToFloatVal(p.controls().txtLockFreq.text()), StrToFloatVal(base::numberText(expected)));
}

TEST(Solvents, rebuildingKeepsTheChoice) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.choose(p.controls().cmbSolvents, "Acetone");
  p.pass(3);
  p.record().PendingControl = p.record().PendingRxGain = kFalse;
  p.clear();
  p.controls().SetupSolventList();
  EXPECT_EQ(p.controls().cmbSolvents.text(), "Acetone");
  EXPECT_EQ(p.controls().cmbSolvents.items().size(), 3U);
  p.expectCalls({host::frequency(p.record().Frequency)});
  EXPECT_EQ(p.record().PendingControl, 0);
}

} // namespace
