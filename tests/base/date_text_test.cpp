#include "base/DateText.h"
#include "base/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>

using base::DateFields;
using base::dateFields;
using base::dateSerial;
using base::generalDateText;

TEST(DateFields, serialZeroIsTheLastDayButOneOf1899) {
  EXPECT_EQ(dateFields(0), (DateFields{1899, 12, 30, 0, 0, 0}));
}

TEST(DateFields, knownDays) {
  EXPECT_EQ(dateFields(25569), (DateFields{1970, 1, 1, 0, 0, 0}));
  EXPECT_EQ(dateFields(36585.75), (DateFields{2000, 2, 29, 18, 0, 0}));
  EXPECT_EQ(dateSerial({1970, 1, 1, 12, 0, 0}), 25569.5);
}

TEST(DateFields, everySecondOfADayComesBack) {
  for (int second = 0; second < 86400; second += 7) {
    const DateFields fields{2026, 11, 21, second / 3600, second / 60 % 60, second % 60};
    ASSERT_EQ(dateFields(dateSerial(fields)), fields);
  }
}

TEST(DateFields, roundsToTheNearestSecondAcrossMidnight) {
  EXPECT_EQ(dateFields(1.0 - 0.4 / 86400), (DateFields{1899, 12, 31, 0, 0, 0}));
  EXPECT_EQ(dateFields(1.0 - 0.6 / 86400), (DateFields{1899, 12, 30, 23, 59, 59}));
}

TEST(DateFields, timeCountsForwardBeforeSerialZeroToo) {
  EXPECT_EQ(dateFields(-1.25), (DateFields{1899, 12, 29, 6, 0, 0}));
  EXPECT_EQ(dateSerial({1899, 12, 29, 6, 0, 0}), -1.25);
}

TEST(DateFields, outsideTheCalendarIsAnInvalidCall) {
  for (double serial : {1e10, -1e10, HUGE_VAL, std::nan(""), 2958466.0, 2958465.999999, -657435.0})
    EXPECT_THROW(dateFields(serial), base::RuntimeError) << serial;
  EXPECT_EQ(dateFields(2958465).year, 9999);
  EXPECT_EQ(dateFields(-657434).year, 100);
}

TEST(GeneralDateText, shortDateBlankLongTime) {
  EXPECT_EQ(generalDateText({2026, 11, 21, 9, 5, 3}), "11/21/2026 9:05:03 AM");
  EXPECT_EQ(generalDateText({2026, 1, 2, 13, 0, 0}), "1/2/2026 1:00:00 PM");
  EXPECT_EQ(generalDateText({2026, 1, 2, 0, 30, 0}), "1/2/2026 12:30:00 AM");
  EXPECT_EQ(generalDateText({2026, 1, 2, 12, 0, 1}), "1/2/2026 12:00:01 PM");
}

TEST(GeneralDateText, midnightShowsTheDateAlone) {
  EXPECT_EQ(generalDateText({2026, 11, 21, 0, 0, 0}), "11/21/2026");
}

TEST(GeneralDateText, dayZeroShowsTheTimeAlone) {
  EXPECT_EQ(generalDateText({1899, 12, 30, 9, 5, 3}), "9:05:03 AM");
  EXPECT_EQ(generalDateText({1899, 12, 30, 0, 0, 0}), "12:00:00 AM");
}
