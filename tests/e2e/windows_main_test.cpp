// The main window by its real toolbar, field centre, menus and frame; the host's notebook says what came of
// it.
#include "e2e/support/Hands.h"
#include <algorithm>
#include <gtest/gtest.h>

using namespace e2e;

namespace {

class MainWindow : public testing::Test {
 protected:
  static inline std::unique_ptr<Desk> desk;
  static void SetUpTestSuite() { desk = std::make_unique<Desk>(); }
  static void TearDownTestSuite() { desk.reset(); }
  void SetUp() override {
    ASSERT_TRUE(desk->panel.ready());
    if (hands.status() != "OFF") hands.mode(1);
    ASSERT_TRUE(hands.statusBecomes("OFF"));
    centre("400");
    desk->settle();
  }
  void centre(const std::string& text) { hands.enter(centreBox(), text); }
  HWND centreBox() { return hands.main().child("EDIT"); }
  HWND bar() { return hands.main().child("SCROLLBAR"); }
  std::string centreText() { return win32::controlText(centreBox()); }
  bool centreBecomes(const std::string& text) {
    return eventually([&] { return centreText() == text; });
  }
  win32::RemotePanel toolbar() { return desk->panel.window(); }
  static Lines sentCentre(double field) {
    return {"30 R8 " + number(field), "204 R8 8000", "206 R8 20000", "206 R8 20000"};
  }
  Desk& d = *desk;
  const Hands& hands = d.hands;
};

// The same with and without the noise sample in it.
Lines sampled(const Lines& before, const Lines& after) {
  Lines all = before;
  for (const char* line : {"198 ref R8 ", "31 I4 7", "198 ref R8 "}) all.push_back(line);
  all.insert(all.end(), after.begin(), after.end());
  return all;
}

// A line that ends in a blank stands for any number there.
void expectCalls(const Lines& told, const Lines& expected) {
  ASSERT_EQ(told.size(), expected.size()) << testing::PrintToString(told);
  for (std::size_t i = 0; i < told.size(); ++i)
    if (expected[i].back() == ' ')
      EXPECT_EQ(told[i].rfind(expected[i], 0), 0U) << told[i];
    else
      EXPECT_EQ(told[i], expected[i]) << "call " << i;
}

} // namespace

TEST_F(MainWindow, sweepAndOffClickedOnTheToolbarSendTheirWholeSequences) {
  hands.mode(3);
  EXPECT_TRUE(hands.statusBecomes("SWEEP"));
  const Lines sweep =
      sampled({"22 I4 0", "199 ref R8 500", "199 ref R8 500", "28 ref R8 30", "30 R8 400", "204 R8 8000",
               "206 R8 20000", "206 R8 20000", "27 ref R8 30", "199 ref R8 500"},
              {"31 I4 2"});
  expectCalls(d.told(sweep.size()), sweep);
  EXPECT_TRUE(eventually([&] { return toolbar().isPressed(3); }));
  EXPECT_FALSE(toolbar().isPressed(1));
  d.settle();
  hands.mode(1);
  EXPECT_TRUE(hands.statusBecomes("OFF"));
  expectCalls(d.told(4), {"22 I4 0", "31 I4 3", "30 R8 400", "31 I4 0"});
  EXPECT_TRUE(eventually([&] { return toolbar().isPressed(1) && !toolbar().isPressed(3); }));
}

TEST_F(MainWindow, lockAndHoldClickedOnTheToolbar) {
  hands.mode(2);
  EXPECT_TRUE(hands.statusBecomes("SEARCHING..."));
  EXPECT_FALSE(IsWindowEnabled(bar()));
  const Lines told = d.host.calls();
  const auto on = std::find(told.begin(), told.end(), "31 I4 1");
  ASSERT_GE(on - told.begin(), 6) << testing::PrintToString(told);
  EXPECT_EQ(told.front(), "22 I4 0");
  EXPECT_EQ(Lines(on - 5, on + 1), Lines({"31 I4 3", "30 R8 400", "202 I4 0 R8 8000", "202 I4 1 R8 60",
                                          "202 I4 2 R8 3", "31 I4 1"}));
  d.host.words[3] = 30000;
  EXPECT_TRUE(hands.statusBecomes("LOCKED"));
  EXPECT_EQ(hands.status(2), "Lvl:0");
  d.host.words[0] = 812;
  EXPECT_TRUE(eventually([&] { return hands.status(1) == "DAC:812"; }));
  hands.mode(4);
  EXPECT_TRUE(hands.statusBecomes("HOLD"));
  EXPECT_TRUE(centreBecomes("812"));
  EXPECT_TRUE(IsWindowEnabled(bar()));
  d.host.words[0] = d.host.words[3] = 0;
}

TEST_F(MainWindow, typedCentreIsBroughtDownToAMultipleOfFour) {
  centre("10");
  EXPECT_TRUE(centreBecomes("8"));
  EXPECT_EQ(d.told(4), sentCentre(8));
  d.settle();
  hands.leave(centreBox(), "-10");
  EXPECT_TRUE(centreBecomes("-12"));
  EXPECT_EQ(d.told(4), sentCentre(-12));
  EXPECT_TRUE(eventually([&] { return !hands.hasFocus(centreBox()); }));
}

TEST_F(MainWindow, textThatIsNoNumberKeepsTheFocusInTheBox) {
  hands.leave(centreBox(), "4oo");
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(bar()) || hands.hasFocus(centreBox()); }));
  EXPECT_TRUE(eventually([&] { return hands.hasFocus(centreBox()); }));
  EXPECT_EQ(centreText(), "4oo");
  EXPECT_TRUE(d.host.calls().empty());
}

TEST_F(MainWindow, centreTooLargeIsAskedForAgain) {
  centre("131069");
  Box box = hands.box();
  EXPECT_EQ(box.caption, "Fatal Error");
  EXPECT_EQ(box.text, "Input New Field Center overflow! Retry.");
  box.answer(IDOK);
  box = hands.box();
  EXPECT_EQ(box.caption, "Vantrel Lock");
  EXPECT_EQ(win32::controlText(box.window.child("STATIC")), "New Field Center (DAC Units)");
  EXPECT_EQ(win32::controlText(box.window.child("EDIT")), "131069");
  EXPECT_FALSE(IsWindowEnabled(hands.main().window()));
  SetDlgItemTextA(box.window.window(), GetDlgCtrlID(box.window.child("EDIT")), "1e3");
  box.answer(IDOK);
  EXPECT_TRUE(centreBecomes("1000"));
  EXPECT_EQ(d.told(4), sentCentre(1000));
}

TEST_F(MainWindow, scrollBarStepsAndItsThumb) {
  hands.click(bar(), 5, 5);
  EXPECT_TRUE(centreBecomes("336")); // one small step of 16, four DAC units each
  EXPECT_EQ(d.told(4), sentCentre(336));
  d.settle();
  const LPARAM from = reinterpret_cast<LPARAM>(bar());
  PostMessageA(hands.main().window(), WM_HSCROLL, MAKEWPARAM(SB_PAGERIGHT, 0), from);
  EXPECT_TRUE(centreBecomes("2384"));
  EXPECT_EQ(d.told(4), sentCentre(2384));
}

TEST_F(MainWindow, plotPopUpMenu) {
  HWND plot = hands.main().child("VantrelPicture");
  const auto choose = [&](char letter) {
    PostMessageA(plot, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(50, 50));
    ASSERT_TRUE(eventually([&] { return hands.main().openMenus() == 1; }));
    PostMessageA(hands.main().window(), WM_CHAR, static_cast<WPARAM>(letter), 1);
    ASSERT_TRUE(eventually([&] { return hands.main().openMenus() == 0; }));
  };
  choose('z');
  EXPECT_TRUE(centreBecomes("0"));
  EXPECT_EQ(d.told(4), sentCentre(0));
  d.settle();
  choose('c'); // to where the mouse is: left of the middle
  EXPECT_TRUE(eventually([&] { return centreText() != "0"; }));
  EXPECT_LT(std::stoi(centreText()), 0);
  EXPECT_EQ(d.told(4), sentCentre(std::stoi(centreText())));
  choose('e');
  const Box box = hands.box();
  EXPECT_EQ(win32::controlText(box.window.child("EDIT")), centreText());
  const std::string before = centreText();
  box.answer(IDCANCEL);
  EXPECT_EQ(centreText(), before);
  choose('r');
  EXPECT_TRUE(hands.main().answers());
}

TEST_F(MainWindow, narrowAndLowWindowsAreBroughtBack) {
  const HWND window = hands.main().window();
  const RECT before = hands.main().rect();
  SetWindowPos(window, nullptr, 0, 0, 200, static_cast<int>(before.bottom - before.top),
               SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(eventually([&] {
    const RECT r = hands.main().rect();
    return r.right - r.left == 347; // 5200 twips
  }));
  SetWindowPos(window, nullptr, 0, 0, 600, 60, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(eventually([&] {
    RECT client{};
    GetClientRect(window, &client);
    return client.bottom >= 56 + 23 + 17 + 6; // toolbar, status bar, scroll bar and 100 twips
  }));
  EXPECT_EQ(hands.main().child("VantrelPicture"), nullptr) << "a plot below 200 twips is hidden";
  SetWindowPos(window, nullptr, 0, 0, static_cast<int>(before.right - before.left),
               static_cast<int>(before.bottom - before.top), SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(eventually([&] { return hands.main().child("VantrelPicture") != nullptr; }));
}

TEST_F(MainWindow, maximisedPlotFillsTheWindow) {
  const HWND window = hands.main().window();
  const RECT before = hands.main().rect();
  PostMessageA(window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
  EXPECT_TRUE(eventually([&] { return IsZoomed(window); }));
  EXPECT_TRUE(eventually([&] {
    RECT client{}, plot{}, scroll{};
    GetClientRect(window, &client);
    GetClientRect(hands.main().child("VantrelPicture"), &plot);
    GetClientRect(bar(), &scroll);
    return std::abs(client.bottom - plot.bottom - 56 - 23 - 17) <= 2 && scroll.right == client.right;
  }));
  PostMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  EXPECT_TRUE(eventually([&] {
    const RECT now = hands.main().rect();
    return EqualRect(&now, &before) != 0;
  }));
}

TEST_F(MainWindow, minimisedWindowTakesTheLockCommandsOfItsSystemMenu) {
  const HWND window = hands.main().window();
  ASSERT_TRUE(hands.shown(Hands::kControls));
  PostMessageA(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
  EXPECT_TRUE(eventually([&] { return IsIconic(window) != 0; }));
  EXPECT_TRUE(hands.gone(Hands::kControls));
  d.settle();
  PostMessageA(window, WM_SYSCOMMAND, 60003, 0);
  EXPECT_TRUE(eventually([&] { return toolbar().isPressed(4); }));
  EXPECT_TRUE(eventually([&] { return !d.host.calls().empty() && d.host.calls().back() == "30 R8 400"; }));
  PostMessageA(window, WM_SYSCOMMAND, 60001, 0);
  EXPECT_TRUE(eventually([&] { return toolbar().isPressed(2); }));
  PostMessageA(window, WM_SYSCOMMAND, 60002, 0);
  EXPECT_TRUE(eventually([&] { return toolbar().isPressed(1); }));
  PostMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  EXPECT_TRUE(eventually([&] { return !IsIconic(window); }));
  EXPECT_TRUE(hands.shown(Hands::kControls));
  d.settle();
  PostMessageA(window, WM_SYSCOMMAND, 60003, 0); // not hooked any more
  EXPECT_TRUE(hands.main().answers());
  d.settle();
  EXPECT_FALSE(toolbar().isPressed(4));
}

TEST_F(MainWindow, alwaysOnTopGoesToEveryWindow) {
  ASSERT_TRUE(hands.shown(Hands::kControls));
  const auto topmost = [&](const std::string& title) {
    return (GetWindowLongA(hands.window(title).window(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  };
  for (const bool on : {false, true, false, true}) { // the file has it on
    hands.menu("pt");
    for (const char* title : {Hands::kMain, Hands::kControls})
      EXPECT_TRUE(eventually([&] { return topmost(title) == on; }, 3000)) << title << on;
  }
}

TEST_F(MainWindow, commandsMenuResetsAndSendsAgain) {
  hands.menu("ce");
  expectCalls(d.told(7),
              {"52", "45", "51 ref I4 0", "27 ref R8 30", "198 ref R8 ", "28 ref R8 20", "26 R8 1200"});
  d.settle();
  hands.menu("cl");
  expectCalls(d.told(4), {"27 ref R8 30", "198 ref R8 ", "28 ref R8 20", "26 R8 1200"});
}

TEST_F(MainWindow, shortcutsWorkFromTheKeyboard) {
  hands.keys(hands.main(), {VK_CONTROL, 'L'});
  expectCalls(d.told(4), {"27 ref R8 30", "198 ref R8 ", "28 ref R8 20", "26 R8 1200"});
}

TEST_F(MainWindow, solventListIsOnlyAnnounced) {
  ASSERT_TRUE(hands.main().chooseMenu("es"));
  const Box box = hands.box();
  EXPECT_EQ(box.caption, "Vantrel Lock System");
  EXPECT_EQ(box.text, "This Function Not Yet Implemented");
  box.answer(IDOK);
  EXPECT_TRUE(d.host.calls().empty());
}

TEST_F(MainWindow, aboutBoxIsModalAndTellsTheVersion) {
  ASSERT_TRUE(hands.main().chooseMenu("ha"));
  const win32::RemoteWindow about = hands.window("About Vantrel Lock");
  EXPECT_TRUE(eventually([&] { return !IsWindowEnabled(hands.main().window()); }));
  bool version = false;
  for (HWND label : about.children("STATIC"))
    version = version || win32::controlText(label) == "Version 3.0.81";
  EXPECT_TRUE(version);
  win32::clickControl(about.button("System Info..."));
  const Box box = hands.box(); // this system has no such tool
  EXPECT_EQ(box.text, "System Information Is Unavailable At This Time");
  box.answer(IDOK);
  hands.click(about.button("OK"));
  EXPECT_TRUE(hands.gone("About Vantrel Lock"));
  EXPECT_TRUE(eventually([&] { return IsWindowEnabled(hands.main().window()) != 0; }));
}
