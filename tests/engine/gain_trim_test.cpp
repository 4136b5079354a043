#include "engine/cycle_bench.h"
#include <gtest/gtest.h>

namespace {

class GainTrim : public support::CycleBench {
 protected:
  static constexpr const char* kAdjusting = " : Adjusting Rx gain to set lock level (500)";
  void SetUp() override {
    CycleBench::SetUp();
    record().LockMode = kModeLock;
    record().SetLockLevel = 600; // the wording says 500 all the same
    automatic().AutoLockTrim = kTrue;
    cycle().LockErrorThreshold = 1000000;
    cycle().LockLevelThreshold = -1;
    words(5, 300, 0);
    word(6, 400);
  }
};

TEST_F(GainTrim, twentyTicksGoByBeforeTheFirstAdjustment) {
  for (int i = 1; i <= 20; ++i) {
    tick();
    EXPECT_EQ(p.status(), std::string("LOCKED") + kAdjusting) << i;
    EXPECT_EQ(record().RxGain, 1200) << i;
    EXPECT_EQ(cycle().LockErrorThreshold, 1000000) << i;
  }
  tick();
  EXPECT_EQ(p.status(), std::string("LOCKED") + kAdjusting);
  EXPECT_EQ(record().RxGain, 2400) << "1200 x 600 / 300";
  EXPECT_EQ(automatic().AutoLockTrimTicks, 0);
  EXPECT_FALSE(automatic().AutoLockTrimDone);
  tick(20);
  EXPECT_EQ(record().RxGain, 2400);
  tick();
  EXPECT_EQ(record().RxGain, 4800);
}

TEST_F(GainTrim, everyAdjustmentDerivesTheThresholdsAgain) {
  tick(21);
  EXPECT_EQ(cycle().LockLevelThreshold, 20 * 16);
  EXPECT_EQ(cycle().LockErrorThreshold, 20 * 16 / 4);
}

TEST_F(GainTrim, aWordWithoutNoiseMakesTheJudgementStrictAndWarnsNobody) {
  for (const double noise : {0.0, -5.0}) {
    automatic().AutoLockTrimTicks = 20;
    word(6, noise);
    tick();
    EXPECT_EQ(cycle().LockLevelThreshold, 32767 * 16);
    EXPECT_EQ(cycle().LockErrorThreshold, 32767 * 16 / 4);
  }
  EXPECT_TRUE(p.boxes().empty());
}

TEST_F(GainTrim, theSquareRootIsRoundedBeforeItIsMultiplied) {
  automatic().AutoLockTrimTicks = 20;
  word(6, 7); // 2.65 -> 3
  record().NoiseFactor = 5;
  tick();
  EXPECT_EQ(cycle().LockLevelThreshold, 48);
  EXPECT_EQ(cycle().LockErrorThreshold, 10) << "9.6";
}

TEST_F(GainTrim, aLevelWithinATenthEndsIt) {
  words(5, 659, 0);
  tick(20);
  EXPECT_FALSE(automatic().AutoLockTrimDone);
  tick();
  EXPECT_EQ(p.status(), "LOCKED : AutoLock Done");
  EXPECT_TRUE(automatic().AutoLockTrimDone);
  EXPECT_EQ(record().RxGain, 1200);
  words(5, 300, 0);
  word(3, -2);
  cycle().LockLevelThreshold = -1;
  tick();
  EXPECT_EQ(p.status(), "SEARCHING... : AutoLock Done") << "it stays done, whatever the level";
  tick(50);
  EXPECT_EQ(record().RxGain, 1200);
}

TEST_F(GainTrim, theToleranceIsATenthRoundedToAWholeNumber) {
  record().SetLockLevel = 505; // 50.5 rounds to the even 50
  automatic().AutoLockTrimTicks = 20;
  words(5, 455, 0);
  tick();
  EXPECT_FALSE(automatic().AutoLockTrimDone) << "exactly 50 off is outside";
  record().RxGain = 0;
  automatic().AutoLockTrimTicks = 20;
  words(5, 456, 0);
  tick();
  EXPECT_TRUE(automatic().AutoLockTrimDone);
}

TEST_F(GainTrim, aSearchingLockIsTrimmedToo) {
  cycle().LockLevelThreshold = 1000;
  tick();
  EXPECT_EQ(p.status(), std::string("SEARCHING...") + kAdjusting);
}

TEST_F(GainTrim, withoutAnAutoLockBeforeNothingIsTrimmed) {
  automatic().AutoLockTrim = kFalse;
  tick(50);
  EXPECT_EQ(p.status(), "LOCKED");
  EXPECT_EQ(record().RxGain, 1200);
}

} // namespace
