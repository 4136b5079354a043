// A host that dies or answers slowly: nothing hangs, nothing nests, the operator is told.
#include "support/Panel.h"

namespace {

using ports::Answer;
using support::Panel;

const char* const kGone = "Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error";

// The words of every read in order, with no other read inside.
void expectNoNestedReads(const host::Lines& calls) {
  int next = 0;
  for (const std::string& call : calls) {
    if (call.rfind("201 HostGetLockData RefI4 ", 0) != 0) continue;
    ASSERT_EQ(call, host::readData()[static_cast<std::size_t>(next)]);
    next = (next + 1) % 9;
  }
}

TEST(HostGone, theWordsStayAndTheWindowAnswers) {
  Panel p;
  p.started();
  p.host().words = {1, 800, 2, 800, 2, 0, 9, 0, 0};
  p.press("Lock");
  p.tick(3);
  ASSERT_EQ(p.status(), "LOCKED");
  const std::string status = p.status();
  p.host().failAll();
  p.waitSeconds(1);
  p.menu("Preferences/Show Magn Data");
  EXPECT_EQ(p.record().ShowMagnitude, -1);
  EXPECT_EQ(p.record().LockMode, kModeLock);
}

TEST(HostGone, aModeButtonReportsItAndTheProgramLives) {
  for (const char* button : {"Off", "Lock", "Sweep", "Hold", "Auto", "Phase"}) {
    Panel p;
    p.started();
    p.press("Hold");
    p.host().failAll();
    int told = 0; // Sweep also queues a field centre, which fails once more
    p.platform.dialogs().otherwise = [&](const std::string& text, ports::Buttons) {
      EXPECT_EQ(text, kGone) << button;
      ++told;
      return Answer::Ok;
    };
    p.press(button);
    EXPECT_EQ(told, 1) << button;
    p.pass(2);
    EXPECT_LE(told, 2) << button;
    p.host().failNever();
    p.press("Off");
    EXPECT_EQ(p.status(), "OFF") << button;
  }
}

TEST(SlowHost, ticksDoNotNestAndButtonsAreAnswered) {
  Panel p;
  p.started();
  p.host().words = {1, 800, 2, 800, 2, 0, 9, 0, 0};
  p.press("Hold");
  p.pass();
  p.host().delay = 200 * headless::kMillisecond;
  int depth = 0, deepest = 0;
  p.host().pumpInside = [&] { // a call lets messages in, as calls to another process do
    deepest = std::max(deepest, ++depth);
    p.program().doEvents();
    --depth;
  };
  p.clear();
  p.waitSeconds(60);
  expectNoNestedReads(p.calls());
  EXPECT_EQ(deepest, 1) << "a call inside a call: a tick ran inside a tick";
  EXPECT_GT(p.calls().size(), 100U);

  headless::Micros pressed = -1;
  p.platform.pump().postAfter(50 * headless::kMillisecond, [&] {
    pressed = p.platform.clock().micros();
    p.menu("Preferences/Show Magn Data");
  });
  const headless::Micros start = p.platform.clock().micros();
  p.waitSeconds(5);
  ASSERT_GE(pressed, 0);
  EXPECT_LE(pressed - start, 300 * headless::kMillisecond) << "answered between two calls";
  EXPECT_EQ(p.record().ShowMagnitude, -1);
}

TEST(SlowHost, aDeferredChangeWaitsForNobody) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.host().delay = 200 * headless::kMillisecond;
  p.press("Hold");
  p.waitSeconds(3);
  p.clear();
  p.scroll(p.controls().vsRxGain, 500);
  p.waitSeconds(3);
  const host::Lines calls = p.calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), host::rxGain(500)), 1);
  EXPECT_TRUE(p.main().Timer1.enabled());
}

} // namespace
