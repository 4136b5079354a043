// The field centre: scroll bar, typed value, and the plot's pop-up menu.
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "display/PlotScale.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ports/WindowSystem.h"
#include "ui/main/frmLock.h"
#include <cmath>

namespace {
constexpr int kDacPerStep = 4;        // one scroll step
constexpr double kMaxCentre = 131068; // DAC units, either side
} // namespace

void frmLock::hsCenter_Scroll() {
  const std::string text = base::numberText(hsCenter.value() * kDacPerStep);
  txtCenter.setText(text);
  Label2[2].setCaption(text);
}

void frmLock::hsCenter_Change() {
  LockParameters& record = program_.record;
  const std::int32_t centre = hsCenter.value() * kDacPerStep;
  record.FieldCenter = centre;
  txtCenter.setText(base::numberText(centre));
  record.FieldCenterNow = centre;
  Label2[2].setCaption(base::numberText(centre));
  record.SweepUpper = base::toInt32(record.SweepWidth / 2.0 + centre);
  record.SweepLower = base::toInt32(centre - record.SweepWidth / 2.0);
  if (record.Initializing) return;
  Timer1.setEnabled(false);
  record.PendingFieldCenter = kTrue;
  record.PendingControl = kTrue;
}

void frmLock::hsCenterChange() {
  if (program_.record.LockMode == kModeHold) {
    ActiveNMRAppInterface::HoldAtField(program_, program_.record.FieldCenter);
    return;
  }
  ActiveNMRAppInterface::SendSweepSettings(program_);
  PlotScale::SetupPlot(program_);
}

// While the bar has the focus, the centre label is a read-out to be seen from the sample changer.
void frmLock::hsCenter_GotFocus() {
  controls::Label& readout = Label2[2];
  readoutVisible_ = flag(readout.visible());
  readoutFontSize_ = base::toInt16(readout.font().points);
  readout.setOpaque(true);
  readout.setFont({readoutFontSize_ * 4.0F, readout.font().bold});
  readout.fitText();
  readout.setVisible(true);
}

void frmLock::hsCenter_LostFocus() {
  controls::Label& readout = Label2[2];
  readout.setFont({static_cast<float>(readoutFontSize_), readout.font().bold});
  readout.setOpaque(false);
  readout.fitText();
  readout.setLeft(Picture1.toTwipsX(Picture1.scaleLeft() + Picture1.scaleWidth() / 2));
}

void frmLock::txtCenter_KeyPress(int& key) {
  if (key != 13) return;
  key = 0;
  txtCenter_LostFocus();
}

void frmLock::txtCenter_LostFocus() {
  if (!base::isNumeric(txtCenter.text())) {
    program_.beep();
    txtCenter.setFocus();
    return;
  }
  const double typed = base::toDouble(txtCenter.text());
  if (std::abs(typed) > kMaxCentre) {
    program_.platform.dialogs().message("Input New Field Center overflow! Retry.", "Fatal Error",
                                        ports::Buttons::Ok, ports::Icon::None);
    askNewCentre();
    return;
  }
  hsCenter.setValue(base::toInt16(base::Int(typed / kDacPerStep)));
  txtCenter.setText(
      base::numberText(hsCenter.value() * kDacPerStep)); // shows the multiple of 4 that was taken
}

void frmLock::typeCentre(const std::string& text) {
  txtCenter.setText(text);
  txtCenter_LostFocus();
}

void frmLock::Picture1_MouseDown(controls::MouseButton button, int, float x, float) {
  clickX_ = std::trunc(x);
  if (button != controls::MouseButton::Right) return;
  mnuPicture1Popup(1).setCaption("Reset &Center to " + base::numberText(clickX_));
  desktop().windows().popupMenu(*this, mnuMenuBar(6));
}

void frmLock::mnuPicture1Popup_Click(int index) {
  if (index == 0) beginPlot();
  if (index == 1) typeCentre(base::numberText(clickX_));
  if (index == 2) askNewCentre();
  if (index == 3) typeCentre("0");
}

void frmLock::askNewCentre() {
  for (;;) {
    const std::string answer =
        program_.platform.dialogs().input("New Field Center (DAC Units)", "Vantrel Lock", txtCenter.text());
    if (answer.empty()) return;
    if (!base::isNumeric(answer)) continue;
    typeCentre(answer);
    return;
  }
}
