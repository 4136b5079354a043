// The keyboard shortcuts shared by the main window and the panels.
#pragma once
#include <cstdint>

class Program;

// Acts on a key code (a 16-bit virtual key) and shift state (1 = Shift); a consumed arrow key becomes 0.
void HandleLockKey(Program& program, std::int16_t& keyCode, std::int16_t shift);
