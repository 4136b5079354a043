// Menus as indexed arrays: one click handler per array, given the item's index.
#pragma once
#include "base/Event.h"
#include <deque>
#include <string>
#include <vector>

namespace controls {

class Form;
class MenuArray;

class MenuItem {
 public:
  MenuItem(MenuArray& array, int index, std::string caption, std::string shortcut)
      : array_(array), index_(index), caption_(std::move(caption)), shortcut_(std::move(shortcut)) {}
  MenuArray& array() const { return array_; }
  int index() const { return index_; }
  const std::string& caption() const { return caption_; } // "&" marks the access key; "-" is a separator
  void setCaption(const std::string& caption);
  bool separator() const { return caption_ == "-"; }
  const std::string& shortcut() const { return shortcut_; } // "Ctrl+R" or empty
  bool checked() const { return checked_; }
  void setChecked(bool v);
  bool visible() const { return visible_; }
  void setVisible(bool v);
  bool enabled() const { return enabled_; }
  void setEnabled(bool v);
  std::vector<MenuItem*> children;
  int commandId = 0; // the form numbers its items; free for the peer to find one again
  void click();      // gesture: chosen, or, for one with children, opened

 private:
  void changed();
  MenuArray& array_;
  int index_;
  std::string caption_, shortcut_;
  bool checked_ = false, visible_ = true, enabled_ = true;
};

class MenuArray {
 public:
  MenuArray(Form& form, std::string name) : form_(form), name_(std::move(name)) {}
  MenuArray(const MenuArray&) = delete;
  MenuArray& operator=(const MenuArray&) = delete;
  Form& form() const { return form_; }
  const std::string& name() const { return name_; }
  // Adds an item; under: the item whose submenu it belongs to, null for the window's menu bar.
  MenuItem& add(int index, const std::string& caption, MenuItem* under, const std::string& shortcut = {});
  MenuItem& operator()(int index); // an index the array lacks: subscript out of range (9)
  std::deque<MenuItem>& items() { return items_; }
  base::Event<int> Click;

 private:
  Form& form_;
  std::string name_;
  std::deque<MenuItem> items_;
};

} // namespace controls
