#include "reentry/reentry_bench.h"

namespace {

using support::expectLegalState;
using support::kModeButtons;
using support::Point;
using support::ReentryPanel;

// A console whose every tick ends a half sweep and whose findings carry an AutoLock through all its steps: no
// peak at first, then one upside down, then a good one.
class AutoLockRun : public ReentryPanel {
 public:
  AutoLockRun() {
    words = [this](int dispid, std::span<const ports::HostArg> args) -> std::optional<double> {
      if (dispid != 201) return std::nullopt;
      const int index = static_cast<int>(args[0].value);
      if (record().LockMode != kModeAuto) return std::nullopt;
      const bool sample = hardwareMode == 7 || args[0].type == ports::HostArg::Type::I4;
      if (index == 0 && !sample) dac = -dac;
      return wordOf(index, sample);
    };
  }
  // Presses Auto and lets it run until something has happened.
  void run() {
    press("Auto");
    for (int left = 60; left > 0 && record().LockMode == kModeAuto && !happened; --left) tick();
  }
  void runOn() {
    for (int left = 60; left > 0 && record().LockMode == kModeAuto; --left) tick();
  }
  double dac = 100;

 private:
  double wordOf(int index, bool sample) {
    const AutoLockState& state = program().autoLock;
    switch (index) {
    case 0:
      return dac;
    case 4:
      return state.AutoLockStep == 1 && state.SearchCount == 0 ? 16 : 0;
    case 5:
      return state.AutoLockStep == 1 && state.SearchCount == 0 ? 0 : 61;
    case 6:
      return sample ? 9 : 0;
    case 7:
      return state.AutoLockStep == 3 && state.DownPhaseWord == 0 ? -800 : 800;
    default:
      return 0;
    }
  }
};

std::uint64_t pointsOfARun(Point point) {
  AutoLockRun p;
  const std::uint64_t before = p.pointsSoFar(point);
  p.run();
  const std::uint64_t points = p.pointsSoFar(point) - before;
  EXPECT_EQ(p.record().LockMode, kModeLock) << "left alone, the run ends in Lock";
  EXPECT_EQ(p.program().autoLock.AutoLockTrim, kTrue);
  expectLegalState(p);
  return points;
}

TEST(AutoLockRun, leftAloneGoesThroughEveryStep) {
  AutoLockRun p;
  p.platform.recordStatus();
  p.run();
  host::Lines statuses = p.texts({support::Kind::Status});
  for (const char* wanted : {"Acquiring noise power", "Locating a peak", "Found a peak; Centering it",
                             "Adjusting Rx gain", "Auto Phasing", "Centering the peak again"})
    EXPECT_TRUE(std::any_of(statuses.begin(), statuses.end(), [&](const std::string& s) {
      return s.find(wanted) != std::string::npos;
    })) << wanted;
}

class At : public testing::TestWithParam<Point> {
 protected:
  void everywhere(const std::function<void(AutoLockRun&)>& happening,
                  const std::function<void(AutoLockRun&)>& check) {
    const std::uint64_t points = pointsOfARun(GetParam());
    ASSERT_GT(points, 150U);
    for (std::uint64_t k = 1; k <= points; ++k) {
      SCOPED_TRACE("point " + std::to_string(k));
      AutoLockRun p;
      p.at(GetParam(), k, [&] { happening(p); });
      p.run();
      ASSERT_TRUE(p.happened);
      check(p);
      if (HasFailure()) return;
    }
  }
};

TEST_P(At, everyPointEachModeButtonTakesOver) {
  for (int inner = 0; inner <= 5; ++inner) {
    SCOPED_TRACE(kModeButtons[inner]);
    std::int32_t centre = 0;
    everywhere(
        [&](AutoLockRun& p) {
          p.press(kModeButtons[inner]);
          centre = p.record().FieldCenter;
        },
        [&](AutoLockRun& p) {
          EXPECT_EQ(p.record().FieldCenter, centre) << "the run that was left moves nothing";
          EXPECT_EQ(p.record().LockMode, inner);
          EXPECT_TRUE(inner == kModeLock || p.program().autoLock.AutoLockTrim == kFalse);
          if (inner >= kModeAuto) {
            EXPECT_EQ(p.program().autoLock.noiseCount, 0) << "a fresh run";
          }
          expectLegalState(p);
        });
  }
}

TEST_P(At, everyPointTheWindowCanBeClosed) {
  const std::uint64_t points = pointsOfARun(GetParam());
  for (std::uint64_t k = 1; k <= points; ++k) {
    SCOPED_TRACE("point " + std::to_string(k));
    AutoLockRun p;
    p.expectBox("Save the changes?", ports::Answer::No, [&p] { p.clear(); });
    p.at(GetParam(), k, [&] { p.close(); });
    EXPECT_TRUE(p.ends([&] { p.run(); }));
    EXPECT_TRUE(p.calls().empty());
    if (HasFailure()) return;
  }
}

TEST_P(At, everyPointASliderMayMoveAndTheRunGoesOn) {
  everywhere([](AutoLockRun& p) { p.controls().vsRxGain.setValue(1300); },
             [](AutoLockRun& p) {
               p.runOn();
               EXPECT_EQ(p.record().LockMode, kModeLock);
               expectLegalState(p);
             });
}

// The host stops answering: every attempt is told, nothing hangs, and a mode button works once it is back.
TEST_P(At, everyPointTheHostMayStopAnswering) {
  const std::uint64_t points = pointsOfARun(GetParam());
  for (std::uint64_t k = 1; k <= points; ++k) {
    SCOPED_TRACE("point " + std::to_string(k));
    AutoLockRun p;
    int told = 0;
    p.platform.dialogs().otherwise = [&](const std::string& text, ports::Buttons) {
      EXPECT_TRUE(text.starts_with("Run-time error '-2147023174 (800706ba)'")) << text;
      ++told;
      return std::optional(ports::Answer::Ok);
    };
    p.at(GetParam(), k, [&] { p.host().failAll(); });
    p.run();
    ASSERT_TRUE(p.happened);
    p.tick(3);
    told = 0;
    p.press("Hold");
    EXPECT_EQ(told, 1);
    p.host().failNever();
    p.press("Off");
    p.pass(3);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(p.record().LockMode, kModeOff);
    EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonOff);
    EXPECT_EQ(p.hardwareMode, 0);
    EXPECT_EQ(p.status(), "OFF");
    EXPECT_FALSE(p.main().Timer1.enabled());
    p.press("Hold");
    EXPECT_EQ(p.hardwareMode, 3);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Run, At, testing::Values(Point::PumpTurn, Point::HostCall), [](const auto& param) {
  return std::string(param.param == Point::PumpTurn ? "PumpTurns" : "HostCalls");
});

} // namespace
