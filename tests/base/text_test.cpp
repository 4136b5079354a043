#include "base/Event.h"
#include "base/Text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

TEST(Text, trimTakesBlanksOnly) {
  EXPECT_EQ(base::trimBlanks("  a b  "), "a b");
  EXPECT_EQ(base::trimBlanks("\ta\t"), "\ta\t");
  EXPECT_EQ(base::trimBlanks("   "), "");
  EXPECT_EQ(base::trimBlanks(""), "");
}

TEST(Text, findsAWordInAnyCase) {
  EXPECT_TRUE(base::containsIgnoringCase("UNTRUE!", "true"));
  EXPECT_TRUE(base::containsIgnoringCase("-NoWindow", "nowindow"));
  EXPECT_FALSE(base::containsIgnoringCase("tru", "true"));
  EXPECT_TRUE(base::containsIgnoringCase("", ""));
  EXPECT_TRUE(base::containsIgnoringCase("a", ""));
}

TEST(Text, equalInAnyCase) {
  EXPECT_TRUE(base::equalIgnoringCase("Hardware", "HARDWARE"));
  EXPECT_FALSE(base::equalIgnoringCase("Hardware", "Hardwar"));
  EXPECT_FALSE(base::equalIgnoringCase("\xE9", "\xC9")); // only ASCII letters fold
  EXPECT_FALSE(base::equalIgnoringCase("[", "{"));       // neighbours of the letters do not
}

TEST(Text, replacementsAreNotSearchedAgain) {
  EXPECT_EQ(base::replaceAll("1,2,3", ",", "."), "1.2.3");
  EXPECT_EQ(base::replaceAll("aa", "a", "aa"), "aaaa");
  EXPECT_EQ(base::replaceAll("abc", "", "x"), "abc");
}

TEST(Event, unboundRaisesNothing) {
  const base::Event<int> event;
  EXPECT_FALSE(event);
  event(1);
}

TEST(Event, handlerMayDestroyTheEvent) {
  auto event = std::make_unique<base::Event<int>>();
  const auto seen = std::make_shared<int>(0);
  *event = [&event, seen](int value) {
    event.reset();
    *seen = value; // the handler outlives its event
  };
  (*event)(7);
  EXPECT_EQ(*seen, 7);
}
