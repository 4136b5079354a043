#include "ui/panels/frmSweep.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "display/LockKeys.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"

namespace {

constexpr int kEnter = 13;
constexpr int kSmallestPower = 7, kChoices = 13; // 128 to 524288

std::int32_t wholeNumber(const controls::ComboBox& box) {
  return typedNumber(box, [&] { return base::toInt32(base::toDouble(box.text())); });
}

} // namespace

frmSweep::frmSweep(Program& program) : Form(program.desktop, "frmSweep"), program_(program) {
  design();
  bindEvents();
}

void frmSweep::bindEvents() {
  bindBox(cmbSweepWidth, &frmSweep::widthChosen);
  bindBox(cmbSweepSpeed, &frmSweep::speedChosen);
  mnuMain.Click = [this](int) { undo(); };
}

void frmSweep::bindBox(controls::ComboBox& box, void (frmSweep::*chosen)()) {
  box.Click = [this, chosen] { (this->*chosen)(); };
  box.LostFocus = [this, chosen] { (this->*chosen)(); };
  box.KeyPress = [this, chosen](int& key) {
    if (key != kEnter) return;
    key = 0;
    (this->*chosen)();
  };
}

void frmSweep::Form_Load() {
  const LockParameters& record = program_.record;
  placePanel(program_, *this, kSweepPanel);
  snapshotWidth_ = static_cast<float>(record.SweepWidth);
  snapshotSpeed_ = static_cast<float>(record.SweepSpeed);
  stay_on_top::SetStayOnTop(*this, record.StayOnTop);
  for (int k = 0; k < kChoices; ++k) {
    const std::string choice = base::numberText(1 << (k + kSmallestPower));
    cmbSweepWidth.addItem(choice);
    cmbSweepSpeed.addItem(choice);
  }
  cmbSweepWidth.setText(base::numberText(record.SweepWidth));
  cmbSweepSpeed.setText(base::numberText(record.SweepSpeed));
  program_.panels.SweepOpen = kTrue;
}

void frmSweep::Form_Unload() { panelClosed(program_, *this, kSweepPanel); }

// A threshold key stops the lock timer; letting it go starts it again, whichever window has the keyboard.
void frmSweep::Form_KeyUp(std::int16_t keyCode, std::int16_t shift) {
  program_.frmLock->Form_KeyUp(keyCode, shift);
}

void frmSweep::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  HandleLockKey(program_, keyCode, shift);
}

void frmSweep::ApplyBoth() {
  ActiveNMRAppInterface::SetSweepSpeed(program_, wholeNumber(cmbSweepSpeed));
  ActiveNMRAppInterface::SetSweepWidth(program_, wholeNumber(cmbSweepWidth));
}

void frmSweep::refuse(controls::ComboBox& box) {
  program_.beep();
  box.setFocus();
}

void frmSweep::speedChosen() {
  if (!base::isNumeric(cmbSweepSpeed.text())) return refuse(cmbSweepSpeed);
  ActiveNMRAppInterface::SetSweepSpeed(program_, wholeNumber(cmbSweepSpeed));
}

// A chosen width always becomes the speed too: one sweep then takes one second.
void frmSweep::widthChosen() {
  if (!base::isNumeric(cmbSweepWidth.text())) return refuse(cmbSweepWidth);
  const std::int32_t width = wholeNumber(cmbSweepWidth);
  ActiveNMRAppInterface::SetSweepWidth(program_, width);
  cmbSweepSpeed.setText(base::numberText(width));
  speedChosen();
}

// Both as they were when the panel was opened; the speed keeps its own value here.
void frmSweep::undo() {
  cmbSweepWidth.setText(base::numberText(snapshotWidth_));
  cmbSweepSpeed.setText(base::numberText(snapshotSpeed_));
  ApplyBoth();
}
