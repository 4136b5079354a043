// A form's native menu bar and pop-up menus, made from its menu items. Hidden items are left out.
#pragma once
#include "controls/Form.h"
#include "win32/GdiCounts.h"

namespace win32 {

class FormMenu {
 public:
  explicit FormMenu(controls::Form& form) : form_(form) {}
  void attach(HWND window);                       // makes the bar, when the form has a menu
  void changed(const controls::MenuItem& item);   // caption, check mark, visibility
  controls::MenuItem* topItem(HMENU popup) const; // the top-level item whose menu this is; null: another menu
  controls::MenuItem* itemOf(int nativeId) const;
  // Shows an item's submenu at the pointer; null: nothing chosen.
  controls::MenuItem* choose(HWND window, const controls::MenuItem& item);
  bool any() const;

 private:
  void rebuild();
  controls::Form& form_;
  HWND window_ = nullptr;
  OwnedMenu bar_;
};

} // namespace win32
