// Anything that hands can do, in any order: the panel must neither fall over nor get stuck.
#include "e2e/support/Hands.h"
#include <gtest/gtest.h>
#include <random>

using namespace e2e;
using win32::RemoteWindow;

namespace {

constexpr int kGestures = 500;

class Chance {
 public:
  explicit Chance(unsigned seed) : engine_(seed) {}
  int below(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
  template <class T> const T& of(const std::vector<T>& all) {
    return all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
  }

 private:
  std::mt19937 engine_;
};

class Fingers {
 public:
  Fingers(Desk& desk, unsigned seed) : desk_(desk), chance_(seed) {}

  std::string next() {
    switch (chance_.below(10)) {
    case 0:
      return toolbar();
    case 1:
    case 2:
      return menu();
    case 3:
    case 4:
      return typed();
    case 5:
      return slider();
    case 6:
      return list();
    case 7:
      return button();
    case 8:
      return frame();
    default:
      return key();
    }
  }

  // Whatever is asked is answered somehow; a menu left open is closed.
  bool clear() {
    for (int round = 0; round < 40; ++round) {
      if (!desk_.panel.process.running()) return false;
      RemoteWindow modal;
      // Of boxes that stand one on the other only the upper one is enabled; the lower ones wait for it.
      for (const RemoteWindow& window : windows())
        if ((window.windowClass() == "#32770" || window.title().rfind("About ", 0) == 0) &&
            IsWindowEnabled(window.window()))
          modal = window;
      // A menu can be opened over a box and a box over a menu: both are dealt with in every round.
      const bool menus = desk_.hands.main().openMenus() > 0;
      // Wine leaves a menu's picture behind when its window is minimised under it: nothing closes that,
      // nothing waits for it.
      const bool leftBehind = menus && round >= 4;
      if (!modal.window() && (!menus || leftBehind)) return desk_.hands.main().answers(5000);
      if (menus) {
        for (const RemoteWindow& window : windows()) PostMessageA(window.window(), WM_CANCELMODE, 0, 0);
        PostMessageA(desk_.hands.main().window(), WM_KEYDOWN, VK_ESCAPE, 1);
      }
      if (modal.windowClass() == "#32770")
        PostMessageA(modal.window(), WM_COMMAND, chance_.below(2) ? IDOK : IDCANCEL, 0);
      else if (modal.window())
        modal.close();
      eventually([&] { return modal.window() && !modal.exists(); }, 250);
    }
    return false;
  }

  // What keeps the panel from going on, for the report.
  std::string inTheWay() const {
    std::string all = desk_.panel.process.running() ? "" : "the panel has ended\n";
    for (const RemoteWindow& window : windows()) {
      all += window.windowClass() + " \"" + window.title() + "\"";
      for (HWND child : window.children("Static")) all += " | " + win32::controlText(child);
      all += window.answers(5000) ? "\n" : " does not answer\n";
    }
    return all + "open menus: " + std::to_string(desk_.hands.main().openMenus());
  }

 private:
  std::vector<RemoteWindow> windows() const { return RemoteWindow::all(desk_.panel.process.id()); }
  std::vector<RemoteWindow> forms() const {
    std::vector<RemoteWindow> found;
    for (const RemoteWindow& window : windows())
      if (window.windowClass() == "VantrelForm") found.push_back(window);
    return found;
  }
  HWND anyOf(const std::string& windowClass) {
    std::vector<HWND> all;
    for (const RemoteWindow& form : forms())
      for (HWND child : form.children(windowClass)) all.push_back(child);
    return all.empty() ? nullptr : chance_.of(all);
  }
  std::string toolbar() {
    const int which = 1 + chance_.below(6);
    desk_.hands.mode(which);
    return "mode " + std::to_string(which);
  }
  std::string menu() {
    static const std::vector<std::string> choices = {"fs", "es",  "pr",  "pi",  "pm", "ps", "pl",
                                                     "pt", "pud", "puh", "pup", "td", "ts", "tt",
                                                     "tn", "cp",  "ce",  "cl",  "ha", "fo"};
    const std::string letters = chance_.of(choices);
    const RemoteWindow main = desk_.hands.main();
    if (!IsIconic(main.window())) main.chooseMenu(letters);
    return "menu " + letters;
  }
  std::string typed() {
    static const std::vector<std::string> texts = {
        "0",    "-1",     "63.5",   "64",   "1e9", "99999999999", "",         "abc",  " 7 ",   "1,5", "-180",
        "&H1F", "131068", "131072", "4096", "+-3", "1e400",       "\x80\xff", "%s%n", ";[x]=", "0x10"};
    HWND box = anyOf(chance_.below(4) ? "EDIT" : "COMBOBOX");
    if (!box) return "no box";
    const std::string text = chance_.of(texts);
    if (chance_.below(2))
      desk_.hands.enter(box, text);
    else
      desk_.hands.leave(box, text);
    return "typed \"" + text + "\"";
  }
  std::string slider() {
    HWND bar = anyOf("SCROLLBAR");
    if (!bar) return "no slider";
    RECT r{};
    GetClientRect(bar, &r);
    const int x = chance_.below(std::max<int>(1, static_cast<int>(r.right))),
              y = chance_.below(std::max<int>(1, static_cast<int>(r.bottom)));
    win32::clickControl(bar, x, y);
    return "slider at " + std::to_string(x) + ", " + std::to_string(y);
  }
  std::string list() {
    HWND combo = anyOf("COMBOBOX");
    if (!combo) return "no list";
    const auto count = static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0));
    const int entry = chance_.below(std::max(1, count));
    SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    PostMessageA(GetParent(combo), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
    return "entry " + std::to_string(entry);
  }
  std::string button() {
    HWND which = anyOf(chance_.below(2) ? "BUTTON" : "msctls_updown32");
    if (!which) return "no button";
    win32::clickControl(which, 5, chance_.below(18));
    return "button";
  }
  std::string frame() {
    const RemoteWindow main = desk_.hands.main();
    switch (chance_.below(5)) {
    case 0:
      PostMessageA(main.window(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
      return "minimise";
    case 1:
      PostMessageA(main.window(), WM_SYSCOMMAND, SC_RESTORE, 0);
      return "restore";
    case 2:
      PostMessageA(main.window(), WM_SYSCOMMAND, static_cast<WPARAM>(60001 + chance_.below(3)), 0);
      return "system menu";
    case 3:
      SetWindowPos(main.window(), nullptr, 0, 0, 100 + chance_.below(900), 50 + chance_.below(800),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
      return "resize";
    default: {
      std::vector<RemoteWindow> panels;
      for (const RemoteWindow& form : forms())
        if (form.window() != main.window()) panels.push_back(form);
      if (panels.empty()) return "no panel";
      chance_.of(panels).close();
      return "close a panel";
    }
    }
  }
  std::string key() {
    static const std::vector<int> codes = {VK_UP,  VK_DOWN,   VK_PRIOR,  VK_NEXT, VK_HOME,
                                           VK_TAB, VK_ESCAPE, VK_RETURN, 6,       VK_SPACE};
    const int code = chance_.of(codes);
    const RemoteWindow form =
        chance_.of(forms().empty() ? std::vector<RemoteWindow>{desk_.hands.main()} : forms());
    const auto children = form.children(chance_.below(2) ? "EDIT" : "SCROLLBAR");
    win32::pressKey(children.empty() ? form.window() : children.front(), code);
    return "key " + std::to_string(code);
  }

  Desk& desk_;
  Chance chance_;
};

} // namespace

TEST(Gestures, fiveHundredAtRandomLeaveThePanelWorking) {
  Desk desk;
  ASSERT_TRUE(desk.panel.ready());
  desk.host.words[0] = 500;
  desk.host.words[1] = 250;
  Fingers fingers(desk, 20240229);
  std::vector<std::string> history;
  for (int i = 0; i < kGestures; ++i) {
    history.push_back(fingers.next());
    if (i % 5 == 4 && !fingers.clear()) {
      if (history.size() > 12) history.erase(history.begin(), history.end() - 12);
      FAIL() << "stuck after gesture " << i << ": " << testing::PrintToString(history) << "\n"
             << fingers.inTheWay();
    }
  }
  ASSERT_TRUE(fingers.clear());
  PostMessageA(desk.hands.main().window(), WM_SYSCOMMAND, SC_RESTORE, 0);
  ASSERT_TRUE(eventually([&] { return !IsIconic(desk.hands.main().window()); }));
  ASSERT_TRUE(fingers.clear());
  desk.hands.mode(3);
  for (int i = 0; i < 20 && desk.hands.status() != "SWEEP"; ++i) ASSERT_TRUE(fingers.clear());
  EXPECT_TRUE(desk.hands.statusBecomes("SWEEP"));
  desk.hands.mode(1);
  EXPECT_TRUE(desk.hands.statusBecomes("OFF"));
}
