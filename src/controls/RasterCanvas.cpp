#include "controls/RasterCanvas.h"
#include <algorithm>
#include <cmath>

namespace controls {
namespace {

// Pixel coordinates are kept within this, so that the products of two distances fit 64 bits.
constexpr double kFar = 268435456.0;
constexpr int kLargestSide = 32768;

std::uint32_t pixelValue(Colour c) { return (c & 0xFF) << 16 | (c & 0xFF00) | (c >> 16 & 0xFF); }

std::int64_t floorDiv(std::int64_t a, std::int64_t b) { return a / b - ((a % b != 0) && (a < 0) != (b < 0)); }
std::int64_t ceilDiv(std::int64_t a, std::int64_t b) { return -floorDiv(-a, b); }

struct End {
  double x, y;
};

// Moves an end that lies beyond +-kFar in x onto that bound; false when the whole line lies beyond it. The
// other coordinate follows the slope from the moved end, so a level line stays level however far it reaches.
bool cutX(End& a, const End& b) {
  if (std::fabs(a.x) <= kFar) return true;
  const double bound = a.x < 0 ? -kFar : kFar;
  if (a.x < 0 ? b.x < bound : b.x > bound) return false;
  a.y += (bound - a.x) / (b.x - a.x) * (b.y - a.y);
  a.x = bound;
  return true;
}

bool cutY(End& a, const End& b) {
  End across{a.y, a.x};
  if (!cutX(across, {b.y, b.x})) return false;
  a = {across.y, across.x};
  return true;
}

bool cutToFar(End& a, End& b) {
  if (!cutX(a, b) || !cutX(b, a) || !cutY(a, b) || !cutY(b, a)) return false;
  const auto within = [](double v) { return std::clamp(v, -kFar, kFar); }; // rounding may have left the bound
  a = {within(a.x), within(a.y)};
  b = {within(b.x), within(b.y)};
  return true;
}

} // namespace

void RasterCanvas::resize(int widthPixels, int heightPixels, int dpi) {
  width_ = std::clamp(widthPixels, 0, kLargestSide);
  height_ = std::clamp(heightPixels, 0, kLargestSide);
  if (width_ == 0 || height_ == 0) width_ = height_ = 0;
  dpi_ = dpi > 0 ? dpi : 96;
  pixels_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0);
  dirty_ = {0, 0, width_, height_};
}

void RasterCanvas::clear(Colour background) {
  std::fill(pixels_.begin(), pixels_.end(), pixelValue(background));
  dirty_ = {0, 0, width_, height_};
}

std::uint32_t RasterCanvas::pixel(int x, int y) const {
  return pixels_.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                    static_cast<std::size_t>(x));
}

void RasterCanvas::touch(const PixelRect& area) {
  if (area.empty()) return;
  if (dirty_.empty()) {
    dirty_ = area;
    return;
  }
  dirty_ = {std::min(dirty_.left, area.left), std::min(dirty_.top, area.top),
            std::max(dirty_.right, area.right), std::max(dirty_.bottom, area.bottom)};
}

PixelRect RasterCanvas::takeDirty() { return std::exchange(dirty_, PixelRect{}); }

void RasterCanvas::fill(const PixelRect& area, Colour colour) {
  const PixelRect cut{std::max(area.left, 0), std::max(area.top, 0), std::min(area.right, width_),
                      std::min(area.bottom, height_)};
  if (cut.empty()) return;
  for (int y = cut.top; y < cut.bottom; ++y) {
    const auto row = pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_;
    std::fill(row + cut.left, row + cut.right, pixelValue(colour));
  }
  touch(cut);
}

void RasterCanvas::line(const Scale& scale, float x1, float y1, float x2, float y2, int drawWidth,
                        Colour colour) {
  if (pixels_.empty() || scale.width == 0 || scale.height == 0) return;
  const double perX = (width_ - 1) / static_cast<double>(scale.width);
  const double perY = (height_ - 1) / static_cast<double>(scale.height);
  const double left = scale.left, top = scale.top;
  End begin{(x1 - left) * perX, (y1 - top) * perY}, end{(x2 - left) * perX, (y2 - top) * perY};
  if (!std::isfinite(begin.x) || !std::isfinite(begin.y) || !std::isfinite(end.x) || !std::isfinite(end.y))
    return;
  if (!cutToFar(begin, end)) return;
  const Point a{std::llround(begin.x), std::llround(begin.y)}, b{std::llround(end.x), std::llround(end.y)};
  const double scaled = std::round(drawWidth * (dpi_ / 96.0));
  const int thickness = static_cast<int>(std::clamp(scaled, 1.0, static_cast<double>(kLargestSide)));
  if (std::abs(b.x - a.x) >= std::abs(b.y - a.y))
    draw<false>(a, b, thickness, pixelValue(colour));
  else
    draw<true>({a.y, a.x}, {b.y, b.x}, thickness, pixelValue(colour));
}

// Steep: x runs along the picture's height. At step i along x the line is at from.y + sign * floor((2 i dy +
// dx) / 2 dx); the visible steps are computed, so a line from far outside costs no more than what is seen of
// it.
template <bool Steep> void RasterCanvas::draw(Point from, Point to, int thickness, std::uint32_t value) {
  if (from.x > to.x) std::swap(from, to);
  const std::int64_t length = Steep ? height_ : width_, breadth = Steep ? width_ : height_;
  const std::int64_t dx = to.x - from.x, dy = std::abs(to.y - from.y), sign = to.y < from.y ? -1 : 1;
  const std::int64_t before = (thickness - 1) / 2, after = thickness / 2; // of the stroke, across the line
  std::int64_t first = std::max<std::int64_t>(0, -from.x), last = std::min(dx, length - 1 - from.x);
  const std::int64_t lowest = -after, highest = breadth - 1 + before; // of y that show at least one pixel
  const std::int64_t nearSide = sign > 0 ? lowest - from.y : from.y - highest;
  const std::int64_t farSide = sign > 0 ? highest - from.y : from.y - lowest;
  if (farSide < 0 || nearSide > dy) return;
  if (dy > 0) {
    if (nearSide > 0) first = std::max(first, ceilDiv(2 * dx * nearSide - dx, 2 * dy));
    if (farSide < dy) last = std::min(last, floorDiv(2 * dx * (farSide + 1) - dx - 1, 2 * dy));
  }
  if (first > last) return;
  const std::int64_t twice = std::max<std::int64_t>(2 * dx, 1);
  std::int64_t rest = 2 * first * dy + dx;
  std::int64_t y = from.y + sign * (rest / twice);
  rest %= twice;
  std::int64_t top = breadth, bottom = 0;
  for (std::int64_t x = from.x + first; x <= from.x + last; ++x) {
    const std::int64_t a = std::max<std::int64_t>(y - before, 0), b = std::min(y + after + 1, breadth);
    for (std::int64_t v = a; v < b; ++v)
      pixels_[static_cast<std::size_t>(Steep ? x * width_ + v : v * width_ + x)] = value;
    top = std::min(top, a);
    bottom = std::max(bottom, b);
    rest += 2 * dy;
    if (rest >= twice) {
      rest -= twice;
      y += sign;
    }
  }
  const PixelRect along{static_cast<int>(from.x + first), static_cast<int>(top),
                        static_cast<int>(from.x + last + 1), static_cast<int>(bottom)};
  touch(Steep ? PixelRect{along.top, along.left, along.bottom, along.right} : along);
}

} // namespace controls
