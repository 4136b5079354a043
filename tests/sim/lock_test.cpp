// The closed loop and the hardware's own judgement of it.
#include "console_rig.h"

namespace {

using rig::Rig;

// Thresholds as the panel takes them from the noise word.
struct Judge {
  explicit Judge(Rig& r) {
    r.sample(r.console.frequency());
    const double noise = std::nearbyint(std::sqrt(static_cast<double>(r.word(6))));
    level = 16 * noise;
    error = 4 * noise;
  }
  bool locked(Rig& r) const {
    return static_cast<double>(std::abs(r.word(4)))<error&& static_cast<double>(r.word(3))> level;
  }
  double level, error;
};

sim::Settings magnet(const sim::Solvent& solvent, double driftHzPerHour = 10) {
  sim::Settings settings;
  settings.sample = sim::sampleOf(solvent.name);
  settings.driftHzPerHour = driftHzPerHour;
  settings.lineField = 0;
  return settings;
}

void setUp(Rig& r, const sim::Solvent& solvent, double level = 500) {
  r.power(solvent.txPower);
  r.gain(solvent.rxGain);
  r.mode(3);
  r.wait(10);
  const double now = r.console.cleanSignal().real();
  r.gain(std::nearbyint(solvent.rxGain * level / now));
}

class EverySolvent : public testing::TestWithParam<sim::Solvent> {};

TEST_P(EverySolvent, PullsInFromHalfALinewidthAndHoldsUnderDrift) {
  const sim::Solvent& solvent = GetParam();
  for (const double side : {-0.5, 0.5}) {
    const sim::Settings settings = magnet(solvent);
    Rig r(settings);
    setUp(r, solvent);
    const Judge judge(r);
    r.mode(3);
    const double width = 1 / (std::numbers::pi * settings.sample.effectiveT2(solvent.line)); // Hz
    r.field(std::nearbyint(r.console.lineField() + side * width / 0.046));
    r.wait(2);
    EXPECT_NEAR(r.console.offset(), side * width, 0.05);
    r.mode(1);
    r.wait(3);
    EXPECT_TRUE(judge.locked(r));
    double worst = 0;
    for (int i = 0; i < 300; ++i) {
      r.wait(0.5);
      worst = std::max(worst, std::abs(r.console.offset()));
      EXPECT_TRUE(judge.locked(r));
    }
    EXPECT_LT(worst, 0.05); // Hz
    EXPECT_NEAR(static_cast<double>(r.word(0)), r.console.lineField(), 2);
  }
}

TEST_P(EverySolvent, IsStableFromAFaintToAFullScaleLevel) {
  const sim::Solvent& solvent = GetParam();
  for (const double level : {100.0, 2000.0, 20000.0}) {
    Rig r(magnet(solvent));
    setUp(r, solvent, level);
    r.mode(1);
    r.wait(10);
    double worst = 0;
    for (int i = 0; i < 100; ++i) {
      r.wait(0.05);
      worst = std::max(worst, std::abs(r.console.offset()));
    }
    EXPECT_LT(worst, 0.5) << level; // the noise that the loop follows at the highest gain included
  }
}

INSTANTIATE_TEST_SUITE_P(Loop, EverySolvent,
                         testing::ValuesIn(sim::solvents().begin(), sim::solvents().end()),
                         [](const auto& solvent) {
                           std::string name;
                           for (const char c : solvent.param.name)
                             if (std::isalnum(static_cast<unsigned char>(c))) name += c;
                           return name;
                         });

TEST(Loop, ReadsLockedForAnHourOfTicks) {
  const sim::Solvent& solvent = sim::solvents()[0];
  Rig r(magnet(solvent));
  setUp(r, solvent);
  const Judge judge(r);
  r.mode(3);
  r.mode(1);
  r.wait(3);
  int searching = 0;
  for (int tick = 0; tick < 360000; ++tick) {
    r.wait(0.01);
    searching += !judge.locked(r);
  }
  EXPECT_EQ(searching, 0);
}

TEST(Loop, AStrongDriftIsFollowed) {
  const sim::Solvent& solvent = sim::solvents()[0];
  Rig r(magnet(solvent, 50));
  setUp(r, solvent);
  r.mode(1);
  r.wait(360);
  EXPECT_NEAR(r.console.lineField(), 17, 2);
  EXPECT_NEAR(static_cast<double>(r.word(0)), r.console.lineField(), 2);
}

TEST(Loop, AKickOfSeveralLinewidthsReadsSearchingAndIsFoundAgain) {
  const sim::Solvent& solvent = sim::solvents()[0];
  Rig r(magnet(solvent, 0));
  setUp(r, solvent);
  const Judge judge(r);
  r.mode(3);
  r.mode(1);
  r.wait(5);
  ASSERT_TRUE(judge.locked(r));
  r.console.kick(300);
  r.wait(2);
  EXPECT_FALSE(judge.locked(r));
  r.wait(60);
  EXPECT_TRUE(judge.locked(r));
  EXPECT_NEAR(static_cast<double>(r.word(0)), 300, 3);
}

TEST(Loop, UpsideDownPhaseDrivesTheFieldAwayFromTheLine) {
  const sim::Solvent& solvent = sim::solvents()[0];
  Rig r(magnet(solvent));
  setUp(r, solvent);
  const Judge judge(r);
  r.mode(3);
  r.phase(r.console.settings().bestPhase + 180);
  r.field(10);
  r.mode(1);
  r.wait(30);
  EXPECT_GT(std::abs(r.console.offset()), 5);
  EXPECT_FALSE(judge.locked(r));
}

TEST(Loop, ConstantsActAndZeroOpensTheLoop) {
  const sim::Solvent& solvent = sim::solvents()[0];
  const auto driftAway = [&solvent](double p, double i) {
    Rig r(magnet(solvent));
    setUp(r, solvent);
    r.call(202, {rig::HostArg::i4(0), rig::HostArg::r8(p)});
    r.call(202, {rig::HostArg::i4(1), rig::HostArg::r8(i)});
    r.mode(1);
    r.wait(1);
    r.console.kick(15);
    r.wait(0.2);
    return std::abs(r.console.offset());
  };
  EXPECT_NEAR(driftAway(0, 0), 15 * 0.046, 0.05);
  EXPECT_LT(driftAway(0, 15), 0.9 * driftAway(0, 0));
  EXPECT_LT(driftAway(0, 50), 0.7 * driftAway(0, 15));
  EXPECT_LT(driftAway(10000, 50), 0.4 * driftAway(0, 0));
}

TEST(Loop, StopsAtTheEndOfTheFieldRangeAndComesBack) {
  sim::Settings settings = magnet(sim::solvents()[0], 0);
  settings.lineField = 131060;
  Rig r(settings);
  r.gain(850);
  r.field(131000);
  r.mode(1);
  r.wait(20);
  EXPECT_NEAR(static_cast<double>(r.word(0)), 131060, 2);
  r.console.kick(200);
  r.wait(60);
  EXPECT_EQ(r.word(0), 131071);
  r.console.kick(-200);
  r.wait(30);
  EXPECT_NEAR(static_cast<double>(r.word(0)), 131060, 2);
}

TEST(Loop, LeavingForHoldKeepsTheFieldReached) {
  const sim::Solvent& solvent = sim::solvents()[0];
  Rig r(magnet(solvent, 0));
  setUp(r, solvent);
  r.field(25);
  r.mode(1);
  r.wait(10);
  const long reached = r.word(0);
  EXPECT_NEAR(static_cast<double>(reached), 0, 2);
  r.mode(3);
  r.wait(1);
  EXPECT_EQ(r.word(0), reached);
}

} // namespace
