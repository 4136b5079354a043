// Canvases for tests: one that keeps what was drawn since the last clear, one that draws nothing.
#pragma once
#include "controls/Picture.h"
#include <vector>

namespace headless {

class RecordingCanvas : public controls::Canvas {
 public:
  struct Line {
    controls::Scale scale;
    float x1, y1, x2, y2;
    int width;
    controls::Colour colour;
    friend bool operator==(const Line&, const Line&) = default;
  };

  explicit RecordingCanvas(std::unique_ptr<controls::Canvas> also = nullptr) : also_(std::move(also)) {}

  void resize(int widthPixels, int heightPixels, int dpi) override {
    lines.clear();
    this->width = widthPixels;
    this->height = heightPixels;
    if (also_) also_->resize(widthPixels, heightPixels, dpi);
  }
  void clear(controls::Colour background) override {
    lines.clear();
    ++clears;
    if (also_) also_->clear(background);
  }
  void line(const controls::Scale& scale, float x1, float y1, float x2, float y2, int drawWidth,
            controls::Colour colour) override {
    lines.push_back({scale, x1, y1, x2, y2, drawWidth, colour});
    if (also_) also_->line(scale, x1, y1, x2, y2, drawWidth, colour);
  }

  std::vector<Line> lines; // since the last clear
  int clears = 0, width = 0, height = 0;
  controls::Canvas* also() const { return also_.get(); }

 private:
  std::unique_ptr<controls::Canvas> also_;
};

class NullCanvas : public controls::Canvas {
 public:
  void resize(int, int, int) override {}
  void clear(controls::Colour) override {}
  void line(const controls::Scale&, float, float, float, float, int, controls::Colour) override {}
};

} // namespace headless
