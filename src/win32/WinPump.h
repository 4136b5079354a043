// The message pump: keys go to the window first, then messages to their controls, focus moves after each.
#pragma once
#include "ports/Platform.h"
#include "win32/WinWindowSystem.h"

namespace win32 {

class WinPump : public ports::Pump {
 public:
  explicit WinPump(WinWindowSystem& windows) : windows_(windows) { windows.setPump(*this); }
  int doEvents() override;
  void waitForMessage() override;

 private:
  void deliver(MSG& message);
  WinWindowSystem& windows_;
  bool quit_ = false;
  int depth_ = 0;
};

} // namespace win32
