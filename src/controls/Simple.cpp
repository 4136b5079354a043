#include "controls/Simple.h"
#include "controls/Form.h"
#include "ports/WindowSystem.h"

namespace controls {

namespace {
bool replace(std::string& field, const std::string& value) {
  if (field == value) return false;
  field = value;
  return true;
}
} // namespace

void Label::setCaption(const std::string& caption) {
  if (replace(caption_, caption)) changed(Aspect::Text);
}

void Label::setOpaque(bool v) {
  if (opaque_ == v) return;
  opaque_ = v;
  changed(Aspect::Colours);
}

void Label::setForeColour(Colour c) {
  if (!themed_ && foreColour_ == c) return;
  themed_ = false;
  foreColour_ = c;
  changed(Aspect::Colours);
}

Size Label::textSize() const { return desktop().windows().textSize(font(), caption_); }

void Label::fitText() {
  const Size size = textSize();
  move({left(), top(), size.width, size.height});
}

void Frame::setCaption(const std::string& caption) {
  if (replace(caption_, caption)) changed(Aspect::Text);
}

void Button::setCaption(const std::string& caption) {
  if (replace(caption_, caption)) changed(Aspect::Text);
}

void Button::click() {
  if (reachable()) desktop().gesture([&] { Click(); });
}

void TextBox::setText(const std::string& text) {
  if (!replace(text_, text)) return;
  changed(Aspect::Text);
  Change();
}

void TextBox::type(const std::string& text) {
  if (!reachable() || !replace(text_, text)) return;
  changed(Aspect::Text);
  desktop().gesture([&] { Change(); });
}

void StatusBar::setText(int panel, const std::string& text) {
  if (!replace(texts_.at(static_cast<std::size_t>(panel - 1)), text)) return;
  changedPanel_ = panel;
  changed(Aspect::Text);
}

} // namespace controls
