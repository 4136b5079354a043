// Plain values shared by the control models. Lengths are twips (1/1440 inch; 15 twips are one pixel at 96
// DPI).
#pragma once
#include <cstdint>

namespace controls {

struct Size {
  float width = 0, height = 0;
};

struct Rect {
  float left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

using Colour = std::uint32_t; // 0x00BBGGRR
constexpr Colour rgb(unsigned r, unsigned g, unsigned b) { return r | g << 8 | b << 16; }

struct Font {
  float points = 9;
  bool bold = false;
  friend bool operator==(const Font&, const Font&) = default;
};

} // namespace controls
