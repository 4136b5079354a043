// The main window's design values. Twips; 120 twips are 8 pixels at 96 DPI.
#include "core/LockParameters.h"
#include "ui/main/frmLock.h"

namespace {
constexpr float kToolbarHeight = 840, kStatusHeight = 345, kBarHeight = 255;
constexpr float kCentreColumn = 1080, kBox = 345, kText = 210, kGap = 60;
} // namespace

void frmLock::design() {
  setCaption("Lock Control");
  setInnerSize({9000, 6600});

  Toolbar1.move({0, 0, innerWidth() - kCentreColumn, kToolbarHeight});
  Toolbar1.setAccessibleName("Lock mode");
  lblCenter.setCaption("&Field centre");
  txtCenter.setText("0");
  txtCenter.setTip("Field centre in DAC units, -131068 to 131068");
  txtCenter.setAccessibleName("Field centre in DAC units");
  lblCenterUnit.setVisible(false);

  const float plot = innerHeight() - kToolbarHeight - kStatusHeight - kBarHeight;
  Picture1.move({0, kToolbarHeight, innerWidth(), plot});
  Picture1.setBackColour(controls::rgb(0, 0, 0));
  Picture1.setAccessibleName("Lock signal plot");
  for (controls::Label& label : Label2) label.setForeColour(controls::rgb(224, 224, 224));
  lblPkPwr.setCaption("Peak Level        =");
  lblSigThreshold.setCaption("Peak Threshold =");
  float top = 480;
  for (controls::Label* label : {&lblPkPwr, &lblSigThreshold}) {
    label->setForeColour(controls::rgb(0, 255, 0));
    label->setOpaque(true);
    label->setVisible(false);
    label->move({1440, top, 2700, kText});
    top += 255;
  }

  hsCenter.setRange(-32767, 32767, 16, 512);
  hsCenter.move({0, kToolbarHeight + plot, innerWidth(), kBarHeight});
  hsCenter.setAccessibleName("Field centre");
  hsCenter.setTip("Field centre");
  StatusBar1.move({0, innerHeight() - kStatusHeight, innerWidth(), kStatusHeight});
  StatusBar1.panelWidths = {1200, 1080, 1080};
  StatusBar1.setAccessibleName("Lock status");
  layOutCentreRow();

  Picture1.setTabIndex(0);
  Toolbar1.setTabIndex(1);
  txtCenter.setTabIndex(2);
  hsCenter.setTabIndex(3);
}

void frmLock::layOutCentreRow() {
  const float left = innerWidth() - kCentreColumn;
  Toolbar1.setWidth(left);
  lblCenter.move({left + kGap, 120, kCentreColumn - 2 * kGap, kText});
  txtCenter.move({left + kGap, 120 + kText + 30, kCentreColumn - 2 * kGap, kBox});
  StatusBar1.move({0, innerHeight() - kStatusHeight, innerWidth(), kStatusHeight});
}
