#include "win32/remote/RemoteWindow.h"
#include <algorithm>

namespace win32 {

namespace {

struct Search {
  DWORD process;
  std::vector<RemoteWindow> found;
};

BOOL CALLBACK collectWindow(HWND window, LPARAM l) {
  auto* search = reinterpret_cast<Search*>(l);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == search->process && IsWindowVisible(window)) search->found.emplace_back(window);
  return TRUE;
}

struct ClassSearch {
  const std::string& windowClass;
  std::vector<HWND> found;
};

std::string classOf(HWND window) {
  char name[64] = {};
  GetClassNameA(window, name, sizeof name);
  return name;
}

BOOL CALLBACK collectChild(HWND window, LPARAM l) {
  auto* search = reinterpret_cast<ClassSearch*>(l);
  if (IsWindowVisible(window) && lstrcmpiA(classOf(window).c_str(), search->windowClass.c_str()) == 0)
    search->found.push_back(window);
  return TRUE;
}

bool readsBefore(HWND a, HWND b) {
  RECT first{}, second{};
  GetWindowRect(a, &first);
  GetWindowRect(b, &second);
  if (first.bottom <= second.top || second.bottom <= first.top) return first.top < second.top;
  return first.left < second.left;
}

} // namespace

std::vector<RemoteWindow> RemoteWindow::all(DWORD process) {
  Search search{process, {}};
  EnumWindows(collectWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::optional<RemoteWindow> RemoteWindow::find(DWORD process, const std::string& title) {
  for (const RemoteWindow& window : all(process))
    if (window.title().find(title) != std::string::npos) return window;
  return std::nullopt;
}

bool RemoteWindow::answers(DWORD longestMs) const {
  DWORD_PTR unused = 0;
  return SendMessageTimeoutA(window_, WM_NULL, 0, 0, SMTO_NORMAL, longestMs, &unused) != 0;
}

std::string RemoteWindow::title() const {
  char text[512] = {};
  GetWindowTextA(window_, text, sizeof text);
  return text;
}

std::string RemoteWindow::windowClass() const { return classOf(window_); }

RECT RemoteWindow::rect() const {
  RECT r{};
  GetWindowRect(window_, &r);
  return r;
}

std::vector<HWND> RemoteWindow::children(const std::string& windowClass) const {
  ClassSearch search{windowClass, {}};
  EnumChildWindows(window_, collectChild, reinterpret_cast<LPARAM>(&search));
  std::stable_sort(search.found.begin(), search.found.end(), readsBefore);
  return search.found;
}

HWND RemoteWindow::child(const std::string& windowClass, std::size_t number) const {
  const auto found = children(windowClass);
  return number < found.size() ? found[number] : nullptr;
}

HWND RemoteWindow::button(const std::string& caption) const {
  for (HWND candidate : children("BUTTON")) {
    std::string text = controlText(candidate);
    text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
    if (text == caption) return candidate;
  }
  return nullptr;
}

void RemoteWindow::openMenu(char letter) const { PostMessageA(window_, WM_SYSCOMMAND, SC_KEYMENU, letter); }

std::size_t RemoteWindow::openMenus() const {
  DWORD process = 0;
  GetWindowThreadProcessId(window_, &process);
  std::size_t count = 0;
  for (const RemoteWindow& window : all(process)) count += window.windowClass() == "#32768";
  return count;
}

bool RemoteWindow::chooseMenu(const std::string& letters) const {
  openMenu(letters.front());
  for (std::size_t i = 1; i < letters.size(); ++i) {
    const DWORD start = GetTickCount();
    while (openMenus() < i) {
      if (GetTickCount() - start > 5000) return false;
      Sleep(10);
    }
    PostMessageA(window_, WM_CHAR, static_cast<WPARAM>(letters[i]), 1);
  }
  return true;
}

void RemoteWindow::close() const { PostMessageA(window_, WM_SYSCOMMAND, SC_CLOSE, 0); }

void RemoteWindow::command(int id) const { PostMessageA(window_, WM_COMMAND, static_cast<WPARAM>(id), 0); }

std::string controlText(HWND control) {
  char text[512] = {};
  SendMessageA(control, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

void typeText(HWND control, const std::string& text) {
  HWND edit = FindWindowExA(control, nullptr, "EDIT", nullptr); // the box of a combo box
  if (!edit) edit = control;
  clickControl(edit);
  PostMessageA(edit, EM_SETSEL, 0, -1);
  if (text.empty()) return pressKey(edit, VK_DELETE);
  for (const char letter : text)
    PostMessageA(edit, WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(letter)), 1);
}

void pressKey(HWND control, int key) {
  const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyA(static_cast<UINT>(key), 0)) << 16;
  PostMessageA(control, WM_KEYDOWN, static_cast<WPARAM>(key), scan | 1);
  PostMessageA(control, WM_KEYUP, static_cast<WPARAM>(key), scan | static_cast<LPARAM>(0xC0000001));
}

void clickControl(HWND control) {
  RECT r{};
  GetClientRect(control, &r);
  clickControl(control, static_cast<int>(r.right) / 2, static_cast<int>(r.bottom) / 2);
}

void clickControl(HWND control, int x, int y) {
  PostMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  PostMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

} // namespace win32
