#include "controls/Menu.h"
#include "controls/Form.h"
#include <algorithm>

namespace controls {

void MenuItem::changed() { array_.form().menuChanged(*this); }

void MenuItem::setCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  changed();
}

void MenuItem::setChecked(bool v) {
  if (checked_ == v) return;
  checked_ = v;
  changed();
}

void MenuItem::setVisible(bool v) {
  if (visible_ == v) return;
  visible_ = v;
  changed();
}

void MenuItem::setEnabled(bool v) {
  if (enabled_ == v) return;
  enabled_ = v;
  changed();
}

void MenuItem::click() {
  if (!enabled_ || !visible_ || separator()) return;
  array_.form().desktop().gesture([&] { array_.Click(index_); });
}

MenuItem& MenuArray::add(int index, const std::string& caption, MenuItem* under,
                         const std::string& shortcut) {
  MenuItem& item = items_.emplace_back(*this, index, caption, shortcut);
  (under ? under->children : form_.menuBar).push_back(&item);
  form_.commands_.push_back(&item);
  item.commandId = 1000 + static_cast<int>(form_.commands_.size());
  return item;
}

MenuItem& MenuArray::operator()(int index) {
  const auto found =
      std::find_if(items_.begin(), items_.end(), [&](const MenuItem& i) { return i.index() == index; });
  if (found == items_.end()) base::raiseSubscript(name_);
  return *found;
}

} // namespace controls
