#include "base/NumberText.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <string>

using base::fixedText;
using base::numberText;

TEST(NumberText, singleShowsWhatWasTyped) {
  EXPECT_EQ(numberText(4.8f), "4.8");
  EXPECT_EQ(numberText(7.24f), "7.24");
  EXPECT_EQ(numberText(0.05f), "0.05");
  EXPECT_EQ(numberText(16.0f), "16");
  EXPECT_EQ(numberText(-1.0f), "-1");
  EXPECT_EQ(numberText(1.0f / 3.0f), "0.3333333");
}

TEST(NumberText, doubleShowsWhatWasTyped) {
  EXPECT_EQ(numberText(63.5), "63.5");
  EXPECT_EQ(numberText(0.001), "0.001");
  EXPECT_EQ(numberText(46.0446373), "46.0446373");
  EXPECT_EQ(numberText(-1.0), "-1");
  EXPECT_EQ(numberText(100.0), "100");
  EXPECT_EQ(numberText(-0.5), "-0.5");
}

TEST(NumberText, atMostFifteenDigits) {
  EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
  EXPECT_EQ(numberText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(numberText(2.0 / 3.0), "0.666666666666667");
  EXPECT_EQ(numberText(123456789012345.0), "123456789012345");
}

TEST(NumberText, zeroHasNoSign) {
  EXPECT_EQ(numberText(0.0), "0");
  EXPECT_EQ(numberText(-0.0), "0");
}

TEST(NumberText, veryLargeAndVerySmallHaveAnExponent) {
  EXPECT_EQ(numberText(999999999999999.0), "999999999999999");
  EXPECT_EQ(numberText(1e15), "1E+15");
  EXPECT_EQ(numberText(1e20), "1E+20");
  EXPECT_EQ(numberText(-1.25e-20), "-1.25E-20");
  EXPECT_EQ(numberText(0.0001), "0.0001");
  EXPECT_EQ(numberText(0.00001), "1E-05");
  EXPECT_EQ(numberText(1e100), "1E+100");
  EXPECT_EQ(numberText(9999999.0f), "9999999");
  EXPECT_EQ(numberText(1e7f), "1E+07");
  EXPECT_EQ(numberText(DBL_TRUE_MIN), "4.94065645841247E-324");
}

TEST(NumberText, roundingMayCarryIntoANewDigit) {
  EXPECT_EQ(numberText(999999999999999.9), "1E+15");
  EXPECT_EQ(numberText(0.99999999999999999), "1");
}

TEST(NumberText, infinityReadsBackAsInfinity) {
  EXPECT_EQ(base::leadingNumber(numberText(HUGE_VAL)), HUGE_VAL);
  EXPECT_EQ(base::leadingNumber(numberText(-HUGE_VAL)), -HUGE_VAL);
}

TEST(NumberText, wholeNumbers) {
  EXPECT_EQ(numberText(std::int32_t{-2147483647 - 1}), "-2147483648");
  EXPECT_EQ(numberText(std::int16_t{-1}), "-1");
}

TEST(NumberText, everyShortNumberReadsBackTheSame) {
  for (int whole = -2000; whole <= 2000; ++whole) {
    const double value = whole / 1000.0;
    EXPECT_EQ(base::leadingNumber(numberText(value)), value);
    EXPECT_EQ(static_cast<float>(base::leadingNumber(numberText(static_cast<float>(value)))),
              static_cast<float>(value));
  }
}

TEST(SignedText, blankStandsForThePlus) {
  EXPECT_EQ(base::signedText(5), " 5");
  EXPECT_EQ(base::signedText(0), " 0");
  EXPECT_EQ(base::signedText(-5), "-5");
}

TEST(FixedText, patternsOfTheLog) {
  EXPECT_EQ(fixedText(5, 1, 1), "5.0");
  EXPECT_EQ(fixedText(63.5, 1, 1), "63.5");
  EXPECT_EQ(fixedText(30, 1, 0), "30");
  EXPECT_EQ(fixedText(0, 1, 0), "0");
  EXPECT_EQ(fixedText(1046.0446373, 1, 6), "1046.044637");
  EXPECT_EQ(fixedText(-90, 1, 0), "-90");
}

TEST(FixedText, halvesRoundAwayFromZero) {
  EXPECT_EQ(fixedText(0.5, 1, 0), "1");
  EXPECT_EQ(fixedText(2.5, 1, 0), "3");
  EXPECT_EQ(fixedText(-2.5, 1, 0), "-3");
  EXPECT_EQ(fixedText(0.25, 1, 1), "0.3");
  EXPECT_EQ(fixedText(0.05, 1, 1), "0.1");
  EXPECT_EQ(fixedText(0.15, 1, 1), "0.2");
  EXPECT_EQ(fixedText(1.005, 1, 2), "1.01");
  EXPECT_EQ(fixedText(0.04999, 1, 1), "0.0");
}

TEST(FixedText, carriesThroughNines) {
  EXPECT_EQ(fixedText(9.95, 1, 1), "10.0");
  EXPECT_EQ(fixedText(999.96, 1, 1), "1000.0");
  EXPECT_EQ(fixedText(0.96, 1, 1), "1.0");
}

TEST(FixedText, zeroHasNoSign) {
  EXPECT_EQ(fixedText(-0.04, 1, 1), "0.0");
  EXPECT_EQ(fixedText(-0.0, 1, 1), "0.0");
}

TEST(FixedText, integerDigitsArePaddedWithZeros) {
  EXPECT_EQ(fixedText(5, 3, 0), "005");
  EXPECT_EQ(fixedText(0.5, 0, 1), ".5");
  EXPECT_EQ(fixedText(0.001, 1, 6), "0.001000");
}

TEST(FixedText, largeAndSmallMagnitudes) {
  EXPECT_EQ(fixedText(1e20, 1, 1), "100000000000000000000.0");
  EXPECT_EQ(fixedText(1e-300, 1, 2), "0.00");
}
