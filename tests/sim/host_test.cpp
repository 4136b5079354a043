// Handles, faults on request, and one run being like the other.
#include "console_rig.h"

#include <vector>

namespace {

using rig::HostArg;
using rig::Rig;

TEST(Host, HandlesShareOneConsole) {
  Rig r(rig::quiet());
  sim::SimHostFinder finder(r.spectrometer);
  const auto first = finder.findRunningHost(), second = finder.findRunningHost();
  ASSERT_TRUE(first && second);
  first->call(30, {HostArg::r8(444)});
  EXPECT_EQ(second->call(201, {HostArg::refI4(0)}), 444);
}

TEST(Host, IsNotFoundUnlessItRuns) {
  Rig r(rig::quiet());
  sim::SimHostFinder finder(r.spectrometer);
  r.spectrometer->running = false;
  EXPECT_FALSE(finder.findRunningHost());
  EXPECT_EQ(r.refusal(197), 0x800706BAu);
  r.spectrometer->running = true;
  EXPECT_TRUE(finder.findRunningHost());
}

TEST(Faults, NoDataReadsMinusOneForTheField) {
  Rig r(rig::quiet());
  r.field(500);
  r.spectrometer->faults.noData = true;
  EXPECT_EQ(r.word(0), -1);
  for (int i = 1; i <= 8; ++i) EXPECT_EQ(r.word(i), 0);
  EXPECT_EQ(r.refusal(26, {HostArg::r8(1)}), 0u);
  r.spectrometer->faults.noData = false;
  EXPECT_EQ(r.word(0), 500);
}

TEST(Faults, AHostThatIsGoneFailsEveryCallAndChangesNothing) {
  Rig r(rig::quiet());
  r.spectrometer->faults.hostGone = true;
  EXPECT_EQ(r.refusal(30, {HostArg::r8(99)}), 0x800706BAu);
  EXPECT_EQ(r.refusal(197), 0x800706BAu);
  EXPECT_FALSE(sim::SimHostFinder(r.spectrometer).findRunningHost());
  r.spectrometer->faults.hostGone = false;
  EXPECT_EQ(r.word(0), 0);
}

TEST(Faults, CallsFailAsAskedFromACallOn) {
  Rig r(rig::quiet());
  sim::Faults& faults = r.spectrometer->faults;
  faults.failWith = sim::kUnspecifiedFailure;
  faults.failFrom = faults.calls + 3;
  EXPECT_EQ(r.refusal(197), 0u);
  EXPECT_EQ(r.refusal(197), 0u);
  EXPECT_EQ(r.refusal(197), 0x80004005u);
  EXPECT_EQ(r.refusal(30, {HostArg::r8(7)}), 0x80004005u);
  faults.failWith = 0;
  EXPECT_EQ(r.word(0), 0);
}

TEST(Faults, OneOperationAloneCanFail) {
  Rig r(rig::quiet());
  r.spectrometer->faults.failWith = sim::kUnspecifiedFailure;
  r.spectrometer->faults.failDispid = 22;
  EXPECT_EQ(r.refusal(22, {HostArg::i4(-1)}), 0x80004005u);
  EXPECT_FALSE(r.console.lockedFlag());
  EXPECT_EQ(r.refusal(197), 0u);
}

TEST(Faults, WordsCanBeForced) {
  Rig r(rig::quiet());
  r.spectrometer->faults.forcedWords[5] = 32768;
  EXPECT_EQ(r.word(5), 32768);
  EXPECT_EQ(r.word(4), 0);
}

TEST(Faults, BeforeCallSeesTheOperationAndMayStrike) {
  Rig r(rig::quiet());
  std::vector<int> seen;
  r.spectrometer->faults.beforeCall = [&](int dispid) {
    seen.push_back(dispid);
    r.wait(0.2); // a slow host: time passes in the call
    if (dispid == 31) r.spectrometer->faults.hostGone = true;
  };
  r.field(0);
  EXPECT_NEAR(r.console.time(), 0.2, 1e-9);
  EXPECT_EQ(r.refusal(31, {HostArg::i4(1)}), 0x800706BAu);
  EXPECT_EQ(seen, (std::vector<int>{30, 31}));
}

TEST(Faults, AConsoleResetMidLockFallsBackToOff) {
  sim::Settings settings;
  settings.lineField = 0;
  Rig r(settings);
  r.mode(1);
  r.wait(5);
  EXPECT_GT(r.word(3), 500);
  r.console.powerUp();
  EXPECT_EQ(r.call(197), 0);
  r.wait(5);
  EXPECT_LT(std::abs(r.word(1)), 10);
}

std::vector<long> run(std::uint64_t seed, double tick) {
  sim::Settings settings;
  settings.seed = seed;
  settings.kicksPerHour = 3000;
  Rig r(settings);
  std::vector<long> words;
  for (const int code : {5, 2, 7, 3, 1, 0}) {
    r.mode(code);
    for (int i = 0; i < 30; ++i) {
      for (double t = 0; t < 0.03 - tick / 2; t += tick) r.wait(tick);
      for (int w = 0; w <= 8; ++w) words.push_back(r.word(w));
    }
  }
  return words;
}

TEST(Determinism, SameSeedSameRun) { EXPECT_EQ(run(5, 0.01), run(5, 0.01)); }

TEST(Determinism, AnotherSeedIsAnotherRun) { EXPECT_NE(run(5, 0.01), run(6, 0.01)); }

TEST(Determinism, SplittingTheTimeChangesNothing) { EXPECT_EQ(run(5, 0.01), run(5, 0.0025)); }

} // namespace
