#include "display/PlotScale.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "engine/AutoLock.h"
#include "ui/main/frmLock.h"
#include <cmath>

namespace PlotScale {

namespace {

constexpr controls::Colour kOlive = controls::rgb(128, 128, 0);

void drawGrid(Program& program, controls::PictureBox& picture) {
  PlotCursor& cursor = program.cursor;
  for (int i = 0; i <= 8; ++i) {
    const float x = cursor.leftEdge + static_cast<float>(i) * picture.scaleWidth() / 8;
    picture.line(x, cursor.PlotTop, x, cursor.PlotBottom, kOlive);
  }
  for (int i = 0; i <= 8; ++i) {
    const float y = cursor.PlotTop + static_cast<float>(i) * picture.scaleHeight() / 8;
    picture.line(cursor.leftEdge, y, cursor.rightEdge, y, kOlive);
    cursor.gridY[static_cast<std::size_t>(i)] = y;
  }
}

void placeLabels(frmLock& main, const PlotCursor& cursor) {
  controls::PictureBox& picture = main.Picture1;
  for (controls::Label& label : main.Label2) label.fitText();
  auto& label = main.Label2;
  label[0].move({0, 0, label[0].width(), label[0].height()});
  label[1].move({picture.width() - label[1].width(), 0, label[1].width(), label[1].height()});
  label[2].move({picture.toTwipsX(cursor.centre), 0, label[2].width(), label[2].height()});
  // One line below the top: the left edge's own value stands in the corner.
  label[3].move({0, label[0].height(), label[3].width(), label[3].height()});
  label[4].move({0, picture.height() - label[4].height(), label[4].width(), label[4].height()});
}

void writeLabels(Program& program) {
  const PlotCursor& cursor = program.cursor;
  auto& label = program.frmLock->Label2;
  const float edges[] = {cursor.leftEdge, cursor.rightEdge, cursor.centre};
  for (std::size_t i = 0; i < 3; ++i)
    if (const auto text = FormatAxisValue(program, edges[i])) label[i].setCaption(*text);
  label[3].setCaption(base::numberText(cursor.PlotTop));
  label[4].setCaption(base::numberText(cursor.PlotBottom));
  placeLabels(program.frmLock.get(), cursor);
}

} // namespace

void ApplyDisplaySettings(Program& program) {
  LockParameters& record = program.record;
  if (record.AmplitudeExponent < 1) record.AmplitudeExponent = 1;
  if (record.AmplitudeExponent >= 17) record.AmplitudeExponent = 16;
  if (record.PlotOffset >= 101) record.PlotOffset = 100;
  if (record.PlotOffset < -100) record.PlotOffset = -100;
  const double fullScale = std::exp2(record.AmplitudeExponent);
  record.PlotMax = base::toInt32(fullScale);
  record.PlotMin = base::toInt32(-fullScale);
  SetupPlot(program);
}

void SetupPlot(Program& program) {
  frmLock& main = program.frmLock.get();
  if (main.windowState() == controls::WindowState::Minimised) return;
  const LockParameters& record = program.record;
  const double max = record.PlotMax, offset = record.PlotOffset / 100.0;
  main.Picture1.setScale(static_cast<float>(record.SweepLower), static_cast<float>(max * (1 - offset)),
                         static_cast<float>(record.SweepUpper),
                         static_cast<float>(record.PlotMin - offset * max));
  main.Picture1.cls();
  RedrawPlotBackground(program);
}

void RedrawPlotBackground(Program& program) {
  controls::PictureBox& picture = program.frmLock->Picture1;
  PlotCursor& cursor = program.cursor;
  cursor.PlotTop = picture.scaleTop();
  cursor.PlotBottom = picture.scaleTop() + picture.scaleHeight();
  cursor.leftEdge = picture.scaleLeft();
  cursor.rightEdge = picture.scaleLeft() + picture.scaleWidth();
  cursor.centre = (cursor.leftEdge + cursor.rightEdge) / 2;
  picture.setDrawWidth(1);
  drawGrid(program, picture);
  picture.setDrawWidth(2);
  writeLabels(program);
  cursor.plotWidth = picture.scaleWidth();
  cursor.plotHeight = -picture.scaleHeight();
  AutoLock::ShowPeakThreshold(program);
}

std::optional<std::string> FormatAxisValue(const Program& program, float x) {
  const LockParameters& record = program.record;
  if (record.DisplayUnits == 0) return base::numberText(x);
  if (record.DisplayUnits == 1)
    return base::numberText(base::Int(x * record.PPMperDAC * record.Frequency + 0.5)) + " Hz";
  if (record.DisplayUnits == 2)
    return base::numberText(base::Int(x * record.PPMperDAC * 100 + 0.5) / 100) + " ppm";
  return std::nullopt;
}

double SolventLockFrequency(const Program& program, float ppm) {
  const LockParameters& record = program.record;
  double f = ((ppm - record.ProtonDelta) * 1e-6 + 1) * record.ProtonFreq / record.GammaRatio;
  // GammaRatio 0 leaves no number that could be sent.
  if (!std::isfinite(f))
    base::raiseOverflow(
        vbLock_mod::settingName(program, "System", "GammaRatio", base::numberText(record.GammaRatio)));
  f = base::Int(f * 1e7) / 1e7; // the synthesizer steps by 0.1 Hz
  return f + record.SidebandFreq * 1e-6;
}

} // namespace PlotScale
