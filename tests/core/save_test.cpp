#include "support/Panel.h"
#include "support/RecordingSettings.h"

namespace {

using support::Panel;
using Writes = std::vector<std::string>;

class Save : public testing::Test {
 protected:
  void SetUp() override {
    p.platform.useSettings(store);
    p.started();
    store.writes.clear();
  }
  Writes save() {
    store.writes.clear();
    vbLock_mod::SaveLockSettings(p.program());
    return store.writes;
  }
  bool wrote(const std::string& key) { // "[Section] Key"
    for (const std::string& line : store.writes)
      if (line.rfind(key + "=", 0) == 0) return true;
    return false;
  }
  Panel p;
  support::RecordingSettings store{p.platform.memorySettings()};
};

TEST_F(Save, writesExactlyTheseKeysInThisOrder) {
  EXPECT_EQ(save(), (Writes{"[Hardware] LockSolvent=CDCl3",
                            "[Hardware] SolventPPM=7.24",
                            "[Hardware] Frequency=46.04475",
                            "[Hardware] FieldCenter=400",
                            "[Hardware] SweepWidth=8000",
                            "[Hardware] SweepSpeed=20000",
                            "[Hardware] LockPhase=30",
                            "[Hardware] RxGain=1200",
                            "[Hardware] RxFilterIndex=1",
                            "[Hardware] TxPower=20",
                            "[Solvents_RxGain] CDCl3=1200",
                            "[Solvents_TxPwr] CDCl3=20",
                            "[Loop] ActiveSet=0",
                            "[Loop] P=8000",
                            "[Loop] I=60",
                            "[Loop] D=3",
                            "[Display] PlotMax=512",
                            "[Display] PlotOffset=0",
                            "[Display] ShowControls=0",
                            "[Display] ShowReal=1",
                            "[Display] ShowImag=0",
                            "[Display] FormLeft=600",
                            "[Display] FormTop=300",
                            "[Display] FormWidth=9000",
                            "[Display] FormHeight=7500",
                            "[Display] FormMax=0",
                            "[Display] StayOnTop=False",
                            "[Amplitude] Top=-1",
                            "[Amplitude] Left=-1",
                            "[NMRControls] Top=-1",
                            "[NMRControls] Left=-1",
                            "[Sweep] Top=-1",
                            "[Sweep] Left=-1",
                            "[Tuning] Top=-1",
                            "[Tuning] Left=-1",
                            "[AutoLock] PeakThresholdFactor=16"}));
}

TEST_F(Save, numbersAreWrittenInTheirShortestForm) {
  LockParameters& r = p.record();
  r.SolventPPM = 0.1F;
  r.Frequency = 46.0446373;
  r.TxPower = 30.5;
  r.LoopP = 1.0e7F;
  r.LoopI = -0.25F;
  r.ShowReal = kTrue;
  r.StayOnTop = kTrue;
  r.AmplitudeLeft = 12345.5F;
  save();
  for (const char* line : {"[Hardware] SolventPPM=0.1", "[Hardware] Frequency=46.0446373",
                           "[Hardware] TxPower=30.5", "[Loop] P=1E+07", "[Loop] I=-0.25",
                           "[Display] ShowReal=-1", "[Display] StayOnTop=True", "[Amplitude] Left=12345.5"})
    EXPECT_NE(std::find(store.writes.begin(), store.writes.end(), line), store.writes.end()) << line;
}

TEST_F(Save, whileSweepingTheNextStartGetsThePowerWithoutTheOffset) {
  p.press("Sweep");
  EXPECT_EQ(p.record().TxPower, 30);
  save();
  EXPECT_TRUE(std::count(store.writes.begin(), store.writes.end(), "[Hardware] TxPower=20"));
  EXPECT_TRUE(std::count(store.writes.begin(), store.writes.end(), "[Solvents_TxPwr] CDCl3=30"));
  EXPECT_EQ(p.record().TxPower, 30) << "the record has its power back";
}

TEST_F(Save, onlyThePressedSweepButtonCounts) {
  p.press("Sweep");
  p.main().Toolbar1.press(frmLock::ButtonLock);
  save();
  EXPECT_TRUE(std::count(store.writes.begin(), store.writes.end(), "[Hardware] TxPower=30"));
  EXPECT_TRUE(std::count(store.writes.begin(), store.writes.end(), "[Solvents_TxPwr] CDCl3=30"));
}

TEST_F(Save, minimisedWritesNeitherPlaceNorState) {
  p.platform.windows().minimise(p.main());
  save();
  for (const char* key : {"FormLeft", "FormTop", "FormWidth", "FormHeight", "FormMax"})
    EXPECT_FALSE(wrote(std::string("[Display] ") + key)) << key;
  EXPECT_TRUE(wrote("[Display] StayOnTop"));
  EXPECT_EQ(store.writes.size(), 31U);
}

TEST_F(Save, maximisedKeepsTheLastNormalPlaceInTheFile) {
  p.platform.windows().maximise(p.main());
  save();
  for (const char* key : {"FormLeft", "FormTop", "FormWidth", "FormHeight"})
    EXPECT_FALSE(wrote(std::string("[Display] ") + key)) << key;
  EXPECT_EQ(p.setting("Display", "FormMax"), "2");
  EXPECT_EQ(p.setting("Display", "FormWidth"), "9000");
}

TEST_F(Save, thePlaceIsTheWindowsOwn) {
  p.platform.windows().moveTo(p.main(), 1500, 750);
  p.platform.windows().resize(p.main(), 10000, 8000);
  save();
  EXPECT_EQ(p.setting("Display", "FormLeft"), "1500");
  EXPECT_EQ(p.setting("Display", "FormTop"), "750");
  EXPECT_EQ(p.setting("Display", "FormWidth"), "10000");
  EXPECT_EQ(p.setting("Display", "FormHeight"), "8000");
  EXPECT_EQ(p.record().FormLeft, 600) << "the record is not touched";
}

TEST_F(Save, theSolventIsTheKeyAsItStands) {
  p.record().LockSolvent = "My Solvent";
  p.record().RxGain = 77;
  save();
  EXPECT_EQ(p.setting("Solvents_RxGain", "My Solvent"), "77");
  EXPECT_EQ(p.setting("Solvents_TxPwr", "My Solvent"), "20");
  EXPECT_EQ(p.setting("Hardware", "LockSolvent"), "My Solvent");
}

TEST_F(Save, configurationIsNeverWritten) {
  save();
  for (const char* key :
       {"[Hardware] PPMperDAC", "[Hardware] SidebandFreq", "[Hardware] RxFilterBW0", "[Hardware] Testing",
        "[Hardware] DeltaTxPwr", "[Hardware] LockHoldRxFilter", "[Hardware] SweepRxFilter", "[Loop] NSets",
        "[Loop] P_0", "[Display] LogInterval", "[Display] LogFileName", "[Display] DisplayFilter",
        "[Display] NoiseFactor", "[System] ProtonFreq", "[AutoLock] UseDefaultTxRx", "[AutoLock] SweepSpeed",
        "[AutoLock] SetLockLevel"})
    EXPECT_FALSE(wrote(key)) << key;
}

TEST_F(Save, aSecondSaveChangesNothingInTheFile) {
  save();
  const std::string once = p.settingsText();
  save();
  EXPECT_EQ(p.settingsText(), once);
}

TEST_F(Save, whatWasSavedLoadsAgain) {
  p.record().Frequency = 46.0447506;
  p.record().LockPhase = 271;
  p.record().PeakThresholdFactor = 17.6F;
  save();
  vbLock_mod::LoadLockSettings(p.program());
  EXPECT_EQ(p.record().Frequency, 46.0447506);
  EXPECT_EQ(p.record().LockPhase, 271);
  EXPECT_EQ(p.record().PeakThresholdFactor, 17.6F);
}

TEST_F(Save, failuresAreToldOnceAndTheRestIsTried) {
  p.platform.memorySettings().failWrites("The disk is full.");
  p.expectBox(std::string("The settings could not be saved to ") + Panel::kIniPath +
                  ":\r\n[Hardware] LockSolvent=CDCl3\r\nThe disk is full.",
              ports::Answer::Ok);
  EXPECT_EQ(save().size(), 36U);
  EXPECT_EQ(p.boxes().size(), 1U);
}

TEST_F(Save, aSolventThatCannotBeAKeyIsToldAndTheRestSaved) {
  p.record().LockSolvent = "a=b";
  p.expectBox(std::string("The settings could not be saved to ") + Panel::kIniPath +
                  ":\r\n[Solvents_RxGain] a=b=1200\r\nA settings key cannot be named \"a=b\"",
              ports::Answer::Ok);
  save();
  EXPECT_EQ(p.setting("AutoLock", "PeakThresholdFactor"), "16");
}

TEST(SaveEarly, createsTheMainWindowWhenItIsNotThere) {
  Panel p;
  p.record().IniPath = Panel::kIniPath;
  vbLock_mod::SaveLockSettings(p.program());
  EXPECT_TRUE(p.program().frmLock.loaded());
  EXPECT_EQ(p.setting("Display", "FormMax"), "0");
}

} // namespace
