#include "ui/panels/frmAbout.h"

void frmAbout::design() {
  setInnerSize({5400, 3285});

  lblTitle.setFont({.points = 14, .bold = true});
  lblTitle.move({180, 180, 5040, 420});
  lblVersion.move({180, 660, 5040, 210});
  lblDescription.move({180, 990, 5040, 480}); // two lines
  lblDisclaimer.move({180, 1590, 5040, 1050});

  cmdSysInfo.setCaption("&System Info...");
  cmdSysInfo.move({2100, 2790, 1500, 375});
  cmdSysInfo.setAccessibleName("System information");
  cmdSysInfo.setTip("Starts the operating system's system information tool");
  cmdSysInfo.setTabIndex(1);
  cmdOK.setCaption("OK");
  cmdOK.move({3720, 2790, 1500, 375});
  cmdOK.setAccessibleName("OK");
  cmdOK.isDefault = true;
  cmdOK.isCancel = true;
  cmdOK.setTabIndex(0);
}
