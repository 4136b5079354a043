// What a careless operator can do, and what must not come of it.
#include "support/Panel.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"

namespace {

using support::Panel;

double lastSent(Panel& panel, const std::string& operation) {
  std::string value;
  for (const std::string& line : panel.calls())
    if (line.find(operation) != std::string::npos) value = line.substr(line.rfind(' ') + 1);
  return std::stod(value);
}

TEST(UnusualInput, aPowerTooLargeForANumberNeverReachesTheHost) {
  Panel panel;
  panel.started();
  panel.controls().show();
  panel.type(panel.controls().txtTxPwr, "1e400");
  panel.press("Hold");
  EXPECT_EQ(lastSent(panel, "HostSetLockTxPower"), 20);
}

TEST(UnusualInput, autoSweepsAtTheHighestPowerWhenTheSolventLeavesNoRoomForTheOffset) {
  Panel panel;
  panel.set("Solvents_TxPwr", "CDCl3", "60").set("AutoLock", "UseDefaultTxRx", "true");
  panel.started();
  panel.press("Auto");
  EXPECT_EQ(panel.record().LockMode, kModeAuto);
  EXPECT_EQ(panel.record().TxPower, 63.5);
}

TEST(UnusualInput, aThresholdKeyLetGoInAPanelStartsTheTimerAgain) {
  Panel panel;
  panel.started();
  panel.press("Sweep");
  Program& program = panel.program();
  for (controls::Form* window : {static_cast<controls::Form*>(&program.frmControls.get()),
                                 static_cast<controls::Form*>(&program.frmTuning.get()),
                                 static_cast<controls::Form*>(&program.frmSweep.get()),
                                 static_cast<controls::Form*>(&program.frmAmpl.get())}) {
    panel.main().Timer1.setInterval(0);
    window->userKeyUp(33, 0);
    EXPECT_EQ(panel.main().Timer1.interval(), 10) << window->name();
  }
}

TEST(UnusualInput, anOpenedFileThatWantsTheWindowsOnTopPutsThemThereWithTheMark) {
  Panel panel;
  panel.started();
  ASSERT_FALSE(panel.main().mnuPrefs(20).checked());
  panel.set("Display", "StayOnTop", "true");
  panel.platform.dialogs().expectOpenFile(Panel::kIniPath);
  panel.menu("File/Open Settings");
  EXPECT_TRUE(panel.main().mnuPrefs(20).checked());
  EXPECT_TRUE(panel.platform.windows().topmost(panel.main()));
}

} // namespace
