// Scripts of operator gestures: what they can do, and how they say what is wrong.
#include "headless/Script.h"
#include "support/Panel.h"
#include <gtest/gtest.h>
#include <sstream>

namespace {

struct Result {
  int code;
  std::string error, transcript;
  bool shows(const std::string& text) const { return transcript.find(text) != std::string::npos; }
};

Result run(const std::string& text, bool physics = false) {
  headless::ScriptOptions options;
  options.settings = support::standardIni();
  options.physics = physics;
  std::ostringstream out;
  headless::Script script(options, out);
  std::istringstream in(text);
  const int code = script.run(in, "test");
  return {code, script.error(), out.str()};
}

} // namespace

TEST(Script, anEmptyScriptStartsThePanel) {
  const Result result = run("# nothing but a comment\n\n");
  EXPECT_EQ(result.code, 0) << result.error;
  EXPECT_TRUE(result.shows("find host: running"));
}

TEST(Script, aRunAgainstTheConsoleReachesLocked) {
  const Result result =
      run("type txtCenter 1200\npress Lock\nuntil LOCKED 60s\nwait 5s\nexpect status LOCKED\n", true);
  EXPECT_EQ(result.code, 0) << result.error << result.transcript;
  EXPECT_TRUE(result.shows("status SEARCHING..."));
  EXPECT_TRUE(result.shows("status LOCKED"));
}

TEST(Script, theSameScriptGivesTheSameTranscript) {
  const std::string text = "calls all\npress Sweep\nwait 1s\npress Lock\nwait 1s\npress Off\n";
  EXPECT_EQ(run(text, true).transcript, run(text, true).transcript);
}

TEST(Script, callsAreShownWhenAskedForAndTimeStandsInFront) {
  EXPECT_FALSE(run("press Hold\n").shows("HostSetLockMode"));
  const Result some = run("press Hold\nwait 500ms\ncalls on\npress Off\n");
  EXPECT_TRUE(some.shows("     0.500  31 HostSetLockMode I4 0\n")) << some.transcript;
  EXPECT_FALSE(some.shows("HostGetLockData"));
  EXPECT_TRUE(run("calls all\npress Hold\n").shows("201 HostGetLockData RefI4 8"));
}

TEST(Script, panelsMenusBoxesAndKeysAreReached) {
  const Result result =
      run("menu \"Controls/NMR Controls\"\n"
          "choose cmbSolvents D2O\nexpect txtSolventPPM 4.8\n"
          "type txtTxPwr 12.5\nexpect vsTxPwr 25\n"
          "scroll vsRxGain 2000\nexpect txtRxGain 2000\n"
          "option optBW 2\nexpect optBW(2) 1\nexpect optBW(1) 0\n"
          "popup \"Set Center to Zero\"\nmouse Picture1 right 0.5 0.5\nexpect txtCenter 0\n"
          "input 10\npopup \"Enter New Center Value\"\nmouse Picture1 right 0.5 0.5\nexpect txtCenter 8\n"
          "answer Ok\nmenu \"Edit/Solvent List\"\n"
          "minimise\nsystem \"Lock Hold\"\nrestore\nexpect Toolbar1 Hold\n"
          "key Escape\nresize 9000 8000\nshow StatusBar1\n"
          "answer Yes\nclose\n");
  EXPECT_EQ(result.code, 0) << result.error << result.transcript;
  EXPECT_TRUE(result.shows("This Function Not Yet Implemented"));
  EXPECT_TRUE(result.shows("Save the changes?"));
  EXPECT_TRUE(result.shows("end\n"));
}

TEST(Script, aModalWindowIsWorkedByTheLinesAfterTheOneThatOpensIt) {
  const Result result = run("menu Help/About\nshow status\nclose frmAbout\nshow txtCenter\n");
  EXPECT_EQ(result.code, 0) << result.error;
  EXPECT_TRUE(result.shows("modal window frmAbout"));
  EXPECT_LT(result.transcript.find("status = OFF"), result.transcript.find("txtCenter = 400"));
  const Result open = run("menu Help/About\nshow status\n");
  EXPECT_EQ(open.code, 1);
  EXPECT_NE(open.error.find("frmAbout stays open"), std::string::npos) << open.error;
}

TEST(Script, theHostMayBeMissingAndMayDie) {
  const Result cancel = run("host missing\nanswer Retry\nanswer Cancel\nstart\n");
  EXPECT_EQ(cancel.code, 0) << cancel.error;
  EXPECT_TRUE(cancel.shows("-> Retry"));
  EXPECT_TRUE(cancel.shows("end\n"));
  const Result dead =
      run("press Lock\nwait 1s\nhost gone\nwait 1s\nanswer Ok\npress Sweep\nhost back\npress Off\nexpect "
          "status OFF\n");
  EXPECT_EQ(dead.code, 0) << dead.error << dead.transcript;
}

TEST(Script, settingsAreShownAsTheProgramLeftThem) {
  const Result result = run("type txtCenter 1000\nmenu \"File/Save Settings\"\nsettings\n");
  EXPECT_EQ(result.code, 0) << result.error;
  EXPECT_TRUE(result.shows("FieldCenter=1000")) << result.transcript;
}

TEST(Script, whatIsWrongIsNamedWithLineAndWord) {
  const std::pair<const char*, const char*> wrong[] = {
      {"\nbogus 1\n", "test:2: bogus: \"bogus\" is no command"},
      {"press\n", "test:1: press: a button is missing"},
      {"press Nothing\n", "test:1: press: there is no button Nothing"},
      {"wait 5\n", "test:1: wait: \"5\" is no time such as 2s, 500ms or 3m"},
      {"wait -1s\n", "test:1: wait: \"-1s\" is no time such as 2s, 500ms or 3m"},
      {"wait nans\n", "test:1: wait: \"nans\" is no time such as 2s, 500ms or 3m"},
      {"scroll hsCenter 1.5\n", "test:1: scroll: \"1.5\" is no whole number"},
      {"scroll txtCenter 1\n", "test:1: scroll: txtCenter is another kind of control"},
      {"type frmNone.txtCenter 1\n", "test:1: type: the window frmNone is not open"},
      {"menu File/Nothing\n", "test:1: menu: there is no menu item File/Nothing"},
      {"expect status LOCKED\n", "test:1: expect: \"LOCKED\" was expected, but status shows \"OFF\""},
      {"until LOCKED 100ms\n", "test:1: until: \"LOCKED\" did not come; the status is \"OFF\""},
      {"key Zap\n", "test:1: key: \"Zap\" is no key"},
      {"echo \"no end\n", "test:1: a quoted text does not end: echo \"no end"},
      {"kick 5\n", "test:1: kick: there is no simulated console"},
      {"close\n", "test:1: close: unexpected box [Save On Exit] Save the changes? (YesNo)"},
      {"answer Retry\nclose\n",
       "test:2: close: no button Retry in: box [Save On Exit] Save the changes? (YesNo)"},
      {"answer No\nclose\nshow status\n", "test:3: show: the program has ended"},
      {"answer Ok\n", "test: an answer was given to a box that never came"},
      {"press Lock\nscroll hsCenter 5\n",
       "test:2: scroll: frmLock.hsCenter cannot be used: it is hidden or disabled"}};
  for (const auto& [text, error] : wrong) {
    const Result result = run(text);
    EXPECT_EQ(result.code, 1) << text;
    EXPECT_EQ(result.error, error);
  }
}
