// The operator at the keyboard and the mouse: finds what is on the screen by its name or caption and acts on
// it, the way the window system would pass it on. Failure names what cannot be found or reached.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include "headless/Errors.h"
#include "headless/HeadlessWindows.h"
#include <string>

namespace headless {

namespace keys {
inline constexpr int Tab = 9, Enter = 13, Alt = 18, Escape = 27, PageUp = 33, PageDown = 34, End = 35,
                     Home = 36, Left = 37, Up = 38, Right = 39, Down = 40, Shift = 1, Ctrl = 2,
                     AltHeld = 4; // the last three: shift state
}
int keyCode(const std::string& name); // "Up", "PageDown", "A", "F5" or a number; 0: no such key

class Operator {
 public:
  Operator(controls::Desktop& desktop, HeadlessWindows& windows) : desktop_(desktop), windows_(windows) {}

  controls::Form& form(const std::string& name);
  // "txtCenter", "frmControls.vsTxPwr" or "optBW(1)"; without a window the first shown one that has it.
  controls::Control& control(const std::string& name);
  template <class C> C& find(const std::string& name) {
    auto* found = dynamic_cast<C*>(&control(name));
    if (!found) throw Failure(name + " is another kind of control");
    return *found;
  }

  void
  press(const std::string& button); // a toolbar button by key or caption, or a push button by name or caption
  void press(controls::Toolbar& toolbar, int number);
  void focus(controls::Control& control);
  void type(controls::TextBox& box, const std::string& text);     // focus and text; stays in the box
  void typeInto(controls::TextBox& box, const std::string& text); // and Enter
  void enter(controls::Control& box);
  void scroll(controls::ScrollBar& bar, int value); // drags the thumb there and lets go
  void drag(controls::ScrollBar& bar, int value);   // the thumb stays held
  void release(controls::ScrollBar& bar);
  void step(controls::ScrollBar& bar, int value); // arrow, trough or key
  void choose(controls::ComboBox& box, const std::string& entry);
  void option(controls::OptionButton& button);
  // "Commands/Reload Lock Params": captions without '&', shortcut and dots do not matter; the top menu opens
  // first.
  void menu(const std::string& path);
  controls::MenuItem& menuItem(const std::string& path);
  // Key down, character and key up in a window; shift: 1 Shift, 2 Ctrl, 4 Alt. True: the program swallowed
  // the key.
  bool key(controls::Form& form, int code, int shift = 0);
  controls::Form&
  keyWindow(); // where a key goes: the modal window, the one with the focus, or the first shown

 private:
  void mustReach(const controls::Control& control) const;
  void settle() { desktop_.focus().deliver(); }
  controls::Desktop& desktop_;
  HeadlessWindows& windows_;
};

} // namespace headless
