#include "engine/cycle_bench.h"
#include <gtest/gtest.h>

namespace {

using namespace host;
constexpr const char* kQuestion = "It seems in phase, Continue anyway?";

class Phasing : public support::CycleBench {
 protected:
  void SetUp() override {
    CycleBench::SetUp();
    record().LockMode = kModeAuto; // inside AutoLock nobody is asked
    automatic().PhaseSetting = 30;
    automatic().PhaseStep = 45;
    p.controls();
    p.clear();
  }
  bool down(int phaseWord, double magnitude = 2000) {
    cycle().SweepRising = 0;
    return AutoLock::AutoPhaseStep(program(), phaseWord, magnitude);
  }
  bool up(int phaseWord, double magnitude = 2000) {
    cycle().SweepRising = 1;
    return AutoLock::AutoPhaseStep(program(), phaseWord, magnitude);
  }
  // One pair of half sweeps whose words differ by this much; the threshold is 100.
  bool pair(int difference) {
    EXPECT_FALSE(down(10000));
    return up(10000 - difference);
  }
  float phase() { return automatic().PhaseSetting; }
};

TEST_F(Phasing, theWayDownRemembersWordAndMagnitude) {
  EXPECT_FALSE(down(77, 1500));
  EXPECT_EQ(automatic().DownPhaseWord, 77);
  EXPECT_EQ(automatic().downPhaseMagnitude, 1500);
  EXPECT_EQ(phase(), 30);
  p.expectCalls({});
}

TEST_F(Phasing, aNegativeWordOnTheWayDownTurnsTheSignalOver) {
  automatic().PhaseSetting = 0.5F;
  EXPECT_FALSE(down(-1));
  EXPECT_EQ(phase(), -179.5F);
  EXPECT_EQ(p.controls().vsPhase.value(), -180) << "rounded, halves to even";
  p.expectCalls({sample(record().Frequency), mode(5)});
  automatic().PhaseSetting = 0;
  down(-1);
  EXPECT_EQ(phase(), 180) << "zero turns upward";
  automatic().PhaseSetting = -30;
  down(-5);
  EXPECT_EQ(phase(), 150);
}

TEST_F(Phasing, withoutADownwardWordTheWayUpWaits) {
  EXPECT_FALSE(up(5000));
  EXPECT_EQ(phase(), 30);
  EXPECT_EQ(automatic().PhaseDiff, 0);
  down(0);
  EXPECT_FALSE(up(5000)) << "a word of exactly 0 counts as none";
  EXPECT_EQ(phase(), 30);
}

TEST_F(Phasing, theThresholdIsAFractionOfTheMeanMagnitude) {
  down(10000, 1000);
  up(9000, 3000);
  EXPECT_EQ(automatic().PhaseDiff, 1000);
  EXPECT_EQ(automatic().averageMagnitude, 2000);
  EXPECT_FLOAT_EQ(automatic().PhaseThreshold, 100);
  EXPECT_EQ(automatic().PrevPhaseDiff, 1000);
}

TEST_F(Phasing, aDifferenceEqualToTheThresholdIsOutOfPhase) {
  record().PhaseThresholdFactor = 0.0625F; // exact: the threshold is 125
  EXPECT_FALSE(pair(125));
  EXPECT_EQ(automatic().PhaseRepeatCount, 1);
  EXPECT_EQ(phase(), 35) << "turned by 5 x 125 / 125";
}

TEST_F(Phasing, aDifferenceBelowTheThresholdIsInPhase) {
  record().PhaseThresholdFactor = 0.0625F;
  EXPECT_TRUE(pair(124));
  EXPECT_EQ(phase(), 30);
}

TEST_F(Phasing, largeDifferencesAreComparedToTheLastUnit) {
  record().PhaseThresholdFactor = 1;
  down(2000000000, 16777220);
  EXPECT_TRUE(up(2000000000 - 16777219, 16777220)) << "one below the threshold";
}

TEST_F(Phasing, theStepIsProportionalWhileItIsLarge) {
  record().PhaseThresholdFactor = 0.0625F;
  pair(250);
  EXPECT_EQ(automatic().PhaseStep, 10) << "twice the threshold";
  EXPECT_EQ(phase(), 40);
  automatic().PhaseStep = 45;
  pair(20 * 125);
  EXPECT_EQ(automatic().PhaseStep, 45) << "twenty times the threshold, limited";
  EXPECT_EQ(phase(), 85);
}

TEST_F(Phasing, theTurnGoesTowardsTheSmallerWord) {
  record().PhaseThresholdFactor = 0.0625F;
  down(10000);
  up(10250);
  EXPECT_EQ(phase(), 20);
  EXPECT_EQ(p.controls().vsPhase.value(), 20);
}

TEST_F(Phasing, aSmallStepShrinksOnlyWhenTheDifferenceDoes) {
  automatic().PhaseStep = 6;
  pair(500);
  EXPECT_EQ(automatic().PhaseStep, 6) << "nothing to compare with yet";
  pair(400);
  EXPECT_EQ(automatic().PhaseStep, 5);
  pair(400);
  EXPECT_EQ(automatic().PhaseStep, 5) << "the same difference";
  pair(401);
  EXPECT_EQ(automatic().PhaseStep, 5);
  pair(300);
  EXPECT_EQ(automatic().PhaseStep, 4);
  automatic().PhaseSeenInPhase = kTrue;
  pair(200);
  EXPECT_EQ(automatic().PhaseStep, 4) << "not once it has been in phase";
  automatic().PhaseSeenInPhase = kFalse;
  automatic().PhaseStep = 1;
  pair(150);
  EXPECT_EQ(automatic().PhaseStep, 1) << "never below one degree";
}

TEST_F(Phasing, justAboveSixTheStepIsStillProportional) {
  record().PhaseThresholdFactor = 0.0625F;
  automatic().PhaseStep = 6.5F;
  pair(1250);
  EXPECT_EQ(automatic().PhaseStep, 45);
  automatic().PhaseStep = 6.5F;
  pair(125);
  EXPECT_EQ(automatic().PhaseStep, 5);
}

TEST_F(Phasing, thePhaseWrapsAtHalfATurn) {
  automatic().PhaseStep = 5;
  automatic().PhaseSetting = 178;
  pair(500);
  EXPECT_EQ(phase(), -177);
  EXPECT_EQ(p.controls().vsPhase.value(), -177);
  EXPECT_EQ(record().LockPhase, 183);
  automatic().PhaseSetting = -178;
  down(10000);
  up(10500);
  EXPECT_EQ(phase(), 177);
  automatic().PhaseSetting = 175;
  pair(500);
  EXPECT_EQ(phase(), 180) << "the end itself stays";
}

TEST_F(Phasing, aPhaseOfThreeQuartersStartsBelowZero) {
  automatic().PhaseSetting = 300;
  automatic().PhaseStep = 5;
  pair(500);
  EXPECT_EQ(phase(), -55);
}

TEST_F(Phasing, withoutAMagnitudeTheStepIsLimitedAllTheSame) {
  down(10000, 0);
  up(9000, 0);
  EXPECT_EQ(automatic().PhaseStep, 45);
  automatic().PhaseStep = 45;
  down(10000, 0);
  EXPECT_FALSE(up(10000, 0)) << "no difference, no threshold: equal, so out of phase";
  EXPECT_EQ(automatic().PhaseStep, 1);
}

TEST_F(Phasing, theWidestDifferenceOverflows) {
  down(2147483647);
  EXPECT_THROW(up(-1), base::RuntimeError);
}

TEST_F(Phasing, fiveInPhaseComparisonsAfterOneOutOfPhaseFinish) {
  EXPECT_FALSE(pair(500));
  EXPECT_EQ(automatic().PhaseRepeatCount, 1);
  for (int count = 2; count <= 5; ++count) {
    EXPECT_FALSE(pair(10));
    EXPECT_EQ(automatic().PhaseRepeatCount, count);
    EXPECT_EQ(automatic().PhaseSeenInPhase, kTrue);
  }
  EXPECT_TRUE(pair(10));
  EXPECT_EQ(automatic().PhaseRepeatCount, 0);
  EXPECT_EQ(automatic().PhaseSeenInPhase, kFalse);
}

TEST_F(Phasing, inPhaseItStillDithersWithShrinkingSteps) {
  automatic().PhaseRepeatCount = 1;
  automatic().PhaseStep = 20;
  automatic().PhaseSetting = 0;
  const float steps[] = {5, 4, 3, 2};
  float expected = 0;
  for (const float step : steps) {
    pair(10);
    EXPECT_EQ(automatic().PhaseStep, step);
    expected += step;
    EXPECT_EQ(phase(), expected);
    EXPECT_EQ(p.controls().vsPhase.value(), expected);
  }
  automatic().PhaseRepeatCount = 1;
  automatic().PhaseStep = 1;
  down(10000);
  up(10010);
  EXPECT_EQ(automatic().PhaseStep, 1);
  EXPECT_EQ(phase(), expected - 1);
}

TEST_F(Phasing, outOfPhaseAgainKeepsTheCountOnceItWasInPhase) {
  pair(500);
  pair(10);
  pair(10);
  EXPECT_EQ(automatic().PhaseRepeatCount, 3);
  pair(500);
  EXPECT_EQ(automatic().PhaseRepeatCount, 3);
  automatic().PhaseSeenInPhase = kFalse;
  pair(500);
  EXPECT_EQ(automatic().PhaseRepeatCount, 1);
}

class PhaseMode : public Phasing {
 protected:
  void SetUp() override {
    Phasing::SetUp();
    record().LockMode = kModePhase;
  }
};

TEST_F(PhaseMode, inPhaseAtTheFirstComparisonAsksAndNoFinishes) {
  p.expectBox(kQuestion, ports::Answer::No);
  EXPECT_TRUE(pair(10));
  EXPECT_EQ(automatic().PhaseRepeatCount, 0);
  EXPECT_EQ(automatic().PrevPhaseDiff, 10);
  EXPECT_EQ(phase(), 30);
}

TEST_F(PhaseMode, yesGoesOnWithOneQuestionAndFourMoreComparisonsBeforeTheLast) {
  p.expectBox(kQuestion, ports::Answer::Yes);
  EXPECT_FALSE(pair(10));
  EXPECT_EQ(automatic().PhaseStep, 1);
  EXPECT_EQ(automatic().PhaseRepeatCount, 1);
  EXPECT_EQ(phase(), 30) << "not turned yet";
  for (int count = 2; count <= 5; ++count) {
    EXPECT_FALSE(pair(10));
    EXPECT_EQ(automatic().PhaseRepeatCount, count);
  }
  EXPECT_TRUE(pair(10));
}

TEST_F(PhaseMode, withNoRepeatsWantedTheQuestionIsStillAsked) {
  record().PhaseRepeatTimes = 0;
  p.expectBox(kQuestion, ports::Answer::No);
  EXPECT_TRUE(pair(10)) << "a count of 0 never reaches the end by itself";
}

TEST_F(PhaseMode, anAnswerToARunThatWasLeftChangesNothing) {
  for (const ports::Answer answer : {ports::Answer::Yes, ports::Answer::No}) {
    p.press("Phase");
    automatic().PhaseStep = 45;
    p.expectBox(kQuestion, answer, [this] {
      p.press("Phase");
      automatic().PhaseRepeatCount = 3; // as far as the new run has come
    });
    EXPECT_FALSE(pair(10));
    EXPECT_EQ(automatic().PhaseStep, 45);
    EXPECT_EQ(automatic().PhaseRepeatCount, 3);
    automatic().PhaseRepeatCount = 0;
  }
}

class PhaseButton : public support::CycleBench {
 protected:
  void halfSweep(int toRising, int phaseWord) {
    turnTo(toRising);
    word(0, toRising == 1 ? 0 : -1000);
    word(4, 0);
    word(5, 61); // magnitude about 2000
    word(6, 100);
    word(7, phaseWord);
    p.main().Timer1.fire();
  }
  void phaseFrom(const std::string& button) {
    word(6, 100);
    p.press(button);
    p.press("Phase");
    p.pass(4);
    p.clear();
    halfSweep(0, 9000); // arms
    halfSweep(0, 9000);
  }
};

TEST_F(PhaseButton, doneReturnsThroughTheButtonOfTheModeBefore) {
  const struct {
    const char* button;
    std::int16_t mode;
    const char* status;
  } cases[] = {{"Off", kModeOff, "OFF"}, {"Sweep", kModeSweep, "SWEEP"}, {"Hold", kModeHold, "HOLD"}};
  for (const auto& c : cases) {
    phaseFrom(c.button);
    EXPECT_EQ(p.status(), "Auto Phasing...");
    p.expectBox(kQuestion, ports::Answer::No);
    p.platform.recordStatus();
    halfSweep(1, 9001);
    EXPECT_EQ(record().LockMode, c.mode) << c.button;
    EXPECT_EQ(record().PreviousLockMode, kModePhase);
    EXPECT_EQ(p.main().Toolbar1.pressed(), c.mode + 1);
    EXPECT_EQ(p.status(), c.status);
    host::Lines modes;
    for (const std::string& call : p.calls())
      if (call.starts_with("22 ") || call == mode(0) || call == mode(2) || call == mode(3))
        modes.push_back(call);
    EXPECT_EQ(modes.front(), lockedFlag(0)) << "the handler ran, not only the button";
  }
}

TEST_F(PhaseButton, theQuestionHoldsBackTheTicks) {
  phaseFrom("Hold");
  p.expectBox(kQuestion, ports::Answer::No, [this] {
    p.clear();
    p.tick(5);
    EXPECT_TRUE(p.calls().empty()) << "no second question can appear over the first";
  });
  halfSweep(1, 9001);
}

TEST_F(PhaseButton, aModeChosenDuringTheQuestionStays) {
  phaseFrom("Hold");
  p.expectBox(kQuestion, ports::Answer::No, [this] { p.press("Sweep"); });
  halfSweep(1, 9001);
  EXPECT_EQ(record().LockMode, kModeSweep);
  EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonSweep);
  EXPECT_EQ(p.status(), "SWEEP");
}

} // namespace
