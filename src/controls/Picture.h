// The picture box: a persistent picture drawn in user units, and controls (labels) lying on it.
#pragma once
#include "controls/Control.h"

namespace controls {

// A user coordinate system: x grows from left by width over the picture, y from top by height (either may be
// negative).
struct Scale {
  float left = 0, top = 0, width = 1, height = 1;
  friend bool operator==(const Scale&, const Scale&) = default;
};

// Where a picture is drawn. Coordinates are user units of the given scale.
class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual void resize(int widthPixels, int heightPixels, int dpi) = 0; // clears
  virtual void clear(Colour background) = 0;
  virtual void line(const Scale& scale, float x1, float y1, float x2, float y2, int drawWidth,
                    Colour colour) = 0;
};

enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

class PictureBox : public Control, public Container {
 public:
  PictureBox(Container& parent, std::string name);
  ~PictureBox() override;

  const Scale& scale() const { return scale_; }
  void setScale(float left, float top, float right, float bottom);
  float scaleLeft() const { return scale_.left; }
  float scaleTop() const { return scale_.top; }
  float scaleWidth() const { return scale_.width; }
  float scaleHeight() const { return scale_.height; }
  float toTwipsX(float x) const; // user units to twips from the picture's left edge
  float toTwipsY(float y) const;

  Colour backColour() const { return backColour_; }
  void setBackColour(Colour c);
  int drawWidth() const { return drawWidth_; }
  void setDrawWidth(int pixels) { drawWidth_ = pixels; } // at 96 DPI
  void cls();
  void line(float x1, float y1, float x2, float y2, Colour colour);
  void childChanged() { changed(Aspect::Picture); } // a label on the picture changed
  Canvas& canvas() { return *canvas_; }

  base::Event<MouseButton, int, float, float> MouseDown; // button, shift state, x and y in user units
  base::Event<> Resize;
  void mouseDown(MouseButton button, int shift, float xTwips, float yTwips); // gesture
  void pixelSize(int widthPixels, int heightPixels, int dpi); // the peer tells the picture's real size

 protected:
  void moved() override;

 private:
  Scale scale_;
  Colour backColour_ = 0;
  int drawWidth_ = 1;
  std::unique_ptr<Canvas> canvas_;
  Size told_;
};

} // namespace controls
