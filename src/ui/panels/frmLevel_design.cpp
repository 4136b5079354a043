#include "ui/panels/frmLevel.h"

namespace {
constexpr float kBarHeight = 4320;
}

// Made to be read from across the room: a broad bar on a dark ground, and the level as a large figure.
void frmLevel::design() {
  setCaption("Lock");
  setInnerSize({2760, 5700});

  picRed.move({180, 180, 1260, kBarHeight});
  picRed.setScale(0, 0, 1260, kBarHeight);
  picRed.setBackColour(controls::rgb(224, 0, 0));
  picRed.setAccessibleName("Lock level bar");
  picBkgnd.move({0, 0, 1260, kBarHeight});
  picBkgnd.setBackColour(controls::rgb(32, 32, 32));
  picBkgnd.setAccessibleName("Lock level bar, empty part");

  const float tops[] = {180, 180 + kBarHeight / 2 - 210, 180 + kBarHeight - 420};
  for (std::size_t i = 0; i < lblScale.size(); ++i) {
    lblScale[i].setFont({.points = 14, .bold = false});
    lblScale[i].move({1560, tops[i], 1080, 420});
  }
  showScale();

  txtLockLevel.setFont({.points = 36, .bold = true});
  txtLockLevel.move({180, 4620, 2400, 900});
  txtLockLevel.setAccessibleName("Lock level");
  txtLockLevel.setText("0");
  txtLockLevel.setTabIndex(0);
}
