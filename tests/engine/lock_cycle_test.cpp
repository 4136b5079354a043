#include "base/RuntimeError.h"
#include "engine/cycle_bench.h"
#include "ui/panels/frmLevel.h"
#include <gtest/gtest.h>

namespace {

class LockCycleTick : public support::CycleBench {};
using Line = headless::RecordingCanvas::Line;

constexpr auto kRed = controls::rgb(255, 64, 64), kGreen = controls::rgb(0, 255, 0),
               kBlue = controls::rgb(128, 128, 255);

TEST_F(LockCycleTick, readsNineWordsAndShowsThreeOfThem) {
  words(1200, -34, 56);
  record().LockStatus = "any status";
  tick();
  p.expectCalls({host::readData()});
  EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:1200");
  EXPECT_EQ(p.main().StatusBar1.text(2), "Lvl:-34");
  EXPECT_EQ(p.main().StatusBar1.text(3), "Err:56");
  EXPECT_EQ(p.main().StatusBar1.text(4), "any status");
}

TEST_F(LockCycleTick, givesThePumpATurnBeforeAndAfterEveryWord) {
  std::vector<std::size_t> callsAtYield;
  for (std::uint64_t k = 1; k <= 19; ++k)
    p.platform.pump().atYield(k, [&] { callsAtYield.push_back(p.calls().size()); });
  const std::uint64_t before = p.platform.pump().yields();
  tick();
  EXPECT_EQ(p.platform.pump().yields() - before, 19U);
  std::vector<std::size_t> expected;
  for (std::size_t k = 1; k <= 19; ++k) expected.push_back((k - 1) / 2);
  EXPECT_EQ(callsAtYield, expected);
}

TEST_F(LockCycleTick, theTimerGivesThePumpATurnBeforeAndAfterTheCycle) {
  record().LockMode = kModeHold;
  p.main().Timer1.setEnabled(true);
  const std::uint64_t before = p.platform.pump().yields();
  p.main().Timer1.fire();
  EXPECT_EQ(p.platform.pump().yields() - before, 21U);
  EXPECT_EQ(p.main().Timer1.interval(), 10);
}

TEST_F(LockCycleTick, aDacOfMinusOneSkipsEverythingAfterTheRead) {
  record().LockMode = kModeLock;
  record().LockStatus = "HOLD";
  record().LockState = kJustEntered;
  p.main().showStatus();
  plainPlot();
  words(-1, 77, 88);
  tick();
  p.expectCalls({host::readData()});
  EXPECT_EQ(p.main().StatusBar1.text(1), "00000 ");
  EXPECT_EQ(p.status(), "HOLD");
  EXPECT_EQ(record().LockState, kJustEntered);
  EXPECT_TRUE(lines().empty());
  EXPECT_EQ(cursor().previousX, 0);
  EXPECT_EQ(cursor().previousLevel, 0);
}

TEST_F(LockCycleTick, wordsThatFailAreZero) {
  words(100, 20, 30);
  p.host().fail(201);
  tick();
  EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:0");
  EXPECT_EQ(p.main().StatusBar1.text(2), "Lvl:0");
  EXPECT_EQ(p.main().StatusBar1.text(3), "Err:0");
}

TEST_F(LockCycleTick, oneWordThatFailsIsZeroAndTheOthersAreRead) {
  words(100, 20, 30);
  p.host().answer = [](int dispid, std::span<const ports::HostArg> args) -> std::optional<double> {
    if (dispid == 201 && args[0].value == 1) throw base::RuntimeError(-2147352567, "Automation error");
    return std::nullopt;
  };
  tick();
  p.expectCalls({host::readData()});
  EXPECT_EQ(p.main().StatusBar1.text(2), "Lvl:0");
  EXPECT_EQ(p.main().StatusBar1.text(3), "Err:30");
}

TEST_F(LockCycleTick, wordsAreRoundedHalvesToEven) {
  words(2.5, 3.5, -0.5);
  tick();
  EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:2");
  EXPECT_EQ(p.main().StatusBar1.text(2), "Lvl:4");
  EXPECT_EQ(p.main().StatusBar1.text(3), "Err:0");
}

class Judging : public support::CycleBench {
 protected:
  void SetUp() override {
    CycleBench::SetUp();
    record().LockMode = kModeLock;
    cycle().LockLevelThreshold = 160;
    cycle().LockErrorThreshold = 40;
    word(0, 5);
  }
  void judge(double level, double error) {
    word(3, level);
    word(4, error);
    p.clear();
    tick();
  }
  void expectLocked() {
    p.expectCalls({host::readData(), host::lockedFlag(-1)});
    EXPECT_EQ(p.status(), "LOCKED");
    EXPECT_EQ(record().LockState, kLocked);
  }
  void expectSearching() {
    p.expectCalls({host::readData(), host::lockedFlag(0)});
    EXPECT_EQ(p.status(), "SEARCHING...");
    EXPECT_EQ(record().LockState, kSearching);
  }
};

TEST_F(Judging, aHighLevelWithASmallErrorIsLocked) {
  judge(161, 39);
  expectLocked();
  judge(161, -39);
  expectLocked();
}

TEST_F(Judging, anErrorEqualToItsThresholdIsSearching) {
  judge(161, 40);
  expectSearching();
  judge(161, -40);
  expectSearching();
}

TEST_F(Judging, aLevelEqualToItsThresholdIsSearching) {
  judge(160, 0);
  expectSearching();
}

TEST_F(Judging, theMostNegativeErrorIsSearching) {
  judge(1000, -2147483648.0);
  expectSearching();
}

TEST_F(Judging, aHostThatRefusesTheFlagChangesNothing) {
  p.host().fail(22);
  judge(161, 39);
  expectLocked();
}

TEST_F(Judging, onlyLockModeJudges) {
  for (const std::int16_t mode : {kModeOff, kModeSweep, kModeHold, kModeAuto, kModePhase}) {
    record().LockMode = mode;
    record().LockState = kNotInLock;
    judge(161, 39);
    p.expectCalls({host::readData()});
    EXPECT_EQ(record().LockState, kNotInLock) << mode;
  }
}

class TimeTrace : public support::CycleBench, public testing::WithParamInterface<std::int16_t> {};

TEST_P(TimeTrace, runsRightThenBackOverItselfAndClearsOnlyAtTheLeftEdge) {
  record().LockMode = GetParam();
  plainPlot();
  const int clears = p.canvas().clears;
  tick(100);
  EXPECT_EQ(cursor().x, 1000) << "ten units a tick";
  EXPECT_EQ(cursor().direction, 1) << "the edge itself is not beyond it";
  tick();
  EXPECT_EQ(cursor().x, 1000);
  EXPECT_EQ(cursor().direction, -1);
  tick();
  EXPECT_EQ(cursor().x, 990);
  tick(99);
  EXPECT_EQ(cursor().x, 0);
  EXPECT_EQ(cursor().direction, -1);
  EXPECT_EQ(p.canvas().clears, clears) << "nothing is cleared on the way";
  tick();
  EXPECT_EQ(cursor().x, 0);
  EXPECT_EQ(cursor().direction, 1);
  EXPECT_EQ(p.canvas().clears, clears + 1);
  EXPECT_GT(lines().size(), 18U) << "with a new grid";
  tick();
  EXPECT_EQ(cursor().x, 10);
}

INSTANTIATE_TEST_SUITE_P(InLockAndHold, TimeTrace, testing::Values(kModeLock, kModeHold));

TEST_F(LockCycleTick, offStandsAtZeroAndStillShowsAndDraws) {
  plainPlot();
  words(700, 31, 1);
  cursor().previousX = 350;
  tick();
  EXPECT_EQ(cursor().x, 0);
  EXPECT_TRUE(lines().empty()) << "a jump";
  tick();
  ASSERT_EQ(lines().size(), 1U);
  EXPECT_EQ(lines()[0].x2, 0);
  EXPECT_EQ(lines()[0].y2, 31);
  EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:700");
  EXPECT_EQ(record().LockState, kNotInLock);
}

TEST_F(LockCycleTick, theAutomaticModesAndSweepFollowTheField) {
  for (const std::int16_t mode : {kModeSweep, kModeAuto, kModePhase}) {
    record().LockMode = mode;
    words(1000 + mode, 0, 0);
    tick();
    EXPECT_EQ(cursor().x, 1000 + mode);
    EXPECT_EQ(cursor().previousX, 1000 + mode);
  }
}

TEST_F(LockCycleTick, aJumpOfATenthOfTheWidthIsNotDrawnAndOneBelowIs) {
  record().LockMode = kModeSweep;
  cycle().SweepRising = 1;
  plainPlot();
  words(100, 0, 0);
  tick();
  EXPECT_TRUE(lines().empty()) << "100 of 1000";
  EXPECT_EQ(cursor().previousX, 100) << "the cursor moves all the same";
  words(199, 0, 0);
  tick();
  EXPECT_EQ(lines().size(), 1U) << "99 of 1000";
  forgetLines();
  words(299, 0, 0);
  tick();
  EXPECT_TRUE(lines().empty());
}

TEST_F(LockCycleTick, drawsEachShownTraceFromTheLastWordsInItsColour) {
  record().LockMode = kModeSweep;
  cycle().SweepRising = 1;
  record().ShowReal = record().ShowImag = record().ShowMagnitude = kTrue;
  plainPlot();
  picture().setDrawWidth(2);
  words(10, 30, -40);
  tick();
  words(20, 6, 8);
  tick();
  const controls::Scale scale{0, 500, 1000, -1000};
  const std::vector<Line> expected{{scale, 0, 0, 10, 30, 1, kRed},     {scale, 0, 0, 10, -40, 1, kGreen},
                                   {scale, 0, 0, 10, 50, 1, kBlue},    {scale, 10, 30, 20, 6, 1, kRed},
                                   {scale, 10, -40, 20, 8, 1, kGreen}, {scale, 10, 50, 20, 10, 1, kBlue}};
  EXPECT_EQ(lines(), expected);
}

TEST_F(LockCycleTick, hiddenTracesAreNotDrawn) {
  record().LockMode = kModeSweep;
  cycle().SweepRising = 1;
  plainPlot();
  const auto coloursDrawn = [&](int dac) {
    forgetLines();
    words(dac, 1, 1);
    tick();
    std::vector<controls::Colour> colours;
    for (const Line& line : lines()) colours.push_back(line.colour);
    return colours;
  };
  record().ShowReal = kTrue, record().ShowImag = kFalse;
  EXPECT_EQ(coloursDrawn(10), std::vector{kRed});
  record().ShowReal = kFalse, record().ShowImag = kTrue;
  EXPECT_EQ(coloursDrawn(20), std::vector{kGreen});
  record().ShowImag = kFalse, record().ShowMagnitude = kTrue;
  EXPECT_EQ(coloursDrawn(30), std::vector{kBlue});
  picture().setVisible(false);
  EXPECT_TRUE(coloursDrawn(40).empty());
  EXPECT_EQ(cursor().previousX, 40) << "a hidden plot keeps the trace going";
}

TEST_F(LockCycleTick, theMagnitudeIsRounded) {
  words(3, 1, 2); // sqrt 5 = 2.24
  tick();
  EXPECT_EQ(cursor().previousMagnitude, 2);
  words(3, 30000, 40000);
  tick();
  EXPECT_EQ(cursor().previousMagnitude, 50000);
  words(3, 60000, 80000); // the squares need more than 32 bits
  tick();
  EXPECT_EQ(cursor().previousMagnitude, 100000);
}

TEST_F(LockCycleTick, thePlotIsClearedAtUpwardTurnsOnly) {
  for (const std::int16_t mode : {kModeSweep, kModeAuto, kModePhase}) {
    record().LockMode = mode;
    cycle().SweepRising = 0;
    cursor().lastDac = 0;
    plainPlot();
    std::vector<int> clearedAt;
    for (const int dac : {-5, 10, 20, 15, 15, 10, 11, 12}) {
      const int before = p.canvas().clears;
      words(dac, 0, 0);
      tick();
      if (p.canvas().clears != before) clearedAt.push_back(dac);
    }
    EXPECT_EQ(clearedAt, (std::vector<int>{10, 11})) << "mode " << mode;
  }
}

TEST_F(LockCycleTick, aSweepTurnIsAChangeOfDirection) {
  const auto turned = [&](int dac) { return vbLock_mod::DetectSweepTurn(program(), dac); };
  cycle().SweepRising = 0;
  cursor().lastDac = 0;
  EXPECT_FALSE(turned(-1));
  EXPECT_TRUE(turned(0));
  EXPECT_EQ(cycle().SweepRising, 1);
  EXPECT_FALSE(turned(0)) << "equal values never turn";
  EXPECT_FALSE(turned(5));
  EXPECT_FALSE(turned(5));
  EXPECT_TRUE(turned(4));
  EXPECT_EQ(cycle().SweepRising, 0);
  EXPECT_FALSE(turned(4));
  EXPECT_EQ(cursor().lastDac, 4);
}

class AutomaticTurns : public support::CycleBench {
 protected:
  void SetUp() override {
    CycleBench::SetUp();
    record().LockMode = kModeAuto;
    automatic().AutoLockStep = 2; // on the way down it only remembers the magnitude
    cycle().SweepRising = 1;
    cursor().lastDac = 100;
    word(4, 16);
    word(5, 2);
  }
  void turnDown() {
    turnTo(0);
    words(0, 0, 0);
    tick();
  }
};

TEST_F(AutomaticTurns, theFirstTurnAfterEnteringOnlyArms) {
  turnDown();
  EXPECT_EQ(cycle().SweepTurnCount, 1);
  EXPECT_EQ(cycle().PeakPower, 0);
  EXPECT_EQ(automatic().downPeakMagnitude, 0);
  turnDown();
  EXPECT_EQ(cycle().SweepTurnCount, 1);
  EXPECT_DOUBLE_EQ(automatic().downPeakMagnitude, std::sqrt(2 * 65536 + 16));
  automatic().downPeakMagnitude = 0;
  turnDown();
  EXPECT_NE(automatic().downPeakMagnitude, 0) << "every later turn runs a step";
}

TEST_F(AutomaticTurns, noStepRunsBetweenTheTurns) {
  cycle().SweepTurnCount = 1;
  cycle().SweepRising = 0;
  cursor().lastDac = 100;
  words(50, 0, 0);
  tick(3);
  EXPECT_EQ(automatic().downPeakMagnitude, 0);
  EXPECT_EQ(cycle().PeakPower, 0);
}

TEST_F(AutomaticTurns, thePeakPowerIsMadeOfTwoUnsignedHalves) {
  cycle().SweepTurnCount = 1;
  word(4, -1);
  word(5, 3);
  turnDown();
  EXPECT_EQ(cycle().PeakPower, 3 * 65536 + 65535);
  word(4, 65536 + 7);
  word(5, -65536 + 1);
  turnDown();
  EXPECT_EQ(cycle().PeakPower, 65536 + 7);
  word(4, 65535);
  word(5, 32767);
  turnDown();
  EXPECT_EQ(cycle().PeakPower, 2147483647);
}

TEST_F(AutomaticTurns, keepsLevelAndPhaseWordAlsoWithoutAPeakButRunsNoStep) {
  cycle().SweepTurnCount = 1;
  automatic().downPeakMagnitude = 5;
  word(3, 321);
  word(4, 0);
  word(5, 65536);
  word(7, -12);
  turnDown();
  EXPECT_EQ(cycle().PeakPower, 0);
  EXPECT_EQ(cycle().PeakLevel, 321);
  EXPECT_EQ(cycle().PeakPhaseWord, -12);
  EXPECT_EQ(automatic().downPeakMagnitude, 5) << "the step was skipped";
}

TEST_F(AutomaticTurns, aPeakPowerPast31BitsIsReportedAndTheNextTickRuns) {
  for (const std::int16_t mode : {kModeAuto, kModePhase}) {
    record().LockMode = mode;
    cycle().SweepTurnCount = 1;
    p.main().Timer1.setEnabled(true);
    word(4, 0);
    word(5, 32768);
    turnTo(0);
    words(-5, 0, 0);
    p.expectBox("Run-time error '6':\r\n\r\nOverflow", ports::Answer::Ok);
    p.main().Timer1.fire();
    EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:-5");
    words(-6, 0, 0);
    p.main().Timer1.fire();
    EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:-6");
  }
}

TEST_F(AutomaticTurns, phaseModeArmsLikewise) {
  record().LockMode = kModePhase;
  word(7, 25);
  turnDown();
  EXPECT_EQ(cycle().SweepTurnCount, 1);
  EXPECT_EQ(automatic().DownPhaseWord, 0);
  turnDown();
  EXPECT_EQ(cycle().SweepTurnCount, 1);
  EXPECT_EQ(automatic().DownPhaseWord, 25);
  automatic().DownPhaseWord = 0;
  word(4, 0);
  word(5, 0);
  turnDown();
  EXPECT_EQ(automatic().DownPhaseWord, 0) << "no peak, no step";
}

TEST_F(LockCycleTick, theLevelMeterShowsARunningAverage) {
  record().DisplayFilter = 4;
  p.menu("Preferences/Show Lock Level");
  frmLevel& meter = program().frmLevel.get();
  words(5, 100, 0);
  tick();
  EXPECT_EQ(cursor().levelAverage, 25);
  EXPECT_EQ(meter.txtLockLevel.text(), "25");
  tick();
  EXPECT_EQ(meter.txtLockLevel.text(), "44") << "(3 x 25 + 100) / 4 = 43.75";
  words(5, 94, 0);
  tick();
  EXPECT_EQ(meter.txtLockLevel.text(), "56") << "56.5 to even";
  meter.hide();
  tick();
  EXPECT_EQ(cursor().levelAverage, 56) << "a hidden meter is not fed";
}

TEST_F(LockCycleTick, aClosedLevelMeterStaysClosed) {
  words(5, 100, 0);
  tick();
  EXPECT_EQ(program().frmLevel.ifLoaded(), nullptr);
  EXPECT_EQ(cursor().levelAverage, 0);
}

} // namespace
