// Settings files that nobody meant: the program starts with what can be read, or says what it cannot use and
// ends.
#include "support/Panel.h"
#include <random>

namespace {

using support::Panel;

// The message with which the program refuses to start.
std::string refusal(Panel& p) {
  std::string shown;
  p.platform.dialogs().otherwise = [&](const std::string& text, ports::Buttons) {
    EXPECT_TRUE(shown.empty()) << "a second box: " << text;
    shown = text;
    return ports::Answer::Ok;
  };
  EXPECT_TRUE(p.ends([&] { vbLock_mod::Main(p.program()); }));
  return shown;
}

std::string expected(const std::string& number, const std::string& text, const std::string& setting) {
  return "Run-time error '" + number + "':\r\n\r\n" + text + "\r\n\r\n" + Panel::kIniPath + ": " + setting;
}

TEST(BadSettings, aMissingFileHasNoSolventToShow) {
  Panel p;
  p.platform.memorySettings().remove(Panel::kIniPath);
  EXPECT_EQ(refusal(p), expected("380", "Invalid property value", "[Solvents] lists no solvent"));
}

TEST(BadSettings, anEmptyFileIsAMissingOne) {
  Panel p("");
  EXPECT_EQ(refusal(p), expected("380", "Invalid property value", "[Solvents] lists no solvent"));
}

TEST(BadSettings, withoutThePanelAnEmptyFileStarts) {
  Panel p("[Display]\r\nShowControls=0\r\n");
  p.startUp();
  p.expectCalls({host::hardwareState(), host::txPower(63.5), host::frequency(46.04), host::rxGain(1000)});
  EXPECT_TRUE(p.main().visible());
}

TEST(BadSettings, tenMegabytesOfOtherLinesAreReadPast) {
  std::string ini = "[Other]\r\n";
  while (ini.size() < 10U << 20) ini += "; a line nobody asked for = 1\r\nkey=value and more of it\r\n";
  Panel p(ini + support::standardIni());
  p.startUp();
  EXPECT_EQ(p.record().RxGain, 1200);
  EXPECT_EQ(p.record().PhaseRepeatTimes, 5);
}

TEST(BadSettings, aValueOfTenMegabytesIsCutAtTheBuffer) {
  Panel p("[Hardware]\r\nFrequency=" + std::string(10U << 20, '0') + "46\r\n[Display]\r\nShowControls=0\r\n" +
          "LogFileName=" + std::string(400, 'x') + "\r\n");
  p.startUp();
  EXPECT_EQ(p.record().Frequency, 0);
  EXPECT_EQ(p.record().LogFileName, std::string(254, 'x'));
}

TEST(BadSettings, anyBytesAreSettings) {
  std::mt19937 random(7);
  for (int run = 0; run < 20; ++run) {
    std::string bytes(20000, '\0');
    for (char& c : bytes) c = static_cast<char>(random());
    Panel p("[Display]\r\nShowControls=0\r\n[Hardware]\r\nRxGain=5\r\n" + bytes);
    p.startUp();
    EXPECT_EQ(p.record().RxGain, 5);
    EXPECT_EQ(p.record().Frequency, 46.04);
  }
}

TEST(BadSettings, linesMayEndWithCarriageReturnsAlone) {
  std::string ini = support::standardIni();
  std::erase(ini, '\n');
  Panel p(ini);
  p.set("Display", "ShowControls", "1").startUp();
  EXPECT_EQ(p.record().RxGain, 1200);
  EXPECT_EQ(p.controls().cmbSolvents.items().size(), 3U);
}

struct Bad {
  const char *section, *key, *text, *number, *error;
};
class OutOfRange : public testing::TestWithParam<Bad> {};
constexpr const char* kOverflow = "Overflow";
constexpr const char* kInvalid = "Invalid property value";
constexpr const char* kSubscript = "Subscript out of range";
INSTANTIATE_TEST_SUITE_P(
    BadSettings, OutOfRange,
    testing::Values(
        Bad{"Hardware", "FieldCenter", "99999999999", "6", kOverflow},
        Bad{"Hardware", "FieldCenter", "2147483647", "6", kOverflow},
        Bad{"Hardware", "FieldCenter", "200000", "6", kOverflow},
        Bad{"Hardware", "FieldCenter", "-131072", "380", kInvalid},
        Bad{"Hardware", "TxPower", "64", "380", kInvalid}, Bad{"Hardware", "TxPower", "-1", "380", kInvalid},
        Bad{"Hardware", "TxPower", "10000000000", "6", kOverflow},
        Bad{"Hardware", "RxGain", "10001", "380", kInvalid},
        Bad{"Hardware", "LockPhase", "541", "380", kInvalid},
        Bad{"Hardware", "LockPhase", "-181", "380", kInvalid},
        Bad{"Hardware", "RxFilterIndex", "4", "9", kSubscript},
        Bad{"Hardware", "RxFilterIndex", "-1", "9", kSubscript},
        Bad{"Hardware", "Frequency", "1E999", "6", kOverflow},
        Bad{"Hardware", "SolventPPM", "1E39", "6", kOverflow}, Bad{"Loop", "NSets", "40000", "6", kOverflow},
        Bad{"Loop", "NSets", "52", "9", kSubscript},
        Bad{"Display", "PlotMax", "0", "5", "Invalid procedure call or argument"},
        Bad{"Display", "PlotMax", "-500", "5", "Invalid procedure call or argument"},
        Bad{"System", "GammaRatio", "0", "6", kOverflow}, Bad{"Solvents", "CDCl3", "1E39", "6", kOverflow},
        Bad{"Solvents_RxGain", "CDCl3", "20000", "380", kInvalid},
        Bad{"Solvents_RxGain", "D2O", "1e10", "6", kOverflow},
        Bad{"Solvents_TxPwr", "CDCl3", "70", "380", kInvalid},
        Bad{"AutoLock", "UseDefaultTxRx", "perhaps", "13", "Type mismatch"}),
    [](const testing::TestParamInfo<Bad>& i) { return i.param.key + ("_" + std::to_string(i.index)); });

TEST_P(OutOfRange, isNamedAndEndsTheStart) {
  const Bad& bad = GetParam();
  Panel p;
  p.set("Display", "ShowControls", "1").set(bad.section, bad.key, bad.text);
  EXPECT_EQ(refusal(p), expected(bad.number, bad.error,
                                 std::string("[") + bad.section + "] " + bad.key + "=" + bad.text));
}

TEST(BadSettings, theEndsOfTheRangesAreAccepted) {
  Panel p;
  p.set("Display", "ShowControls", "1")
      .set("Hardware", "FieldCenter", "131068")
      .set("Hardware", "LockPhase", "540");
  p.set("Hardware", "RxFilterIndex", "3")
      .set("Solvents_RxGain", "CDCl3", "10000")
      .set("Solvents_TxPwr", "CDCl3", "63.5");
  p.startUp();
  EXPECT_EQ(p.main().hsCenter.value(), 32767);
  EXPECT_EQ(p.controls().vsPhase.value(), 180);
  EXPECT_EQ(p.controls().vsRxGain.value(), 10000);
  EXPECT_EQ(p.controls().vsTxPwr.value(), 127);
}

TEST(BadSettings, aReloadThatCannotOpenThePanelLeavesItClosed) {
  Panel p;
  p.started();
  p.platform.memorySettings().text("D:\\other.ini") = "[Display]\r\nShowControls=1\r\n";
  p.platform.dialogs().expectOpenFile("D:\\other.ini");
  p.expectBox(
      "Run-time error '380':\r\n\r\nInvalid property value\r\n\r\nD:\\other.ini: [Solvents] lists no solvent",
      ports::Answer::Ok);
  p.menu("File/Open Settings");
  EXPECT_FALSE(p.program().frmControls.loaded());
  EXPECT_FALSE(p.main().mnuControls(21).checked());
  EXPECT_EQ(p.program().panels.ControlsShown, 0);
  EXPECT_EQ(p.program().panels.ControlsOpen, 0);
}

} // namespace
