// The mode buttons' pictures: line drawings in the system's text colour, drawn afresh for every density. They
// differ in shape, not in colour.
#pragma once
#include "win32/GdiCounts.h"
#include <string>
#include <vector>

namespace win32 {

// One square image of the given size for each key: Off, Lock, Sweep, Hold, Auto, Phase (another key: empty).
OwnedImageList toolbarImages(const std::vector<std::string>& keys, int sizePixels);

} // namespace win32
