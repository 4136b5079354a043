// The receiver: noise and its measure, gain, phase, filter, converter.
#include "console_rig.h"

namespace {

using rig::Rig;

sim::Settings emptyTube() {
  sim::Settings settings;
  settings.sample.lines[0].amplitude = 0;
  return settings;
}

// Sigma of level and error read every 20 ms.
double sigmaSeen(Rig& r, int readings) {
  double sum = 0;
  for (int i = 0; i < readings; ++i) {
    r.wait(0.02);
    const double re = static_cast<double>(r.word(1)), im = static_cast<double>(r.word(2));
    sum += re * re + im * im;
  }
  return std::sqrt(sum / (2 * readings));
}

TEST(Noise, SigmaIsTheRootOfTheSampledNoiseWord) {
  for (const double gain : {2000.0, 9000.0})
    for (const double filter : {30.0, 100.0, 1000.0}) {
      Rig r(emptyTube());
      r.gain(gain);
      r.filter(filter);
      double word = 0;
      for (int i = 0; i < 8; ++i) {
        r.sample(r.console.frequency());
        word += static_cast<double>(r.word(6) & 65535) / 8;
      }
      r.mode(3);
      r.wait(1);
      const double sigma = sigmaSeen(r, 4000);
      EXPECT_NEAR(sigma, std::sqrt(word), 0.05 * sigma) << gain << " " << filter;
    }
}

TEST(Noise, WordInLockFollowsTheGainAtOnceAndTheNoiseInSeconds) {
  sim::Settings settings = emptyTube();
  settings.noise *= 2; // twice what the console was calibrated for: it has to find out
  Rig r(settings);
  r.gain(2000);
  r.call(202, {rig::HostArg::i4(1), rig::HostArg::r8(0)});
  r.call(202, {rig::HostArg::i4(0), rig::HostArg::r8(0)});
  r.mode(1);
  r.wait(30);
  const double sigma = sigmaSeen(r, 4000);
  EXPECT_NEAR(std::sqrt(static_cast<double>(r.word(6))), sigma, 0.05 * sigma);
  const double before = static_cast<double>(r.word(6));
  r.gain(4000);
  EXPECT_NEAR(static_cast<double>(r.word(6)) / before, 4, 0.1);
}

TEST(Noise, WordInLockIsNotMovedByASignalThatBuildsUp) {
  sim::Settings settings;
  settings.lineField = 0;
  Rig r(settings);
  r.power(46);
  r.phase(settings.bestPhase);
  r.sample(r.console.frequency());
  const double sampled = static_cast<double>(r.word(6));
  r.mode(1);
  r.wait(0.5);
  EXPECT_GT(r.word(1), 2000);
  EXPECT_NEAR(static_cast<double>(r.word(6)), sampled, 0.25 * sampled);
}

TEST(Noise, NoNoiseGivesANoiseWordOfZero) {
  sim::Settings settings = rig::quiet();
  Rig r(settings);
  r.sample(r.console.frequency());
  EXPECT_EQ(r.word(6), 0);
}

TEST(Noise, WordIsAnUnsigned16BitWordReadAsSigned) {
  sim::Settings settings = emptyTube();
  settings.noise *= 3.5;
  Rig r(settings);
  r.gain(10000); // sigma 227: power 51700
  r.sample(r.console.frequency());
  const long word = r.word(6);
  EXPECT_LT(word, 0);
  EXPECT_NEAR(static_cast<double>(word + 65536), 51700, 10000);
}

TEST(Noise, SampleAwayFromTheLineSeesNoSignal) {
  sim::Settings settings;
  settings.lineField = 0;
  Rig r(settings);
  r.mode(3);
  r.wait(5);
  r.sample(r.console.frequency());
  const long away = r.word(6);
  r.mode(3);
  r.wait(5);
  r.mode(7); // frequency not moved: the signal counts as noise
  EXPECT_LT(away, 60);
  EXPECT_GT(r.word(6) < 0 ? r.word(6) + 65536 : r.word(6), 60000);
}

TEST(Receiver, GainIsLinearAndLimited) {
  sim::Settings settings = rig::quiet();
  Rig r(settings);
  r.mode(3);
  r.gain(100);
  r.wait(20);
  const double level = static_cast<double>(r.word(1));
  r.gain(200);
  r.wait(0.01);
  EXPECT_NEAR(static_cast<double>(r.word(1)), 2 * level, 2);
  r.gain(-5);
  EXPECT_EQ(r.console.receiver().gain(), 0);
  r.gain(20000);
  EXPECT_EQ(r.console.receiver().gain(), 10000);
}

TEST(Receiver, PhaseTurnsLevelIntoError) {
  sim::Settings settings = rig::quiet();
  settings.bestPhase = 40;
  Rig r(settings);
  r.mode(3);
  r.wait(20);
  const double level = static_cast<double>(r.word(1));
  EXPECT_NEAR(static_cast<double>(r.word(2)), 0, 1);
  r.phase(130);
  r.wait(0.01);
  EXPECT_NEAR(static_cast<double>(r.word(1)), 0, 1);
  EXPECT_NEAR(static_cast<double>(r.word(2)), level, 1);
  r.phase(220);
  r.wait(0.01);
  EXPECT_NEAR(static_cast<double>(r.word(1)), -level, 1);
}

TEST(Receiver, FilterPassesHalfThePowerAtItsBandwidth) {
  sim::Settings settings = rig::quiet();
  settings.sample = rig::sampleWith(1000, 1000);
  Rig r(settings);
  r.b1(0.3);
  r.mode(3);
  r.wait(1);
  r.mode(0); // a free decay that lasts
  r.frequency(rig::lockFrequency(4.8) - 150e-6);
  const auto amplitude = [&r](double bandwidth) {
    r.filter(bandwidth);
    r.wait(1);
    return std::abs(r.console.cleanSignal());
  };
  const double open = amplitude(5000);
  EXPECT_NEAR(amplitude(150) / open, std::sqrt(0.5), 0.01);
  EXPECT_NEAR(amplitude(15) / open, 1 / std::sqrt(101.0), 0.01);
}

TEST(Receiver, ConverterClipsSoThatPeakPowerStaysBelowTwoToThe31) {
  sim::Settings settings;
  settings.sample = sim::sampleOf("D2O");
  settings.lineField = 0;
  Rig r(settings);
  r.gain(10000);
  r.power(63.5);
  r.phase(65);
  r.mode(5);
  double most = 0;
  for (int i = 0; i < 400; ++i) {
    r.wait(0.01);
    EXPECT_LE(std::abs(r.word(1)), 32767);
    EXPECT_LE(std::abs(r.word(2)), 32767);
    most = std::max(most, r.peakPower());
  }
  EXPECT_GT(most, 1e9);
  EXPECT_LT(most, 2147483648.0);
}

} // namespace
