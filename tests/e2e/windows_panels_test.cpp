// The panels by their real controls: lists, boxes, sliders, arrows and option buttons, values refused and
// taken.
#include "e2e/support/Hands.h"
#include <gtest/gtest.h>

using namespace e2e;
using win32::controlText;
using win32::RemoteWindow;

namespace {

class Panels : public testing::Test {
 protected:
  static inline std::unique_ptr<Desk> desk;
  static void SetUpTestSuite() { desk = std::make_unique<Desk>(); }
  static void TearDownTestSuite() { desk.reset(); }
  void SetUp() override { ASSERT_TRUE(desk->panel.ready()); }
  RemoteWindow open(const std::string& title, const std::string& letters) {
    if (!hands.shows(title)) hands.menu(letters);
    const RemoteWindow window = hands.window(title);
    d.settle();
    return window;
  }
  void close(const std::string& title) {
    if (hands.shows(title)) hands.window(title).close();
    EXPECT_TRUE(hands.gone(title));
  }
  RemoteWindow controls() { return open(Hands::kControls, "tn"); }
  static bool becomes(HWND control, const std::string& text) {
    return eventually([&] { return controlText(control) == text; });
  }
  Desk& d = *desk;
  const Hands& hands = d.hands;
};

enum Boxes : std::size_t { Shift, Frequency, TxPower, RxGain, Phase };
enum Bars : std::size_t { TxPowerBar, RxGainBar, PhaseBar };

} // namespace

TEST_F(Panels, solventChosenByItsLetterRetunesAndFollowsWithPowerThenGain) {
  const RemoteWindow panel = controls();
  HWND list = panel.child("COMBOBOX");
  PostMessageA(list, WM_CHAR, 'D', 1);
  EXPECT_TRUE(becomes(panel.child("EDIT", Shift), "4.8"));
  EXPECT_TRUE(becomes(panel.child("EDIT", TxPower), "30.0"));
  EXPECT_TRUE(becomes(panel.child("EDIT", RxGain), "800"));
  // One change is carried out for each time that changes are announced; the gain waits for the next.
  EXPECT_EQ(d.told(2), Lines({"198 ref R8 46.0446373", "28 ref R8 30"}));
  d.settle();
  hands.click(panel.child("SCROLLBAR", PhaseBar), 5, 5);
  EXPECT_TRUE(becomes(panel.child("EDIT", Phase), "31"));
  EXPECT_EQ(d.told(1), Lines({"26 R8 800"}));
}

TEST_F(Panels, solventChosenWithTheMouse) {
  const RemoteWindow panel = controls();
  hands.chooseByMouse(panel.child("COMBOBOX"), 0);
  EXPECT_TRUE(becomes(panel.child("EDIT", Shift), "7.24"));
  const Lines told = d.told(1);
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].rfind("198 ref R8 46.04474", 0), 0U) << told[0];
}

TEST_F(Panels, powerTypedBeyondItsLimitIsRefusedAndStaysInTheBox) {
  const RemoteWindow panel = controls();
  HWND box = panel.child("EDIT", TxPower);
  hands.enter(box, "63.5");
  EXPECT_EQ(d.told(1), Lines({"28 ref R8 63.5"}));
  d.settle();
  hands.leave(box, "63.6");
  EXPECT_TRUE(becomes(box, "63.5"));
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(box); }));
  hands.leave(box, "full");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(box); }));
  EXPECT_EQ(controlText(box), "full");
  d.settle();
  EXPECT_TRUE(d.host.calls().empty());
  hands.enter(box, "20");
  EXPECT_EQ(d.told(1), Lines({"28 ref R8 20"}));
}

TEST_F(Panels, powerSliderStepsByHalf) {
  const RemoteWindow panel = controls();
  hands.enter(panel.child("EDIT", TxPower), "20");
  d.settle();
  hands.click(panel.child("SCROLLBAR", TxPowerBar), 5, 5);
  EXPECT_TRUE(becomes(panel.child("EDIT", TxPower), "20.5"));
  EXPECT_EQ(d.told(1), Lines({"28 ref R8 20.5"}));
}

TEST_F(Panels, gainAndPhaseTyped) {
  const RemoteWindow panel = controls();
  hands.enter(panel.child("EDIT", RxGain), "2500");
  EXPECT_EQ(d.told(1), Lines({"26 R8 2500"}));
  d.settle();
  hands.enter(panel.child("EDIT", Phase), "200");
  EXPECT_TRUE(becomes(panel.child("EDIT", Phase), "-160"));
  EXPECT_EQ(d.told(1), Lines({"27 ref R8 200"}));
  d.settle();
  hands.leave(panel.child("EDIT", RxGain), "10001");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(panel.child("EDIT", RxGain)); }));
  d.settle();
  EXPECT_TRUE(d.host.calls().empty());
  hands.enter(panel.child("EDIT", RxGain), "2500");
}

TEST_F(Panels, filterAndFrequency) {
  const RemoteWindow panel = controls();
  hands.click(panel.button("Fast"));
  EXPECT_EQ(d.told(1), Lines({"199 ref R8 500"}));
  d.settle();
  hands.enter(panel.child("EDIT", Frequency), "46.05");
  EXPECT_EQ(d.told(1), Lines({"198 ref R8 46.05"}));
  d.settle();
  hands.enter(panel.child("EDIT", Shift), "5");
  const Lines told = d.told(2); // leaving the frequency sends it once more
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[0], "198 ref R8 46.05");
  EXPECT_EQ(told[1].rfind("198 ref R8 46.0446", 0), 0U) << told[1];
}

TEST_F(Panels, controlsUndoSendsNothingAndSaveWritesTheFile) {
  hands.enter(controls().child("EDIT", RxGain), "2500");
  close(Hands::kControls);
  const RemoteWindow panel = controls();
  EXPECT_EQ(controlText(panel.child("EDIT", RxGain)),
            "1200"); // loading chooses the solvent and with it its gain
  hands.enter(panel.child("EDIT", RxGain), "3333");
  EXPECT_EQ(d.told(1), Lines({"26 R8 3333"}));
  d.settle();
  EXPECT_TRUE(panel.chooseMenu("s"));
  EXPECT_TRUE(eventually([] { return readSettings()["[Hardware] RxGain"] == "3333"; }));
  EXPECT_TRUE(eventually([] { return readSettings()["[Solvents_RxGain] CDCl3"] == "3333"; }));
  d.settle();
  EXPECT_TRUE(panel.chooseMenu("u"));
  EXPECT_TRUE(becomes(panel.child("EDIT", RxGain), "2500"));
  d.settle();
  EXPECT_TRUE(d.host.calls().empty());
}

TEST_F(Panels, sweepWidthTakesTheSpeedAlong) {
  close(Hands::kSweep);
  const RemoteWindow panel = open(Hands::kSweep, "ts");
  HWND width = panel.child("COMBOBOX", 0), speed = panel.child("COMBOBOX", 1);
  EXPECT_EQ(controlText(width), "8000");
  EXPECT_EQ(controlText(speed), "20000");
  hands.chooseByMouse(width, 5);
  EXPECT_TRUE(becomes(speed, "4096"));
  EXPECT_EQ(d.told(3), Lines({"30 R8 400", "204 R8 4096", "206 R8 4096"}));
  d.settle();
  hands.enter(speed, "3000");
  // Leaving the width takes it over once more, and the speed with it.
  EXPECT_EQ(d.told(4), Lines({"30 R8 400", "204 R8 4096", "206 R8 4096", "206 R8 3000"}));
  EXPECT_EQ(controlText(width), "4096");
  d.settle();
  hands.leave(speed, "fast");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(speed); }));
  EXPECT_TRUE(d.host.calls().empty());
  EXPECT_TRUE(panel.chooseMenu("u"));
  EXPECT_TRUE(becomes(speed, "20000"));
  EXPECT_EQ(d.told(3), Lines({"206 R8 20000", "30 R8 400", "204 R8 8000"}));
  close(Hands::kSweep);
}

TEST_F(Panels, loopConstantsArePickedTypedAndUndone) {
  const RemoteWindow panel = open(Hands::kTuning, "tt");
  HWND list = panel.child("COMBOBOX"), integral = panel.child("EDIT", 1);
  EXPECT_EQ(controlText(list), "0  {9000/40/5}");
  EXPECT_EQ(controlText(panel.child("EDIT", 0)), "8000");
  hands.chooseByMouse(list, 0);
  EXPECT_EQ(d.told(3), Lines({"202 I4 0 R8 9000", "202 I4 1 R8 40", "202 I4 2 R8 5"}));
  d.settle();
  hands.enter(integral, "55");
  EXPECT_EQ(d.told(3), Lines({"202 I4 0 R8 9000", "202 I4 1 R8 55", "202 I4 2 R8 5"}));
  d.settle();
  hands.leave(integral, "much");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(integral); }));
  EXPECT_TRUE(d.host.calls().empty());
  EXPECT_TRUE(panel.chooseMenu("u"));
  EXPECT_TRUE(becomes(integral, "60"));
  EXPECT_EQ(d.told(3), Lines({"202 I4 0 R8 8000", "202 I4 1 R8 60", "202 I4 2 R8 3"}));
  close(Hands::kTuning);
}

TEST_F(Panels, displayArrowsAndTypedValues) {
  const RemoteWindow panel = open(Hands::kDisplay, "td");
  HWND amplitude = panel.child("EDIT", 0), offset = panel.child("EDIT", 1);
  EXPECT_EQ(controlText(amplitude), " 9");
  hands.click(panel.child("msctls_updown32", 0), 5, 3);
  EXPECT_TRUE(eventually([&] { return std::stoi("0" + controlText(amplitude).substr(1)) == 8; }))
      << controlText(amplitude);
  hands.click(panel.child("msctls_updown32", 1), 5, 3);
  EXPECT_TRUE(eventually([&] { return std::stoi(controlText(offset)) == 25; })) << controlText(offset);
  hands.leave(offset, "high");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(offset); }));
  hands.enter(offset, "0");
  hands.keys(panel, {VK_DOWN});
  EXPECT_TRUE(becomes(amplitude, " 9"));
  hands.keys(panel, {VK_SHIFT, VK_DOWN});
  EXPECT_TRUE(becomes(offset, "-25"));
  EXPECT_TRUE(panel.chooseMenu("u"));
  EXPECT_TRUE(becomes(offset, " 0"));
  EXPECT_TRUE(d.host.calls().empty());
  close(Hands::kDisplay);
}

TEST_F(Panels, levelMeterFollowsTheLevel) {
  hands.menu("ps");
  const RemoteWindow meter = hands.window(Hands::kLevel);
  d.host.words[1] = 300;
  hands.mode(2);
  EXPECT_TRUE(eventually([&] { return std::stoi(controlText(meter.child("EDIT"))) > 280; }))
      << controlText(meter.child("EDIT"));
  hands.mode(1);
  EXPECT_TRUE(hands.statusBecomes("OFF"));
  d.host.words[1] = 0;
  close(Hands::kLevel);
  hands.menu("ps"); // closing took the check mark away: once is enough to open it again
  EXPECT_TRUE(hands.shown(Hands::kLevel));
  hands.menu("ps");
  EXPECT_TRUE(hands.gone(Hands::kLevel));
}

TEST_F(Panels, levelMeterStaysOnTheScreenWhenTheMainWindowIsMinimisedAndThePanelsGo) {
  const RemoteWindow panel = open(Hands::kSweep, "ts");
  hands.menu("ps");
  const RemoteWindow meter = hands.window(Hands::kLevel);
  const HWND main = hands.main().window();
  PostMessageA(main, WM_SYSCOMMAND, SC_MINIMIZE, 0);
  EXPECT_TRUE(eventually([&] { return IsIconic(main) && !IsWindowVisible(panel.window()); }));
  EXPECT_TRUE(IsWindowVisible(meter.window()));
  PostMessageA(main, WM_SYSCOMMAND, SC_RESTORE, 0);
  EXPECT_TRUE(eventually([&] { return !IsIconic(main) && IsWindowVisible(panel.window()); }));
  close(Hands::kLevel);
  close(Hands::kSweep);
}

TEST_F(Panels, closedPanelComesBackWhereItWasAndTheMenuClosesItToo) {
  const RemoteWindow first = open(Hands::kSweep, "ts");
  SetWindowPos(first.window(), nullptr, 123, 456, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  const RECT before = first.rect();
  close(Hands::kSweep);
  const RECT after = open(Hands::kSweep, "ts").rect();
  EXPECT_TRUE(EqualRect(&before, &after)) << after.left << ", " << after.top;
  hands.menu("ts");
  EXPECT_TRUE(hands.gone(Hands::kSweep));
}

TEST_F(Panels, everyPanelIsReachedByAltAndTabAlone) {
  const RemoteWindow panel = controls();
  SetForegroundWindow(panel.window());
  hands.keys(panel, {VK_MENU, 'T'}); // the label's key leads to the slider that it names
  HWND slider = panel.child("SCROLLBAR", TxPowerBar);
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(slider); }));
  hands.keys(panel, {VK_TAB});
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(panel.child("EDIT", TxPower)); }));
}
