#include "engine/cycle_bench.h"
#include "ui/panels/frmSweep.h"
#include <gtest/gtest.h>

namespace {

using namespace host;

class Auto : public support::CycleBench {
 protected:
  void SetUp() override {
    CycleBench::SetUp();
    record().LockMode = kModeAuto;
    p.main().typeCentre("0");
    settle();
  }
  // Deferred changes are of no interest here.
  void settle() {
    record().PendingControl = record().PendingFieldCenter = record().PendingRxGain = kFalse;
    p.clear();
  }
  std::string centre() { return p.main().txtCenter.text(); }
  std::vector<int> noiseRun(std::initializer_list<double> samples) {
    std::vector<int> positions;
    for (const double sample : samples) {
      word(6, sample);
      EXPECT_FALSE(AutoLock::MeasureNoise(program()));
      positions.push_back(record().FieldCenter);
    }
    EXPECT_TRUE(AutoLock::MeasureNoise(program()));
    positions.push_back(record().FieldCenter);
    return positions;
  }
};

TEST_F(Auto, noiseIsTheMeanOfFiveSamplesWithoutTheLargestAndTheSmallest) {
  noiseRun({10, 20, 30, 40, 50});
  EXPECT_EQ(automatic().NoisePower, 30);
  noiseRun({7, 1, 2, 2, 9}); // 11 / 3
  EXPECT_EQ(automatic().NoisePower, 4);
}

TEST_F(Auto, ofEqualNoiseSamplesTheFirstIsLeftOut) {
  noiseRun({50, 10, 10, 50, 30});
  EXPECT_EQ(automatic().NoisePower, 30);
}

TEST_F(Auto, fiveEqualNoiseSamplesLoseOnlyOne) {
  noiseRun({30, 30, 30, 30, 30});
  EXPECT_EQ(automatic().NoisePower, 40);
}

TEST_F(Auto, negativeNoiseSamplesCountAsTheyStand) {
  noiseRun({-10, -20, -30, -40, -50});
  EXPECT_EQ(automatic().NoisePower, -30);
}

TEST_F(Auto, noiseIsMeasuredAroundANonZeroCentreFromZeroOn) {
  p.main().typeCentre("400");
  EXPECT_EQ(noiseRun({1, 1, 1, 1, 1}), (std::vector<int>{0, 8192, -8192, 16384, -16384, 24576}));
}

TEST_F(Auto, noiseIsMeasuredBesideACentreThatIsZeroAlready) {
  EXPECT_EQ(noiseRun({1, 1, 1, 1, 1}), (std::vector<int>{-8192, 8192, -16384, 16384, -24576, 24576}));
}

TEST_F(Auto, aNoiseSampleSetsTheWideSweepOnceAndGoesBackToSweeping) {
  word(6, 12.5);
  AutoLock::MeasureNoise(program());
  p.expectCalls({sweepSpeed(65536), field(0), sweepWidth(8192), sample(46.04475), dataWord(6), mode(5)});
  EXPECT_EQ(automatic().NoisePower, 12);
  EXPECT_EQ(program().frmSweep->cmbSweepSpeed.text(), "65536");
  EXPECT_EQ(program().frmSweep->cmbSweepWidth.text(), "8192");
  AutoLock::MeasureNoise(program());
  p.expectCalls({sample(46.04475), dataWord(6), mode(5)});
}

TEST_F(Auto, theSixthCallMovesTheFieldAndRestoresTheSweepWithoutASample) {
  for (int i = 0; i < 5; ++i) AutoLock::MeasureNoise(program());
  p.clear();
  EXPECT_TRUE(AutoLock::MeasureNoise(program()));
  p.expectCalls({sweepSpeed(32768), field(24576), sweepWidth(16384)});
  EXPECT_EQ(record().SweepSpeed, 32768);
  EXPECT_EQ(record().SweepWidth, 16384);
  EXPECT_EQ(program().frmSweep->cmbSweepSpeed.text(), "32768");
  EXPECT_EQ(program().frmSweep->cmbSweepWidth.text(), "16384");
  EXPECT_EQ(automatic().SearchCount, 0);
  EXPECT_EQ(automatic().SearchDirection, 0);
  EXPECT_EQ(automatic().noiseCount, 0);
}

TEST_F(Auto, theSearchWidensByHalfWidthsToEitherSide) {
  automatic().NoiseThreshold = 100;
  std::vector<int> visited;
  for (int i = 0; i < 6; ++i) {
    EXPECT_FALSE(AutoLock::LocatePeak(program(), 0, 99.9, 1000));
    visited.push_back(record().FieldCenter);
  }
  EXPECT_EQ(visited, (std::vector<int>{-4000, 4000, -8000, 8000, -12000, 12000}));
  EXPECT_EQ(record().LockStatus, "Locating a peak");
  EXPECT_TRUE(p.calls().empty()) << "the idle loop sends the centre";
}

TEST_F(Auto, aSearchThatBeginsAsideGoesToZeroFirst) {
  p.main().typeCentre("2000");
  automatic().NoiseThreshold = 100;
  std::vector<int> visited;
  for (int i = 0; i < 5; ++i) {
    AutoLock::LocatePeak(program(), 0, 0, 1000);
    visited.push_back(record().FieldCenter);
  }
  EXPECT_EQ(visited, (std::vector<int>{0, 4000, -4000, 8000, -8000}));
}

TEST_F(Auto, theSearchCountsFromTheSweepRangeAsItIsNow) {
  automatic().NoiseThreshold = 100;
  automatic().SearchDirection = -1;
  automatic().SearchCount = 1;
  record().SweepLower = 101; // centre 4101, as the range says
  AutoLock::LocatePeak(program(), 0, 0, 1000);
  EXPECT_EQ(record().FieldCenter, 12100) << "4101 + 2 x 4000, brought down to a multiple of four";
}

TEST_F(Auto, aNegativeThresholdFindsNoPeak) {
  automatic().NoiseThreshold = -1;
  cycle().SweepRising = 0;
  AutoLock::LocatePeak(program(), 500, 1e6, 1000);
  EXPECT_EQ(record().LockStatus, "Locating a peak");
  EXPECT_EQ(automatic().downPosition, 0);
}

TEST_F(Auto, aSearchPastTheFieldRangeAsksTheOperator) {
  record().SweepWidth = 200000;
  automatic().NoiseThreshold = 100;
  automatic().SearchDirection = 1;
  automatic().SearchCount = 2;
  p.expectBox("Input New Field Center overflow! Retry.", ports::Answer::Ok);
  p.platform.dialogs().expectInput("New Field Center (DAC Units)", "1200");
  EXPECT_FALSE(AutoLock::LocatePeak(program(), 0, 0, 1000));
  EXPECT_EQ(record().FieldCenter, 1200);
}

class Centring : public Auto {
 protected:
  void SetUp() override {
    Auto::SetUp();
    automatic().NoiseThreshold = 100;
  }
  bool halfSweeps(int down, int up, double tolerance) {
    cycle().SweepRising = 0;
    EXPECT_FALSE(AutoLock::LocatePeak(program(), down, 100, tolerance));
    EXPECT_EQ(automatic().downPosition, down);
    EXPECT_EQ(record().LockStatus, "Found a peak; Centering it");
    cycle().SweepRising = 1;
    return AutoLock::LocatePeak(program(), up, 100, tolerance);
  }
};

TEST_F(Centring, aMagnitudeEqualToTheThresholdIsAPeak) { EXPECT_FALSE(halfSweeps(2000, 2400, 1000)); }

TEST_F(Centring, bothDirectionsAreAveragedAndAppliedUntilTheCentreStays) {
  EXPECT_FALSE(halfSweeps(4000, 5000, 1000));
  EXPECT_EQ(record().FieldCenter, 4500);
  EXPECT_EQ(automatic().lastCentre, 4500);
  automatic().SearchCount = 3, automatic().SearchDirection = 1;
  EXPECT_TRUE(halfSweeps(4800, 6200, 1000)) << "5500 is 1000 away: within the tolerance";
  EXPECT_EQ(record().FieldCenter, 4500) << "and not applied";
  EXPECT_EQ(automatic().lastCentre, 0);
  EXPECT_EQ(automatic().downPosition, 0);
  EXPECT_EQ(automatic().SearchCount, 0);
  EXPECT_EQ(automatic().SearchDirection, 0);
}

TEST_F(Centring, theFineToleranceAsksForAnotherCentring) {
  EXPECT_FALSE(halfSweeps(4000, 5000, 200));
  EXPECT_FALSE(halfSweeps(4600, 4802, 200)) << "4701 is 201 away";
  EXPECT_EQ(automatic().lastCentre, 4701);
  EXPECT_EQ(record().FieldCenter, 4700);
  EXPECT_TRUE(halfSweeps(4500, 4502, 200))
      << "4501 is 200 away from 4701, the centre before rounding to steps";
}

TEST_F(Centring, aPeakNearZeroIsCentredAtOnce) { EXPECT_TRUE(halfSweeps(-900, 2900, 1000)); }

TEST_F(Centring, theAverageIsRoundedHalvesToEven) {
  halfSweeps(5000, 5001, 1000);
  EXPECT_EQ(automatic().lastCentre, 5000);
  halfSweeps(-9000, -9003, 1000);
  EXPECT_EQ(automatic().lastCentre, -9002);
}

TEST_F(Centring, theThresholdIsShownFromTheFirstCallOn) {
  picture().cls();
  EXPECT_FALSE(p.main().lblPkPwr.visible());
  halfSweeps(0, 0, 1000);
  EXPECT_TRUE(automatic().ThresholdShown);
  EXPECT_TRUE(p.main().lblPkPwr.visible());
  EXPECT_TRUE(p.main().lblSigThreshold.visible());
  ASSERT_EQ(lines().size(), 1U) << "drawn once";
  EXPECT_EQ(lines()[0].colour, 65280U);
}

TEST_F(Centring, aRestartForgetsTheSearchAndTakesASampleFirst) {
  automatic().SearchRestart = true;
  automatic().downPosition = 5, automatic().lastCentre = 6;
  automatic().SearchCount = 7, automatic().SearchDirection = 1;
  p.clear();
  EXPECT_FALSE(AutoLock::LocatePeak(program(), 400, 1e6, 1000));
  p.expectCalls({sample(46.04475), mode(5)});
  EXPECT_FALSE(automatic().SearchRestart);
  EXPECT_EQ(automatic().downPosition, 0);
  EXPECT_EQ(automatic().lastCentre, 0);
  EXPECT_EQ(automatic().SearchCount, 0);
  EXPECT_EQ(automatic().SearchDirection, 0);
  EXPECT_EQ(record().FieldCenter, 0);
}

class PeakGain : public Auto {
 protected:
  bool halfSweeps(double down, double up) {
    cycle().SweepRising = 0;
    EXPECT_FALSE(AutoLock::AdjustGainToPeak(program(), down, 2000, 200));
    EXPECT_EQ(record().RxGain, before) << "nothing changes on the way down";
    cycle().SweepRising = 1;
    const bool done = AutoLock::AdjustGainToPeak(program(), up, 2000, 200);
    before = record().RxGain;
    return done;
  }
  int before = 1200;
};

TEST_F(PeakGain, anAverageInsideTheBandIsDone) {
  EXPECT_TRUE(halfSweeps(1700, 1902));
  EXPECT_TRUE(halfSweeps(2500, 1898));
  EXPECT_EQ(record().RxGain, 1200);
}

TEST_F(PeakGain, theEndsOfTheBandAreOutside) {
  EXPECT_FALSE(halfSweeps(1700, 1900));
  EXPECT_EQ(record().RxGain, 1333) << "1200 x 2000 / 1800";
  EXPECT_FALSE(halfSweeps(2300, 2100));
  EXPECT_EQ(record().RxGain, 1212) << "1333 x 2000 / 2200 = 1211.8";
}

TEST_F(PeakGain, theGainStaysWithinItsRange) {
  EXPECT_FALSE(halfSweeps(1, 1));
  EXPECT_EQ(record().RxGain, 10000);
  EXPECT_FALSE(halfSweeps(1e9, 1e9));
  EXPECT_EQ(record().RxGain, 0) << "0.02";
}

TEST_F(PeakGain, theGainCountsFromTheTextInTheBox) {
  p.controls().txtRxGain.setText("100");
  halfSweeps(1000, 1000);
  EXPECT_EQ(record().RxGain, 200);
}

TEST_F(Auto, theLockLevelBandExcludesItsEnds) {
  EXPECT_TRUE(AutoLock::AdjustGainToLockLevel(program(), 451, 500, 50));
  EXPECT_TRUE(AutoLock::AdjustGainToLockLevel(program(), 549, 500, 50));
  EXPECT_FALSE(AutoLock::AdjustGainToLockLevel(program(), 450, 500, 50));
  EXPECT_EQ(record().RxGain, 1333);
  EXPECT_FALSE(AutoLock::AdjustGainToLockLevel(program(), 550, 500, 50));
  EXPECT_EQ(record().RxGain, 1212);
}

TEST_F(Auto, aLevelOfZeroOrBelowDrivesTheGainToAnEndOfItsRange) {
  EXPECT_FALSE(AutoLock::AdjustGainToLockLevel(program(), 0, 500, 50));
  EXPECT_EQ(record().RxGain, 10000);
  EXPECT_FALSE(AutoLock::AdjustGainToLockLevel(program(), -100, 500, 50));
  EXPECT_EQ(record().RxGain, 0);
}

TEST_F(Auto, theThresholdMarkerIsALineAndTwoTexts) {
  picture().setScale(-100, 500, 100, -500);
  picture().cls();
  automatic().ThresholdShown = true;
  automatic().NoiseThreshold = 123.456;
  cycle().PeakPower = 0;
  AutoLock::ShowPeakThreshold(program());
  EXPECT_EQ(p.main().lblPkPwr.caption(), "Peak Level        = n/a");
  EXPECT_EQ(p.main().lblSigThreshold.caption(), "Peak Threshold = 123.46");
  cycle().PeakPower = 2;
  AutoLock::ShowPeakThreshold(program());
  EXPECT_EQ(p.main().lblPkPwr.caption(), "Peak Level        = 1.41");
  ASSERT_EQ(lines().size(), 2U);
  EXPECT_EQ(lines()[0].x1, -100);
  EXPECT_EQ(lines()[0].x2, 100);
  EXPECT_EQ(lines()[0].y1, 123.456F);
  EXPECT_EQ(lines()[0].y2, 123.456F);
  EXPECT_EQ(lines()[0].colour, 65280U);
  forgetLines();
  AutoLock::ErasePeakThreshold(program());
  ASSERT_EQ(lines().size(), 1U);
  EXPECT_EQ(lines()[0].y1, 123.456F);
  EXPECT_EQ(lines()[0].colour, picture().backColour());
  automatic().ThresholdShown = false;
  AutoLock::ShowPeakThreshold(program());
  EXPECT_EQ(lines().size(), 1U);
  EXPECT_FALSE(p.main().lblPkPwr.visible());
  EXPECT_FALSE(p.main().lblSigThreshold.visible());
}

// A whole run: every half sweep ends with a turn whose words the test gives.
class WholeRun : public support::CycleBench {
 protected:
  void SetUp() override {
    CycleBench::SetUp();
    word(0, 400);
    p.press("Auto");
    p.pass(4);
    rising = 0;
  }
  // Ends a half sweep with these findings; the status afterwards.
  std::string halfSweep(double magnitude, int position, int phaseWord) {
    rising = 1 - rising;
    turnTo(rising);
    const auto power = static_cast<std::int64_t>(magnitude * magnitude);
    word(0, rising == 1 ? cursor().lastDac + 10 : cursor().lastDac - 10);
    word(4, static_cast<double>(power & 65535));
    word(5, static_cast<double>(power >> 16));
    word(6, position / 4.0);
    word(7, phaseWord);
    p.main().Timer1.fire();
    p.pass(4);
    return p.status();
  }
  int rising = 0;
};

TEST_F(WholeRun, showsEveryStatusInOrderAndEndsInLock) {
  EXPECT_EQ(p.status(), "Auto Locking...");
  EXPECT_EQ(automatic().AutoLockStep, 0);
  EXPECT_EQ(halfSweep(100, 36, 0), "Auto Locking...") << "the first turn only arms";
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(halfSweep(100, 36, 0), "Acquiring noise power") << i;
  EXPECT_EQ(halfSweep(100, 36, 0), "Locating a peak");
  EXPECT_EQ(automatic().AutoLockStep, 1);
  EXPECT_EQ(automatic().NoisePower, 12) << "word 6 was 9: four equal ones by three";
  EXPECT_DOUBLE_EQ(automatic().NoiseThreshold, std::sqrt(12.0) * 16);
  EXPECT_TRUE(automatic().PeakSearchActive);

  if (rising == 0) halfSweep(10, 0, 0); // searches on
  EXPECT_EQ(p.status(), "Locating a peak");
  EXPECT_EQ(rising, 1);
  EXPECT_EQ(halfSweep(2000, 4800, 0), "Found a peak; Centering it");
  EXPECT_TRUE(automatic().ThresholdShown);
  EXPECT_EQ(halfSweep(2000, 5200, 0), "Found a peak; Centering it");
  EXPECT_EQ(record().FieldCenter, 5000);
  EXPECT_EQ(halfSweep(2000, 4900, 0), "Found a peak; Centering it");
  EXPECT_EQ(halfSweep(2000, 5300, 0), "Adjusting Rx gain to set peak magn (2000)");
  EXPECT_EQ(automatic().AutoLockStep, 2);
  EXPECT_FALSE(automatic().PeakSearchActive);
  EXPECT_FALSE(automatic().ThresholdShown);

  EXPECT_EQ(halfSweep(1000, 5000, 0), "Adjusting Rx gain to set peak magn (2000)");
  EXPECT_EQ(halfSweep(1000, 5000, 0), "Adjusting Rx gain to set peak magn (2000)");
  EXPECT_EQ(record().RxGain, 2400);
  EXPECT_EQ(halfSweep(2000, 5000, 0), "Adjusting Rx gain to set peak magn (2000)");
  EXPECT_EQ(halfSweep(2000, 5000, 0), "Auto Phasing");
  EXPECT_EQ(automatic().AutoLockStep, 3);

  EXPECT_EQ(halfSweep(2000, 5000, 800), "Auto Phasing");
  EXPECT_EQ(halfSweep(2000, 5000, 801), "Centering the peak again") << "in phase: nobody is asked";
  EXPECT_EQ(automatic().AutoLockStep, 4);
  EXPECT_TRUE(automatic().PeakSearchActive);

  EXPECT_EQ(halfSweep(2000, 5000, 0), "Found a peak; Centering it");
  EXPECT_EQ(halfSweep(2000, 5100, 0), "Found a peak; Centering it");
  EXPECT_EQ(record().FieldCenter, 5048) << "5050, in steps of four";
  EXPECT_EQ(halfSweep(2000, 5152, 0), "Found a peak; Centering it");
  EXPECT_EQ(halfSweep(2000, 5348, 0), "Auto Locking...") << "5250 is 200 away";
  EXPECT_EQ(automatic().AutoLockStep, 5);
  EXPECT_FALSE(automatic().PeakSearchActive);

  p.clear();
  halfSweep(2000, 5000, 0);
  EXPECT_EQ(record().LockMode, kModeLock);
  EXPECT_TRUE(automatic().AutoLockTrim);
  EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonLock);
  EXPECT_EQ(p.status(), "HOLD");
  EXPECT_TRUE(p.main().Timer1.enabled());
  EXPECT_TRUE(p.boxes().empty()) << "the hand-over tells nobody";

  word(1, 500);
  word(3, 100000);
  word(4, 0);
  word(6, 100);
  for (int i = 1; i <= 20; ++i) {
    p.main().Timer1.fire();
    EXPECT_EQ(p.status(), "LOCKED : Adjusting Rx gain to set lock level (500)") << i;
  }
  p.main().Timer1.fire();
  EXPECT_EQ(p.status(), "LOCKED : AutoLock Done");
}

TEST_F(WholeRun, aModeButtonAbandonsTheRunAndTheNextOneBeginsAfresh) {
  for (int i = 0; i < 4; ++i) halfSweep(100, 36, 0);
  EXPECT_EQ(automatic().noiseCount, 3);
  p.press("Off");
  p.press("Auto");
  EXPECT_EQ(automatic().noiseCount, 0);
  EXPECT_EQ(automatic().AutoLockStep, 0);
  EXPECT_EQ(automatic().SearchCount, 0);
  EXPECT_EQ(automatic().SearchDirection, 0);
}

} // namespace
