#include "controls/RasterCanvas.h"
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

using controls::PixelRect;
using controls::RasterCanvas;
using controls::rgb;
using controls::Scale;

namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels drawn(const RasterCanvas& canvas) {
  Pixels found;
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x)
      if (canvas.pixel(x, y) != 0) found.emplace(x, y);
  return found;
}

// A scale in which a user unit is a pixel.
Scale pixelScale(const RasterCanvas& canvas) {
  return {0, 0, static_cast<float>(canvas.width() - 1), static_cast<float>(canvas.height() - 1)};
}

Pixels lineOn(int width, int height, float x1, float y1, float x2, float y2, int drawWidth = 1,
              int dpi = 96) {
  RasterCanvas canvas;
  canvas.resize(width, height, dpi);
  canvas.line(pixelScale(canvas), x1, y1, x2, y2, drawWidth, rgb(255, 255, 255));
  return drawn(canvas);
}

} // namespace

TEST(RasterCanvas, aColourIsStoredBlueFirst) {
  RasterCanvas canvas;
  canvas.resize(1, 1, 96);
  canvas.clear(rgb(255, 64, 32));
  EXPECT_EQ(canvas.pixel(0, 0), 0x00FF4020U);
}

TEST(RasterCanvas, bothEdgesOfTheScaleAreInside) {
  RasterCanvas canvas;
  canvas.resize(101, 51, 96);
  const Scale scale{-5000, 500, 10000, -1000}; // y upwards
  canvas.line(scale, -5000, 500, -5000, 500, 1, rgb(255, 0, 0));
  canvas.line(scale, 5000, -500, 5000, -500, 1, rgb(255, 0, 0));
  canvas.line(scale, 0, 0, 0, 0, 1, rgb(255, 0, 0));
  EXPECT_EQ(drawn(canvas), (Pixels{{0, 0}, {100, 50}, {50, 25}}));
}

TEST(RasterCanvas, aLineHasOnePixelForEachStep) {
  EXPECT_EQ(lineOn(10, 10, 1, 1, 4, 1), (Pixels{{1, 1}, {2, 1}, {3, 1}, {4, 1}}));
  EXPECT_EQ(lineOn(10, 10, 2, 1, 2, 3), (Pixels{{2, 1}, {2, 2}, {2, 3}}));
  EXPECT_EQ(lineOn(10, 10, 0, 0, 3, 3), (Pixels{{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
  EXPECT_EQ(lineOn(10, 10, 0, 0, 6, 2).size(), 7U);
}

TEST(RasterCanvas, aLineIsTheSameFromEitherEnd) {
  std::mt19937 random(1);
  std::uniform_real_distribution<float> at(-60, 90);
  for (int i = 0; i < 2000; ++i) {
    const float x1 = at(random), y1 = at(random), x2 = at(random), y2 = at(random);
    ASSERT_EQ(lineOn(30, 20, x1, y1, x2, y2), lineOn(30, 20, x2, y2, x1, y1)) << x1 << ' ' << y1;
  }
}

TEST(RasterCanvas, aCutLineHasThePixelsOfTheWholeOne) {
  std::mt19937 random(2);
  std::uniform_int_distribution<int> at(-40, 100), thick(1, 4);
  for (int i = 0; i < 2000; ++i) {
    const auto x1 = static_cast<float>(at(random)), y1 = static_cast<float>(at(random));
    const auto x2 = static_cast<float>(at(random)), y2 = static_cast<float>(at(random));
    const int width = thick(random);
    Pixels whole; // drawn on a large picture, then looked at through the window
    for (const auto& [x, y] : lineOn(160, 160, x1 + 50, y1 + 50, x2 + 50, y2 + 50, width))
      if (x >= 50 && x < 80 && y >= 50 && y < 70) whole.emplace(x - 50, y - 50);
    ASSERT_EQ(lineOn(30, 20, x1, y1, x2, y2, width), whole) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
  }
}

TEST(RasterCanvas, hugeCoordinatesAreCutAndNotWrapped) {
  EXPECT_EQ(lineOn(10, 10, -3e38F, 4, 3e38F, 4).size(), 10U);
  EXPECT_EQ(lineOn(10, 10, 4, -1e20F, 4, 5), (Pixels{{4, 0}, {4, 1}, {4, 2}, {4, 3}, {4, 4}, {4, 5}}));
  EXPECT_EQ(lineOn(10, 10, -1e9F, -1e9F, 1e9F, 1e9F).size(), 10U); // the diagonal
  EXPECT_TRUE(lineOn(10, 10, 1e30F, 1e30F, 2e30F, 3e30F).empty());
  EXPECT_TRUE(lineOn(10, 10, -1e30F, 20, 1e30F, 20).empty());
}

TEST(RasterCanvas, noNumberDrawsNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
  EXPECT_TRUE(lineOn(10, 10, nan, 1, 2, 2).empty());
  EXPECT_TRUE(lineOn(10, 10, 1, nan, 2, 2).empty());
  EXPECT_TRUE(lineOn(10, 10, 1, 1, inf, 2).empty());
  EXPECT_TRUE(lineOn(10, 10, 1, 1, 2, -inf).empty());
}

TEST(RasterCanvas, aScaleWithoutExtentDrawsNothing) {
  RasterCanvas canvas;
  canvas.resize(10, 10, 96);
  for (const Scale& scale : {Scale{0, 0, 0, 10}, Scale{0, 0, 10, 0}, Scale{NAN, 0, 10, 10},
                             Scale{0, 0, INFINITY, NAN}, Scale{0, 0, 1e-45F, 1e-45F}})
    canvas.line(scale, 3e38F, 1, -3e38F, 2, 1, rgb(1, 1, 1));
  EXPECT_TRUE(drawn(canvas).empty());
}

TEST(RasterCanvas, anEmptyPictureTakesEveryCall) {
  RasterCanvas canvas;
  canvas.line({0, 0, 1, 1}, 0, 0, 1, 1, 1, 0);
  canvas.clear(0);
  canvas.resize(-5, 100, 0);
  canvas.line({0, 0, 1, 1}, 0, 0, 1, 1, 1, 0);
  EXPECT_EQ(canvas.width(), 0);
  EXPECT_TRUE(canvas.takeDirty().empty());
}

TEST(RasterCanvas, thicknessFollowsTheResolution) {
  const auto rows = [](int drawWidth, int dpi) {
    return lineOn(20, 20, 5, 10, 5, 10, drawWidth, dpi).size();
  };
  EXPECT_EQ(rows(1, 96), 1U);
  EXPECT_EQ(rows(1, 144), 2U);
  EXPECT_EQ(rows(1, 192), 2U);
  EXPECT_EQ(rows(2, 144), 3U);
  EXPECT_EQ(rows(0, 96), 1U);
}

TEST(RasterCanvas, whatWasDrawnIsDirtyOnce) {
  RasterCanvas canvas;
  canvas.resize(100, 50, 96);
  EXPECT_EQ(canvas.takeDirty(), (PixelRect{0, 0, 100, 50}));
  EXPECT_TRUE(canvas.takeDirty().empty());
  canvas.line(pixelScale(canvas), 10, 5, 20, 8, 1, rgb(9, 9, 9));
  EXPECT_EQ(canvas.takeDirty(), (PixelRect{10, 5, 21, 9}));
  canvas.line(pixelScale(canvas), 95, 40, 300, 40, 1, rgb(9, 9, 9));
  canvas.line(pixelScale(canvas), -20, -20, -10, -10, 1, rgb(9, 9, 9)); // outside
  EXPECT_EQ(canvas.takeDirty(), (PixelRect{95, 40, 100, 41}));
  canvas.clear(0);
  EXPECT_EQ(canvas.takeDirty(), (PixelRect{0, 0, 100, 50}));
}

TEST(RasterCanvas, everyDrawnPixelLiesInTheDirtyRectangle) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> at(-100, 200);
  for (int i = 0; i < 500; ++i) {
    RasterCanvas canvas;
    canvas.resize(60, 40, 96);
    canvas.takeDirty();
    canvas.line(pixelScale(canvas), at(random), at(random), at(random), at(random), 1 + i % 5, rgb(1, 2, 3));
    const PixelRect dirty = canvas.takeDirty();
    for (const auto& [x, y] : drawn(canvas))
      ASSERT_TRUE(x >= dirty.left && x < dirty.right && y >= dirty.top && y < dirty.bottom);
    ASSERT_EQ(dirty.empty(), drawn(canvas).empty());
  }
}

TEST(RasterCanvas, fillingIsCutAtTheEdges) {
  RasterCanvas canvas;
  canvas.resize(4, 3, 96);
  canvas.fill({-5, 1, 2, 99}, rgb(1, 1, 1));
  EXPECT_EQ(drawn(canvas), (Pixels{{0, 1}, {1, 1}, {0, 2}, {1, 2}}));
}
