#include "base/NumberText.h"
#include "core/modConvertStrToFloatVal.h"
#include "ui/mode_model.h"
#include "ui/panels/frmSweep.h"
#include <gtest/gtest.h>
#include <tuple>

namespace {

using namespace host;
using support::ModeModel;
using support::Panel;

constexpr const char* kButtons[] = {"", "Off", "Lock", "Sweep", "Hold", "Auto", "Phase"};

class Modes : public testing::Test {
 protected:
  void prepare(bool testing, int hardware = 0) {
    if (testing) {
      p.set("Hardware", "Testing", "true");
      model.useTestSettings();
    }
    p.host().hardwareState = hardware;
    p.host().words[0] = model.dac;
    p.host().words[6] = 100;
    model.hardwareRuns(hardware);
    p.startUp();
    // Loaded beforehand: the NMR controls tune to the solvent and take its power, which is no part of a mode
    // change.
    p.controls();
    model.frequency = p.record().Frequency;
    model.power = model.powerText = 20;
    p.pass(3);
    p.clear();
  }
  void press(int button) {
    const int clears = p.canvas().clears;
    p.clear();
    p.press(kButtons[button]);
    model.press(button);
    cleared = p.canvas().clears - clears;
  }
  // What was sent and every word of the state, against the model.
  void expectAsTheModelSays() {
    EXPECT_EQ(headless::compareLines(model.calls, p.calls()), "");
    const LockParameters& r = p.record();
    EXPECT_EQ(r.LockMode, model.mode);
    EXPECT_EQ(r.PreviousLockMode, model.previous);
    EXPECT_EQ(r.LockState, model.lockState);
    EXPECT_EQ(r.LockStatus, model.status);
    EXPECT_EQ(p.status(), model.status);
    for (std::size_t k = 0; k < 7; ++k) EXPECT_EQ(r.ModeButtonDown[k], model.down[k]) << "down " << k;
    EXPECT_EQ(r.TxPower, model.power);
    EXPECT_EQ(StrToFloatVal(p.controls().txtTxPwr.text()), model.powerText);
    EXPECT_EQ(r.DeltaTxPwr, model.delta);
    EXPECT_EQ(r.RxFilterIndex, model.option);
    EXPECT_EQ(r.ShowImag, model.showImag);
    EXPECT_EQ(p.main().mnuPrefs(2).checked(), model.imagMark != 0);
    EXPECT_EQ(r.FieldCenter, model.centre);
    EXPECT_EQ(r.FieldCenterNow, model.centre);
    EXPECT_EQ(p.main().txtCenter.text(), base::numberText(model.centre));
    EXPECT_EQ(r.SweepWidth, model.width);
    EXPECT_EQ(r.SweepSpeed, model.speed);
    EXPECT_EQ(r.SweepSpeedNow, model.speed);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(p.main().Label2[i].visible(), model.readouts);
    EXPECT_EQ(p.main().hsCenter.enabled(), model.centreEnabled);
    EXPECT_EQ(cleared > 0, model.redrawn);
    EXPECT_EQ(p.beeps(), model.beeps);
    EXPECT_TRUE(p.main().Picture1.hasFocus());
    const CycleState& cycle = p.program().cycle;
    EXPECT_EQ(cycle.SweepTurnCount, 0);
    EXPECT_EQ(cycle.PeakLevel, 0);
    EXPECT_EQ(p.program().autoLock.NoiseThreshold, 0);
    EXPECT_EQ(p.program().autoLock.AutoLockTrimTicks, 0);
    p.pass(5);
    EXPECT_EQ(p.main().Timer1.enabled(), model.mode != 0);
    EXPECT_EQ(p.main().Timer1.interval(), 10);
  }
  Panel p;
  ModeModel model;
  int cleared = 0;
};

enum class Judged { Fresh, Locked };
struct Change {
  int hardware, from, to;
  bool testing;
  Judged judged;
};

class EveryChange : public Modes, public testing::WithParamInterface<Change> {};

// from 0: straight from the state in which the program found the hardware.
TEST_P(EveryChange, sendsExactlyItsCallsAndLeavesItsState) {
  const Change& change = GetParam();
  prepare(change.testing, change.hardware);
  if (change.from != 0) press(change.from);
  p.pass(5);
  CycleState& cycle = p.program().cycle;
  AutoLockState& autoLock = p.program().autoLock;
  cycle.SweepTurnCount = 1;
  cycle.PeakLevel = 5;
  autoLock.NoiseThreshold = 6;
  autoLock.AutoLockTrimTicks = 7;
  if (change.judged == Judged::Locked) p.record().LockState = kLocked, model.lockState = 2;
  press(change.to);
  EXPECT_EQ(p.main().Toolbar1.pressed(), change.to);
  expectAsTheModelSays();
}

std::vector<Change> everyChange() {
  std::vector<Change> all;
  for (const bool testing : {false, true}) {
    for (int from = 1; from <= 6; ++from)
      for (int to = 1; to <= 6; ++to) {
        all.push_back({0, from, to, testing, Judged::Fresh});
        if (from == 2) all.push_back({0, from, to, testing, Judged::Locked});
      }
    for (const int hardware : {0, 1, 2, 3, 7})
      for (int to = 1; to <= 6; ++to) all.push_back({hardware, 0, to, testing, Judged::Fresh});
  }
  return all;
}

std::string changeName(const testing::TestParamInfo<Change>& info) {
  const Change& c = info.param;
  const std::string from =
      c.from == 0 ? "hardwareState" + std::to_string(c.hardware) : std::string("from") + kButtons[c.from];
  return from + (c.judged == Judged::Locked ? "Locked" : "") + "To" + kButtons[c.to] +
         (c.testing ? "Testing" : "");
}

INSTANTIATE_TEST_SUITE_P(Modes, EveryChange, testing::ValuesIn(everyChange()), changeName);

class StartUp : public Modes, public testing::WithParamInterface<std::tuple<int, bool>> {};

TEST_P(StartUp, takesOverTheHardwaresModeAndDisturbsNothing) {
  const auto [state, testing] = GetParam();
  if (testing) {
    p.set("Hardware", "Testing", "TRUE");
    model.useTestSettings();
  }
  model.hardwareRuns(state);
  p.host().hardwareState = state;
  p.startUp();
  if (state >= 1 && state <= 3)
    p.expectCalls({hardwareState()});
  else
    p.expectCalls({hardwareState(), txPower(20), frequency(46.04475), rxGain(1200)});
  const LockParameters& r = p.record();
  EXPECT_EQ(r.LockMode, model.mode);
  EXPECT_EQ(p.status(), model.status);
  EXPECT_EQ(r.LockState, model.lockState);
  EXPECT_EQ(p.main().Toolbar1.pressed(), model.mode + 1);
  for (std::size_t k = 0; k < 7; ++k) EXPECT_EQ(r.ModeButtonDown[k], model.down[k]) << k;
  EXPECT_EQ(r.TxPower, model.power);
  EXPECT_EQ(r.DeltaTxPwr, model.delta);
  EXPECT_EQ(r.PhaseMilliTurns, model.mode == 0 ? 83 : 0);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(p.main().Label2[i].visible(), model.readouts);
  EXPECT_EQ(p.main().Timer1.enabled(), model.mode != 0);
  p.pass();
  EXPECT_EQ(p.main().Timer1.enabled(), model.mode != 0);
  EXPECT_FALSE(r.Initializing);
}

INSTANTIATE_TEST_SUITE_P(Modes, StartUp, testing::Combine(testing::Values(0, 1, 2, 3, 7), testing::Bool()));

TEST_F(Modes, aButtonOfAnotherKeyDoesOnlyTheCommonEnding) {
  prepare(false);
  p.press("Sweep");
  p.pass(5);
  p.clear();
  p.program().cycle.PeakLevel = 3;
  p.main().Toolbar1_ButtonClick(7);
  p.expectCalls({lockedFlag(0)});
  EXPECT_EQ(p.record().LockMode, kModeSweep);
  EXPECT_EQ(p.record().PreviousLockMode, kModeOff);
  EXPECT_EQ(p.program().cycle.PeakLevel, 0);
}

TEST_F(Modes, aHostThatRefusesTheLockedFlagDoesNotStopTheChange) {
  prepare(false);
  p.host().fail(22);
  press(2);
  expectAsTheModelSays();
}

TEST_F(Modes, aRefusedCommandIsReportedAndTheProgramLives) {
  prepare(false);
  p.host().fail(204);
  p.expectBox("Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error", ports::Answer::Ok);
  p.press("Sweep");
  p.host().failNever();
  p.pass(5);
  p.press("Off");
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.calls().back(), readData().back());
  EXPECT_EQ(p.record().TxPower, 20) << "the offset that the failed sweep added is off again";
}

TEST_F(Modes, aPressThatFailsAtThePowerLeavesTheOffsetAccountedFor) {
  prepare(false);
  p.press("Sweep");
  p.pass(5);
  EXPECT_EQ(p.record().TxPower, 30);
  p.host().fail(28);
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.press("Hold");
  p.host().failNever();
  p.press("Hold");
  EXPECT_EQ(p.record().TxPower, 20) << "taken off once, not twice";
}

TEST_F(Modes, afterALockedLockTheFieldItReachedIsKept) {
  prepare(false);
  p.press("Lock");
  p.record().LockState = kLocked;
  p.host().words[0] = 1002; // 250.5 steps: to even
  p.press("Off");
  EXPECT_EQ(p.record().FieldCenter, 1000);
  p.host().words[0] = 1006;
  p.press("Lock");
  p.record().LockState = kLocked;
  p.press("Hold");
  EXPECT_EQ(p.record().FieldCenter, 1008) << "251.5 steps: to even";
}

TEST_F(Modes, aFieldPastTheBarsEndStillLetsTheLockGo) {
  prepare(false);
  p.press("Lock");
  p.record().LockState = kLocked;
  p.host().words[0] = 200000;
  p.press("Off");
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.record().FieldCenter, 131068);
}

TEST_F(Modes, onlyALockJudgedLockedMovesTheBar) {
  prepare(false);
  p.press("Lock");
  p.press("Off");
  p.press("Off");
  EXPECT_EQ(p.record().FieldCenter, 400);
  EXPECT_EQ(p.record().PreviousLockMode, kModeOff);
}

TEST_F(Modes, everyLockAfterAnAutoLockTakesTheOffsetOff) {
  prepare(false);
  p.press("Auto");
  p.pass(5);
  EXPECT_EQ(p.record().TxPower, 30);
  p.press("Lock");
  EXPECT_EQ(p.record().TxPower, 20);
  p.pass(5);
  p.press("Lock");
  EXPECT_EQ(p.record().TxPower, 10) << "the AutoLock mark stays";
}

TEST_F(Modes, theSweepOffsetGoesToTheHardwareWithTheBarToo) {
  prepare(false);
  p.press("Sweep");
  EXPECT_EQ(p.controls().vsTxPwr.value(), 60);
  p.clear();
  p.pass(2);
  p.expectCalls({txPower(30), sample(model.frequency), mode(2)});
}

TEST_F(Modes, anOffsetThatWasLoweredBeepsAtEveryUse) {
  prepare(false);
  p.typeInto((p.menu("Controls/NMR Controls"), p.controls().txtTxPwr), "60");
  p.pass(5);
  EXPECT_EQ(p.record().DeltaTxPwr, 3.5);
  p.clear();
  p.press("Sweep");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.record().TxPower, 63.5);
  p.pass(5);
  p.clear();
  p.press("Hold");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.record().TxPower, 60);
}

TEST_F(Modes, aPowerPastItsLimitBeepsTakesTheFocusAndIsSentAsItStands) {
  prepare(false);
  p.menu("Controls/NMR Controls");
  p.record().DeltaTxPwr = 50; // as another program may set it
  p.clear();
  p.press("Sweep");
  EXPECT_GE(p.beeps(), 1);
  EXPECT_EQ(p.record().TxPower, 20);
  EXPECT_EQ(p.controls().vsTxPwr.value(), 40);
  EXPECT_EQ(p.calls()[3], txPower(70));
  EXPECT_TRUE(p.controls().txtTxPwr.hasFocus()) << "the plot takes the focus, and the box refuses to be left";
  EXPECT_EQ(p.record().LockMode, kModeSweep) << "the change still completes";
}

TEST_F(Modes, exactlyTheLimitIsAccepted) {
  prepare(false);
  p.record().DeltaTxPwr = 43.5;
  p.press("Sweep");
  EXPECT_EQ(p.beeps(), 0);
  EXPECT_EQ(p.record().TxPower, 63.5);
  p.pass(5);
  p.press("Off");
  EXPECT_EQ(p.record().TxPower, 20);
}

TEST_F(Modes, aPowerThatWouldBecomeNegativeBeeps) {
  prepare(false);
  p.press("Sweep");
  p.pass(5);
  p.record().DeltaTxPwr = 40;
  p.clear();
  p.press("Off");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.controls().txtTxPwr.text(), "-10");
  EXPECT_EQ(p.record().TxPower, 30);
}

TEST_F(Modes, theThresholdsComeFromTheNoiseWord) {
  prepare(false);
  p.host().words[6] = 101; // 10.05
  p.press("Lock");
  EXPECT_EQ(p.program().cycle.LockLevelThreshold, 160);
  EXPECT_EQ(p.program().cycle.LockErrorThreshold, 40);
  p.host().words[6] = -100; // an unsigned word: 65436
  p.press("Lock");
  EXPECT_EQ(p.program().cycle.LockLevelThreshold, 256 * 16);
  EXPECT_EQ(p.program().cycle.LockErrorThreshold, 256 * 4);
  EXPECT_TRUE(p.boxes().empty());
}

TEST_F(Modes, aLowNoiseLevelIsWarnedOfAndLockingGoesOn) {
  prepare(false);
  for (const double noise : {0.0, -65536.0, -70000.0}) {
    p.host().words[6] = noise;
    p.clear();
    p.expectBox("Warning - low noise level", ports::Answer::Ok);
    p.press("Lock");
    EXPECT_EQ(p.boxes(), Lines{"box [Vantrel Lock] Warning - low noise level (Ok, Exclamation) -> Ok"});
    EXPECT_EQ(p.program().cycle.LockLevelThreshold, 16);
    EXPECT_EQ(p.program().cycle.LockErrorThreshold, 4);
    EXPECT_EQ(p.calls().back(), mode(1));
  }
}

TEST_F(Modes, theWarningComesBeforeTheLoopConstants) {
  prepare(false);
  p.host().words[6] = 0;
  p.expectBox("Warning - low noise level", ports::Answer::Ok,
              [this] { EXPECT_EQ(p.calls().back(), field(400)); });
  p.press("Lock");
}

TEST_F(Modes, duringStartUpNothingIsSentPastThePower) {
  for (const auto& [button, filter] : {std::pair{"Lock", 20.0}, {"Sweep", 500.0}, {"Hold", 20.0}}) {
    Panel q;
    q.started();
    q.controls();
    q.clear();
    q.host().words[6] = 100;
    q.record().Initializing = kTrue;
    q.record().LockState = kLocked;
    q.program().cycle.PeakLevel = 9;
    q.press(button);
    const double power = button == std::string("Sweep") ? 30 : 20;
    q.expectCalls({lockedFlag(0), rxFilter(filter), rxFilter(filter), txPower(power)});
    EXPECT_EQ(q.program().cycle.PeakLevel, 9) << "no common ending";
    EXPECT_EQ(q.main().Toolbar1.pressed(), q.record().LockMode + 1);
    EXPECT_NE(q.record().LockMode, kModeOff);
  }
}

TEST_F(Modes, autoWithoutSolventDefaultsKeepsGainAndPower) {
  p.set("AutoLock", "UseDefaultTxRx", "False");
  prepare(false);
  p.controls().vsRxGain.setValue(3000);
  p.press("Auto");
  EXPECT_EQ(p.record().RxGain, 3000);
  EXPECT_EQ(p.record().TxPower, 20);
}

TEST_F(Modes, autoTakesTheChosenSolventsDefaults) {
  p.set("Hardware", "LockSolvent", "D2O");
  prepare(false);
  p.controls().vsRxGain.setValue(3000);
  p.controls().vsTxPwr.setValue(11);
  p.press("Auto");
  EXPECT_EQ(p.record().RxGain, 800);
  EXPECT_EQ(p.record().TxPower, 40) << "D2O's 30 and the offset";
  EXPECT_EQ(p.controls().vsTxPwr.value(), 80);
  EXPECT_EQ(p.program().frmSweep->cmbSweepSpeed.text(), "32768");
  EXPECT_EQ(p.program().frmSweep->cmbSweepWidth.text(), "16384");
}

TEST_F(Modes, autoBeginsWithTheRecordsPhaseAndTheLargestStep) {
  prepare(false);
  AutoLockState& state = p.program().autoLock;
  for (const char* button : {"Auto", "Phase"}) {
    state.AutoLockTrim = state.AutoLockTrimDone = kTrue;
    state.PhaseSetting = 1, state.PhaseStep = 2, state.AutoLockStep = 4;
    state.DownPhaseWord = 7, state.PrevPhaseDiff = 8, state.PhaseRepeatCount = 3;
    p.press(button);
    EXPECT_EQ(state.PhaseSetting, 30);
    EXPECT_EQ(state.PhaseStep, 45);
    EXPECT_EQ(state.AutoLockStep, 0);
    EXPECT_EQ(state.AutoLockTrim, kFalse);
    EXPECT_EQ(state.DownPhaseWord, 0) << "an earlier run's words are not compared with this one's";
    EXPECT_EQ(state.PhaseRepeatCount, 0);
  }
}

TEST_F(Modes, everyOtherButtonEndsTheGainTrim) {
  prepare(false);
  for (const char* button : {"Off", "Sweep", "Hold", "Auto", "Phase"}) {
    p.press("Lock");
    p.program().autoLock.AutoLockTrim = kTrue;
    p.press(button);
    EXPECT_EQ(p.program().autoLock.AutoLockTrim, kFalse) << button;
  }
  p.program().autoLock.AutoLockTrim = kTrue;
  p.press("Lock");
  EXPECT_EQ(p.program().autoLock.AutoLockTrim, kTrue) << "Lock carries it on";
}

TEST_F(Modes, noTickStartsBeforeTheChangeIsComplete) {
  prepare(false);
  p.host().delay = 20 * headless::kMillisecond;
  p.host().words[3] = 1e6; // would be judged locked
  for (const char* button : {"Lock", "Sweep", "Hold", "Auto", "Phase"}) {
    p.pass(5);
    p.record().LockState = kSearching;
    p.clear();
    p.press(button);
    const Lines calls = p.calls();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), lockedFlag(-1)), 0) << button;
    const auto reads = std::count(calls.begin(), calls.end(), readData()[3]);
    EXPECT_EQ(reads, button == std::string("Lock") ? 2 : 1) << button;
  }
}

TEST_F(Modes, aHeldThresholdKeyDoesNotStopTheNextModesTicks) {
  prepare(false);
  p.press("Auto");
  p.pass(5);
  p.program().autoLock.ThresholdShown = true;
  p.main().userKeyDown(headless::keys::PageUp, 0);
  EXPECT_EQ(p.main().Timer1.interval(), 0);
  p.press("Off");
  p.main().userKeyUp(headless::keys::PageUp, 0);
  p.press("Hold");
  p.pass(5);
  EXPECT_TRUE(p.main().Timer1.running());
}

TEST_F(Modes, aFilterIndexOutsideTheTableIsASubscriptError) {
  prepare(false);
  p.controls();
  p.record().RxFilterIndex = 6;
  p.expectBox("Run-time error '9':\r\n\r\nSubscript out of range\r\n\r\nRxFilterIndex", ports::Answer::Ok);
  p.press("Phase");
}

} // namespace
