#include "e2e/support/Hands.h"
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace e2e {

using win32::RemoteWindow;

namespace {
constexpr int kBoxText = 0xFFFF;

bool isBox(const RemoteWindow& window) { return window.windowClass() == "#32770"; }

std::string boxText(const RemoteWindow& window) {
  HWND text = GetDlgItem(window.window(), kBoxText);
  return text ? win32::controlText(text) : std::string();
}
} // namespace

std::string operatorSettings() {
  return standardSettings() +
         "[NMRControls]\r\nTop=600\r\nLeft=9900\r\n[AutoLock]\r\nPeakThresholdFactor=16\r\n"
         "SweepSpeed=32768\r\nSweepWidth=16384\r\n";
}

void Box::answer(int button) const {
  PostMessageA(window.window(), WM_COMMAND, static_cast<WPARAM>(button), 0);
  EXPECT_TRUE(eventually([this] { return !window.exists() || !IsWindowVisible(window.window()); }))
      << "the box stays: " << caption << ": " << text;
}

RemoteWindow Hands::main() const {
  const auto panel = win32::RemotePanel::find(process_);
  return RemoteWindow(panel ? panel->window() : nullptr);
}

bool Hands::shows(const std::string& title) const {
  for (const RemoteWindow& window : RemoteWindow::all(process_))
    if (window.title() == title) return true;
  return false;
}

RemoteWindow Hands::window(const std::string& title) const {
  RemoteWindow found;
  EXPECT_TRUE(eventually([&] {
    for (const RemoteWindow& window : RemoteWindow::all(process_))
      if (window.title() == title) found = window;
    return found.window() != nullptr;
  })) << "no window "
      << title;
  return found;
}

bool Hands::asks() const {
  for (const RemoteWindow& window : RemoteWindow::all(process_))
    if (isBox(window)) return true;
  return false;
}

Box Hands::box(DWORD longestMs) const {
  Box found;
  EXPECT_TRUE(eventually(
      [&] {
        for (const RemoteWindow& window : RemoteWindow::all(process_))
          if (isBox(window) && IsWindowEnabled(window.window()) && !found.window.window())
            found = {window, window.title(), boxText(window)};
        return found.window.window() != nullptr;
      },
      longestMs))
      << "nothing is asked";
  return found;
}

void Hands::menu(const std::string& letters) const {
  EXPECT_TRUE(main().chooseMenu(letters)) << "no menu for " << letters;
  EXPECT_TRUE(eventually([this] { return main().openMenus() == 0; })) << letters << " leaves a menu open";
}

void Hands::mode(int button) const {
  const auto panel = win32::RemotePanel::find(process_);
  ASSERT_TRUE(panel && panel->clickMode(button));
}

std::string Hands::status(int panel) const {
  const auto found = win32::RemotePanel::find(process_);
  return found ? found->status(panel) : std::string();
}

bool Hands::statusBecomes(const std::string& text, DWORD longestMs) const {
  return eventually([&] { return status() == text; }, longestMs);
}

// Posted messages keep their order: a limit that a box got this way says that those before it are done. A key
// may have made further ones, so the second limit is waited for.
void Hands::sync() const {
  static int stamp = 0;
  HWND carrier = FindWindowExA(main().window(), nullptr, "EDIT", nullptr);
  for (int round = 0; round < 2; ++round) {
    const int limit = 20000 + ++stamp;
    PostMessageA(carrier, EM_SETLIMITTEXT, static_cast<WPARAM>(limit), 0);
    EXPECT_TRUE(eventually([&] { return SendMessageA(carrier, EM_GETLIMITTEXT, 0, 0) == limit; }));
  }
}

void Hands::click(HWND control) const {
  ASSERT_TRUE(control);
  win32::clickControl(control);
  sync();
}

void Hands::click(HWND control, int x, int y) const {
  ASSERT_TRUE(control);
  win32::clickControl(control, x, y);
  sync();
}

bool Hands::hasFocus(HWND control) const {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  return GetGUIThreadInfo(GetWindowThreadProcessId(control, nullptr), &info) &&
         (info.hwndFocus == control || GetParent(info.hwndFocus) == control);
}

void Hands::enter(HWND control, const std::string& text) const {
  ASSERT_TRUE(control);
  win32::typeText(control, text);
  HWND edit = FindWindowExA(control, nullptr, "EDIT", nullptr);
  win32::pressKey(edit ? edit : control, VK_RETURN);
  sync();
}

void Hands::leave(HWND control, const std::string& text) const {
  ASSERT_TRUE(control);
  win32::typeText(control, text);
  HWND edit = FindWindowExA(control, nullptr, "EDIT", nullptr);
  win32::pressKey(edit ? edit : control, VK_TAB);
  sync();
}

void Hands::keys(const RemoteWindow& window, std::initializer_list<WORD> chord) const {
  SetForegroundWindow(window.window());
  ASSERT_TRUE(eventually([&] { return GetForegroundWindow() == window.window(); }));
  std::vector<INPUT> inputs;
  const auto add = [&](WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, 0));
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (const WORD key : chord) add(key, 0);
  for (auto key = std::rbegin(chord); key != std::rend(chord); ++key) add(*key, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void Hands::chooseByMouse(HWND combo, int entry) const {
  ASSERT_TRUE(combo);
  RECT r{};
  GetClientRect(combo, &r);
  win32::clickControl(combo, static_cast<int>(r.right) - 8, static_cast<int>(r.bottom) / 2);
  HWND list = nullptr;
  EXPECT_TRUE(eventually([&] {
    for (const RemoteWindow& window : RemoteWindow::all(process_))
      if (window.windowClass() == "ComboLBox") list = window.window();
    return list != nullptr;
  })) << "the list does not open";
  const auto height = static_cast<int>(SendMessageA(list, LB_GETITEMHEIGHT, 0, 0));
  const auto top = static_cast<int>(SendMessageA(list, LB_GETTOPINDEX, 0, 0));
  win32::clickControl(list, 10, (entry - top) * height + height / 2);
  EXPECT_TRUE(eventually([&] { return !IsWindowVisible(list); })) << "the list stays open";
}

Desk::Desk(const std::string& settings)
    : panel((writeSettings(settings), std::string())), hands(panel.process) {
  host.words[6] = 400;
  settle();
}

void Desk::settle() {
  std::size_t before = 0;
  do {
    before = host.calls().size();
    for (int turn = 0; turn < 5; ++turn)
      hands.sync(); // a change that is put off is sent between two messages
  } while (host.calls().size() != before);
  host.clear();
}

Lines Desk::told(std::size_t count) {
  Lines lines = host.waitForCalls(count);
  if (lines.size() > count) lines.resize(count);
  return lines;
}

Settings readSettings(const std::string& path) {
  Settings settings;
  std::istringstream file(fileContent(path));
  std::string line, section;
  while (std::getline(file, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      section = line;
      continue;
    }
    const auto equals = line.find('=');
    settings[section + " " + line.substr(0, equals)] =
        equals == std::string::npos ? "" : line.substr(equals + 1);
  }
  return settings;
}

std::string fileContent(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string number(double value) {
  std::ostringstream text;
  text.precision(10);
  text << value;
  return text.str();
}

} // namespace e2e
