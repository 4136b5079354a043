#include "core/modConvertStrToFloatVal.h"
#include <gtest/gtest.h>
#include <string>

namespace {

using modConvertStrToFloatVal::StrToFloatValSingle;

TEST(StrToFloatVal, commaAndPointMeanTheSame) {
  EXPECT_EQ(StrToFloatVal("4,8"), 4.8);
  EXPECT_EQ(StrToFloatVal("4.8"), 4.8);
}

TEST(StrToFloatVal, aSecondDecimalSignEndsTheNumber) { EXPECT_EQ(StrToFloatVal("1,234.5"), 1.234); }

TEST(StrToFloatVal, anyTextIsTaken) {
  EXPECT_EQ(StrToFloatVal(""), 0);
  EXPECT_EQ(StrToFloatVal("abc"), 0);
  EXPECT_EQ(StrToFloatVal("+2000"), 2000);
  EXPECT_EQ(StrToFloatVal(".001"), 0.001);
  EXPECT_EQ(StrToFloatVal("63.5 dB"), 63.5);
  EXPECT_EQ(StrToFloatVal("\t\n -2"), -2);
}

TEST(StrToFloatVal, blanksInsideAreSkipped) { EXPECT_EQ(StrToFloatVal("1 000"), 1000); }

TEST(StrToFloatVal, exponentsAndRadixPrefixes) {
  EXPECT_EQ(StrToFloatVal("1E3"), 1000);
  EXPECT_EQ(StrToFloatVal("1d3"), 1000);
  EXPECT_EQ(StrToFloatVal("&H10"), 16);
  EXPECT_EQ(StrToFloatVal("&O10"), 8);
}

TEST(StrToFloatVal, stopsAtNul) {
  EXPECT_EQ(StrToFloatVal(std::string("12\0"
                                      "34",
                                      5)),
            12);
}

TEST(StrToFloatVal, theSingleVariantRounds) { EXPECT_EQ(StrToFloatValSingle("0,1"), 0.1F); }

TEST(StrToFloatVal, theCallersTextStays) {
  const std::string text = "4,8";
  StrToFloatVal(text);
  EXPECT_EQ(text, "4,8");
}

} // namespace
