// Numbers from text and text from numbers. Texts always use '.', whatever the locale.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace base {

// The leading number of a text: blanks, tabs and line feeds are skipped wherever they stand before or inside
// it, sign, digits, one '.', exponent E or D; &H and &O read whole numbers, never negative. Stops at the
// first other character (NUL included). No digits: 0. Never fails: a number no double can hold is infinite,
// so that every range check after it still refuses it.
double leadingNumber(std::string_view text);

// What an operator may type for a number: blanks around, sign, one '.' or ',', exponent, &H. Empty is not
// numeric, nor is a number no double can hold.
bool isNumeric(std::string_view text);

// The whole text as a number ("1e3", "4,8", " 12 "); type mismatch (13) when it does not read as one,
// overflow (6) when the type cannot hold it.
double toDouble(std::string_view text);
float toSingle(std::string_view text);
float toSingle(double value);

// "True"/"False" in any case, or a number (non-zero = true); type mismatch (13) otherwise.
bool toBoolean(std::string_view text);

// General number format: the shortest ordinary decimal form (at most 15 digits for a double, 7 for a single),
// no trailing zeros, "0.5" with its zero; from 1E+15 (single: 1E+07) up and below 0.0001 as 1E+15, 1E-05. An
// infinity is written 1E+999, which reads back as one; no text reads back as NaN.
std::string numberText(double value);
std::string numberText(float value);
std::string numberText(std::int32_t value);
std::string numberText(std::int16_t value);

// The same with a blank in front of a value that is not negative (5 -> " 5").
std::string signedText(double value);

// At least minIntegerDigits before the point, exactly decimals after it, no separators. Halves of the value
// as general text round away from zero (0.15 to one decimal is 0.2 although the double lies below it); zero
// has no sign.
std::string fixedText(double value, int minIntegerDigits, int decimals);

} // namespace base
