// Twips and pixels at a monitor's density, and what the system draws at that density: frames and fonts.
#pragma once
#include "controls/Geometry.h"
#include "win32/GdiCounts.h"
#include <cmath>
#include <map>
#include <string_view>

namespace win32 {

constexpr float kTwipsPerInch = 1440;

inline int toPixels(float twips, int dpi) {
  return static_cast<int>(std::lround(static_cast<double>(twips) * dpi / kTwipsPerInch));
}
inline float toTwips(int pixels, int dpi) {
  return static_cast<float>(pixels) * kTwipsPerInch / static_cast<float>(dpi);
}
// Edges are rounded, not sizes: neighbours that touch in twips touch in pixels.
RECT toPixels(const controls::Rect& rect, int dpi);

int systemDpi();
int dpiOf(HWND window);
// The outer pixels that a window of this style needs around an inner size.
SIZE outerPixels(SIZE inner, DWORD style, DWORD exStyle, bool menu, int dpi);

// Fonts of one window at one density, in the user's own message font. 9 points is that font's own size.
class FontCache {
 public:
  HFONT get(const controls::Font& font, int dpi);
  void clear() { fonts_.clear(); }

 private:
  struct Key {
    float points;
    bool bold;
    int dpi;
    friend auto operator<=>(const Key&, const Key&) = default;
  };
  std::map<Key, OwnedFont> fonts_;
};

SIZE textPixels(HFONT font, std::string_view text); // several lines: the widest, and all of them

} // namespace win32
