#include "ui/panels/frmAmpl.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "display/LockKeys.h"
#include "display/PlotScale.h"
#include "ui/main/frmLock.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"
#include <algorithm>

namespace {

constexpr int kEnter = 13, kUp = 38, kDown = 40, kShift = 1;
constexpr std::int16_t kOffsetStep = 25; // percent

std::int16_t between(std::int16_t low, std::int16_t value, std::int16_t high) {
  return std::clamp(value, low, high);
}

} // namespace

frmAmpl::frmAmpl(Program& program) : Form(program.desktop, "frmAmpl"), program_(program) {
  design();
  bindEvents();
}

void frmAmpl::bindEvents() {
  updDispAmpl.Change = [this] { updDispAmpl_Change(); };
  updDispOffset.Change = [this] { updDispOffset_Change(); };
  bindBox(txtDispAmpl, &frmAmpl::txtDispAmpl_LostFocus);
  bindBox(txtDispOffset, &frmAmpl::txtDispOffset_LostFocus);
  mnuMain.Click = [this](int) { undo(); };
}

void frmAmpl::bindBox(controls::TextBox& box, void (frmAmpl::*lostFocus)()) {
  box.LostFocus = [this, lostFocus] { (this->*lostFocus)(); };
  box.KeyPress = [this, lostFocus](int& key) {
    if (key != kEnter) return;
    key = 0;
    (this->*lostFocus)();
  };
}

void frmAmpl::Form_Load() {
  const LockParameters& record = program_.record;
  placePanel(program_, *this, kDisplayPanel);
  snapshot_ = {record.AmplitudeExponent, record.PlotOffset};
  stay_on_top::SetStayOnTop(*this, record.StayOnTop);
  program_.panels.AmplOpen = kTrue;
  Refresh();
  PlotScale::ApplyDisplaySettings(program_);
}

void frmAmpl::Form_Unload() { panelClosed(program_, *this, kDisplayPanel); }

void frmAmpl::Refresh() {
  LockParameters& record = program_.record;
  record.AmplitudeExponent = between(1, record.AmplitudeExponent, 16);
  record.PlotOffset = between(-100, record.PlotOffset, 100);
  updDispAmpl.setValue(record.AmplitudeExponent);
  txtDispAmpl.setText(base::signedText(record.AmplitudeExponent));
  updDispOffset.setValue(record.PlotOffset);
  txtDispOffset.setText(base::signedText(record.PlotOffset));
}

// A threshold key stops the lock timer; letting it go starts it again, whichever window has the keyboard.
void frmAmpl::Form_KeyUp(std::int16_t keyCode, std::int16_t shift) {
  program_.frmLock->Form_KeyUp(keyCode, shift);
}

// The arrow keys are the panel's own, and swallowed here: the shared keyboard handler would step once more.
void frmAmpl::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  if (keyCode != kUp && keyCode != kDown) {
    HandleLockKey(program_, keyCode, shift);
    return;
  }
  LockParameters& record = program_.record;
  const int up = keyCode == kUp ? 1 : -1;
  if ((shift & kShift) != 0)
    record.PlotOffset = static_cast<std::int16_t>(record.PlotOffset + up * kOffsetStep);
  else
    record.AmplitudeExponent = static_cast<std::int16_t>(record.AmplitudeExponent - up);
  Refresh();
  PlotScale::ApplyDisplaySettings(program_);
  keyCode = 0;
}

void frmAmpl::updDispAmpl_Change() {
  program_.record.AmplitudeExponent = static_cast<std::int16_t>(updDispAmpl.value());
  txtDispAmpl.setText(base::signedText(updDispAmpl.value()));
  txtDispAmpl_LostFocus();
}

void frmAmpl::updDispOffset_Change() {
  program_.record.PlotOffset = static_cast<std::int16_t>(updDispOffset.value());
  txtDispOffset.setText(base::signedText(updDispOffset.value()));
  txtDispOffset_LostFocus();
}

void frmAmpl::refuse(controls::TextBox& box) {
  program_.beep();
  box.setFocus();
}

// Not limited to 1..16 here: the plot limits what it draws, and the box is put right by the next Refresh.
void frmAmpl::txtDispAmpl_LostFocus() {
  if (!base::isNumeric(txtDispAmpl.text())) return refuse(txtDispAmpl);
  program_.record.AmplitudeExponent =
      typedNumber(txtDispAmpl, [this] { return base::toInt16(base::toDouble(txtDispAmpl.text())); });
  PlotScale::ApplyDisplaySettings(program_);
}

void frmAmpl::txtDispOffset_LostFocus() {
  if (!base::isNumeric(txtDispOffset.text())) return refuse(txtDispOffset);
  const double steps = base::Int(base::toDouble(txtDispOffset.text()) / kOffsetStep);
  program_.record.PlotOffset = base::toInt16(std::clamp(steps * kOffsetStep, -100.0, 100.0));
  PlotScale::ApplyDisplaySettings(program_);
}

void frmAmpl::undo() {
  program_.record.AmplitudeExponent = snapshot_.AmplitudeExponent;
  program_.record.PlotOffset = snapshot_.PlotOffset;
  Refresh();
  PlotScale::ApplyDisplaySettings(program_);
}
