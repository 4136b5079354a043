#include "ui/panels/panel_window.h"
#include "core/Program.h"
#include "ui/main/frmLock.h"

void placePanel(const Program& program, controls::Form& form, const PanelWindow& panel) {
  const LockParameters& record = program.record;
  if (record.*panel.left == -1.0F)
    form.centreOnScreen();
  else
    form.move({record.*panel.left, record.*panel.top, form.width(), form.height()});
}

void panelClosed(Program& program, const controls::Form& form, const PanelWindow& panel) {
  // Only a main window that is there: touching it would load it while the program ends.
  if (frmLock* const main = program.frmLock.ifLoaded()) main->mnuControls(panel.menuItem).setChecked(false);
  program.panels.*panel.shown = kFalse;
  program.record.*panel.top = form.top();
  program.record.*panel.left = form.left();
  program.panels.*panel.open = kFalse;
}
