// Whole-number conversions: to the nearest, halves to even; a result that does not fit raises the overflow
// error (6).
#pragma once
#include <cstdint>

namespace base {

double roundHalfEven(double value);
std::int32_t toInt32(double value); // NaN and infinities overflow too
std::int16_t toInt16(double value);
double Int(double value); // whole part towards minus infinity

} // namespace base
