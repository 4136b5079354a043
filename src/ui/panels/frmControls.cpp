#include "ui/panels/frmControls.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "core/vbLock_mod.h"
#include "display/LockKeys.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"
#include <cmath>

using namespace ActiveNMRAppInterface;

frmControls::frmControls(Program& program) : Form(program.desktop, "frmControls"), program_(program) {
  design();
  bindEvents();
}

void frmControls::bindEvents() {
  cmbSolvents.Click = [this] { cmbSolvents_Click(); };
  vsTxPwr.Change = [this] { vsTxPwr_Change(); };
  vsTxPwr.Scroll = [this] { vsTxPwr_Scroll(); };
  vsRxGain.Change = [this] { vsRxGain_Change(); };
  vsRxGain.Scroll = [this] { txtRxGain.setText(base::numberText(vsRxGain.value())); };
  vsPhase.Change = [this] { vsPhase_Change(); };
  vsPhase.Scroll = [this] { txtPhase.setText(base::numberText(vsPhase.value())); };
  bindTyped(txtTxPwr, &frmControls::txtTxPwr_LostFocus);
  bindTyped(txtRxGain, &frmControls::txtRxGain_LostFocus);
  bindTyped(txtPhase, &frmControls::txtPhase_LostFocus);
  bindTyped(txtSolventPPM, &frmControls::txtSolventPPM_LostFocus);
  bindTyped(txtLockFreq, &frmControls::txtLockFreq_LostFocus);
  for (std::size_t i = 0; i < optBW.size(); ++i)
    optBW[i].Click = [this, i] { optBW_Click(static_cast<int>(i)); };
  Text1.Change = [this] { Text1_Change(); };
  mnuMain.Click = [this](int index) { mnuMain_Click(index); };
}

// Enter counts as leaving the box.
void frmControls::bindTyped(controls::TextBox& box, void (frmControls::*lostFocus)()) {
  box.LostFocus = [this, lostFocus] { (this->*lostFocus)(); };
  box.KeyPress = [this, lostFocus](int& key) {
    if (key != 13) return;
    key = 0;
    (this->*lostFocus)();
  };
}

void frmControls::Form_Load() {
  LockParameters& record = program_.record;
  loading_ = true;
  placePanel(program_, *this, kControlsPanel);
  txtTxPwr.setText(base::numberText(record.TxPower));
  snapshot_ = {record.TxPower,    double(record.RxGain), double(record.LockPhase), record.Frequency,
               record.SolventPPM, record.LockSolvent,    record.RxFilterIndex};
  stay_on_top::SetStayOnTop(*this, record.StayOnTop);
  txtSolventPPM.setText(base::numberText(record.SolventPPM));
  txtLockFreq.setText(base::numberText(record.Frequency));
  showHardwareValues();
  SetupSolventList();
  filterOption().setValue(true);
  loading_ = false;
  program_.panels.ControlsOpen = kTrue;
}

void frmControls::Form_Unload() { panelClosed(program_, *this, kControlsPanel); }

// A threshold key stops the lock timer; letting it go starts it again, whichever window has the keyboard.
void frmControls::Form_KeyUp(std::int16_t keyCode, std::int16_t shift) {
  program_.frmLock->Form_KeyUp(keyCode, shift);
}

void frmControls::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  HandleLockKey(program_, keyCode, shift);
}

// A value that its bar cannot show is named as the settings file has it.
void frmControls::showHardwareValues() {
  LockParameters& record = program_.record;
  const auto show = [this](controls::ScrollBar& bar, const char* key, const std::string& value,
                           auto position) {
    try {
      bar.setValue(position());
    } catch (const base::RuntimeError& error) {
      throw base::RuntimeError(error.number, error.text,
                               vbLock_mod::settingName(program_, "Hardware", key, value));
    }
  };
  const std::string phase = base::numberText(record.LockPhase);
  if (record.LockPhase > 180) record.LockPhase -= 360; // the file may hold 0..360, the panel shows -180..180
  show(vsPhase, "LockPhase", phase, [&] { return record.LockPhase; });
  show(vsTxPwr, "TxPower", base::numberText(record.TxPower),
       [&] { return base::toInt32(record.TxPower * 2); });
  show(vsRxGain, "RxGain", base::numberText(record.RxGain), [&] { return record.RxGain; });
}

controls::OptionButton& frmControls::filterOption() {
  const auto index = static_cast<std::size_t>(program_.record.RxFilterIndex);
  if (index >= optBW.size())
    base::raiseSubscript(vbLock_mod::settingName(program_, "Hardware", "RxFilterIndex",
                                                 base::numberText(program_.record.RxFilterIndex)));
  return optBW[index];
}

void frmControls::refuse(controls::Control& box) {
  program_.beep();
  box.setFocus();
}

void frmControls::changed(std::int16_t& pending) {
  if (loading_) return;
  program_.frmLock->Timer1.setEnabled(false);
  pending = kTrue;
  program_.record.PendingControl = kTrue;
}

void frmControls::vsTxPwr_Change() {
  vsTxPwr_Scroll();
  changed(program_.record.PendingTxPower);
}

void frmControls::vsTxPwr_Scroll() {
  txtTxPwr.setText(base::fixedText(vsTxPwr.value() / 2.0, 1, 1));
  program_.record.TxPower = StrToFloatVal(txtTxPwr.text());
}

void frmControls::vsRxGain_Change() {
  txtRxGain.setText(base::numberText(vsRxGain.value()));
  program_.record.RxGain = base::toInt32(base::leadingNumber(txtRxGain.text()));
  changed(program_.record.PendingRxGain);
}

void frmControls::vsPhase_Change() {
  const int value = vsPhase.value();
  txtPhase.setText(base::numberText(value));
  program_.record.LockPhase = value < 0 ? value + 360 : value;
  changed(program_.record.PendingPhase);
}

// A change in the middle of a sweep disturbs it: take a sample beside the line and start the sweep again.
void frmControls::rearmSweep() {
  if (program_.record.LockMode != kModeSweep) return;
  const std::uint32_t entered = program_.cycle.modeChanges;
  SampleLockData(program_);
  if (program_.cycle.modeChanges == entered) LockModeSweep(program_);
}

void frmControls::vsTxPwrChange() {
  HostSetLockTxPower(program_, program_.record.TxPower);
  rearmSweep();
  recomputeSweepOffset();
}

void frmControls::vsRxGainChange() {
  SetLockRxGain(program_, program_.record.RxGain);
  rearmSweep();
}

void frmControls::vsPhaseChange() {
  SendLockPhase(program_);
  rearmSweep();
}

// The power and the sweep's offset together stay within 0 to 63.5; only a reload brings the configured offset
// back.
void frmControls::recomputeSweepOffset() {
  LockParameters& record = program_.record;
  if (program_.frmLock->Toolbar1.isPressed(frmLock::ButtonSweep)) {
    if (record.TxPower - record.DeltaTxPwr < 0) record.DeltaTxPwr = record.TxPower;
  } else if (record.TxPower + record.DeltaTxPwr > kMaxTxPower) {
    record.DeltaTxPwr = kMaxTxPower - record.TxPower;
  }
}

void frmControls::txtTxPwr_LostFocus() {
  LockParameters& record = program_.record;
  if (!base::isNumeric(txtTxPwr.text())) return refuse(txtTxPwr);
  const double power = StrToFloatVal(txtTxPwr.text());
  if (power > kMaxTxPower || power < 0) {
    refuse(txtTxPwr);
    txtTxPwr.setText(base::numberText(record.TxPower));
    return;
  }
  record.TxPower = power;
  vsTxPwr.setValue(base::toInt32(power * 2));
  recomputeSweepOffset();
}

void frmControls::txtRxGain_LostFocus() {
  if (!base::isNumeric(txtRxGain.text())) return refuse(txtRxGain);
  const double gain = StrToFloatVal(txtRxGain.text());
  if (gain > vsRxGain.minimum() || gain < vsRxGain.maximum()) return refuse(txtRxGain);
  vsRxGain.setValue(base::toInt32(gain));
}

void frmControls::txtPhase_LostFocus() {
  if (!base::isNumeric(txtPhase.text())) return refuse(txtPhase);
  double phase = StrToFloatVal(txtPhase.text());
  if (phase > 180) phase -= 360;
  if (phase < -180) phase += 360;
  const double whole = base::roundHalfEven(phase);
  if (whole > 180 || whole < -180) return refuse(txtPhase); // more than a turn away
  vsPhase.setValue(static_cast<int>(whole));
}

void frmControls::txtLockFreq_LostFocus() {
  const double typed = StrToFloatVal(txtLockFreq.text()); // not a number: 0
  if (!std::isfinite(typed)) base::raiseOverflow(txtLockFreq.accessibleName());
  program_.record.Frequency = typed;
  SetLockFrequency(program_, program_.record.Frequency);
}

void frmControls::optBW_Click(int index) {
  if (loading_) return;
  program_.record.RxFilterIndex = static_cast<std::int16_t>(index);
  SetLockRxFilter(program_, program_.record.RxFilterBW[static_cast<std::size_t>(index)]);
}

void frmControls::Text1_Change() {
  if (base::isNumeric(Text1.text())) program_.record.RxFilterBW[3] = StrToFloatVal(Text1.text());
}

void frmControls::mnuMain_Click(int index) {
  if (index == 0) undo();
  if (index == 20) {
    vbLock_mod::SaveLockSettings(program_);
    SetupSolventList();
  }
}

// Restores panel and record only: the hardware keeps what it has until the next change.
void frmControls::undo() {
  LockParameters& record = program_.record;
  loading_ = true;
  record.TxPower = snapshot_.TxPower;
  record.RxGain = base::toInt32(snapshot_.RxGain);
  record.LockPhase = base::toInt32(snapshot_.LockPhase);
  record.Frequency = snapshot_.Frequency;
  record.SolventPPM = snapshot_.SolventPPM;
  record.LockSolvent = snapshot_.LockSolvent;
  record.RxFilterIndex = snapshot_.RxFilterIndex;
  txtSolventPPM.setText(base::numberText(record.SolventPPM));
  txtLockFreq.setText(base::numberText(record.Frequency));
  showHardwareValues();
  cmbSolvents.setText(record.LockSolvent);
  filterOption().setValue(true);
  loading_ = false;
}
