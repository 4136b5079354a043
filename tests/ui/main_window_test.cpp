#include "support/Panel.h"
#include <gtest/gtest.h>

namespace {

using controls::WindowState;
using ports::Answer;
using support::Panel;

class MainWindow : public testing::Test {
 protected:
  void SetUp() override {
    p.host().words[6] = 100;
    p.started();
  }
  headless::HeadlessWindows& windows() { return p.platform.windows(); }
  frmLock& main() { return p.main(); }
  // The window height that leaves this much for the plot.
  float heightFor(float plot) {
    return main().height() - main().innerHeight() + plot + main().StatusBar1.height() +
           main().Toolbar1.height() + main().hsCenter.height();
  }
  Panel p;
};

TEST_F(MainWindow, standsWhereItStoodBefore) {
  EXPECT_EQ(main().left(), 600);
  EXPECT_EQ(main().top(), 300);
  EXPECT_EQ(main().width(), 9000);
  EXPECT_EQ(main().height(), 7500);
}

TEST(MainWindowPlace, aLeftOfMinusOneCentresIt) {
  Panel p;
  p.set("Display", "FormLeft", "-1").set("Display", "FormTop", "77").started();
  EXPECT_EQ(p.main().left(), (28800 - 9000) / 2);
  EXPECT_EQ(p.main().top(), (16200 - 7500) / 2);
}

TEST(MainWindowPlace, anyOtherPlaceIsTakenAsItStandsEvenOffTheScreen) {
  Panel p;
  p.set("Display", "FormLeft", "-1.5").set("Display", "FormTop", "99000").started();
  EXPECT_EQ(p.main().left(), -1.5F);
  EXPECT_EQ(p.main().top(), 99000);
}

TEST(MainWindowPlace, withoutASavedSizeItKeepsTheDesignedOne) {
  Panel p;
  p.set("Display", "FormWidth", "0")
      .set("Display", "FormHeight", "0")
      .set("Display", "FormMax", "2")
      .started();
  EXPECT_EQ(p.main().width(), 9240);
  EXPECT_EQ(p.main().windowState(), WindowState::Maximised);
}

TEST_F(MainWindow, showsItsDesignTexts) {
  EXPECT_EQ(main().caption(), "Lock Control");
  for (int panel = 1; panel <= 3; ++panel) EXPECT_EQ(main().StatusBar1.text(panel), "00000 ");
  EXPECT_EQ(main().StatusBar1.panels(), 4);
  EXPECT_EQ(p.status(), "OFF");
  EXPECT_EQ(main().lblSigThreshold.caption(), "Peak Threshold =");
  EXPECT_EQ(main().lblPkPwr.caption(), "Peak Level        =");
  EXPECT_EQ(main().Timer1.interval(), 10);
  const char* const keys[] = {"Off", "Lock", "Sweep", "Hold", "Auto", "Phase"};
  const char* const tips[] = {"Lock RF and Loop OFF",
                              "Lock RF and Loop ON ",
                              "Field Sweep Display",
                              "Lock RF ON, Loop OFF",
                              "Auto Lock",
                              "Auto Phase (Sweep Mode)"};
  ASSERT_EQ(main().Toolbar1.count(), 6);
  for (int button = 1; button <= 6; ++button) {
    EXPECT_EQ(main().Toolbar1.item(button).key, keys[button - 1]);
    EXPECT_EQ(main().Toolbar1.item(button).tip, tips[button - 1]);
  }
}

TEST_F(MainWindow, theToolbarsTipFollowsThePointer) {
  main().Toolbar1.itemWidths = {500, 600, 700, 800, 900, 1000};
  const auto tipAt = [&](float x) {
    main().Toolbar1.userMouseMove(x);
    return main().Toolbar1.tip();
  };
  EXPECT_EQ(tipAt(0), "Lock RF and Loop OFF");
  EXPECT_EQ(tipAt(499), "Lock RF and Loop OFF");
  EXPECT_EQ(tipAt(500), "Lock RF and Loop ON ");
  EXPECT_EQ(tipAt(4499), "Auto Phase (Sweep Mode)");
  EXPECT_EQ(tipAt(4500), "");
  EXPECT_EQ(tipAt(1800), "Lock RF ON, Loop OFF");
  EXPECT_EQ(tipAt(-1), "");
}

TEST_F(MainWindow, narrowerThanItsButtonsItSnapsBack) {
  windows().resize(main(), 5199, 7500);
  EXPECT_EQ(main().width(), 5200);
  EXPECT_EQ(main().hsCenter.width(), main().innerWidth()) << "and is laid out";
  windows().resize(main(), 5200, 7500);
  EXPECT_EQ(main().width(), 5200);
}

TEST_F(MainWindow, tooLowForThePlotItGrowsByAHundredAtATime) {
  const float fits = heightFor(100);
  windows().resize(main(), 9000, fits - 350);
  EXPECT_EQ(main().height(), fits + 50);
  EXPECT_EQ(main().Picture1.height(), 150);
}

TEST_F(MainWindow, aLowPlotIsLaidOutButHidden) {
  for (const float plot : {100.0F, 199.0F}) {
    windows().resize(main(), 9000, heightFor(plot));
    EXPECT_EQ(main().Picture1.height(), plot);
    EXPECT_FALSE(main().Picture1.visible()) << plot;
    EXPECT_EQ(main().hsCenter.top(), main().Picture1.top() + plot);
  }
  windows().resize(main(), 9000, heightFor(200));
  EXPECT_TRUE(main().Picture1.visible());
}

TEST_F(MainWindow, theScrollBarLiesUnderThePlotAcrossTheWindow) {
  windows().resize(main(), 12000, 9000);
  EXPECT_EQ(main().Picture1.height(), main().innerHeight() - main().StatusBar1.height() -
                                          main().Toolbar1.height() - main().hsCenter.height());
  EXPECT_EQ(main().hsCenter.width(), main().innerWidth());
  EXPECT_EQ(main().hsCenter.left(), 0);
  EXPECT_EQ(main().hsCenter.top(), main().Picture1.top() + main().Picture1.height());
  EXPECT_EQ(main().StatusBar1.top(), main().hsCenter.top() + main().hsCenter.height());
}

TEST_F(MainWindow, aNewSizeDrawsThePlotAgain) {
  main().Picture1.cls();
  windows().resize(main(), 12000, 9000);
  EXPECT_FALSE(p.canvas().lines.empty());
}

TEST_F(MainWindow, minimisingWithTheLockOffLeavesTheTimerStopped) {
  windows().minimise(main());
  windows().restore(main());
  EXPECT_FALSE(main().Timer1.enabled());
}

TEST_F(MainWindow, minimisingStopsTheTicksUntilTheIdleLoopOrTheRestoredWindowStartsThem) {
  p.press("Lock");
  p.pass(5);
  windows().minimise(main());
  EXPECT_FALSE(main().Timer1.enabled());
  windows().restore(main());
  EXPECT_TRUE(main().Timer1.enabled());
  windows().minimise(main());
  p.pass();
  EXPECT_TRUE(main().Timer1.enabled()) << "the idle loop goes by the mode alone";
}

TEST_F(MainWindow, aResizeStopsTheTimerAndStartsItAgain) {
  p.press("Hold");
  p.pass(5);
  main().Timer1.setEnabled(false);
  windows().resize(main(), 10000, 8000);
  EXPECT_TRUE(main().Timer1.enabled());
  p.press("Off");
  main().Timer1.setEnabled(true);
  windows().resize(main(), 10100, 8000);
  EXPECT_FALSE(main().Timer1.enabled());
}

TEST_F(MainWindow, panelsOpenedFromTheMenuGoAndComeWithIt) {
  p.menu("Controls/NMR Controls");
  p.menu("Controls/Display (Amplitude/Offset)");
  p.press("Auto"); // loads the sweep panel without showing it
  windows().minimise(main());
  EXPECT_FALSE(p.controls().visible());
  EXPECT_FALSE(p.op().form("frmAmpl").visible());
  windows().restore(main());
  EXPECT_TRUE(p.controls().visible());
  EXPECT_TRUE(p.op().form("frmAmpl").visible());
  EXPECT_FALSE(p.op().form("frmSweep").visible());
}

TEST_F(MainWindow, onlyTheMinimisedWindowHasTheLockCommandsInItsSystemMenu) {
  const std::size_t items = windows().systemMenu(main()).size();
  windows().minimise(main());
  EXPECT_TRUE(windows().hooked(main()));
  EXPECT_EQ(windows().systemMenu(main()).size(), items + 4);
  windows().restore(main());
  EXPECT_FALSE(windows().hooked(main()));
  EXPECT_EQ(windows().systemMenu(main()).size(), items);
}

TEST_F(MainWindow, aMinimisedWindowIsUnhookedBeforeItCloses) {
  windows().minimise(main());
  p.expectBox("Save the changes?", Answer::No, [this] { EXPECT_FALSE(windows().hooked(main())); });
  EXPECT_TRUE(p.ends([this] { p.close(); }));
}

class Closing : public MainWindow {
 protected:
  void SetUp() override {
    MainWindow::SetUp();
    p.record().RxGain = 777;
    p.clear();
  }
  std::string savedGain() { return p.setting("Hardware", "RxGain"); }
};

TEST_F(Closing, byTheCloseBoxAsksAndNoSavesNothing) {
  p.expectBox("Save the changes?", Answer::No);
  EXPECT_TRUE(p.ends([this] { p.close(); }));
  EXPECT_EQ(p.boxes(), host::Lines{"box [Save On Exit] Save the changes? (YesNo) -> No"});
  EXPECT_EQ(savedGain(), "1200");
  p.expectCalls({});
}

TEST_F(Closing, byTheCloseBoxAsksAndYesSaves) {
  p.expectBox("Save the changes?", Answer::Yes);
  EXPECT_TRUE(p.ends([this] { p.close(); }));
  EXPECT_EQ(savedGain(), "777");
}

TEST_F(Closing, byQuitNeverSavesNorAsks) {
  EXPECT_TRUE(p.ends([this] { p.menu("File/Quit (no save)"); }));
  EXPECT_EQ(savedGain(), "1200");
  EXPECT_TRUE(p.boxes().empty());
}

TEST_F(Closing, byExitAlwaysSavesAndNeverAsks) {
  EXPECT_TRUE(p.ends([this] { p.menu("File/Exit (save)"); }));
  EXPECT_EQ(savedGain(), "777");
  EXPECT_TRUE(p.boxes().empty());
}

TEST_F(MainWindow, releasingAKeyStartsAStoppedTimerUnlessTheLockIsOff) {
  main().Timer1.setInterval(0);
  main().userKeyUp(headless::keys::PageUp, 0);
  EXPECT_EQ(main().Timer1.interval(), 0);
  p.press("Hold");
  main().Timer1.setInterval(0);
  main().userKeyUp(headless::keys::PageUp, 0);
  EXPECT_EQ(main().Timer1.interval(), 10);
}

TEST_F(MainWindow, theTimerRunsEveryTenMillisecondsInEveryModeButOff) {
  p.tick(5);
  EXPECT_TRUE(p.calls().empty());
  p.press("Hold");
  p.pass(5);
  p.clear();
  p.tick(5);
  EXPECT_EQ(p.calls().size(), 45U);
}

} // namespace
