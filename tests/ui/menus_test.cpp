#include "support/Panel.h"
#include "support/RecordingSettings.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

constexpr const char* kOther = "C:\\data\\other.ini";

class Menus : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  std::string& otherText() { return p.platform.memorySettings().text(kOther); }
  std::string other(const std::string& section, const std::string& key) {
    return p.platform.memorySettings().read(kOther, section, key, "(none)", 255);
  }
  static host::Lines resent() {
    return {host::phase(30), host::frequency(46.04475), host::txPower(20), host::rxGain(1200)};
  }
  Panel p;
};

// One line per item: index, caption, shortcut, then "hidden" or "checked".
std::vector<std::string> describe(const std::vector<controls::MenuItem*>& items) {
  std::vector<std::string> lines;
  for (const controls::MenuItem* item : items)
    lines.push_back(std::to_string(item->index()) + " " + item->caption() +
                    (item->shortcut().empty() ? "" : " [" + item->shortcut() + "]") +
                    (item->visible() ? "" : " hidden") + (item->checked() ? " checked" : ""));
  return lines;
}

using Lines = std::vector<std::string>;

TEST_F(Menus, theBar) {
  EXPECT_EQ(describe(p.main().menuBar), (Lines{"0 &File", "1 &Edit", "2 &Preferences", "3 Con&trols",
                                               "4 &Commands", "5 &Help", "6 PicturePopup hidden"}));
}

TEST_F(Menus, fileAndEdit) {
  EXPECT_EQ(describe(p.main().mnuMenuBar(0).children),
            (Lines{"1 &Open Settings...", "2 &Save Settings", "3 Save Settings &As...", "4 -",
                   "5 &Quit (no save)", "6 E&xit (save)"}));
  EXPECT_EQ(describe(p.main().mnuMenuBar(1).children), (Lines{"0 &Solvent List"}));
}

TEST_F(Menus, preferencesAndUnitsAsDesigned) {
  const frmLock designed(p.program());
  const auto& bar = designed.menuBar;
  EXPECT_EQ(describe(bar[2]->children),
            (Lines{"1 Show &Real Data [Ctrl+R] checked", "2 Show &Imag Data [Ctrl+I]",
                   "3 Show &Magn Data [Ctrl+M]", "5 &Show Lock Level", "8 Display &Units", "10 &Log Enabled",
                   "11 -", "15 Use Timer hidden", "20 Always On &Top", "22 Hide &Graph hidden"}));
  EXPECT_EQ(describe(bar[2]->children[4]->children), (Lines{"0 &DAC Units", "1 &Hz", "2 &ppm"}));
}

TEST_F(Menus, controlsCommandsAndHelp) {
  EXPECT_EQ(describe(p.main().mnuMenuBar(3).children),
            (Lines{"3 &Display (Amplitude/Offset)", "5 &Sweep (Width/Speed)", "7 Loop &Tuning Parameters",
                   "21 &NMR Controls"}));
  EXPECT_EQ(describe(p.main().mnuMenuBar(4).children),
            (Lines{"5 &Pause Display [Ctrl+P]", "9 Reset &Entire Talvane System",
                   "10 &Reset Lock Hardware hidden", "11 Reload &Lock Params [Ctrl+L]"}));
  EXPECT_EQ(describe(p.main().mnuMenuBar(5).children), (Lines{"5 &About"}));
}

TEST_F(Menus, thePlotsPopUp) {
  EXPECT_EQ(describe(p.main().mnuMenuBar(6).children),
            (Lines{"0 &Redraw", "1 &Set Center Here", "2 &Enter New Center Value", "3 Set Center to &Zero",
                   "10 - hidden", "15 Change Peak Threshold hidden"}));
}

TEST_F(Menus, openingATopLevelMenuStopsTheTimerAndTheIdleLoopStartsItAgain) {
  p.record().LockMode = kModeHold;
  p.main().Timer1.setEnabled(true);
  for (const char* menu : {"File", "Edit", "Preferences", "Controls", "Commands", "Help"}) {
    p.menu(menu);
    EXPECT_FALSE(p.main().Timer1.enabled()) << menu;
    p.pass();
    EXPECT_TRUE(p.main().Timer1.enabled()) << menu;
  }
}

TEST_F(Menus, openingTheUnitsMenuChecksNothing) {
  p.main().mnuPrefs(8).click();
  EXPECT_FALSE(p.main().mnuPrefs(8).checked());
}

// File

TEST_F(Menus, openLoadsAppliesAndShowsTheFileName) {
  otherText() = support::standardIni();
  p.platform.memorySettings().write(kOther, "Hardware", "RxGain", "777");
  p.platform.dialogs().expectOpenFile(kOther);
  p.menu("File/Open Settings");
  EXPECT_EQ(p.record().IniPath, kOther);
  EXPECT_EQ(p.record().RxGain, 777);
  EXPECT_EQ(p.main().caption(), std::string("Talvane Lock Control - ") + kOther);
  EXPECT_EQ(p.calls(),
            (host::Lines{host::hardwareState(), host::field(400), host::sweepWidth(8000), host::txPower(20),
                         host::frequency(46.04475), host::phase(30), host::rxGain(777)}));
}

TEST_F(Menus, openAsksAsDesignedAndThePathAloneMustExist) {
  p.platform.dialogs().expectOpenFile(std::nullopt);
  p.menu("File/Open Settings");
  const ports::FileDialog& asked = p.platform.dialogs().lastFileDialog();
  EXPECT_EQ(asked.title, "Select Lock File");
  EXPECT_EQ(asked.defaultName, "lock.ini");
  EXPECT_EQ(asked.filter, "*.ini");
  EXPECT_FALSE(asked.mustExist);
}

TEST_F(Menus, aCancelledDialogChangesNothing) {
  const std::string before = p.settingsText();
  p.platform.dialogs().expectOpenFile(std::nullopt);
  p.menu("File/Open Settings");
  p.platform.dialogs().expectSaveFile(std::nullopt);
  p.menu("File/Save Settings As");
  EXPECT_EQ(p.record().IniPath, Panel::kIniPath);
  EXPECT_EQ(p.main().caption(), "Lock Control");
  EXPECT_EQ(p.settingsText(), before);
  EXPECT_EQ(p.calls(), host::Lines{});
}

TEST_F(Menus, aFileThatCannotBeReadWholeIsToldAndEverythingStays) {
  otherText() = "[Hardware]\r\nRxGain=5\r\nFieldCenter=99999999999\r\n";
  p.platform.dialogs().expectOpenFile(kOther);
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("File/Open Settings");
  EXPECT_EQ(p.record().IniPath, Panel::kIniPath);
  EXPECT_EQ(p.record().RxGain, 1200);
  EXPECT_EQ(p.record().FieldCenter, 400);
  EXPECT_EQ(p.main().caption(), "Lock Control");
  EXPECT_EQ(p.calls(), host::Lines{});
}

TEST_F(Menus, aFileTheHardwareRefusesIsLoadedAndNamedAllTheSame) {
  otherText() = support::standardIni();
  p.platform.dialogs().expectOpenFile(kOther);
  p.host().fail(28);
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("File/Open Settings");
  p.host().failNever();
  EXPECT_EQ(p.record().IniPath, kOther);
  EXPECT_EQ(p.main().caption(), std::string("Talvane Lock Control - ") + kOther);
}

TEST_F(Menus, saveWritesTheCurrentFile) {
  p.record().RxGain = 4321;
  p.menu("File/Save Settings");
  EXPECT_EQ(p.setting("Hardware", "RxGain"), "4321");
  EXPECT_EQ(p.main().caption(), "Lock Control");
  EXPECT_FALSE(p.program().frmControls.loaded()); // nothing to refresh
}

TEST_F(Menus, saveReadsTheNmrControlsPanelsSolventTableAgain) {
  p.menu("Controls/NMR Controls");
  p.record().RxGain = 4321;
  p.menu("File/Save Settings");
  EXPECT_EQ(p.setting("Solvents_RxGain", "CDCl3"), "4321");
  EXPECT_EQ(p.program().solvents.RxGain[0], 4321);
}

TEST_F(Menus, saveAsCopiesTheFileFirstAndGoesOnWithTheNewOne) {
  p.set("Mine", "Note", "kept");
  const std::string before = p.settingsText();
  p.record().RxGain = 4321;
  p.platform.dialogs().expectSaveFile(kOther);
  p.menu("File/Save Settings As");
  EXPECT_TRUE(p.platform.dialogs().lastFileDialog().mustExist);
  EXPECT_EQ(p.record().IniPath, kOther);
  EXPECT_EQ(other("Mine", "Note"), "kept"); // what the program never writes goes along
  EXPECT_EQ(other("Hardware", "RxGain"), "4321");
  EXPECT_EQ(p.settingsText(), before);
  EXPECT_EQ(p.main().caption(), std::string("Talvane Lock Control - ") + kOther);
}

TEST_F(Menus, aNewNameIsShownThoughTheHardwareRefusesTheSolventsFrequency) {
  p.menu("Controls/NMR Controls");
  p.host().fail(198);
  p.platform.dialogs().expectSaveFile(kOther);
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("File/Save Settings As");
  p.host().failNever();
  EXPECT_EQ(p.record().IniPath, kOther);
  EXPECT_EQ(p.main().caption(), std::string("Talvane Lock Control - ") + kOther);
}

TEST_F(Menus, saveAsCopiesBeforeItSavesAndOnlyToAnotherName) {
  support::RecordingSettings store(p.platform.memorySettings());
  p.platform.useSettings(store);
  p.platform.dialogs().expectSaveFile(kOther);
  p.menu("File/Save Settings As");
  ASSERT_GT(store.writes.size(), 1U);
  EXPECT_EQ(store.writes[0], std::string("copy ") + Panel::kIniPath + " to " + kOther);
  store.writes.clear();
  p.platform.dialogs().expectSaveFile(kOther);
  p.menu("File/Save Settings As");
  ASSERT_FALSE(store.writes.empty());
  EXPECT_NE(store.writes[0].substr(0, 5), "copy ");
  store.writes.clear();
  p.platform.dialogs().expectSaveFile("c:\\DATA\\other.ini"); // another spelling is another name
  p.menu("File/Save Settings As");
  EXPECT_EQ(store.writes[0].substr(0, 5), "copy ");
  p.platform.useSettings(p.platform.memorySettings());
}

TEST_F(Menus, saveAsUnderTheCurrentNameSavesWithoutCopying) {
  p.record().RxGain = 4321;
  p.platform.dialogs().expectSaveFile(Panel::kIniPath);
  p.menu("File/Save Settings As");
  EXPECT_EQ(p.setting("Hardware", "RxGain"), "4321");
  EXPECT_EQ(p.main().caption(), std::string("Talvane Lock Control - ") + Panel::kIniPath);
}

TEST_F(Menus, aFailedCopyIsToldOnceAndNothingIsLost) {
  otherText() = "[Mine]\r\nNote=old\r\n";
  const std::string before = p.settingsText();
  p.record().RxGain = 4321;
  p.platform.memorySettings().failWrites("The disk is full");
  p.platform.dialogs().expectSaveFile(kOther);
  p.expectBox(std::string("The settings could not be copied to ") + kOther + ".\r\nThe disk is full",
              ports::Answer::Ok);
  p.menu("File/Save Settings As");
  EXPECT_EQ(p.record().IniPath, Panel::kIniPath);
  EXPECT_EQ(p.main().caption(), "Lock Control");
  EXPECT_EQ(p.settingsText(), before);
  EXPECT_EQ(otherText(), "[Mine]\r\nNote=old\r\n");
  EXPECT_EQ(p.record().RxGain, 4321);
}

TEST_F(Menus, aFailedSaveIsToldOnce) {
  p.record().RxGain = 4321;
  p.platform.memorySettings().failWrites("The disk is full");
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("File/Save Settings");
  EXPECT_EQ(p.record().RxGain, 4321);
}

TEST_F(Menus, quitEndsWithoutSavingOrAsking) {
  const std::string before = p.settingsText();
  p.record().RxGain = 4321;
  EXPECT_TRUE(p.ends([&] { p.menu("File/Quit (no save)"); }));
  EXPECT_EQ(p.settingsText(), before);
}

TEST_F(Menus, exitSavesWithoutAsking) {
  p.record().RxGain = 4321;
  EXPECT_TRUE(p.ends([&] { p.menu("File/Exit (save)"); }));
  EXPECT_EQ(p.setting("Hardware", "RxGain"), "4321");
}

// Edit

TEST_F(Menus, theSolventListIsNotThereYet) {
  p.expectBox("This Function Not Yet Implemented", ports::Answer::Ok);
  p.menu("Edit/Solvent List");
  EXPECT_EQ(p.boxes(), host::Lines{"box [Vantrel Lock System] This Function Not Yet Implemented (Ok) -> Ok"});
}

// Preferences

TEST_F(Menus, theTracePreferencesFollowTheirMarks) {
  const std::tuple<const char*, int, std::int16_t LockParameters::*> items[] = {
      {"Preferences/Show Real Data", 1, &LockParameters::ShowReal},
      {"Preferences/Show Imag Data", 2, &LockParameters::ShowImag},
      {"Preferences/Show Magn Data", 3, &LockParameters::ShowMagnitude},
      {"Preferences/Log Enabled", 10, &LockParameters::LogEnabled}};
  for (const auto& [path, index, word] : items)
    for (int round = 0; round < 2; ++round) {
      const bool before = p.main().mnuPrefs(index).checked();
      p.menu(path);
      EXPECT_EQ(p.main().mnuPrefs(index).checked(), !before) << path;
      EXPECT_EQ(p.record().*word, flag(!before)) << path;
    }
}

TEST_F(Menus, theShortcutsToggleTheTraces) {
  const std::pair<char, int> keys[] = {{'R', 1}, {'I', 2}, {'M', 3}};
  for (const auto& [letter, index] : keys) {
    const bool before = p.main().mnuPrefs(index).checked();
    EXPECT_TRUE(p.op().key(p.main(), letter, headless::keys::Ctrl));
    EXPECT_EQ(p.main().mnuPrefs(index).checked(), !before) << letter;
  }
}

TEST_F(Menus, useTimerIsHiddenAndOnlyKeepsItsFlag) {
  p.main().mnuPrefs.Click(15);
  EXPECT_EQ(p.record().UseTimer, kTrue);
  p.main().mnuPrefs.Click(15);
  EXPECT_EQ(p.record().UseTimer, kFalse);
}

TEST_F(Menus, alwaysOnTopReachesEveryLoadedWindowInOrder) {
  for (const char* panel :
       {"Controls/Loop Tuning Parameters", "Controls/Sweep (Width/Speed)", "Controls/NMR Controls",
        "Controls/Display (Amplitude/Offset)", "Preferences/Show Lock Level"})
    p.menu(panel);
  p.transcript().want(support::Kind::Window, true);
  p.clear();
  p.menu("Preferences/Always On Top");
  EXPECT_EQ(p.record().StayOnTop, kTrue);
  EXPECT_EQ(p.texts({support::Kind::Window}),
            (host::Lines{"frmLock on top", "frmLevel on top", "frmAmpl on top", "frmControls on top",
                         "frmSweep on top", "frmTuning on top"}));
  p.clear();
  p.menu("Preferences/Always On Top");
  EXPECT_EQ(p.record().StayOnTop, kFalse);
  EXPECT_EQ(p.texts({support::Kind::Window}).front(), "frmLock not on top");
}

TEST_F(Menus, alwaysOnTopLoadsNoWindow) {
  p.menu("Preferences/Always On Top");
  EXPECT_EQ(p.program().desktop.loadedForms(), 1);
  EXPECT_EQ(p.program().panels.ControlsOpen, kFalse);
}

TEST_F(Menus, hideGraphHidesThePlotAndShowsItAgain) {
  p.main().mnuPrefs.Click(22);
  EXPECT_TRUE(p.main().mnuPrefs(22).checked());
  EXPECT_FALSE(p.main().Picture1.visible());
  p.main().mnuPrefs.Click(22);
  EXPECT_TRUE(p.main().Picture1.visible());
}

TEST_F(Menus, theUnitsMenuChecksOneItemAndRewritesTheAxis) {
  const std::pair<const char*, const char*> units[] = {
      {"Preferences/Display Units/Hz", "203 Hz"}, // 4400 x 0.001 x 46.04475, to the nearest
      {"Preferences/Display Units/ppm", "4.4 ppm"},
      {"Preferences/Display Units/DAC Units", "4400"}};
  const int index[] = {1, 2, 0};
  int n = 0;
  for (const auto& [path, right] : units) {
    p.menu(path);
    EXPECT_EQ(p.record().DisplayUnits, static_cast<float>(index[n])) << path;
    for (int i = 0; i <= 2; ++i) EXPECT_EQ(p.main().mnuUnits(i).checked(), i == index[n]) << path;
    EXPECT_EQ(p.main().Label2[1].caption(), right);
    ++n;
  }
}

// Controls

TEST_F(Menus, theControlsMenuOpensAndClosesItsPanels) {
  struct Item {
    const char* path;
    int index;
    std::int16_t PanelFlags::*shown;
    std::int16_t PanelFlags::*open;
    const char* window;
  };
  const Item items[] = {
      {"Controls/Display (Amplitude/Offset)", 3, &PanelFlags::AmplShown, &PanelFlags::AmplOpen, "frmAmpl"},
      {"Controls/Sweep (Width/Speed)", 5, &PanelFlags::SweepShown, &PanelFlags::SweepOpen, "frmSweep"},
      {"Controls/Loop Tuning Parameters", 7, &PanelFlags::TuningShown, &PanelFlags::TuningOpen, "frmTuning"},
      {"Controls/NMR Controls", 21, &PanelFlags::ControlsShown, &PanelFlags::ControlsOpen, "frmControls"}};
  for (const Item& item : items) {
    p.menu(item.path);
    EXPECT_TRUE(p.main().mnuControls(item.index).checked()) << item.path;
    EXPECT_EQ(p.program().panels.*item.shown, kTrue) << item.path;
    EXPECT_EQ(p.program().panels.*item.open, kTrue) << item.path;
    EXPECT_TRUE(p.op().form(item.window).visible());
    p.menu(item.path);
    EXPECT_FALSE(p.main().mnuControls(item.index).checked()) << item.path;
    EXPECT_EQ(p.program().panels.*item.shown, kFalse) << item.path;
    EXPECT_EQ(p.program().panels.*item.open, kFalse) << item.path;
    EXPECT_EQ(p.program().desktop.loadedForms(), 1) << item.path;
  }
}

TEST_F(Menus, panelsHideAndShowWithTheMainWindow) {
  p.menu("Controls/Sweep (Width/Speed)");
  p.platform.windows().minimise(p.main());
  EXPECT_FALSE(p.program().frmSweep->visible());
  p.platform.windows().restore(p.main());
  EXPECT_TRUE(p.program().frmSweep->visible());
}

TEST_F(Menus, aPanelClosedByItsCloseBoxDoesNotComeBackOnRestore) {
  p.menu("Controls/Sweep (Width/Speed)");
  p.platform.windows().close(p.program().frmSweep.get());
  p.platform.windows().minimise(p.main());
  p.platform.windows().restore(p.main());
  EXPECT_FALSE(p.program().frmSweep.loaded());
}

// Commands

TEST_F(Menus, pauseDisplayTurnsTheTimerOnAndOffUntilTheIdleLoopRuns) {
  p.main().mnuCommands(5).click();
  EXPECT_TRUE(p.main().mnuCommands(5).checked());
  EXPECT_TRUE(p.main().Timer1.enabled());
  p.op().key(p.main(), 'P', headless::keys::Ctrl);
  EXPECT_FALSE(p.main().mnuCommands(5).checked());
  EXPECT_FALSE(p.main().Timer1.enabled());
  p.record().LockMode = kModeHold;
  p.pass();
  EXPECT_TRUE(p.main().Timer1.enabled());
}

TEST_F(Menus, reloadLockParamsSendsThemAgain) {
  p.menu("Commands/Reload Lock Params");
  p.expectCalls({resent()});
  p.op().key(p.main(), 'L', headless::keys::Ctrl);
  p.expectCalls({resent()});
}

TEST_F(Menus, aNegativePhaseIsSentFoldedAndStaysStored) {
  p.record().LockPhase = -90;
  p.menu("Commands/Reload Lock Params");
  EXPECT_EQ(p.calls().front(), host::phase(270));
  EXPECT_EQ(p.record().LockPhase, -90);
}

TEST_F(Menus, resetEntireSystemReconnectsAndHandsTheSystemValueBack) {
  p.host().systemValue = 1234;
  const int searches = p.platform.hostFinder().searches();
  p.menu("Commands/Reset Entire Talvane System");
  EXPECT_GT(p.platform.hostFinder().searches(), searches);
  p.expectCalls({host::getSystemValue(), host::resetSystem(), host::setSystemValue(1234), resent()});
}

TEST_F(Menus, resetLockHardwareIsHiddenButWorks) {
  p.main().mnuCommands.Click(10);
  p.expectCalls({host::resetHardware(), resent()});
}

TEST_F(Menus, aFailingCommandStopsThereAndIsReported) {
  p.host().fail(198);
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("Commands/Reload Lock Params");
  p.host().failNever();
  p.expectCalls({host::phase(30), host::frequency(46.04475)});
}

} // namespace
