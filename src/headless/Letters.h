// A plain letter of 5 x 7 dots for the printable ASCII characters.
#pragma once
#include <array>
#include <cstdint>

namespace headless {

using Letter = std::array<std::uint8_t, 5>; // columns from the left, lowest bit at the top

const Letter& letterOf(char character); // a full block for a character that has none

} // namespace headless
