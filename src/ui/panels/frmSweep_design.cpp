#include "ui/panels/frmSweep.h"

void frmSweep::design() {
  setCaption("Vantrel Lock - Sweep Controls");
  mnuMain.add(0, "&Undo", nullptr); // before the size: the menu bar is part of it
  setInnerSize({4800, 1545});

  fraSweep.setCaption("Sweep Control");
  fraSweep.move({120, 120, 4560, 1305});
  struct Row {
    controls::Label& label;
    const char* caption;
    controls::ComboBox& box;
    const char* name;
    controls::Label& unit;
    const char* unitCaption;
  };
  const Row rows[] = {
      {lblWidth, "&Width", cmbSweepWidth, "Sweep width in DAC units", lblWidthUnit, "DAC units"},
      {lblSpeed, "&Speed", cmbSweepSpeed, "Sweep speed in DAC units per second", lblSpeedUnit,
       "DAC units/s"}};
  float top = 330;
  int tab = 0;
  for (const Row& row : rows) {
    row.label.setCaption(row.caption);
    row.label.move({180, top + 68, 840, 210});
    row.box.move({1080, top, 1680, 345});
    row.box.setAccessibleName(row.name);
    row.box.setTip(std::string(row.name) + ": any whole number");
    row.box.setTabIndex(tab++);
    row.unit.setCaption(row.unitCaption);
    row.unit.move({2880, top + 68, 1500, 210});
    top += 345 + 120;
  }
}
