// The field sweep and what the firmware reports about each half of it.
#include "console_rig.h"

namespace {

using rig::Rig;

constexpr double kWidth = 16384, kSpeed = 32768, kHalf = kWidth / kSpeed;

void startAutomatic(Rig& r, double centre = 0) {
  r.power(46);
  r.gain(850);
  r.width(kWidth);
  r.speed(kSpeed);
  r.field(centre);
  r.mode(5);
}

// Waits until just after the next turn of the field.
void toNextTurn(Rig& r) {
  r.console.field();
  const bool rising = r.console.sweep().rising();
  while (r.console.sweep().rising() == rising) {
    r.wait(1e-3);
    r.console.field();
  }
}

TEST(Sweep, IsATriangleAtTheGivenSpeed) {
  Rig r(rig::quiet());
  r.width(10000);
  r.speed(25000);
  r.field(400);
  r.mode(2);
  EXPECT_EQ(r.word(0), -4600);
  for (int i = 1; i <= 39; ++i) {
    r.wait(0.01);
    EXPECT_NEAR(static_cast<double>(r.word(0)), -4600 + 250.0 * i, 1) << i;
  }
  r.wait(0.01);
  EXPECT_EQ(r.word(0), 5400);
  r.wait(0.2);
  EXPECT_NEAR(static_cast<double>(r.word(0)), 400, 26);
}

TEST(Sweep, NewLimitsAndNewModeStartItAtItsLowEnd) {
  Rig r(rig::quiet());
  r.mode(2);
  r.wait(0.3);
  r.field(2000);
  EXPECT_EQ(r.word(0), -3000);
  r.wait(0.3);
  r.width(6000);
  EXPECT_EQ(r.word(0), -1000);
  r.wait(0.1);
  const long there = r.word(0);
  r.field(2000); // nothing new
  r.width(6000);
  r.speed(25000);
  EXPECT_EQ(r.word(0), there);
  r.mode(2);
  EXPECT_EQ(r.word(0), -1000);
}

TEST(Sweep, StaysWithinTheFieldRange) {
  Rig r(rig::quiet());
  r.field(131068);
  r.mode(2);
  long most = 0;
  for (int i = 0; i < 100; ++i) {
    r.wait(0.01);
    most = std::max(most, r.word(0));
  }
  EXPECT_EQ(most, 131071);
}

TEST(Sweep, WithoutWidthOrSpeedStandsStill) {
  Rig r(rig::quiet());
  r.width(0);
  r.mode(5);
  r.wait(1);
  EXPECT_EQ(r.word(0), 0);
  EXPECT_EQ(r.peakPower(), 0);
  r.width(1000);
  r.speed(0);
  r.wait(1);
  EXPECT_EQ(r.word(0), -500);
}

TEST(HalfSweep, WordsAreEmptyUntilOneIsCompleteAndThenHoldForTheNext) {
  sim::Settings settings;
  settings.lineField = 300;
  Rig r(settings);
  startAutomatic(r);
  r.wait(0.49);
  EXPECT_EQ(r.peakPower(), 0);
  EXPECT_EQ(r.word(7), 0);
  EXPECT_GT(r.word(6), 0); // the noise, still
  EXPECT_LT(r.word(6), 60);
  toNextTurn(r);
  const double power = r.peakPower();
  const long position = r.word(6), phase = r.word(7);
  EXPECT_GT(power, 1e6);
  r.wait(0.4);
  EXPECT_EQ(r.peakPower(), power);
  EXPECT_EQ(r.word(6), position);
  EXPECT_EQ(r.word(7), phase);
  r.field(500);
  EXPECT_EQ(r.peakPower(), 0);
}

TEST(HalfSweep, ReportsTheApparentPeakLagIncluded) {
  sim::Settings settings = rig::quiet();
  settings.lineField = 1000;
  Rig r(settings);
  startAutomatic(r);
  r.wait(4.5 * kHalf);
  toNextTurn(r);
  const double up = static_cast<double>(r.word(6)) * 4;
  toNextTurn(r);
  const double down = static_cast<double>(r.word(6)) * 4;
  EXPECT_GT(up - 1000, 500);
  EXPECT_LT(up - 1000, 900);
  EXPECT_NEAR((up + down) / 2, 1000, 5);
}

TEST(HalfSweep, PeakPowerIsTheSquareOfTheHighestMagnitudeSeen) {
  sim::Settings settings;
  settings.lineField = 0;
  Rig r(settings);
  startAutomatic(r);
  r.wait(2 * kHalf);
  toNextTurn(r);
  double most = 0;
  const bool rising = r.console.sweep().rising();
  while (r.console.sweep().rising() == rising) {
    r.wait(1e-3);
    most = std::max(most, std::hypot(static_cast<double>(r.word(1)), static_cast<double>(r.word(2))));
  }
  EXPECT_NEAR(std::sqrt(r.peakPower()), most, 0.01 * most);
}

TEST(HalfSweep, NoiseAloneStaysWellBelowSixteenSigma) {
  sim::Settings settings;
  settings.sample.lines[0].amplitude = 0;
  Rig r(settings);
  r.sample(r.console.frequency());
  const double noise = static_cast<double>(r.word(6));
  startAutomatic(r);
  r.gain(1000);
  double most = 0;
  for (int i = 0; i < 100; ++i) {
    r.wait(kHalf);
    most = std::max(most, std::sqrt(r.peakPower()));
  }
  EXPECT_GT(most, 2 * std::sqrt(noise));
  EXPECT_LT(most, 8 * std::sqrt(noise));
}

struct PhaseWords {
  double up, down, magnitude;
};

PhaseWords phaseWords(double phaseError, double speed = kSpeed) {
  sim::Settings settings = rig::quiet();
  settings.bestPhase = -70;
  Rig r(settings);
  startAutomatic(r);
  r.speed(speed);
  r.phase(-70 + phaseError);
  r.wait(4 * kWidth / speed);
  toNextTurn(r);
  if (r.console.sweep().rising()) toNextTurn(r);
  PhaseWords w{};
  w.up = static_cast<double>(r.word(7));
  toNextTurn(r);
  w.down = static_cast<double>(r.word(7));
  w.magnitude = std::sqrt(r.peakPower());
  return w;
}

TEST(PhaseWord, DirectionsAgreeInPhaseAndTheirDifferenceTellsTheSideOfAnError) {
  for (const double speed : {2000.0, 16384.0, 25000.0, 32768.0}) {
    const PhaseWords right = phaseWords(0, speed);
    EXPECT_GT(right.up, 0);
    EXPECT_NEAR(right.up, right.down, 0.02 * right.magnitude) << speed;
    for (double error = 10; error <= 90; error += 20) {
      const PhaseWords early = phaseWords(-error, speed), late = phaseWords(error, speed);
      const double expected = 0.8 * std::sin(error * std::numbers::pi / 180);
      EXPECT_NEAR((early.up - early.down) / early.magnitude, expected, 0.06) << speed << " " << error;
      EXPECT_NEAR((late.up - late.down) / late.magnitude, -expected, 0.06) << speed << " " << error;
    }
  }
}

TEST(PhaseWord, IsNegativeInBothDirectionsWhenTheSignalIsUpsideDown) {
  for (double error = 120; error <= 240; error += 20) {
    const PhaseWords w = phaseWords(error);
    EXPECT_LT(w.up, 0) << error;
    EXPECT_LT(w.down, 0) << error;
  }
}

TEST(PhaseWord, ThresholdOfFivePercentIsAFewDegrees) {
  const PhaseWords three = phaseWords(3), five = phaseWords(5);
  EXPECT_LT(std::abs(three.up - three.down), 0.05 * three.magnitude);
  EXPECT_GT(std::abs(five.up - five.down), 0.05 * five.magnitude);
}

} // namespace
