#include "ui/panels/frmAmpl.h"

void frmAmpl::design() {
  setCaption("Vantrel Lock - Display Controls");
  mnuMain.add(0, "&Undo", nullptr); // before the size: the menu bar is part of it
  setInnerSize({4200, 1545});

  fraDisplay.setCaption("Display");
  fraDisplay.move({120, 120, 3960, 1305});
  lblAmpl.setCaption("&Amplitude (up/dn)");
  lblAmpl.move({180, 398, 2100, 210});
  txtDispAmpl.move({2400, 330, 1110, 345});
  txtDispAmpl.setAccessibleName("Display amplitude, 1 to 16");
  txtDispAmpl.setTip("1 to 16: the plot's full scale is 2 to this power");
  txtDispAmpl.setTabIndex(0);
  updDispAmpl.move({3510, 330, 270, 345});
  updDispAmpl.setRange(16, 1, 1); // its up arrow lowers the number: a smaller full scale, a taller signal
  updDispAmpl.setAccessibleName("Step the display amplitude");

  lblOffset.setCaption("&Offset % (shift-up/dn)");
  lblOffset.move({180, 863, 2100, 210});
  txtDispOffset.move({2400, 795, 1110, 345});
  txtDispOffset.setAccessibleName("Display offset in percent, -100 to 100");
  txtDispOffset.setTip("-100 to 100 percent of full scale, in steps of 25");
  txtDispOffset.setTabIndex(1);
  updDispOffset.move({3510, 795, 270, 345});
  updDispOffset.setRange(-100, 100, 25);
  updDispOffset.setAccessibleName("Step the display offset");
}
