#include "ui/panels/frmTuning.h"

void frmTuning::design() {
  setCaption("Vantrel Lock - Control Loop Tuning");
  mnuMain.add(0, "&Undo", nullptr); // before the size: the menu bar is part of it
  setInnerSize({5520, 2310});

  fraPresets.setCaption("Loop Parameters - Pre-Set Selections");
  fraPresets.move({120, 120, 5280, 840});
  lstLockChar.move({180, 330, 4920, 345});
  lstLockChar.setAccessibleName("Loop parameter preset");
  lstLockChar.setTip("Presets of the settings file: number {P/I/D}");
  lstLockChar.setTabIndex(0);

  fraInUse.setCaption("Loop Parameters in Use");
  fraInUse.move({120, 1080, 5280, 1110});
  struct Column {
    controls::Label& label;
    const char* caption;
    controls::TextBox& box;
    const char* name;
  };
  const Column columns[] = {{lblLoop_P, "&Proportional (P)", txtLoop_P, "Proportional loop constant"},
                            {lblLoop_I, "&Integral (I)", txtLoop_I, "Integral loop constant"},
                            {lblLoop_D, "&Derivative (D)", txtLoop_D, "Derivative loop constant"}};
  float left = 180;
  int tab = 1;
  for (const Column& column : columns) {
    column.label.setCaption(column.caption);
    column.label.move({left, 330, 1560, 210});
    column.box.move({left, 600, 1560, 345});
    column.box.setAccessibleName(column.name);
    column.box.setTip("Any number; Enter sends all three");
    column.box.setTabIndex(tab++);
    left += 1560 + 120;
  }
}
