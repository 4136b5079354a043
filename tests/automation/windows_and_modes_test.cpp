// The members that press mode buttons, show and hide windows, and end the program.
#include "automation/Members.h"
#include "support/Panel.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"

using controls::WindowState;
using support::Panel;

namespace {

struct Automation : testing::Test {
  Panel panel;
  Program& program = panel.program();
  NMRLock lock{program};
  void openAllPanels() {
    program.frmControls->show();
    program.frmAmpl->show();
    program.frmSweep->show();
    program.frmTuning->show();
  }
  // What the program does to windows from now on, in order, each with whether the display ticks then.
  std::vector<std::string>& watchWindows() {
    panel.platform.windows().watchForm = [this](controls::Form& form, controls::Aspect aspect) {
      std::string what;
      if (aspect == controls::Aspect::Visible) what = form.visible() ? " shown" : " hidden";
      if (aspect == controls::Aspect::State)
        what = form.windowState() == WindowState::Minimised ? " minimised" : " restored";
      if (!what.empty())
        seen.push_back(form.name() + what + (panel.main().Timer1.enabled() ? ", ticking" : ""));
    };
    return seen;
  }
  std::vector<std::string> seen;
  // The changed power goes out first, then the display ticks.
  void sweepIsShown() {
    panel.pass(3);
    ASSERT_TRUE(panel.main().Timer1.enabled());
  }
  std::string visiblePanels() {
    std::string names;
    for (controls::Form* form : program.desktop.forms())
      if (form->visible()) names += form->name() + " ";
    return names;
  }
};

struct Modes : Automation {
  Modes() { panel.started(); }
};
struct Windows : Automation {
  Windows() { panel.started(); }
};
using WithoutWindow = Automation;

// Presses a button through the member and through the operator on two equal panels.
struct ModePair {
  int number;
  const char* button;
};
class EveryMode : public testing::TestWithParam<ModePair> {};

} // namespace

TEST_P(EveryMode, memberDoesWhatTheOperatorsClickDoes) {
  Panel byMember, byHand;
  for (Panel* panel : {&byMember, &byHand}) {
    panel->started();
    panel->host().words[6] = 400;
    panel->press("Sweep");
    panel->clear();
  }
  NMRLock lock(byMember.program());
  automation::kMembers[static_cast<std::size_t>(GetParam().number - 1)].run(lock, {});
  byHand.press(GetParam().button);
  EXPECT_EQ(headless::compareLines(byHand.calls(), byMember.calls()), "");
  EXPECT_FALSE(byMember.calls().empty());
  EXPECT_EQ(byMember.main().Toolbar1.pressed(), byHand.main().Toolbar1.pressed());
  EXPECT_EQ(byMember.record().LockMode, byHand.record().LockMode);
  EXPECT_EQ(lock.GetLockState(), NMRLock(byHand.program()).GetLockState());
}

INSTANTIATE_TEST_SUITE_P(Modes, EveryMode,
                         testing::Values(ModePair{22, "Lock"}, ModePair{23, "Phase"}, ModePair{24, "Auto"},
                                         ModePair{25, "Hold"}, ModePair{26, "Sweep"}, ModePair{27, "Off"}),
                         [](const auto& mode) { return std::string(mode.param.button); });

TEST_F(Modes, areTheButtonsOfTheirNames) {
  panel.host().words[6] = 400;
  const std::pair<void (NMRLock::*)(), int> cases[] = {
      {&NMRLock::StartSweep, 3},    {&NMRLock::StartLock, 2},      {&NMRLock::StartHold, 4},
      {&NMRLock::StartAutoLock, 5}, {&NMRLock::StartAutoPhase, 6}, {&NMRLock::StopLock, 1}};
  const std::int16_t modes[] = {kModeSweep, kModeLock, kModeHold, kModeAuto, kModePhase, kModeOff};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    (lock.*cases[i].first)();
    EXPECT_EQ(panel.main().Toolbar1.pressed(), cases[i].second);
    EXPECT_EQ(panel.record().LockMode, modes[i]);
  }
}

TEST_F(Modes, lockReadsJustEnteredThenLocked) {
  panel.host().words = {0, 900, 10, 900, 10, 0, 400, 0, 0};
  lock.StartLock();
  EXPECT_EQ(lock.GetLockState(), 1);
  panel.tick();
  EXPECT_EQ(lock.GetLockState(), 513);
  lock.StopLock();
  EXPECT_EQ(lock.GetLockState(), -256);
}

TEST_F(Modes, failAsTheHostFails) {
  panel.host().fail(31, static_cast<std::int32_t>(0x80010108));
  try {
    lock.StartSweep();
    ADD_FAILURE() << "no error";
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.number, static_cast<std::int32_t>(0x80010108));
  }
  EXPECT_EQ(panel.record().LockMode, kModeSweep); // as far as it got
  EXPECT_TRUE(panel.boxes().empty());             // told to the client, not to the operator
}

TEST_F(Windows, closedInsideACallThatWorksWithThemLiveUntilTheCallIsDone) {
  program.frmControls->show();
  bool closed = false;
  panel.host().pumpInside = [&] {
    if (closed) return;
    closed = true;
    program.frmControls.unload();
    program.doEvents();
  };
  EXPECT_NO_THROW(lock.putLockSolventText("D2O"));
  EXPECT_TRUE(closed);
  EXPECT_EQ(lock.LockSolventText(), "D2O");
}

TEST_F(Windows, showBringsTheMainWindowAndTheOpenPanels) {
  openAllPanels();
  lock.HideWindows();
  EXPECT_EQ(visiblePanels(), "");
  lock.ShowLockWindow();
  for (const char* name : {"frmLock ", "frmControls ", "frmAmpl ", "frmSweep ", "frmTuning "})
    EXPECT_NE(visiblePanels().find(name), std::string::npos) << name;
}

TEST_F(Windows, areHiddenShownAndMinimisedInTheirOrder) {
  using Lines = std::vector<std::string>;
  panel.host().words[6] = 400;
  lock.StartSweep();
  openAllPanels();
  sweepIsShown();
  watchWindows();
  lock.HideWindows();
  EXPECT_EQ(seen, (Lines{"frmLock hidden", "frmAmpl hidden", "frmControls hidden", "frmSweep hidden",
                         "frmTuning hidden"}));
  seen.clear();
  lock.ShowLockWindow();
  EXPECT_EQ(seen, (Lines{"frmLock shown", "frmControls shown", "frmAmpl shown", "frmSweep shown",
                         "frmTuning shown"}));
  EXPECT_TRUE(panel.main().Timer1.enabled());
  seen.clear();
  lock.MinimizeLockWindow();
  EXPECT_EQ(seen, (Lines{"frmLock minimised", "frmControls hidden", "frmAmpl hidden", "frmSweep hidden",
                         "frmTuning hidden"}));
  seen.clear();
  lock.HideWindows();
  EXPECT_EQ(seen, Lines{"frmLock hidden"}); // the panels are hidden already
}

TEST_F(Windows, showAfterHideBringsBackOnlyThePanelsThatAreOpen) {
  panel.program().frmControls.unload();
  panel.program().frmSweep.unload();
  program.frmAmpl->show();
  program.frmTuning->show();
  program.frmTuning.unload();
  const std::string before = visiblePanels();
  lock.HideWindows();
  lock.ShowLockWindow();
  EXPECT_EQ(visiblePanels(), before);
  EXPECT_FALSE(program.frmTuning.loaded());
}

TEST_F(Windows, showStartsTheTimerUnlessOff) {
  lock.ShowLockWindow();
  EXPECT_FALSE(panel.main().Timer1.enabled());
  panel.host().words[6] = 400;
  lock.StartSweep();
  sweepIsShown();
  lock.HideWindows();
  EXPECT_FALSE(panel.main().Timer1.enabled());
  lock.ShowLockWindow();
  EXPECT_TRUE(panel.main().Timer1.enabled());
}

TEST_F(Windows, showOfAMinimisedWindowLeavesTheTimerStopped) {
  lock.StartSweep();
  lock.MinimizeLockWindow();
  lock.ShowLockWindow();
  EXPECT_EQ(panel.main().windowState(), WindowState::Minimised);
  EXPECT_FALSE(panel.main().Timer1.enabled());
}

TEST_F(Windows, showIgnoresItsArgument) {
  const automation::Member& show = automation::kMembers[1];
  lock.HideWindows();
  show.run(lock, {});
  EXPECT_TRUE(panel.main().visible());
  lock.HideWindows();
  show.run(lock, std::int32_t{1});
  EXPECT_TRUE(panel.main().visible());
  EXPECT_FALSE(panel.main().isModal());
}

TEST_F(Windows, hideKeepsTheOpenFlags) {
  openAllPanels();
  lock.HideWindows();
  EXPECT_EQ(program.panels.ControlsOpen, kTrue);
  EXPECT_EQ(program.panels.AmplOpen, kTrue);
  EXPECT_EQ(program.panels.SweepOpen, kTrue);
  EXPECT_EQ(program.panels.TuningOpen, kTrue);
}

TEST_F(Windows, hideLoadsNoPanel) {
  program.frmAmpl.unload();
  program.frmTuning.unload();
  lock.HideWindows();
  EXPECT_FALSE(program.frmAmpl.loaded());
  EXPECT_FALSE(program.frmTuning.loaded());
}

TEST_F(Windows, minimiseHidesTheOpenPanelsAndStopsTheTimer) {
  panel.host().words[6] = 400;
  lock.StartSweep();
  openAllPanels();
  sweepIsShown();
  lock.MinimizeLockWindow();
  EXPECT_EQ(panel.main().windowState(), WindowState::Minimised);
  EXPECT_FALSE(panel.main().Timer1.enabled());
  EXPECT_EQ(visiblePanels(), "frmLock ");
  EXPECT_EQ(program.panels.ControlsOpen, kTrue);
  EXPECT_EQ(program.panels.TuningOpen, kTrue);
}

TEST_F(Windows, theHandleIsTheMainWindows) {
  EXPECT_EQ(lock.hWndLockWindow(),
            static_cast<std::int32_t>(panel.platform.windows().nativeHandle(panel.main())));
}

TEST_F(WithoutWindow, showMakesThePanelAppear) {
  panel.platform.command = "VantrelLock.exe -Embedding /NoWindow";
  panel.started();
  EXPECT_FALSE(panel.main().visible());
  lock.ShowLockWindow();
  EXPECT_TRUE(panel.main().visible());
}

TEST_F(Automation, exitEndsAtOnceAndSavesNothing) {
  panel.started();
  const std::string settings = panel.settingsText();
  lock.putLockNMRPhase(99);
  EXPECT_TRUE(panel.ends([&] { lock.ExitLockApp(); }));
  EXPECT_TRUE(panel.platform.ended());
  EXPECT_EQ(panel.settingsText(), settings);
  EXPECT_TRUE(panel.boxes().empty());
  panel.expectCalls({});
}
