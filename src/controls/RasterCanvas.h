// A picture in memory: 32 bits a pixel, 0x00RRGGBB (blue first in memory), top row first, rows without gaps.
// Lines are crisp: one pixel per step, the same pixels whichever end comes first, cut exactly at the edges.
#pragma once
#include "controls/Picture.h"
#include <cstdint>
#include <vector>

namespace controls {

struct PixelRect {
  int left = 0, top = 0, right = 0, bottom = 0; // right and bottom are outside
  bool empty() const { return left >= right || top >= bottom; }
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

class RasterCanvas : public Canvas {
 public:
  void resize(int widthPixels, int heightPixels, int dpi) override; // a size of 0 or less: an empty picture
  void clear(Colour background) override;
  // The scale's left edge is the first pixel column, its right edge the last one. A coordinate that is no
  // number or lies at infinity (also by a scale without extent) draws nothing.
  void line(const Scale& scale, float x1, float y1, float x2, float y2, int drawWidth,
            Colour colour) override;

  const std::uint32_t* pixels() const { return pixels_.data(); }
  std::uint32_t pixel(int x, int y) const;
  int width() const { return width_; }
  int height() const { return height_; }
  int dpi() const { return dpi_; }
  void fill(const PixelRect& area, Colour colour);
  PixelRect takeDirty(); // what changed since it was last taken

 private:
  struct Point {
    std::int64_t x, y;
  };
  template <bool Steep> void draw(Point from, Point to, int thickness, std::uint32_t value);
  void touch(const PixelRect& area);
  int width_ = 0, height_ = 0, dpi_ = 96;
  std::vector<std::uint32_t> pixels_;
  PixelRect dirty_;
};

} // namespace controls
