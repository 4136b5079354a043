#include "reentry/reentry_bench.h"

namespace {

using support::expectLegalState;
using support::kModeButtons;
using support::Point;
using support::ReentryPanel;

constexpr const char* pointName(Point point) { return point == Point::PumpTurn ? "pump turn" : "host call"; }

// Where each run begins: the panel has been in this mode for a while, a lock has been judged locked.
void enter(ReentryPanel& p, int mode) {
  if (mode != 0) p.press(kModeButtons[mode]);
  p.pass(6);
  if (mode == kModeLock) p.record().LockState = kLocked;
}

class PressInside : public testing::TestWithParam<int> {};

// Presses `to`, and at every point inside it `inner`.
void pressInEveryPoint(int from, int to, int inner, Point point) {
  std::uint64_t points = 0;
  {
    ReentryPanel p;
    enter(p, from);
    const std::uint64_t before = p.pointsSoFar(point);
    p.press(kModeButtons[to]);
    points = p.pointsSoFar(point) - before;
  }
  ASSERT_GT(points, 1U);
  for (std::uint64_t k = 1; k <= points; ++k) {
    SCOPED_TRACE(std::string("from ") + kModeButtons[from] + " to " + kModeButtons[to] + ", at " +
                 pointName(point) + " " + std::to_string(k) + " " + kModeButtons[inner]);
    ReentryPanel p;
    enter(p, from);
    std::int32_t centre = 0;
    p.at(point, k, [&] {
      p.press(kModeButtons[inner]);
      centre = p.record().FieldCenter;
    });
    p.press(kModeButtons[to]);
    ASSERT_TRUE(p.happened);
    EXPECT_EQ(p.record().FieldCenter, centre) << "the older button moves nothing any more";
    EXPECT_EQ(p.record().LockMode, inner) << "the newer button wins";
    expectLegalState(p);
    // Among the first four modes the sweep's offset is on exactly while sweeping.
    if (from < 4 && to < 4 && inner < 4) {
      EXPECT_EQ(p.record().TxPower, inner == kModeSweep ? 30 : 20);
    }
    if (testing::Test::HasFailure()) return;
  }
}

TEST_P(PressInside, aModeChangeTheNewerButtonWins) {
  const int to = GetParam();
  for (int from = 0; from <= 5; ++from)
    for (int inner = 0; inner <= 5; ++inner)
      for (const Point point : {Point::PumpTurn, Point::HostCall}) {
        pressInEveryPoint(from, to, inner, point);
        if (HasFailure()) return;
      }
}

INSTANTIATE_TEST_SUITE_P(OfEachButton, PressInside, testing::Range(0, 6),
                         [](const auto& param) { return std::string(kModeButtons[param.param]); });

class InsideATick : public testing::TestWithParam<int> {
 protected:
  // Every point of one tick of the mode, with this happening in it.
  void atEveryPoint(const std::function<void(ReentryPanel&)>& happening,
                    const std::function<void(ReentryPanel&)>& check) {
    for (const Point point : {Point::PumpTurn, Point::HostCall}) {
      const std::uint64_t points = point == Point::PumpTurn ? 21 : GetParam() == kModeLock ? 10 : 9;
      for (std::uint64_t k = 1; k <= points; ++k) {
        SCOPED_TRACE(std::string(pointName(point)) + " " + std::to_string(k));
        ReentryPanel p;
        enter(p, GetParam());
        p.host().words[3] = 100000; // locked
        p.at(point, k, [&] { happening(p); });
        p.main().Timer1.fire();
        ASSERT_TRUE(p.happened);
        check(p);
        if (HasFailure()) return;
      }
    }
  }
};

TEST_P(InsideATick, everyButtonTakesEffect) {
  for (int inner = 0; inner <= 5; ++inner) {
    SCOPED_TRACE(kModeButtons[inner]);
    atEveryPoint([&](ReentryPanel& p) { p.press(kModeButtons[inner]); },
                 [&](ReentryPanel& p) {
                   EXPECT_EQ(p.record().LockMode, inner);
                   expectLegalState(p);
                 });
  }
}

TEST_P(InsideATick, twoButtonsLeaveTheSecond) {
  atEveryPoint(
      [](ReentryPanel& p) {
        p.press("Off");
        p.press("Lock");
      },
      [](ReentryPanel& p) {
        EXPECT_EQ(p.record().LockMode, kModeLock);
        expectLegalState(p);
      });
}

TEST_P(InsideATick, aSliderIsSentByTheIdleLoop) {
  atEveryPoint(
      [](ReentryPanel& p) {
        p.controls().vsTxPwr.setValue(51);
        p.controls().vsRxGain.setValue(4321);
        p.controls().vsPhase.setValue(-90);
      },
      [](ReentryPanel& p) {
        EXPECT_EQ(p.record().LockMode, GetParam());
        p.pass(2);
        EXPECT_EQ(p.hardwarePower, 25.5);
        EXPECT_TRUE(p.record().PendingRxGain) << "waits until something is due again";
        support::carryOutAll(p);
        const host::Lines calls = p.calls();
        EXPECT_NE(std::find(calls.begin(), calls.end(), host::rxGain(4321)), calls.end());
        EXPECT_NE(std::find(calls.begin(), calls.end(), host::phase(270)), calls.end());
        expectLegalState(p);
      });
}

TEST_P(InsideATick, aMovedCentreIsSentByTheIdleLoop) {
  atEveryPoint(
      [](ReentryPanel& p) {
        p.main().hsCenter.setValue(1000);
        p.clear();
      },
      [](ReentryPanel& p) {
        p.pass();
        const host::Lines calls = p.calls();
        EXPECT_NE(std::find(calls.begin(), calls.end(), host::field(4000)), calls.end());
        expectLegalState(p);
      });
}

TEST_P(InsideATick, closingEndsTheProgramAtOnce) {
  for (const Point point : {Point::PumpTurn, Point::HostCall})
    for (std::uint64_t k = 1; k <= 9; ++k) {
      ReentryPanel p;
      enter(p, GetParam());
      p.expectBox("Save the changes?", ports::Answer::No, [&p] { p.clear(); });
      p.at(point, k, [&p] { p.close(); });
      EXPECT_TRUE(p.ends([&p] { p.main().Timer1.fire(); }));
      EXPECT_TRUE(p.calls().empty()) << "nothing is sent on the way out";
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachMode, InsideATick, testing::Range(1, 6),
                         [](const auto& param) { return std::string(kModeButtons[param.param]); });

TEST(InsideAModeChange, closingEndsTheProgramAtOnce) {
  for (int to = 0; to <= 5; ++to)
    for (const Point point : {Point::PumpTurn, Point::HostCall})
      for (std::uint64_t k = 1; k <= 13; ++k) {
        SCOPED_TRACE(std::string(kModeButtons[to]) + " " + std::to_string(k));
        ReentryPanel p;
        p.expectBox("Save the changes?", ports::Answer::No, [&p] { p.clear(); });
        p.at(point, k, [&p] { p.close(); });
        EXPECT_TRUE(p.ends([&] { p.press(kModeButtons[to]); }));
        EXPECT_TRUE(p.calls().empty());
      }
}

TEST(InsideAModeChange, aSliderStaysAsTheOperatorSetIt) {
  for (int to = 0; to <= 5; ++to)
    for (std::uint64_t k = 1; k <= 19; ++k) {
      SCOPED_TRACE(std::string(kModeButtons[to]) + " " + std::to_string(k));
      ReentryPanel p;
      p.at(Point::PumpTurn, k, [&p] { p.controls().vsRxGain.setValue(4321); });
      p.press(kModeButtons[to]);
      EXPECT_EQ(p.record().LockMode, to);
      expectLegalState(p);
      EXPECT_EQ(p.record().RxGain, 4321);
    }
}

// Settings opened meanwhile take over the mode the hardware is in; what was under way then gives way.
TEST(InsideAModeChange, openedSettingsAreNotOverrun) {
  for (int to = 0; to <= 5; ++to)
    for (const Point point : {Point::PumpTurn, Point::HostCall}) {
      std::uint64_t points = 0;
      {
        ReentryPanel p;
        const std::uint64_t before = p.pointsSoFar(point);
        p.press(kModeButtons[to]);
        points = p.pointsSoFar(point) - before;
      }
      for (std::uint64_t k = 1; k <= points; ++k) {
        SCOPED_TRACE(std::string(kModeButtons[to]) + " " + pointName(point) + " " + std::to_string(k));
        ReentryPanel p;
        int mode = -1;
        p.at(point, k, [&] {
          p.platform.dialogs().expectOpenFile(support::Panel::kIniPath);
          p.menu("File/Open Settings");
          mode = p.record().LockMode;
          p.clear();
        });
        p.press(kModeButtons[to]);
        EXPECT_EQ(p.record().LockMode, mode);
        EXPECT_EQ(p.main().Toolbar1.pressed(), mode + 1);
        for (const std::string& call : p.calls())
          EXPECT_FALSE(call.starts_with("31 "))
              << "the hardware keeps the mode that was taken over: " << call;
        p.pass(3);
        EXPECT_EQ(p.main().Timer1.enabled(), mode != kModeOff);
        if (testing::Test::HasFailure()) return;
      }
    }
}

TEST(InsideAModeChange, aWarningThatIsOvertakenLeavesTheNewThresholds) {
  ReentryPanel p;
  p.host().words[6] = 0;
  p.expectBox("Warning - low noise level", ports::Answer::Ok, [&p] {
    p.host().words[6] = 400;
    p.press("Lock");
  });
  p.press("Lock");
  EXPECT_EQ(p.program().cycle.LockLevelThreshold, 320);
  expectLegalState(p);
}

} // namespace
