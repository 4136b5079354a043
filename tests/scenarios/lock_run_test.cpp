// The main job, whole: the panel against the simulated console, from start-up to LOCKED and off again.
#include "support/Panel.h"

namespace {

// A console whose line sits where the settings look for it, so that Lock pulls in without a search.
sim::Settings centredConsole() {
  sim::Settings settings;
  settings.lineField = 0;
  return settings;
}

std::string lockableIni() {
  return "[Hardware]\r\nLockSolvent=CDCl3\r\nSolventPPM=7.26\r\nFrequency=46.0447506\r\nTxPower=30\r\nRxGain="
         "1000\r\n"
         "LockPhase=20\r\nRxFilterBW0=20\r\nRxFilterBW1=100\r\nRxFilterBW2=500\r\nDeltaTxPwr="
         "6\r\nSweepRxFilter=2\r\n"
         "[Display]\r\nShowControls=0\r\nStayOnTop=false\r\n"
         "[Solvents]\r\nCDCl3=7.26\r\n[Solvents_RxGain]\r\nCDCl3=1000\r\n[Solvents_TxPwr]\r\nCDCl3=30\r\n";
}

} // namespace

TEST(LockRun, startUpAgainstAnIdleConsoleShowsOff) {
  support::Panel panel;
  panel.startUp();
  EXPECT_TRUE(panel.main().visible());
  EXPECT_EQ(panel.status(), "OFF");
  EXPECT_FALSE(panel.main().Timer1.running());
  panel.waitSeconds(10);
  EXPECT_EQ(panel.record().LockMode, 0);
}

TEST(LockRun, lockReachesLockedOnTheSimulatedConsole) {
  support::Panel panel(lockableIni());
  sim::Console& console = panel.useConsole(centredConsole());
  panel.started();
  panel.press("Sweep");
  panel.waitSeconds(2);
  EXPECT_EQ(panel.status(), "SWEEP");
  EXPECT_FALSE(panel.canvas().lines.empty());
  panel.press("Lock");
  EXPECT_TRUE(panel.waitForStatus("LOCKED", 60));
  EXPECT_TRUE(console.lockedFlag());
  panel.press("Off");
  panel.tick();
  EXPECT_EQ(panel.status(), "OFF");
  EXPECT_EQ(console.mode(), sim::Mode::Off);
}

TEST(LockRun, aDeadHostWhileLockedKeepsThePanelAlive) {
  support::Panel panel(lockableIni());
  panel.useConsole(centredConsole());
  panel.started();
  panel.press("Lock");
  ASSERT_TRUE(panel.waitForStatus("LOCKED", 60));
  panel.host().failAll();
  panel.waitSeconds(1);
  EXPECT_TRUE(panel.main().loaded());
  panel.expectBox(support::kAnyText, support::Answer::Ok);
  panel.press("Sweep");
  panel.waitSeconds(1);
  EXPECT_TRUE(panel.main().loaded());
}

TEST(LockRun, aHostSlowerThanTheTimerDoesNotNestTicks) {
  support::Panel panel(lockableIni());
  panel.useConsole(centredConsole());
  panel.started();
  panel.press("Sweep");
  panel.host().delay = 200 * headless::kMillisecond;
  int inside = 0, deepest = 0;
  panel.host().pumpInside = [&] {
    deepest = std::max(deepest, ++inside);
    if (inside < 50) panel.platform.pump().doEvents();
    --inside;
  };
  panel.waitSeconds(20);
  EXPECT_EQ(deepest, 1);
}
