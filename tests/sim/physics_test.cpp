// The spins against the textbook.
#include "console_rig.h"

#include <algorithm>
#include <numbers>
#include <vector>

namespace {

using rig::Rig;

constexpr double kScale = 1000 * sim::kUnitsPerGain; // output for a magnetisation of 1 at the rig's gain

struct Trace {
  std::vector<double> hertz, value;

  std::size_t top() const {
    return static_cast<std::size_t>(std::max_element(value.begin(), value.end()) - value.begin());
  }
  double height() const { return value[top()]; }
  double centre() const { // of the parabola through the three highest
    const std::size_t i = top();
    const double a = value[i - 1], b = value[i], c = value[i + 1];
    return hertz[i] + (hertz[i + 1] - hertz[i]) * (a - c) / (2 * (a - 2 * b + c));
  }
  double crossing(std::size_t from, int direction) const {
    const double half = height() / 2;
    std::size_t i = from;
    while (value[i] > half) i += static_cast<std::size_t>(direction);
    const std::size_t j = i - static_cast<std::size_t>(direction);
    return hertz[i] + (hertz[j] - hertz[i]) * (half - value[i]) / (value[j] - value[i]);
  }
  double fullWidth() const { return crossing(top(), 1) - crossing(top(), -1); }
};

enum class Part { Real, Magnitude };

// One rising half sweep of the spins' own transverse magnetisation, against the true offset.
Trace rise(const sim::Sample& sample, double b1, double width, double speed, Part part, double every = 1e-3) {
  sim::Settings settings = rig::quiet();
  settings.sample = sample;
  Rig r(settings);
  r.b1(b1);
  r.width(width);
  r.speed(speed);
  r.mode(2);
  Trace trace;
  for (double t = 0; t + every < width / speed; t += every) {
    r.wait(every);
    const auto m = r.console.transverse();
    trace.hertz.push_back(r.console.offset());
    trace.value.push_back(part == Part::Real ? m.real() : std::abs(m));
  }
  return trace;
}

TEST(SlowPassage, BelowSaturationIsALorentzianOfWidthOneOverPiT2) {
  const double t = 0.42, b1 = 0.01 / t;
  const Trace line = rise(rig::sampleWith(t, t), b1, 120, 1, Part::Real, 0.05);
  EXPECT_NEAR(line.fullWidth(), 1 / (std::numbers::pi * t), 0.01 / (std::numbers::pi * t));
  EXPECT_NEAR(line.height(), b1 * t, 0.01 * b1 * t);
}

TEST(SlowPassage, AtSaturationOneIsHalfAsHighAndRootTwoAsWide) {
  const double t = 0.42;
  const Trace line = rise(rig::sampleWith(t, t), 1 / t, 160, 1, Part::Real, 0.05);
  const double expected = std::numbers::sqrt2 / (std::numbers::pi * t);
  EXPECT_NEAR(line.fullWidth(), expected, 0.01 * expected);
  EXPECT_NEAR(line.height(), 0.5, 0.005);
}

TEST(SlowPassage, LagsByTheMemoryOfTheSpins) {
  const double hertzPerDac = 299.935 / 6.514288 * 1e-3, t = 0.1;
  const auto lag = [&](Part part) {
    return rise(rig::sampleWith(t, t), 0.01, 600, 1 / hertzPerDac, part, 2e-3).centre();
  };
  EXPECT_NEAR(lag(Part::Magnitude), 0.20, 0.01);
  EXPECT_NEAR(lag(Part::Real), 0.15, 0.01);
}

TEST(SlowPassage, SteadyStateAgreesWithBlochAtAnyOffset) {
  sim::Settings settings = rig::quiet();
  settings.sample = rig::sampleWith(1.5, 0.3);
  Rig r(settings);
  const double b1 = 1.1;
  r.b1(b1);
  r.mode(3);
  for (const double hertz : {-40.0, -3.0, -0.5, 0.0, 0.2, 1.0, 12.0}) {
    r.frequency(rig::lockFrequency(4.8) - hertz * 1e-6);
    r.wait(20);
    const double w = 2 * std::numbers::pi * hertz;
    const double down = 1 + w * w * 0.09 + b1 * b1 * 1.5 * 0.3;
    const auto m = r.console.transverse();
    EXPECT_NEAR(m.real(), b1 * 0.3 / down, 1e-4) << hertz;
    EXPECT_NEAR(m.imag(), b1 * 0.09 * w / down, 1e-4) << hertz;
    EXPECT_NEAR(r.console.longitudinal(), (1 + w * w * 0.09) / down, 1e-4) << hertz;
  }
}

TEST(FastPassage, MagnitudePeakLagsAndStandsAsTheCornuSpiralSays) {
  for (const double speed : {32768.0, 131072.0}) {
    const double rate = speed * 299.935 / 6.514288 * 1e-3; // Hz/s
    const double b1 = 0.05 * std::sqrt(rate);
    const Trace trace = rise(rig::sampleWith(1.5, 1.5), b1, 16384, speed, Part::Magnitude);
    EXPECT_NEAR(trace.centre(), 0.8605 * std::sqrt(rate), 0.03 * 0.8605 * std::sqrt(rate));
    EXPECT_NEAR(trace.height(), 1.149 * b1 / std::sqrt(rate), 0.03 * 1.149 * b1 / std::sqrt(rate));
  }
}

TEST(FastPassage, RingsBehindTheLine) {
  const Trace trace = rise(rig::sampleWith(1.5, 1.5), 1, 16384, 32768, Part::Real);
  int signChanges = 0;
  for (std::size_t i = trace.top() + 1; i < trace.value.size(); ++i)
    signChanges += trace.value[i] * trace.value[i - 1] < 0;
  EXPECT_GT(signChanges, 20);
}

TEST(Spins, FreeDecayGoesOnAfterTheTransmitterIsOff) {
  sim::Settings settings = rig::quiet();
  settings.sample = rig::sampleWith(1.5, 0.5);
  Rig r(settings);
  r.b1(1);
  r.mode(3);
  r.wait(20);
  const double before = std::abs(r.console.transverse());
  r.mode(0);
  r.wait(0.5);
  EXPECT_NEAR(std::abs(r.console.transverse()), before * std::exp(-1), 1e-3 * before);
  r.mode(2); // the same spins, whatever the mode
  EXPECT_NEAR(std::abs(r.console.transverse()), before * std::exp(-1), 1e-3 * before);
}

TEST(Spins, SaturatedSpinsRecoverWithT1) {
  sim::Settings settings = rig::quiet();
  settings.sample = rig::sampleWith(1.5, 0.1);
  Rig r(settings);
  r.power(63.5);
  r.mode(3);
  r.wait(20);
  const double left = r.console.longitudinal();
  EXPECT_LT(left, 0.03);
  r.mode(0);
  r.wait(3);
  const double transfer = 0.02; // what the transverse part still does while it decays
  EXPECT_NEAR(r.console.longitudinal(), 1 - (1 - left) * std::exp(-2), transfer);
}

TEST(Resonance, SitsWhereTheSolventsOwnFrequencyAndTheFieldOffsetPutIt) {
  sim::Settings settings = rig::quiet();
  settings.lineField = 1234;
  for (const sim::Solvent& solvent : sim::solvents()) {
    settings.sample = sim::sampleOf(solvent.name);
    Rig r(settings);
    EXPECT_NEAR(r.console.lineField(), 1234, 0.01) << solvent.name;
    r.field(1234);
    EXPECT_NEAR(r.console.offset(), 0, 0.01);
    r.field(2234);
    EXPECT_NEAR(r.console.offset(), 46.04, 0.01);
  }
}

TEST(Resonance, AnotherSolventsFrequencyShiftsTheLineByTheDifferenceInHertz) {
  Rig r(rig::quiet()); // CDCl3
  r.frequency(rig::lockFrequency(4.8));
  EXPECT_NEAR(r.console.offset(), (7.26 - 4.8) * 299.935 / 6.514288, 0.05);
  EXPECT_NEAR(r.console.lineField(), -2460, 1);
}

TEST(Resonance, DriftMovesTheLineAndAKickDoesAtOnce) {
  sim::Settings settings = rig::quiet();
  settings.driftHzPerHour = 100;
  Rig r(settings);
  r.wait(360);
  EXPECT_NEAR(r.console.lineField(), 33.3, 0.1);
  r.console.kick(-50);
  EXPECT_NEAR(r.console.lineField(), -16.7, 0.1);
}

TEST(Resonance, RandomKicksComeAtTheirRate) {
  sim::Settings settings = rig::quiet();
  settings.kicksPerHour = 600;
  settings.sample.lines.clear();
  settings.sample.lines.push_back({4.8, 1, 1, 0});
  Rig r(settings);
  int kicks = 0;
  double last = r.console.lineField();
  for (int i = 0; i < 36000; ++i) {
    r.wait(0.01);
    const double now = r.console.lineField();
    kicks += std::abs(now - last) > 1e-9;
    last = now;
  }
  EXPECT_GT(kicks, 35);
  EXPECT_LT(kicks, 90);
}

TEST(Resonance, SeveralLinesAddUp) {
  sim::Settings settings = rig::quiet();
  settings.sample = {"mixture", {{4.8, 0.4, 0.4, 1}, {4.0, 0.4, 0.4, 2}}, 0};
  Rig r(settings);
  r.b1(0.02);
  r.mode(3);
  r.wait(10);
  const double first = r.console.cleanSignal().real();
  r.field(r.console.lineField(1));
  EXPECT_NEAR(r.console.field(), 800, 1);
  r.wait(10);
  EXPECT_NEAR(r.console.cleanSignal().real() / first, 2, 0.02);
  EXPECT_NEAR(first, kScale * 0.02 * 0.4, 0.01 * kScale * 0.02 * 0.4);
}

} // namespace
