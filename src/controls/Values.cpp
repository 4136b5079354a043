#include "controls/Values.h"
#include "controls/Form.h"
#include <algorithm>

namespace controls {

int ScrollBar::clamped(int value) const {
  return std::clamp(value, std::min(min_, max_), std::max(min_, max_));
}

void ScrollBar::setRange(int minimum, int maximum, int smallChange, int largeChange) {
  min_ = minimum;
  max_ = maximum;
  small_ = smallChange;
  large_ = largeChange;
  value_ = reported_ = clamped(value_);
  changed(Aspect::Range);
}

void ScrollBar::setValue(int value) {
  if (value != clamped(value)) base::raiseInvalidValue(name());
  if (value == value_ && value == reported_) return;
  value_ = reported_ = value;
  changed(Aspect::Value);
  Change();
}

void ScrollBar::drag(int value) {
  value = clamped(value);
  if (!reachable() || (dragging_ && value == value_)) return;
  dragging_ = true;
  value_ = value;
  changed(Aspect::Value);
  desktop().gesture([&] { Scroll(); });
}

void ScrollBar::release() {
  if (!dragging_) return;
  dragging_ = false;
  if (value_ == reported_) return;
  reported_ = value_;
  desktop().gesture([&] { Change(); });
}

void ScrollBar::stepTo(int value) {
  if (reachable()) desktop().gesture([&] { setValue(clamped(value)); });
}

void UpDown::setRange(int lower, int upper, int increment) {
  lower_ = lower;
  upper_ = upper;
  increment_ = increment;
  value_ = std::clamp(value_, std::min(lower_, upper_), std::max(lower_, upper_));
  changed(Aspect::Range);
}

void UpDown::setValue(int value) {
  value = std::clamp(value, std::min(lower_, upper_), std::max(lower_, upper_));
  if (value == value_) return;
  value_ = value;
  changed(Aspect::Value);
  Change();
}

void UpDown::step(int towards) {
  if (!reachable()) return;
  desktop().gesture([&] {
    const int direction = towards >= (towards == upper_ ? lower_ : upper_) ? 1 : -1;
    setValue(value_ + direction * increment_);
  });
}

void UpDown::stepUp() { step(upper_); }
void UpDown::stepDown() { step(lower_); }

void OptionButton::setCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  changed(Aspect::Text);
}

void OptionButton::setValue(bool value) {
  if (value_ == value) return;
  value_ = value;
  changed(Aspect::Value);
  if (!value) return;
  for (Control* sibling : parent().children())
    if (sibling != this && sibling->kind() == Kind::OptionButton)
      static_cast<OptionButton*>(sibling)->setValue(false);
  Click();
}

void OptionButton::choose() {
  if (reachable()) desktop().gesture([&] { setValue(true); });
}

void ComboBox::clear() {
  items_.clear();
  listIndex_ = -1;
  text_.clear();
  changed(Aspect::List);
}

void ComboBox::addItem(const std::string& item) {
  items_.push_back(item);
  changed(Aspect::List);
}

void ComboBox::setListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) base::raiseInvalidValue(name());
  if (index == listIndex_) return;
  listIndex_ = index;
  text_ = index < 0 ? std::string() : items_[static_cast<std::size_t>(index)];
  changed(Aspect::Selection);
  Click();
}

void ComboBox::setText(const std::string& text) {
  if (text_ == text) return;
  text_ = text;
  listIndex_ = -1;
  changed(Aspect::Text);
  Change();
}

void ComboBox::choose(int index) {
  if (!reachable() || index < 0 || index >= static_cast<int>(items_.size())) return;
  desktop().gesture([&] {
    listIndex_ = index;
    text_ = items_[static_cast<std::size_t>(index)];
    changed(Aspect::Selection);
    Click();
  });
}

void ComboBox::type(const std::string& text) {
  if (!reachable() || style_ != ComboStyle::Editable) return;
  desktop().gesture([&] { setText(text); });
}

void Toolbar::press(int number) {
  if (pressed_ == number) return;
  pressed_ = number;
  changed(Aspect::Value);
}

void Toolbar::click(int number) {
  if (!reachable() || number < 1 || number > count()) return;
  desktop().gesture([&] {
    press(number);
    ButtonClick(number);
  });
}

void Toolbar::userMouseMove(float x) {
  desktop().gesture([&] { MouseMove(x); });
}

float Toolbar::itemWidth(int number) const {
  const auto i = static_cast<std::size_t>(number - 1);
  return i < itemWidths.size() ? itemWidths[i] : 0.0F;
}

} // namespace controls
