// The system's message boxes and file dialogs, and an input box of our own.
#pragma once
#include "ports/Dialogs.h"
#include "win32/WinWindowSystem.h"

namespace win32 {

class WinDialogs : public ports::Dialogs {
 public:
  explicit WinDialogs(WinWindowSystem& windows) : windows_(windows) {}
  ports::Answer message(const std::string& text, const std::string& caption, ports::Buttons buttons,
                        ports::Icon icon) override;
  std::string input(const std::string& prompt, const std::string& caption,
                    const std::string& initial) override;
  std::optional<std::string> openFile(const ports::FileDialog& dialog) override;
  std::optional<std::string> saveFile(const ports::FileDialog& dialog) override;
  void beep() override { MessageBeep(MB_OK); }

 private:
  WinWindowSystem& windows_;
};

// One line of text asked for in a box; empty when cancelled.
std::string inputBox(HWND owner, const std::string& prompt, const std::string& caption,
                     const std::string& initial);

} // namespace win32
