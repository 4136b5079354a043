#include "support/Panel.h"
#include <array>

namespace {

using support::Panel;

struct Flags {
  bool control, txPower, rxGain, phase, fieldCenter;
};

// Every combination of the five flags, one pass.
class Pending : public testing::TestWithParam<int> {
 protected:
  Flags flags() const {
    const int bits = GetParam();
    return {(bits & 16) != 0, (bits & 8) != 0, (bits & 4) != 0, (bits & 2) != 0, (bits & 1) != 0};
  }
};
INSTANTIATE_TEST_SUITE_P(IdleLoop, Pending, testing::Range(0, 32));

TEST_P(Pending, onePassDoesTheFirstOneOnly) {
  Panel p;
  p.started();
  p.controls(); // loaded before, so that its own loading is not in the list
  p.clear();
  const Flags set = flags();
  LockParameters& r = p.record();
  r.PendingControl = flag(set.control);
  r.PendingTxPower = flag(set.txPower);
  r.PendingRxGain = flag(set.rxGain);
  r.PendingPhase = flag(set.phase);
  r.PendingFieldCenter = flag(set.fieldCenter);
  r.LockMode = kModeHold;
  r.LockPhase = 90;
  p.main().Timer1.setEnabled(false);

  Flags left = set;
  host::Lines calls;
  if (set.control) {
    left.control = false;
    if (set.txPower) {
      left.txPower = false;
      calls = {host::txPower(r.TxPower)};
    } else if (set.rxGain) {
      left.rxGain = false;
      calls = {host::rxGain(r.RxGain)};
    } else if (set.phase) {
      left.phase = false;
      calls = {host::phase(90)};
    } else if (set.fieldCenter) {
      left.fieldCenter = false;
      calls = host::holdAt(r.FieldCenter);
    }
  }
  p.pass();
  p.expectCalls({calls});
  EXPECT_EQ(r.PendingControl, 0);
  EXPECT_EQ(r.PendingTxPower, flag(left.txPower));
  EXPECT_EQ(r.PendingRxGain, flag(left.rxGain));
  EXPECT_EQ(r.PendingPhase, flag(left.phase));
  EXPECT_EQ(r.PendingFieldCenter, flag(left.fieldCenter));
  EXPECT_EQ(p.main().Timer1.enabled(), !set.control)
      << "the timer is looked at only when nothing was pending";

  p.pass(); // what is left waits for the next PendingControl
  p.expectCalls({});
  EXPECT_EQ(r.PendingPhase, flag(left.phase));
  EXPECT_TRUE(p.main().Timer1.enabled());
}

TEST(IdleLoop, fourPassesServeFourRequestsInTheirOrder) {
  Panel p;
  p.started();
  p.controls();
  p.clear();
  LockParameters& r = p.record();
  r.PendingTxPower = r.PendingRxGain = r.PendingPhase = r.PendingFieldCenter = kTrue;
  for (int i = 0; i < 4; ++i) {
    r.PendingControl = kTrue;
    p.pass();
  }
  p.expectCalls({host::txPower(r.TxPower), host::rxGain(r.RxGain), host::phase(30),
                 host::sweepSettings(400, 8000, 20000)});
}

TEST(IdleLoop, theTimerFollowsTheMode) {
  Panel p;
  p.started();
  for (const std::int16_t mode : {kModeLock, kModeOff, kModeSweep, kModeOff, kModePhase}) {
    p.record().LockMode = mode;
    p.pass();
    EXPECT_EQ(p.main().Timer1.enabled(), mode != kModeOff) << mode;
  }
}

TEST(IdleLoop, endsWhenNoWindowIsLoaded) {
  Panel p;
  EXPECT_FALSE(vbLock_mod::idlePass(p.program()));
}

TEST(IdleLoop, aHiddenWindowKeepsTheProgramAlive) {
  Panel p;
  p.started();
  p.main().hide();
  EXPECT_TRUE(vbLock_mod::idlePass(p.program()));
}

TEST(IdleLoop, waitsOnlyWhenAPassWouldChangeNothing) {
  Panel p;
  p.started();
  p.pass();
  EXPECT_TRUE(vbLock_mod::idleMayWait(p.program()));
  p.record().PendingControl = kTrue;
  EXPECT_FALSE(vbLock_mod::idleMayWait(p.program()));
  p.record().PendingControl = kFalse;
  p.record().LockMode = kModeLock;
  EXPECT_FALSE(vbLock_mod::idleMayWait(p.program())) << "the timer has to be started";
}

TEST(IdleLoop, draggingASliderSendsOncePerPass) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.clear();
  for (const int value : {50, 60, 70}) p.scroll(p.controls().vsTxPwr, value);
  p.expectCalls({});
  p.pass(3);
  p.expectCalls({host::txPower(35)});
}

TEST(IdleLoop, aDeferredChangeThatFailsIsReportedAndTheProgramLives) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.press("Hold");
  p.pass();
  p.host().failAll();
  p.expectBox("Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error", ports::Answer::Ok);
  p.scroll(p.controls().vsRxGain, 500);
  p.pass(3);
  EXPECT_EQ(p.record().PendingRxGain, 0) << "told once, not at every pass";
  EXPECT_EQ(p.record().PendingControl, 0);
  EXPECT_TRUE(p.main().Timer1.enabled());
  p.host().failNever();
  p.clear();
  p.scroll(p.controls().vsRxGain, 600);
  p.pass();
  p.expectCalls({host::rxGain(600)});
}

} // namespace
