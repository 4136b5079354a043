#include "support/Panel.h"
#include "ui/main/LockLog.h"
#include <gtest/gtest.h>

namespace {

using support::Kind;
using support::Panel;

constexpr const char* kPath = "C:\\logs\\Lock.Log";

class Log : public testing::Test {
 protected:
  void start(const std::string& interval = "1") {
    p.set("Display", "LogFileName", kPath).set("Display", "LogInterval", interval);
    p.host().words[0] = 404;
    p.host().words[1] = -12;
    p.host().words[2] = 7;
    p.host().words[6] = 100;
    p.started();
    p.menu("Preferences/Log Enabled");
  }
  std::string& text() { return p.platform.files().texts[kPath]; }
  std::size_t appends() { return p.texts({Kind::File}).size(); }
  void fireTick() { p.main().Timer1.fire(); }
  void advance(double seconds) {
    p.platform.clock().advance(static_cast<headless::Micros>(seconds * headless::kSecond));
  }
  Panel p;
};

TEST_F(Log, theHeaderIsSixLines) {
  start();
  p.press("Lock");
  EXPECT_EQ(text(), "Lock - Logging started at 12/1/2025 9:00:00 AM\r\n"
                    " Tx        Rx     Ph    Width     Freq         Solvent \r\n"
                    " 20.0     1200     30     8000    46.044750     CDCl3\r\n"
                    " \r\n"
                    "Date/Time                   DAC           Real          Imag\r\n"
                    "12/1/2025 9:00:00 AM         400           0             0 \r\n");
  EXPECT_EQ(appends(), 1U) << "written at one go";
}

TEST_F(Log, theHeaderStandsBetweenTheLoopConstantsAndLock) {
  start();
  p.platform.files().fail(kPath, "gone");
  host::Lines before;
  p.expectBox(support::kAnyText, ports::Answer::Ok, [&] { before = p.calls(); });
  p.press("Lock");
  ASSERT_FALSE(before.empty());
  EXPECT_EQ(before.back(), host::loopParam(2, 3));
  EXPECT_EQ(p.calls().size(), before.size() + 1);
  EXPECT_EQ(p.calls().back(), host::mode(1));
}

TEST_F(Log, aLineIsDateAndThreeWordsInZones) {
  start();
  p.press("Lock");
  text().clear();
  fireTick();
  EXPECT_EQ(text(), "12/1/2025 9:00:00 AM         404          -12            7 \r\n");
}

TEST_F(Log, theFirstTickWritesALineThenOnePerInterval) {
  start("2");
  p.press("Lock");
  p.pass(5);
  p.clear();
  fireTick();
  EXPECT_EQ(appends(), 1U);
  advance(1.9);
  fireTick();
  EXPECT_EQ(appends(), 1U);
  advance(0.2);
  fireTick();
  EXPECT_EQ(appends(), 2U);
  fireTick();
  EXPECT_EQ(appends(), 2U);
}

TEST_F(Log, theIntervalItselfIsNotEnough) {
  start("0");
  p.press("Lock");
  p.pass(5);
  p.clear();
  fireTick();
  fireTick();
  EXPECT_EQ(appends(), 1U) << "with an interval of 0 the clock must have moved";
  advance(0.001);
  fireTick();
  EXPECT_EQ(appends(), 2U);
}

TEST_F(Log, aNewHeaderDoesNotHastenTheNextLine) {
  start("60");
  p.press("Lock");
  p.pass(5);
  fireTick();
  p.press("Hold");
  advance(30);
  p.press("Lock");
  p.pass(5);
  p.clear();
  fireTick();
  EXPECT_EQ(appends(), 0U);
  advance(31);
  fireTick();
  EXPECT_EQ(appends(), 1U);
}

TEST_F(Log, nothingIsWrittenWhileItIsOffNorInOtherModes) {
  start("0");
  for (const char* button : {"Off", "Sweep", "Hold", "Auto", "Phase"}) {
    p.press(button);
    p.pass(5);
    advance(5);
    p.main().Timer1.setEnabled(true);
    fireTick();
  }
  EXPECT_EQ(appends(), 0U);
  p.menu("Preferences/Log Enabled");
  p.press("Lock");
  p.pass(5);
  advance(5);
  fireTick();
  EXPECT_EQ(appends(), 0U);
}

TEST_F(Log, isOnlyEverAppendedTo) {
  start("0");
  text() = "older lines\r\n";
  p.press("Lock");
  EXPECT_TRUE(text().starts_with("older lines\r\nLock - Logging started at "));
}

TEST_F(Log, aHeaderThatCannotBeWrittenIsToldOnceAndTheLockGoesOn) {
  start("0");
  p.platform.files().fail(kPath, "There is not enough space on the disk.");
  p.expectBox("The lock log C:\\logs\\Lock.Log cannot be written:\r\nThere is not enough space on the "
              "disk.\r\nLogging has been switched off.",
              ports::Answer::Ok);
  p.press("Lock");
  EXPECT_FALSE(p.record().LogEnabled);
  EXPECT_FALSE(p.main().mnuPrefs(10).checked());
  EXPECT_EQ(p.calls().back(), host::mode(1));
  p.pass(5);
  p.clear();
  advance(5);
  fireTick();
  EXPECT_EQ(appends(), 0U) << "and nothing more is tried";
  EXPECT_EQ(p.status(), "SEARCHING...");
}

TEST_F(Log, aLineThatCannotBeWrittenIsToldOnceAndTheTickGoesOn) {
  start("0");
  p.press("Lock");
  p.pass(5);
  fireTick();
  const double last = p.record().LastLogTime;
  p.platform.files().failAll(
      "The process cannot access the file because it is being used by another process.");
  advance(5);
  p.host().words[1] = 55;
  p.expectBox(support::kAnyText, ports::Answer::Ok);
  fireTick();
  EXPECT_FALSE(p.record().LogEnabled);
  EXPECT_FALSE(p.main().mnuPrefs(10).checked());
  EXPECT_EQ(p.record().LastLogTime, last);
  EXPECT_EQ(p.program().cursor.previousLevel, 55) << "the tick draws its traces";
  advance(5);
  fireTick();
}

TEST_F(Log, switchedOnAgainAfterAFailureItWrites) {
  start("0");
  p.platform.files().fail(kPath, "gone");
  p.expectBox(support::kAnyText, ports::Answer::Ok);
  p.press("Lock");
  p.platform.files().failNever();
  p.menu("Preferences/Log Enabled");
  p.pass(5);
  p.clear();
  fireTick();
  EXPECT_EQ(appends(), 1U);
}

TEST_F(Log, aModeChosenWhileTheFailureIsToldStays) {
  start("0");
  p.press("Lock");
  p.pass(5);
  p.platform.files().fail(kPath, "gone");
  p.expectBox(support::kAnyText, ports::Answer::Ok, [this] { p.press("Off"); });
  fireTick();
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.status(), "OFF");
  EXPECT_EQ(p.record().LockState, kNotInLock);
}

TEST(LogFields, keepOnlyTheirLastCharacters) {
  EXPECT_EQ(LockLog::paddedValue(5, 1, 1, 5), "  5.0");
  EXPECT_EQ(LockLog::paddedValue(63.5, 1, 1, 5), " 63.5");
  EXPECT_EQ(LockLog::paddedValue(30, 1, 0, 9), "     30") << "not padded to nine";
  EXPECT_EQ(LockLog::paddedValue(-90, 1, 0, 7), "    -90");
  EXPECT_EQ(LockLog::paddedValue(524288, 1, 0, 9), "   524288");
  EXPECT_EQ(LockLog::paddedValue(1234.5, 1, 6, 13), "  1234.500000");
  EXPECT_EQ(LockLog::paddedValue(0, 1, 1, 5), "  0.0");
  EXPECT_EQ(LockLog::paddedValue(1234567, 1, 1, 5), "567.0") << "what is too long loses its front";
}

TEST(LogFields, aMinusSignTakesTheBlanksPlace) {
  EXPECT_EQ(LockLog::dataLine("1/2/2026 3:04:05 PM", -131068, 0, -1),
            "1/2/2026 3:04:05 PM         -131068        0            -1 \r\n");
}

TEST(LogFields, aDateOfTwoZonesIsFollowedByAnEmptyOne) {
  const std::string date(28, 'd');
  EXPECT_EQ(LockLog::dataLine(date, 1, 2, 3).find('1'), 43U);
}

} // namespace
