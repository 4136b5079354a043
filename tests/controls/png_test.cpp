#include "headless/Png.h"
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

using controls::RasterCanvas;
using controls::rgb;

namespace {

// Reads back what the writer may write: one fixed-code deflate block, 8-bit RGB rows filtered by the row
// above.
class Reader {
 public:
  explicit Reader(const std::string& file) : file_(file) {
    if (file.substr(0, 8) != "\x89PNG\r\n\x1A\n") throw std::runtime_error("no signature");
    for (std::size_t at = 8; at < file.size();) at = chunk(at);
    if (!ended_) throw std::runtime_error("no end");
    inflate();
    unfilter();
  }
  int width = 0, height = 0;
  unsigned pixel(int x, int y) const { return rows_.at(static_cast<std::size_t>(y * width + x)); }

 private:
  unsigned number(std::size_t at) const {
    unsigned value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(file_.at(at + i));
    return value;
  }
  std::size_t chunk(std::size_t at) {
    const unsigned length = number(at);
    const std::string type = file_.substr(at + 4, 4), data = file_.substr(at + 8, length);
    unsigned crc = ~0U;
    for (const char byte : type + data) {
      crc ^= static_cast<unsigned char>(byte);
      for (int i = 0; i < 8; ++i) crc = crc & 1 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
    }
    if (~crc != number(at + 8 + length)) throw std::runtime_error("wrong check sum of " + type);
    if (type == "IHDR") width = static_cast<int>(number(at + 8)), height = static_cast<int>(number(at + 12));
    if (type == "IDAT") packed_ += data;
    ended_ = type == "IEND";
    return at + 12 + length;
  }
  unsigned bit() {
    const unsigned value = static_cast<unsigned char>(packed_.at(bitAt_ / 8)) >> (bitAt_ % 8) & 1U;
    ++bitAt_;
    return value;
  }
  unsigned bits(int count) {
    unsigned value = 0;
    for (int i = 0; i < count; ++i) value |= bit() << i;
    return value;
  }
  unsigned symbol() {
    unsigned code = 0;
    for (int i = 0; i < 7; ++i) code = code << 1 | bit();
    if (code < 24) return 256 + code;
    code = code << 1 | bit();
    if (code >= 0x30 && code < 0xC0) return code - 0x30;
    if (code >= 0xC0 && code < 0xC8) return 280 + code - 0xC0;
    return 144 + (code << 1 | bit()) - 0x190;
  }
  void inflate() {
    bitAt_ = 16;
    if (bits(1) != 1 || bits(2) != 1) throw std::runtime_error("not one fixed block");
    for (unsigned s = symbol(); s != 256; s = symbol()) {
      if (s < 256) {
        raw_ += static_cast<char>(s);
        continue;
      }
      unsigned length = 3, k = s - 257; // the code's base length is the sum of the steps below it
      for (unsigned i = 0; i < k; ++i) length += 1U << (i < 8 ? 0 : i / 4 - 1);
      if (k == 28)
        length = 258;
      else if (k >= 8)
        length += bits(static_cast<int>(k / 4 - 1));
      if (bits(5) != 0) throw std::runtime_error("not distance 1");
      raw_ += std::string(length, raw_.back());
    }
    unsigned a = 1, b = 0;
    for (const char byte : raw_) b = (b + (a = (a + static_cast<unsigned char>(byte)) % 65521)) % 65521;
    const std::size_t end = (bitAt_ + 7) / 8;
    unsigned sum = 0;
    for (std::size_t i = 0; i < 4; ++i) sum = sum << 8 | static_cast<unsigned char>(packed_.at(end + i));
    if (sum != (b << 16 | a)) throw std::runtime_error("wrong adler sum");
  }
  void unfilter() {
    std::vector<unsigned char> above(static_cast<std::size_t>(width) * 3, 0);
    std::size_t at = 0;
    for (int y = 0; y < height; ++y) {
      if (raw_.at(at++) != 2) throw std::runtime_error("other filter");
      for (unsigned char& byte : above) byte = static_cast<unsigned char>(byte + raw_.at(at++));
      for (std::size_t x = 0; x < above.size(); x += 3)
        rows_.push_back(static_cast<unsigned>(above[x] << 16 | above[x + 1] << 8 | above[x + 2]));
    }
    if (at != raw_.size()) throw std::runtime_error("bytes left over");
  }
  std::string file_, packed_, raw_;
  std::size_t bitAt_ = 0;
  bool ended_ = false;
  std::vector<unsigned> rows_;
};

void expectSame(const RasterCanvas& canvas) {
  const Reader read(headless::png(canvas));
  ASSERT_EQ(read.width, canvas.width());
  ASSERT_EQ(read.height, canvas.height());
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x) ASSERT_EQ(read.pixel(x, y), canvas.pixel(x, y)) << x << ',' << y;
}

} // namespace

TEST(Png, everyPixelIsReadBack) {
  RasterCanvas canvas;
  canvas.resize(61, 37, 96);
  canvas.clear(rgb(10, 20, 30));
  for (int i = 0; i < 400; ++i)
    canvas.line({0, 0, 60, 36}, static_cast<float>(i % 61), static_cast<float>(i % 37),
                static_cast<float>(i % 53), static_cast<float>(i % 29), 1,
                rgb(static_cast<unsigned>(i * 7 & 255), static_cast<unsigned>(i & 255),
                    static_cast<unsigned>(255 - (i & 255))));
  expectSame(canvas);
}

TEST(Png, runsOfEveryLengthAreReadBack) {
  for (int width = 1; width < 180; ++width) {
    RasterCanvas canvas;
    canvas.resize(width, 1, 96);
    expectSame(canvas);
  }
}

TEST(Png, aMostlyBlackPictureIsSmall) {
  RasterCanvas canvas;
  canvas.resize(1000, 600, 96);
  canvas.line({-1, -1, 2, 2}, -1, -1, 1, 1, 1, rgb(0, 255, 0));
  EXPECT_LT(headless::png(canvas).size(), 30000U);
  expectSame(canvas);
}

TEST(Png, anEmptyPictureIsStillAPicture) {
  const Reader read(headless::png(RasterCanvas{}));
  EXPECT_EQ(read.width, 1);
  EXPECT_EQ(read.pixel(0, 0), 0U);
}

TEST(Png, textIsDrawnInItsColourAndStaysInItsBox) {
  RasterCanvas canvas;
  canvas.resize(40, 20, 96);
  headless::drawText(canvas, 2, 3, "A1", rgb(255, 0, 0));
  int dots = 0;
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 40; ++x)
      if (canvas.pixel(x, y) != 0) {
        ++dots;
        EXPECT_EQ(canvas.pixel(x, y), 0xFF0000U);
        EXPECT_TRUE(x >= 2 && x < 14 && y >= 3 && y < 10) << x << ',' << y;
      }
  EXPECT_GT(dots, 20);
  headless::drawText(canvas, -3, -3, std::string("\xFF \x01"), rgb(255, 0, 0), 9); // cut, and no such letters
}
