#include "base/Rounding.h"
#include "base/RuntimeError.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>

using base::roundHalfEven;
using base::toInt16;
using base::toInt32;

namespace {

template <class F> bool overflows(F&& f) {
  try {
    f();
  } catch (const base::RuntimeError& e) {
    return e.number == base::kOverflow;
  }
  return false;
}

} // namespace

TEST(RoundHalfEven, halvesGoToTheEvenNeighbour) {
  EXPECT_EQ(roundHalfEven(0.5), 0.0);
  EXPECT_EQ(roundHalfEven(1.5), 2.0);
  EXPECT_EQ(roundHalfEven(2.5), 2.0);
  EXPECT_EQ(roundHalfEven(-0.5), 0.0);
  EXPECT_EQ(roundHalfEven(-1.5), -2.0);
  EXPECT_EQ(roundHalfEven(-2.5), -2.0);
}

TEST(RoundHalfEven, everythingElseGoesToTheNearest) {
  EXPECT_EQ(roundHalfEven(2.4999999), 2.0);
  EXPECT_EQ(roundHalfEven(2.5000001), 3.0);
  EXPECT_EQ(roundHalfEven(0.49999999999999994), 0.0);
  EXPECT_EQ(roundHalfEven(-3.7), -4.0);
  EXPECT_EQ(roundHalfEven(4503599627370497.0), 4503599627370497.0);
  EXPECT_EQ(roundHalfEven(1e300), 1e300);
}

TEST(RoundHalfEven, sameInEveryRoundingMode) {
  std::fesetround(FE_UPWARD);
  volatile double low = 2.4;
  const double result = roundHalfEven(low);
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(result, 2.0);
}

TEST(ToInt32, endsOfTheRange) {
  EXPECT_EQ(toInt32(2147483647.0), 2147483647);
  EXPECT_EQ(toInt32(2147483647.4), 2147483647);
  EXPECT_EQ(toInt32(-2147483648.5), -2147483647 - 1);
  EXPECT_TRUE(overflows([] { toInt32(2147483647.5); }));
  EXPECT_TRUE(overflows([] { toInt32(-2147483648.6); }));
}

TEST(ToInt32, infinitiesAndNaNOverflow) {
  EXPECT_TRUE(overflows([] { toInt32(HUGE_VAL); }));
  EXPECT_TRUE(overflows([] { toInt32(-HUGE_VAL); }));
  EXPECT_TRUE(overflows([] { toInt32(std::numeric_limits<double>::quiet_NaN()); }));
}

TEST(ToInt16, endsOfTheRange) {
  EXPECT_EQ(toInt16(32767.4), 32767);
  EXPECT_EQ(toInt16(-32768.5), -32768);
  EXPECT_TRUE(overflows([] { toInt16(32767.5); }));
  EXPECT_TRUE(overflows([] { toInt16(-32769); }));
}

TEST(Int, wholePartTowardsMinusInfinity) {
  EXPECT_EQ(base::Int(2.9), 2.0);
  EXPECT_EQ(base::Int(-0.1), -1.0);
  EXPECT_EQ(base::Int(-3.0), -3.0);
}
