#include "base/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace {

template <class F> base::RuntimeError caught(F&& f) {
  try {
    f();
  } catch (const base::RuntimeError& e) {
    return e;
  }
  return {0, "nothing was raised"};
}

} // namespace

TEST(RuntimeError, numbersAndTexts) {
  EXPECT_EQ(caught([] { base::raiseInvalidCall(); }).message(),
            "Run-time error '5':\r\n\r\nInvalid procedure call or argument");
  EXPECT_EQ(caught([] { base::raiseOverflow(); }).message(), "Run-time error '6':\r\n\r\nOverflow");
  EXPECT_EQ(caught([] { base::raiseSubscript(); }).message(),
            "Run-time error '9':\r\n\r\nSubscript out of range");
  EXPECT_EQ(caught([] { base::raiseTypeMismatch(); }).message(), "Run-time error '13':\r\n\r\nType mismatch");
  EXPECT_EQ(caught([] { base::raiseInvalidValue(); }).message(),
            "Run-time error '380':\r\n\r\nInvalid property value");
}

TEST(RuntimeError, messageEndsWithWhatWasBeingDone) {
  EXPECT_EQ(caught([] { base::raiseOverflow("[Hardware] FieldCenter=99999999999"); }).message(),
            "Run-time error '6':\r\n\r\nOverflow\r\n\r\n[Hardware] FieldCenter=99999999999");
}

TEST(RuntimeError, automationFailureShowsItsNumberInBothForms) {
  const base::RuntimeError e(-2147023174, "The server is unavailable", "setting the field");
  EXPECT_TRUE(e.isAutomation());
  EXPECT_EQ(
      e.message(),
      "Run-time error '-2147023174 (800706ba)':\r\n\r\nThe server is unavailable\r\n\r\nsetting the field");
}

TEST(RuntimeError, firstContextIsKept) {
  const base::RuntimeError bare(6, "Overflow");
  EXPECT_EQ(bare.within("inner").within("outer").context, "inner");
  EXPECT_EQ(bare.context, "");
}

TEST(RuntimeError, whatIsTheText) {
  EXPECT_STREQ(base::RuntimeError(13, "Type mismatch").what(), "Type mismatch");
}

TEST(IgnoringErrors, dropsRunTimeErrorsOnly) {
  EXPECT_TRUE(base::ignoringErrors([] {}));
  EXPECT_FALSE(base::ignoringErrors([] { base::raiseOverflow(); }));
  EXPECT_THROW(base::ignoringErrors([] { throw std::string("other"); }), std::string);
}
