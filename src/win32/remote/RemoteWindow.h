// A window of another process as an operator has it: its menus by their access keys, its controls by what
// they are and where they stand, keys and clicks as messages. Nothing here waits for what a gesture causes,
// but a menu must open before its items have keys.
#pragma once
#include "win32/Win.h"
#include <optional>
#include <string>
#include <vector>

namespace win32 {

class RemoteWindow {
 public:
  explicit RemoteWindow(HWND window = nullptr) : window_(window) {}
  // A visible top-level window of the process with this text in its title.
  static std::optional<RemoteWindow> find(DWORD process, const std::string& title);
  static std::vector<RemoteWindow> all(DWORD process); // visible top-level ones, topmost first

  HWND window() const { return window_; }
  bool exists() const { return IsWindow(window_) != 0; }
  bool answers(DWORD longestMs = 2000) const; // takes a message within the time
  std::string title() const;
  std::string windowClass() const;
  RECT rect() const; // on the screen

  // Visible controls of a class in reading order, from 0: "EDIT", "COMBOBOX", "BUTTON", "SCROLLBAR" ...
  std::vector<HWND> children(const std::string& windowClass) const;
  HWND child(const std::string& windowClass, std::size_t number = 0) const; // null: no such control
  HWND button(const std::string& caption) const; // null: no such button; access keys do not count

  // Alt and these letters, one after the other: "fo" opens the first menu with F and chooses its item with O.
  // False: a menu did not open within 5 s.
  bool chooseMenu(const std::string& letters) const;
  std::size_t openMenus() const; // of its process
  void openMenu(char letter) const;
  void close() const; // the close box
  void command(int id) const;

 private:
  HWND window_;
};

std::string controlText(HWND control);                // also of an edit in another process
void typeText(HWND control, const std::string& text); // replaces what stands in the box, key by key
void pressKey(HWND control, int key);                 // as a message: without Shift, Ctrl and Alt
void clickControl(HWND control);                      // in its middle, left button
void clickControl(HWND control, int x, int y);

} // namespace win32
