#include "controls/Control.h"
#include "controls/Form.h"
#include <algorithm>

namespace controls {

Control::Control(Container& parent, Kind kind, std::string name, int index)
    : parent_(parent), kind_(kind), name_(std::move(name)), index_(index) {
  parent_.children_.push_back(this);
}

Control::~Control() {
  desktop().focus().forget(*this);
  std::erase(parent_.children_, this);
}

Desktop& Control::desktop() const { return form().desktop(); }

void Control::move(const Rect& rect) {
  if (rect_ == rect) return;
  rect_ = rect;
  changed(Aspect::Geometry);
  moved();
}

void Control::setVisible(bool v) {
  if (visible_ == v) return;
  visible_ = v;
  changed(Aspect::Visible);
}

void Control::setEnabled(bool v) {
  if (enabled_ == v) return;
  enabled_ = v;
  changed(Aspect::Enabled);
}

void Control::setFont(const Font& font) {
  if (font_ == font) return;
  font_ = font;
  changed(Aspect::Font);
}

void Control::setTip(const std::string& tip) {
  if (tip_ == tip) return;
  tip_ = tip;
  changed(Aspect::Tip);
}

bool Control::reachable() const {
  if (!visible_ || !enabled_) return false;
  const auto* frame = dynamic_cast<const Control*>(&parent_);
  return !frame || frame->reachable();
}

bool Control::canTakeFocus() const {
  return form().visible() && form().windowState() != WindowState::Minimised && reachable();
}

void Control::setFocus() {
  if (!canTakeFocus()) return;
  desktop().focus().moveTo(*this);
  changed(Aspect::Focus);
}

bool Control::hasFocus() const { return form().desktop().focus().current() == this; }

void Control::userFocus() {
  if (reachable()) desktop().focus().moveTo(*this);
}

bool Control::userKeyPress(int key) {
  if (!reachable()) return false;
  desktop().gesture([&] { KeyPress(key); });
  return key == 0;
}

} // namespace controls
