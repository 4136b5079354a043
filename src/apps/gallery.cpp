// Takes a picture of every window of the running lock panel: opens each as an operator does, brings it into a
// telling state and writes <folder>\<name>.bmp. Needs the panel and its console to run, the lock being off.
#include "win32/automation/RemotePanel.h"
#include "win32/remote/RemoteWindow.h"
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using win32::RemotePanel;
using win32::RemoteWindow;

void until(const std::string& what, const std::function<bool()>& condition, Clock::duration longest = 30s) {
  const auto end = Clock::now() + longest;
  while (!condition()) {
    if (Clock::now() > end) throw std::runtime_error("waited in vain for " + what);
    std::this_thread::sleep_for(20ms);
  }
}

struct Picture {
  int width, height;
  std::vector<std::uint32_t> pixels; // bottom row first
};

// What stands on the screen there.
Picture look(const RECT& at) {
  Picture picture{static_cast<int>(at.right - at.left), static_cast<int>(at.bottom - at.top), {}};
  picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, picture.width, picture.height);
  HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, screen, static_cast<int>(at.left),
         static_cast<int>(at.top), SRCCOPY);
  SelectObject(memory, before);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(picture.height), picture.pixels.data(), &info,
            DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

void write(const std::string& path, const Picture& picture) {
  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = picture.width;
  info.biHeight = picture.height;
  info.biPlanes = 1;
  info.biBitCount = 32;
  const auto bytes = static_cast<DWORD>(picture.pixels.size() * sizeof(std::uint32_t));
  BITMAPFILEHEADER header{};
  header.bfType = 0x4D42;
  header.bfOffBits = sizeof header + sizeof info;
  header.bfSize = header.bfOffBits + bytes;
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(&header), sizeof header);
  file.write(reinterpret_cast<const char*>(&info), sizeof info);
  file.write(reinterpret_cast<const char*>(picture.pixels.data()), static_cast<std::streamsize>(bytes));
  if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

class Gallery {
 public:
  Gallery(std::string folder, const RemotePanel& panel) : folder_(std::move(folder)), panel_(panel) {
    GetWindowThreadProcessId(panel.window(), &process_);
  }
  void takeAll();

 private:
  RemoteWindow main() const { return RemoteWindow(panel_.window()); }
  RemoteWindow titled(const std::string& title) const {
    std::optional<RemoteWindow> found;
    until("the window " + title, [&] {
      found = RemoteWindow::find(process_, title);
      return found.has_value();
    });
    return *found;
  }
  std::optional<RemoteWindow> find(const std::string& wholeTitle) const {
    for (const RemoteWindow& window : RemoteWindow::all(process_))
      if (window.title() == wholeTitle) return window;
    return std::nullopt;
  }
  void choose(const std::string& letters) const {
    if (!main().chooseMenu(letters)) throw std::runtime_error("no menu opened for " + letters);
  }
  // In front, with all of it drawn.
  void settle(const RemoteWindow& window) const {
    SetForegroundWindow(window.window());
    SetWindowPos(window.window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    RedrawWindow(window.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    until("an answer", [&] { return window.answers(); });
    std::this_thread::sleep_for(300ms); // the screen shows it a little later than the program draws it
  }
  void take(const std::string& name, const RECT& at) const {
    write(folder_ + "\\" + name + ".bmp", look(at));
    std::printf("%s\n", name.c_str());
  }
  void take(const std::string& name, const RemoteWindow& window) const {
    settle(window);
    take(name, window.rect());
  }
  // Where it is on the screen whole, whatever the screen's density.
  void takeAside(const std::string& name, const RemoteWindow& window, int left = 40) const {
    SetWindowPos(window.window(), nullptr, left, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    take(name, window);
  }
  void takeMenu(const std::string& name, char letter) const;
  void takePopup() const;
  void takePanel(const std::string& name, const std::string& letters, const std::string& title) const;
  void openMenusSettle(std::size_t count) const;

  std::string folder_;
  RemotePanel panel_;
  DWORD process_ = 0;
};

void Gallery::openMenusSettle(std::size_t count) const {
  until("the menu", [&] { return main().openMenus() == count; });
  std::this_thread::sleep_for(300ms);
}

void Gallery::takeMenu(const std::string& name, char letter) const {
  settle(main());
  main().openMenu(letter);
  openMenusSettle(1);
  take(name, main().rect());
  PostMessageA(panel_.window(), WM_CANCELMODE, 0, 0);
  openMenusSettle(0);
}

void Gallery::takePopup() const {
  settle(main());
  HWND plot = main().child("VantrelPicture");
  RECT at{};
  GetWindowRect(plot, &at);
  const int x = static_cast<int>(at.right - at.left) / 3, y = static_cast<int>(at.bottom - at.top) / 3;
  SetCursorPos(static_cast<int>(at.left) + x, static_cast<int>(at.top) + y);
  PostMessageA(plot, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(x, y));
  openMenusSettle(1);
  take("popup", main().rect());
  PostMessageA(panel_.window(), WM_CANCELMODE, 0, 0);
  openMenusSettle(0);
}

void Gallery::takePanel(const std::string& name, const std::string& letters, const std::string& title) const {
  if (!RemoteWindow::find(process_, title)) {
    settle(main());
    choose(letters);
  }
  const RemoteWindow window = titled(title);
  takeAside(name, window);
  window.close();
  until(name + " to close", [&] { return !window.exists() || !IsWindowVisible(window.window()); });
}

void Gallery::takeAll() {
  takePanel("nmr-controls", "tn", "NMR Controls");
  takePanel("sweep", "ts", "Sweep Controls");
  takePanel("tuning", "tt", "Loop Tuning");
  takePanel("display", "td", "Display Controls");
  takePanel("about", "ha", "About ");
  panel_.clickMode(3);
  until("the sweep", [&] { return panel_.status() == "SWEEP"; });
  std::this_thread::sleep_for(2500ms); // a few passes over the line
  take("panel", main());
  takePopup();
  takeMenu("menu-preferences", 'p');
  panel_.clickMode(2);
  const auto locking = Clock::now();
  until("the lock", [&] { return panel_.status() == "LOCKED"; });
  std::this_thread::sleep_until(locking + 5s); // the traces have crossed most of the plot
  take("panel-locked", main());
  choose("ps");
  until("the level meter", [&] { return find("Lock").has_value(); });
  std::this_thread::sleep_for(1500ms); // the average runs in
  // It passes the focus on to the main window, which may come in front of it.
  SetWindowPos(panel_.window(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  takeAside("level-meter", *find("Lock"), static_cast<int>(main().rect().right) + 4);
  find("Lock")->close();
  panel_.clickMode(5);
  until(
      "the threshold", [&] { return panel_.status().find("Locating a peak") != std::string::npos; }, 60s);
  std::this_thread::sleep_for(500ms); // the marker is drawn with the next point
  take("panel-auto", main());
  panel_.clickMode(1);
}

int run(const std::string& folder) {
  std::optional<RemotePanel> panel;
  until("the lock panel", [&] {
    panel = RemotePanel::find();
    return panel && IsWindowVisible(panel->window());
  });
  Gallery(folder, *panel).takeAll();
  return 0;
}

} // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: gallery <folder>\n", stderr);
    return 2;
  }
  try {
    return run(arguments[1]);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "gallery: %s\n", problem.what());
    return 1;
  }
}
