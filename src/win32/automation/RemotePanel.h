// The lock panel's main window as another program sees it: what its status line says, and its mode buttons
// pressed with the mouse.
#pragma once
#include "win32/Win.h"
#include <optional>
#include <string>

namespace win32 {

class RemotePanel {
 public:
  explicit RemotePanel(HWND window) : window_(window) {}
  // The panel of this process, 0: of any; nothing when there is no such window (yet).
  static std::optional<RemotePanel> find(DWORD process = 0);

  HWND window() const { return window_; }
  bool exists() const { return IsWindow(window_) != 0; }
  std::string status(int panel = 4) const; // a text of the status bar, counted from 1; 4 is the lock status
  bool
  clickMode(int button) const; // 1 Off, 2 Lock, 3 Sweep, 4 Hold, 5 Auto, 6 Phase; false: there is no such
  bool isPressed(int button) const;

 private:
  HWND child(const char* windowClass) const;
  HWND window_;
};

} // namespace win32
