// Draws an application's icon and writes it as an .ico file of several sizes: make_icon panel|console out.ico
// Runs on the building machine; the pictures are drawn at eight times their size and averaged.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

struct Colour {
  double r, g, b, a;
};

constexpr Colour kGround{0.07, 0.10, 0.14, 1}, kGrid{0.24, 0.30, 0.36, 1}, kTrace{0.42, 0.90, 0.52, 1},
    kMagnet{0.80, 0.84, 0.88, 1}, kNothing{0, 0, 0, 0};

bool insideRounded(double x, double y) {
  const double radius = 0.18;
  const double dx = std::max({radius - x, x - (1 - radius), 0.0}),
               dy = std::max({radius - y, y - (1 - radius), 0.0});
  return dx * dx + dy * dy <= radius * radius;
}

double peak(double x) {
  const double d = (x - 0.5) / 0.085;
  return 0.80 - 0.62 / (1 + d * d);
}

// The resonance line, its centre marked.
Colour panel(double x, double y, double thickness) {
  if (!insideRounded(x, y)) return kNothing;
  const double slope = (peak(x + 0.001) - peak(x - 0.001)) / 0.002;
  const double distance = std::abs(y - peak(x)) / std::sqrt(1 + slope * slope);
  if (distance < thickness && x > 0.08 && x < 0.92) return kTrace;
  if (std::abs(x - 0.5) < thickness * 0.35 && y > 0.1 && y < 0.9) return kGrid;
  if (std::abs(y - 0.8) < thickness * 0.35 && x > 0.08 && x < 0.92) return kGrid;
  return kGround;
}

// A sample between the poles of a magnet.
Colour console(double x, double y, double thickness) {
  if (!insideRounded(x, y)) return kNothing;
  const bool pole = (x > 0.1 && x < 0.34) || (x > 0.66 && x < 0.9);
  if (pole && y > 0.22 && y < 0.78) return kMagnet;
  if (std::abs(x - 0.5) < 0.06 && y > 0.1 && y < 0.66) return kTrace;
  const double dx = x - 0.5, dy = y - 0.66;
  if (dx * dx + dy * dy < 0.0036) return kTrace;
  if (std::abs(y - 0.9) < thickness * 0.5 && x > 0.1 && x < 0.9) return kGrid;
  return kGround;
}

class Bytes {
 public:
  void u8(std::uint32_t v) { data.push_back(static_cast<std::uint8_t>(v)); }
  void u16(std::uint32_t v) {
    u8(v & 0xFF);
    u8(v >> 8 & 0xFF);
  }
  void u32(std::uint32_t v) {
    u16(v & 0xFFFF);
    u16(v >> 16);
  }
  std::vector<std::uint8_t> data;
};

Bytes image(int size, bool isPanel) {
  Bytes out;
  const auto s = static_cast<std::uint32_t>(size);
  const std::uint32_t maskRow = (s + 31) / 32 * 4;
  out.u32(40);
  out.u32(s);
  out.u32(s * 2); // colours and mask
  out.u16(1);
  out.u16(32);
  for (std::uint32_t v : {0U, s * s * 4 + maskRow * s, 0U, 0U, 0U, 0U}) out.u32(v);
  constexpr int kFine = 8;
  const double thickness = std::max(0.032, 0.75 / size);
  for (int row = size - 1; row >= 0; --row)
    for (int column = 0; column < size; ++column) {
      Colour sum{0, 0, 0, 0};
      for (int i = 0; i < kFine * kFine; ++i) {
        const double x = (column + (i % kFine + 0.5) / kFine) / size,
                     y = (row + (i / kFine + 0.5) / kFine) / size;
        const Colour c = isPanel ? panel(x, y, thickness) : console(x, y, thickness);
        sum.r += c.r * c.a;
        sum.g += c.g * c.a;
        sum.b += c.b * c.a;
        sum.a += c.a;
      }
      const double covered = sum.a > 0 ? sum.a : 1;
      for (double v : {sum.b / covered, sum.g / covered, sum.r / covered, sum.a / (kFine * kFine)})
        out.u8(static_cast<std::uint32_t>(std::lround(v * 255)));
    }
  out.data.resize(out.data.size() + maskRow * s, 0);
  return out;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const int sizes[] = {16, 20, 24, 32, 40, 48, 64, 96, 128};
  std::vector<Bytes> images;
  for (int size : sizes) images.push_back(image(size, std::strcmp(argv[1], "panel") == 0));
  Bytes file;
  file.u16(0);
  file.u16(1);
  file.u16(static_cast<std::uint32_t>(images.size()));
  std::uint32_t at = 6 + 16 * static_cast<std::uint32_t>(images.size());
  for (std::size_t i = 0; i < images.size(); ++i) {
    const auto length = static_cast<std::uint32_t>(images[i].data.size());
    file.u8(static_cast<std::uint32_t>(sizes[i]));
    file.u8(static_cast<std::uint32_t>(sizes[i]));
    file.u16(0);
    file.u16(1);
    file.u16(32);
    file.u32(length);
    file.u32(at);
    at += length;
  }
  for (const Bytes& b : images) file.data.insert(file.data.end(), b.data.begin(), b.data.end());
  std::FILE* out = std::fopen(argv[2], "wb");
  if (!out) return 1;
  const bool written = std::fwrite(file.data.data(), 1, file.data.size(), out) == file.data.size();
  return std::fclose(out) == 0 && written ? 0 : 1;
}
