#include "win32/Icons.h"
#include <algorithm>
#include <cmath>
#include <numbers>

namespace win32 {

namespace {

constexpr int kOversample = 4;
constexpr double kGrid = 24; // the drawings stand on a grid of 24 by 24

struct Dot {
  double x, y;
};
using Line = std::vector<Dot>;

class Sketch {
 public:
  Sketch(HDC dc, int size) : dc_(dc), unit_(size / kGrid) {}
  void line(const Line& dots) {
    std::vector<POINT> points;
    for (const Dot& d : dots) points.push_back({round(d.x), round(d.y)});
    Polyline(dc_, points.data(), static_cast<int>(points.size()));
  }
  void fill(const Line& dots) {
    std::vector<POINT> points;
    for (const Dot& d : dots) points.push_back({round(d.x), round(d.y)});
    Polygon(dc_, points.data(), static_cast<int>(points.size()));
  }
  // Degrees clockwise from the top.
  Line arc(double x, double y, double radius, double from, double to) const {
    Line dots;
    for (int i = 0; i <= 48; ++i) {
      const double a = (from + (to - from) * i / 48) * std::numbers::pi / 180;
      dots.push_back({x + radius * std::sin(a), y - radius * std::cos(a)});
    }
    return dots;
  }

 private:
  LONG round(double v) const { return std::lround(v * unit_); }
  HDC dc_;
  double unit_;
};

void drawOff(Sketch& s) {
  s.line(s.arc(12, 13, 7.5, 35, 325));
  s.line({{12, 3.5}, {12, 11.5}});
}

void drawLock(Sketch& s) {
  s.line({{5, 11}, {19, 11}, {19, 20.5}, {5, 20.5}, {5, 11}});
  Line shackle = s.arc(12, 8, 4.5, -90, 90);
  shackle.insert(shackle.begin(), {7.5, 11});
  shackle.push_back({16.5, 11});
  s.line(shackle);
  s.line({{12, 14.5}, {12, 17}});
}

// A resonance line, and the field that runs to and fro below it.
void drawSweep(Sketch& s) {
  Line curve;
  for (int i = 0; i <= 60; ++i) {
    const double x = 2 + i / 3.0;
    const double d = (x - 12) / 1.9;
    curve.push_back({x, 15 - 12 / (1 + d * d)});
  }
  s.line(curve);
  s.line({{3, 20}, {21, 20}});
  s.line({{5.5, 17.8}, {3, 20}, {5.5, 22.2}});
  s.line({{18.5, 17.8}, {21, 20}, {18.5, 22.2}});
}

void drawHold(Sketch& s) {
  s.fill({{6.5, 4.5}, {9, 4.5}, {9, 19.5}, {6.5, 19.5}});
  s.fill({{15, 4.5}, {17.5, 4.5}, {17.5, 19.5}, {15, 19.5}});
}

void drawAuto(Sketch& s) {
  s.line(s.arc(12, 12, 9, 40, 340));
  s.line({{5.2, 3.6}, {8.9, 3.5}, {9.4, 7.2}});
  s.line({{8.2, 16.5}, {12, 7.8}, {15.8, 16.5}});
  s.line({{9.7, 13.4}, {14.3, 13.4}});
}

void drawPhase(Sketch& s) {
  s.line(s.arc(12, 12, 6.5, 0, 360));
  s.line({{14.5, 2.5}, {9.5, 21.5}});
}

void draw(const std::string& key, Sketch& s) {
  constexpr struct {
    const char* key;
    void (*draw)(Sketch&);
  } drawings[] = {{"Off", drawOff},   {"Lock", drawLock}, {"Sweep", drawSweep},
                  {"Hold", drawHold}, {"Auto", drawAuto}, {"Phase", drawPhase}};
  for (const auto& d : drawings)
    if (key == d.key) d.draw(s);
}

OwnedBitmap dib(int width, int height, std::uint32_t*& pixels) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  OwnedBitmap made(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  pixels = static_cast<std::uint32_t*>(bits);
  std::fill_n(pixels, width * height, 0U);
  return made;
}

// White lines on black at four times the size; the brightness of each block is how much of the pixel the line
// covers.
OwnedBitmap image(const std::string& key, int size) {
  const int large = size * kOversample;
  std::uint32_t* fine = nullptr;
  OwnedBitmap canvas = dib(large, large, fine);
  OwnedDc dc(CreateCompatibleDC(nullptr));
  HGDIOBJ oldBitmap = SelectObject(dc.get(), canvas.get());
  const LOGBRUSH white{BS_SOLID, RGB(255, 255, 255), 0};
  const auto width = static_cast<DWORD>(std::max(1, large * 7 / 96));
  OwnedPen pen(
      ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND, width, &white, 0, nullptr));
  HGDIOBJ oldPen = SelectObject(dc.get(), pen.get());
  HGDIOBJ oldBrush = SelectObject(dc.get(), GetStockObject(WHITE_BRUSH));
  Sketch sketch(dc.get(), large);
  draw(key, sketch);
  GdiFlush();
  SelectObject(dc.get(), oldBrush);
  SelectObject(dc.get(), oldPen);
  SelectObject(dc.get(), oldBitmap);

  std::uint32_t* pixels = nullptr;
  OwnedBitmap made = dib(size, size, pixels);
  const COLORREF text = GetSysColor(COLOR_BTNTEXT);
  for (int y = 0; y < size; ++y)
    for (int x = 0; x < size; ++x) {
      std::uint32_t covered = 0;
      for (int i = 0; i < kOversample * kOversample; ++i)
        covered +=
            fine[(y * kOversample + i / kOversample) * large + x * kOversample + i % kOversample] & 0xFF;
      const std::uint32_t alpha = covered / (kOversample * kOversample);
      pixels[y * size + x] = alpha << 24 | static_cast<std::uint32_t>(GetRValue(text)) << 16 |
                             static_cast<std::uint32_t>(GetGValue(text)) << 8 | GetBValue(text);
    }
  return made;
}

} // namespace

OwnedImageList toolbarImages(const std::vector<std::string>& keys, int sizePixels) {
  OwnedImageList list(
      ImageList_Create(sizePixels, sizePixels, ILC_COLOR32, static_cast<int>(keys.size()), 0));
  for (const std::string& key : keys) {
    OwnedBitmap bitmap = image(key, sizePixels);
    ImageList_Add(list.get(), bitmap.get(), nullptr);
  }
  return list;
}

} // namespace win32
