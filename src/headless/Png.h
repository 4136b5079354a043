// A picture box as a PNG file: its pixels, and the labels that lie on it in a small built-in letter.
#pragma once
#include "controls/RasterCanvas.h"
#include <string>

namespace headless {

// The bytes of a PNG file, 8 bits per red, green and blue. An empty picture becomes one black pixel.
std::string png(const controls::RasterCanvas& canvas);

// Draws a text, top left corner at x, y; scale: size of a letter's dot in pixels (a letter is 6 x 8 dots).
void drawText(controls::RasterCanvas& canvas, int x, int y, const std::string& text, controls::Colour colour,
              int scale = 1);

// A picture box as it looks on the screen: its canvas, which must keep pixels, and its visible labels.
// Failure when it keeps none.
std::string picturePng(const controls::PictureBox& picture);

// Empty, or the reason why the file could not be written.
std::string writeFile(const std::string& path, const std::string& bytes);

} // namespace headless
