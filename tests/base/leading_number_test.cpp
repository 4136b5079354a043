#include "base/NumberText.h"
#include "base/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using base::leadingNumber;

namespace {

double withComma(const std::string& text) { return leadingNumber(base::replaceAll(text, ",", ".")); }

} // namespace

TEST(LeadingNumber, commaTakenAsPointReadsLikeAPoint) {
  EXPECT_EQ(withComma("4,8"), 4.8);
  EXPECT_EQ(withComma("4.8"), 4.8);
}

TEST(LeadingNumber, stopsAtTheSecondPoint) {
  EXPECT_EQ(withComma("1,234.5"), 1.234);
  EXPECT_EQ(leadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, commaItselfEndsTheNumber) { EXPECT_EQ(leadingNumber("4,8"), 4.0); }

TEST(LeadingNumber, noDigitsGiveZero) {
  for (const char* text :
       {"", "abc", "   ", ".", "-", "+", "-.", "E5", ".E5", "&", "&H", "&O", "&Z1", "-&H10", "NaN", "inf"})
    EXPECT_EQ(leadingNumber(text), 0.0) << text;
}

TEST(LeadingNumber, signs) {
  EXPECT_EQ(leadingNumber("+2000"), 2000.0);
  EXPECT_EQ(leadingNumber("-12"), -12.0);
  EXPECT_EQ(leadingNumber("- 12"), -12.0);
  EXPECT_EQ(leadingNumber("--12"), 0.0);
  EXPECT_FALSE(std::signbit(leadingNumber("-0")));
}

TEST(LeadingNumber, pointAtEitherEnd) {
  EXPECT_EQ(leadingNumber(".001"), 0.001);
  EXPECT_EQ(leadingNumber("-.5"), -0.5);
  EXPECT_EQ(leadingNumber("5."), 5.0);
}

TEST(LeadingNumber, stopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(leadingNumber("63.5 dB"), 63.5);
  EXPECT_EQ(leadingNumber("12abc"), 12.0);
  EXPECT_EQ(leadingNumber("12\r34"), 12.0);
  EXPECT_EQ(leadingNumber("0x10"), 0.0);
}

TEST(LeadingNumber, stopsAtANul) {
  EXPECT_EQ(leadingNumber(std::string("12\0 34", 6)), 12.0);
  EXPECT_EQ(leadingNumber(std::string("\0"
                                      "12",
                                      3)),
            0.0);
  EXPECT_EQ(leadingNumber("500" + std::string(1, '\0') + std::string(252, ' ')), 500.0);
}

TEST(LeadingNumber, innerBlanksTabsAndLineFeedsAreSkipped) {
  EXPECT_EQ(leadingNumber("1 000"), 1000.0);
  EXPECT_EQ(leadingNumber(" \t\n 1 2\t3\n. 5 E + 1"), 1235.0);
  EXPECT_EQ(leadingNumber("& H 1 0"), 16.0);
}

TEST(LeadingNumber, exponents) {
  EXPECT_EQ(leadingNumber("1E3"), 1000.0);
  EXPECT_EQ(leadingNumber("1e+3"), 1000.0);
  EXPECT_EQ(leadingNumber("1e-3"), 0.001);
  EXPECT_EQ(leadingNumber("1D3"), 1000.0);
  EXPECT_EQ(leadingNumber("2.5d-1"), 0.25);
}

TEST(LeadingNumber, exponentWithoutDigitsIsLeftOut) {
  EXPECT_EQ(leadingNumber("7E"), 7.0);
  EXPECT_EQ(leadingNumber("7E+"), 7.0);
  EXPECT_EQ(leadingNumber("7Exx"), 7.0);
  EXPECT_EQ(leadingNumber("7 dB"), 7.0);
}

TEST(LeadingNumber, hexadecimalAndOctal) {
  EXPECT_EQ(leadingNumber("&H10"), 16.0);
  EXPECT_EQ(leadingNumber("&hff"), 255.0);
  EXPECT_EQ(leadingNumber("&HFFFF"), 65535.0);
  EXPECT_EQ(leadingNumber("&HFFFFFFFF"), 4294967295.0);
  EXPECT_EQ(leadingNumber("&O17"), 15.0);
  EXPECT_EQ(leadingNumber("&o178"), 15.0);
  EXPECT_EQ(leadingNumber("&H1G"), 1.0);
}

TEST(LeadingNumber, beyondEveryDoubleIsInfinite) {
  EXPECT_EQ(leadingNumber("1E400"), HUGE_VAL);
  EXPECT_EQ(leadingNumber("-1E400"), -HUGE_VAL);
  EXPECT_EQ(leadingNumber("1E99999999999999999999999"), HUGE_VAL);
  EXPECT_EQ(leadingNumber(std::string(400, '9')), HUGE_VAL);
  EXPECT_EQ(leadingNumber("0." + std::string(400, '0') + "1E800"), HUGE_VAL);
}

TEST(LeadingNumber, belowEveryDoubleIsZero) {
  EXPECT_EQ(leadingNumber("1E-400"), 0.0);
  EXPECT_EQ(leadingNumber("-1E-99999999999999999999999"), 0.0);
  EXPECT_EQ(leadingNumber("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(leadingNumber("0E99999"), 0.0);
  EXPECT_EQ(leadingNumber("5E-324"), 5E-324);
}

TEST(LeadingNumber, longDigitStringsRoundRight) {
  EXPECT_EQ(leadingNumber("0.1000000000000000055511151231257827021181583404541015625"), 0.1);
  EXPECT_EQ(leadingNumber("1" + std::string(300, '0') + "E-300"), 1.0);
  EXPECT_EQ(leadingNumber(std::string(100000, ' ') + std::string(100000, '0') + "7"), 7.0);
}
