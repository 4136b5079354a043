#include "ui/panels/frmTuning.h"
#include "base/NumberText.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "display/LockKeys.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"

namespace {

constexpr int kEnter = 13;

class Busy {
 public:
  explicit Busy(bool& busy) : busy_(busy) { busy_ = true; }
  ~Busy() { busy_ = false; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  bool& busy_;
};

// A preset's place in the tables.
std::size_t presetAt(const LockParameters& record, int n) {
  if (n < 0 || n >= static_cast<int>(record.LoopSetP.size()))
    base::raiseSubscript("Loop preset " + std::to_string(n));
  return static_cast<std::size_t>(n);
}

float loopConstant(const controls::TextBox& box) {
  return typedNumber(box, [&] { return base::toSingle(StrToFloatVal(box.text())); });
}

std::string presetLine(const LockParameters& record, int n) {
  const std::size_t at = presetAt(record, n);
  return base::numberText(n) + "  {" + base::numberText(record.LoopSetP[at]) + "/" +
         base::numberText(record.LoopSetI[at]) + "/" + base::numberText(record.LoopSetD[at]) + "}";
}

} // namespace

frmTuning::frmTuning(Program& program) : Form(program.desktop, "frmTuning"), program_(program) {
  design();
  bindEvents();
}

void frmTuning::bindEvents() {
  lstLockChar.Click = [this] { lstLockChar_Click(); };
  bindBox(txtLoop_P);
  bindBox(txtLoop_I);
  bindBox(txtLoop_D);
  mnuMain.Click = [this](int) { undo(); };
}

void frmTuning::bindBox(controls::TextBox& box) {
  box.LostFocus = [this, &box] { txtLoop_LostFocus(box); };
  box.KeyPress = [this, &box](int& key) {
    if (key != kEnter) return;
    key = 0;
    txtLoop_LostFocus(box);
  };
}

void frmTuning::Form_Load() {
  const LockParameters& record = program_.record;
  const Busy filling(busy_);
  placePanel(program_, *this, kTuningPanel);
  snapshot_ = {record.LoopP, record.LoopI, record.LoopD, record.ActiveSet};
  stay_on_top::SetStayOnTop(*this, record.StayOnTop);
  fillPresets();
  lstLockChar.setListIndex(record.ActiveSet);
  // The values in use may differ from the preset they once came from.
  showLoop(record.LoopP, record.LoopI, record.LoopD);
  program_.panels.TuningOpen = kTrue;
}

void frmTuning::fillPresets() {
  for (int n = 0; n < program_.record.NSets; ++n) lstLockChar.addItem(presetLine(program_.record, n));
}

void frmTuning::showLoop(float p, float i, float d) {
  txtLoop_P.setText(base::numberText(p));
  txtLoop_I.setText(base::numberText(i));
  txtLoop_D.setText(base::numberText(d));
}

void frmTuning::Form_Unload() { panelClosed(program_, *this, kTuningPanel); }

// A threshold key stops the lock timer; letting it go starts it again, whichever window has the keyboard.
void frmTuning::Form_KeyUp(std::int16_t keyCode, std::int16_t shift) {
  program_.frmLock->Form_KeyUp(keyCode, shift);
}

void frmTuning::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  HandleLockKey(program_, keyCode, shift);
}

void frmTuning::Apply() {
  const float p = loopConstant(txtLoop_P);
  const float i = loopConstant(txtLoop_I);
  const float d = loopConstant(txtLoop_D);
  program_.record.LoopP = p;
  program_.record.LoopI = i;
  program_.record.LoopD = d;
  ActiveNMRAppInterface::SetLockLoop(program_, p, i, d);
}

void frmTuning::lstLockChar_Click() {
  LockParameters& record = program_.record;
  const std::size_t at = presetAt(record, lstLockChar.listIndex());
  record.ActiveSet = static_cast<std::int16_t>(at);
  txtLoop_P.setText(base::numberText(record.LoopSetP[at]));
  txtLoop_I.setText(base::numberText(record.LoopSetI[at]));
  txtLoop_D.setText(base::numberText(record.LoopSetD[at]));
  if (!busy_) Apply();
}

void frmTuning::txtLoop_LostFocus(controls::TextBox& box) {
  if (base::isNumeric(box.text())) {
    Apply();
    return;
  }
  program_.beep();
  box.setFocus();
}

// Restores the values and, unlike the NMR controls panel's undo, sends them.
void frmTuning::undo() {
  {
    const Busy restoring(busy_);
    lstLockChar.setListIndex(snapshot_.ActiveSet);
    showLoop(snapshot_.LoopP, snapshot_.LoopI, snapshot_.LoopD);
  }
  Apply();
}
