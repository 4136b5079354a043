#include "base/NumberText.h"
#include "base/RuntimeError.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>
#include <string>

namespace {

template <class F> long errorOf(F&& f) {
  try {
    f();
  } catch (const base::RuntimeError& e) {
    return e.number;
  }
  return 0;
}

} // namespace

TEST(IsNumeric, whatAnOperatorTypes) {
  for (const char* text : {"0", "63.5", "63,5", ".5", "5.", "-12", "+12", " 12 ", "\t12", "1e3", "1E+3",
                           "1e-3", "1d3", "&H10", "&hff"})
    EXPECT_TRUE(base::isNumeric(text)) << text;
}

TEST(IsNumeric, everythingElseIsRefused) {
  for (const char* text :
       {"",   " ",   "abc", "12abc", "63.5 dB", "1 000", "- 5", "--5", "1.2.3", "1,234.5", ".",   "-",
        "1e", "1e+", "e5",  "&H",    "&HG",     "-&H1",  "&O7", "5-",  "0x10",  "inf",     "nan", "12\r"})
    EXPECT_FALSE(base::isNumeric(text)) << text;
  EXPECT_FALSE(base::isNumeric(std::string("12\0", 3)));
}

TEST(IsNumeric, numberNoDoubleCanHoldIsRefused) {
  EXPECT_FALSE(base::isNumeric("1e400"));
  EXPECT_TRUE(base::isNumeric("1e300"));
  EXPECT_TRUE(base::isNumeric("1e-400"));
}

TEST(ToDouble, wholeTextIsTheNumber) {
  EXPECT_EQ(base::toDouble("1e3"), 1000.0);
  EXPECT_EQ(base::toDouble("4,8"), 4.8);
  EXPECT_EQ(base::toDouble(" 12 "), 12.0);
  EXPECT_EQ(base::toDouble("&H10"), 16.0);
}

TEST(ToDouble, otherTextIsATypeMismatch) {
  EXPECT_EQ(errorOf([] { base::toDouble(""); }), 13);
  EXPECT_EQ(errorOf([] { base::toDouble("12abc"); }), 13);
  EXPECT_EQ(errorOf([] { base::toDouble("1,234.5"); }), 13);
}

TEST(ToDouble, tooLargeOverflows) {
  EXPECT_EQ(errorOf([] { base::toDouble("-1e400"); }), 6);
}

TEST(ToSingle, roundsToSinglePrecision) {
  EXPECT_EQ(base::toSingle("4.8"), 4.8f);
  EXPECT_EQ(base::toSingle("3.4028235e38"), FLT_MAX);
  EXPECT_EQ(base::toSingle("1e-60"), 0.0f);
}

TEST(ToSingle, beyondSinglesOverflows) {
  EXPECT_EQ(errorOf([] { base::toSingle("1e39"); }), 6);
  EXPECT_EQ(errorOf([] { base::toSingle("-3.4028236e38"); }), 6);
  EXPECT_EQ(errorOf([] { base::toSingle(std::numeric_limits<double>::infinity()); }), 6);
  EXPECT_EQ(errorOf([] { base::toSingle(std::numeric_limits<double>::quiet_NaN()); }), 6);
  EXPECT_EQ(errorOf([] { base::toSingle("abc"); }), 13);
}

TEST(ToSingle, largestDoubleThatStillRoundsDown) {
  EXPECT_EQ(base::toSingle(0x1.fffffefffffffp127), FLT_MAX);
  EXPECT_EQ(errorOf([] { base::toSingle(0x1.ffffffp127); }), 6);
}

TEST(ToBoolean, wordsInAnyCase) {
  EXPECT_TRUE(base::toBoolean("True"));
  EXPECT_TRUE(base::toBoolean("tRUE"));
  EXPECT_FALSE(base::toBoolean("FALSE"));
  EXPECT_TRUE(base::toBoolean(" true "));
}

TEST(ToBoolean, numbersOtherThanZeroAreTrue) {
  EXPECT_TRUE(base::toBoolean("-1"));
  EXPECT_TRUE(base::toBoolean("0.1"));
  EXPECT_FALSE(base::toBoolean("0"));
  EXPECT_FALSE(base::toBoolean("0,0"));
}

TEST(ToBoolean, otherTextIsATypeMismatch) {
  for (const char* text : {"", "yes", "untrue", "truefalse", "1x"})
    EXPECT_EQ(errorOf([&] { base::toBoolean(text); }), 13) << text;
}
