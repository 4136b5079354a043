#include "headless/Png.h"
#include "controls/Form.h"
#include "controls/Simple.h"
#include "headless/Errors.h"
#include "headless/Letters.h"
#include "headless/RecordingCanvas.h"
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>

namespace headless {
namespace {

std::uint32_t crc(std::string_view bytes) {
  std::uint32_t value = 0xFFFFFFFF;
  for (const char byte : bytes) {
    value ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ (0xEDB88320U & (0U - (value & 1U)));
  }
  return ~value;
}

std::uint32_t adler(std::string_view bytes) {
  std::uint32_t a = 1, b = 0;
  for (const char byte : bytes) {
    a = (a + static_cast<unsigned char>(byte)) % 65521;
    b = (b + a) % 65521;
  }
  return b << 16 | a;
}

std::string bigEndian(std::uint32_t value) {
  return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
          static_cast<char>(value)};
}

std::string chunk(const std::string& type, const std::string& data) {
  return bigEndian(static_cast<std::uint32_t>(data.size())) + type + data + bigEndian(crc(type + data));
}

// One deflate block with the fixed codes. The only repeats looked for are runs of one byte: a plot is mostly
// those.
class Deflate {
 public:
  explicit Deflate(std::string_view bytes) {
    put(1, 1); // the last block
    put(1, 2); // fixed codes
    for (std::size_t i = 0; i < bytes.size();) {
      std::size_t run = 1;
      while (i + run < bytes.size() && run < 259 && bytes[i + run] == bytes[i]) ++run;
      literal(static_cast<unsigned char>(bytes[i]));
      if (run >= 4)
        repeat(static_cast<int>(run - 1));
      else
        run = 1;
      i += run;
    }
    symbol(256);
    if (filled_ > 0) put(0, 8 - filled_);
  }
  std::string take() { return std::move(out_); }

 private:
  void put(unsigned bits, int count) { // least significant bit first
    for (; count > 0; --count, bits >>= 1) {
      pending_ |= (bits & 1U) << filled_;
      if (++filled_ < 8) continue;
      out_ += static_cast<char>(pending_);
      pending_ = 0;
      filled_ = 0;
    }
  }
  void code(unsigned bits, int count) { // most significant bit first
    for (int i = count - 1; i >= 0; --i) put(bits >> i & 1U, 1);
  }
  void symbol(unsigned s) {
    if (s < 144) return code(0x30 + s, 8);
    if (s < 256) return code(0x190 + s - 144, 9);
    if (s < 280) return code(s - 256, 7);
    code(0xC0 + s - 280, 8);
  }
  void literal(unsigned char byte) { symbol(byte); }
  void repeat(int length) { // of the last byte; 3 to 258
    static constexpr int kBase[] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                    31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
    int k = 28;
    while (kBase[k] > length) --k;
    symbol(257 + static_cast<unsigned>(k));
    const int extra = k < 8 || k == 28 ? 0 : k / 4 - 1;
    put(static_cast<unsigned>(length - kBase[k]), extra);
    code(0, 5); // distance 1
  }
  std::string out_;
  unsigned pending_ = 0;
  int filled_ = 0;
};

std::string scanLines(const controls::RasterCanvas& canvas) {
  std::string bytes, above(static_cast<std::size_t>(canvas.width()) * 3, '\0');
  for (int y = 0; y < canvas.height(); ++y) {
    bytes += '\2'; // each byte minus the one above: vertical lines and empty areas become runs of 0
    for (int x = 0; x < canvas.width(); ++x) {
      const std::uint32_t pixel = canvas.pixel(x, y);
      for (int channel = 0; channel < 3; ++channel) {
        const char value = static_cast<char>(pixel >> (16 - 8 * channel));
        char& over = above[static_cast<std::size_t>(x) * 3 + static_cast<std::size_t>(channel)];
        bytes += static_cast<char>(value - over);
        over = value;
      }
    }
  }
  return bytes;
}

const controls::RasterCanvas& pixelsOf(const controls::PictureBox& picture) {
  const controls::Canvas* canvas = &const_cast<controls::PictureBox&>(picture).canvas();
  if (const auto* recorder = dynamic_cast<const RecordingCanvas*>(canvas)) canvas = recorder->also();
  if (const auto* raster = dynamic_cast<const controls::RasterCanvas*>(canvas)) return *raster;
  throw Failure("the picture " + picture.name() + " keeps no pixels");
}

} // namespace

std::string png(const controls::RasterCanvas& canvas) {
  if (canvas.width() == 0) {
    controls::RasterCanvas dot;
    dot.resize(1, 1, 96);
    return png(dot);
  }
  const std::string lines = scanLines(canvas);
  const std::string header = bigEndian(static_cast<std::uint32_t>(canvas.width())) +
                             bigEndian(static_cast<std::uint32_t>(canvas.height())) +
                             std::string("\x08\x02\0\0\0", 5);
  return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) +
         chunk("IDAT", "\x78\x01" + Deflate(lines).take() + bigEndian(adler(lines))) + chunk("IEND", "");
}

void drawText(controls::RasterCanvas& canvas, int x, int y, const std::string& text, controls::Colour colour,
              int scale) {
  for (const char letter : text) {
    const Letter& dots = letterOf(letter);
    for (int column = 0; column < 5; ++column)
      for (int row = 0; row < 7; ++row)
        if (dots[static_cast<std::size_t>(column)] >> row & 1)
          canvas.fill({x + column * scale, y + row * scale, x + (column + 1) * scale, y + (row + 1) * scale},
                      colour);
    x += 6 * scale;
  }
}

std::string picturePng(const controls::PictureBox& picture) {
  controls::RasterCanvas copy = pixelsOf(picture);
  const auto pixels = [&](float twips) { return static_cast<int>(std::lround(twips * copy.dpi() / 1440)); };
  for (const controls::Control* child : picture.children()) {
    const auto* label = dynamic_cast<const controls::Label*>(child);
    if (!label || !label->visible()) continue;
    const int left = pixels(label->left()), top = pixels(label->top());
    const int scale = std::max(1, static_cast<int>(std::lround(label->font().points * copy.dpi() / 96 / 9)));
    if (label->opaque())
      copy.fill({left, top, left + pixels(label->width()), top + pixels(label->height())}, 0);
    drawText(copy, left + scale, top + scale, label->caption(),
             label->themed() ? controls::rgb(192, 192, 192) : label->foreColour(), scale);
  }
  return png(copy);
}

std::string writeFile(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  return file ? std::string() : std::string(std::strerror(errno));
}

} // namespace headless
