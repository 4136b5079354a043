#include "controls/Picture.h"
#include "controls/Form.h"
#include "ports/WindowSystem.h"

namespace controls {

PictureBox::PictureBox(Container& parent, std::string name)
    : Control(parent, Kind::PictureBox, std::move(name)), Container(parent.containerForm()),
      canvas_(desktop().windows().makeCanvas()) {}

PictureBox::~PictureBox() = default;

void PictureBox::setScale(float left, float top, float right, float bottom) {
  scale_ = {left, top, right - left, bottom - top};
}

float PictureBox::toTwipsX(float x) const {
  return scale_.width == 0 ? 0 : (x - scale_.left) / scale_.width * width();
}

float PictureBox::toTwipsY(float y) const {
  return scale_.height == 0 ? 0 : (y - scale_.top) / scale_.height * height();
}

void PictureBox::setBackColour(Colour c) {
  if (backColour_ == c) return;
  backColour_ = c;
  cls();
}

void PictureBox::cls() {
  canvas_->clear(backColour_);
  changed(Aspect::Picture);
}

void PictureBox::line(float x1, float y1, float x2, float y2, Colour colour) {
  canvas_->line(scale_, x1, y1, x2, y2, drawWidth_, colour);
  changed(Aspect::Picture);
}

void PictureBox::mouseDown(MouseButton button, int shift, float xTwips, float yTwips) {
  if (!reachable()) return;
  const float x = width() == 0 ? scale_.left : scale_.left + xTwips / width() * scale_.width;
  const float y = height() == 0 ? scale_.top : scale_.top + yTwips / height() * scale_.height;
  desktop().gesture([&] { MouseDown(button, shift, x, y); });
}

void PictureBox::pixelSize(int widthPixels, int heightPixels, int dpi) {
  canvas_->resize(widthPixels, heightPixels, dpi);
  canvas_->clear(backColour_);
  desktop().gesture([&] { Resize(); });
}

void PictureBox::moved() {
  const Size size{width(), height()};
  if (size.width == told_.width && size.height == told_.height) return;
  told_ = size;
  if (!peer()) desktop().gesture([&] { Resize(); });
}

} // namespace controls
