#include "base/Rounding.h"

#include "base/RuntimeError.h"

#include <cmath>
#include <limits>

namespace base {

namespace {

template <class Whole> Whole toWhole(double value) {
  const double rounded = roundHalfEven(value);
  const bool fits =
      rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max();
  if (!fits) raiseOverflow(); // NaN fits nowhere
  return static_cast<Whole>(rounded);
}

} // namespace

// Not nearbyint: the rounding mode belongs to whoever set it last, and drivers loaded into the process do set
// it.
double roundHalfEven(double value) {
  const double below = std::floor(value);
  const double part = value - below;
  const bool up = part > 0.5 || (part == 0.5 && std::fmod(below, 2.0) != 0.0);
  return up ? below + 1.0 : below;
}

std::int32_t toInt32(double value) { return toWhole<std::int32_t>(value); }

std::int16_t toInt16(double value) { return toWhole<std::int16_t>(value); }

double Int(double value) { return std::floor(value); }

} // namespace base
