#include "ui/panels/frmLevel.h"
#include "base/NumberText.h"
#include "core/Program.h"
#include "ui/main/frmLock.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"

namespace {
constexpr int kShowLockLevel = 5; // the meter's item in mnuPrefs
}

frmLevel::frmLevel(Program& program)
    : Form(program.desktop, "frmLevel", {.standsAlone = true}), program_(program) {
  design();
  bindEvents();
}

void frmLevel::bindEvents() {
  txtLockLevel.Change = [this] { txtLockLevel_Change(); };
  txtLockLevel.GotFocus = [this] { txtLockLevel_GotFocus(); };
}

void frmLevel::Form_Load() {
  stay_on_top::SetStayOnTop(*this, program_.record.StayOnTop);
  program_.panels.LevelOpen = kTrue;
}

void frmLevel::Form_Unload() {
  if (frmLock* const main = program_.frmLock.ifLoaded()) main->mnuPrefs(kShowLockLevel).setChecked(false);
  program_.record.ShowLockLevel = kFalse;
  program_.panels.LevelOpen = kFalse;
}

void frmLevel::txtLockLevel_Change() {
  const float level = typedNumber(txtLockLevel, [this] { return base::toSingle(txtLockLevel.text()); });
  while (level > fullScale_) fullScale_ = static_cast<float>(fullScale_ * 1.4);
  showScale();
  picBkgnd.setHeight((1 - level / fullScale_) * picRed.scaleHeight());
}

void frmLevel::showScale() {
  const double full = fullScale_;
  lblScale[0].setCaption(base::fixedText(full, 1, 0));
  lblScale[1].setCaption(base::fixedText(full / 2, 1, 0));
  lblScale[2].setCaption("0");
}

// The level is not for typing: the keyboard goes back to the main window.
void frmLevel::txtLockLevel_GotFocus() {
  frmLock* const main = program_.frmLock.ifLoaded();
  if (main == nullptr) return;
  controls::Control& home = main->Picture1.canTakeFocus() ? static_cast<controls::Control&>(main->Picture1)
                                                          : static_cast<controls::Control&>(main->Toolbar1);
  home.setFocus();
}
