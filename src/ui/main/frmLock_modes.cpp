// The six mode buttons: each sends its commands in a fixed order and sets the state the lock cycle acts on. A
// button pressed while an earlier one is still talking to the host wins: the earlier one then stops where it
// stands.
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "display/PlotScale.h"
#include "engine/LockCycle.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/LockLog.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmSweep.h"
#include <algorithm>
#include <cmath>

using namespace ActiveNMRAppInterface;

// What was down before the click, and which click this is.
struct frmLock::WereDown {
  explicit WereDown(Program& p)
      : program(p), press(++p.cycle.modeChanges), lock(p.record.ModeButtonDown[1] == 1),
        sweep(p.record.ModeButtonDown[2] == 1), hold(p.record.ModeButtonDown[3] == 1) {}
  bool lockOrHold() const { return lock || hold; }
  bool overtaken() const { return program.cycle.modeChanges != press; }
  Program& program;
  std::uint32_t press;
  bool lock, sweep, hold;
};

void frmLock::pressModeButton(int button) {
  Toolbar1.press(button);
  Toolbar1_ButtonClick(button);
}

void frmLock::Toolbar1_ButtonClick(int button) {
  const WereDown were(program_);
  if (program_.record.Testing) program_.record.DeltaTxPwr = 0;
  base::ignoringErrors([&] { HostSetLockedFlag(program_, 0); });
  if (were.overtaken()) return;
  bool completed = true;
  switch (button) {
  case ButtonOff:
    completed = modeOff(were);
    break;
  case ButtonLock:
    completed = modeLock(were);
    break;
  case ButtonSweep:
    completed = modeSweep(were);
    break;
  case ButtonHold:
    completed = modeHold(were);
    break;
  case ButtonAuto:
    completed = modeAuto(were);
    break;
  case ButtonPhase:
    completed = modePhase(were);
    break;
  default:
    break;
  }
  if (completed && !were.overtaken()) commonEnding();
}

void frmLock::commonEnding() {
  CycleState& cycle = program_.cycle;
  AutoLockState& autoLock = program_.autoLock;
  cycle.SweepTurnCount = 0;
  autoLock.AutoLockTrimTicks = 0;
  cycle.PeakLevel = 0;
  autoLock.NoiseThreshold = 0;
  // No search is left to steer: its marker goes, and its keys with it.
  autoLock.ThresholdShown = autoLock.PeakSearchActive = autoLock.SearchRestart = false;
  lblPkPwr.setVisible(false);
  lblSigThreshold.setVisible(false);
  if (program_.record.LockMode != kModeLock) program_.record.LockState = kNotInLock;
  showStatus();
  Picture1.setFocus();
}

bool frmLock::modeOff(const WereDown& were) {
  LockParameters& record = program_.record;
  Timer1.setEnabled(false);
  hsCenter.setEnabled(true);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeOff;
  if (record.PreviousLockMode == kModeLock && record.LockState == kLocked) recentreScrollBar();
  if (were.overtaken()) return false;
  LockModeOff(program_);
  if (were.overtaken()) return false;
  record.LockStatus = "OFF";
  if (were.sweep) shiftTxPower(SweepOffset::Remove);
  markDown(kModeOff);
  program_.autoLock.AutoLockTrim = kFalse;
  return true;
}

bool frmLock::modeLock(const WereDown& were) {
  LockParameters& record = program_.record;
  if (!were.lockOrHold()) beginLockPlot();
  selectFilter(record.LockHoldRxFilter);
  // The AutoLock mark stays once set, so every Lock after an AutoLock takes the sweep's offset off again.
  if (record.ModeButtonDown[kModeSweep] == 1 || record.ModeButtonDown[kModeAuto] == 1)
    shiftTxPower(SweepOffset::Remove);
  sendTypedTxPower();
  if (were.overtaken()) return false;
  markDown(kModeLock);
  ShowAutoReadouts(false);
  record.LockMode = kModeLock; // PreviousLockMode stays: AutoPhase returns to the mode before this one
  record.LockStatus = "HOLD";
  record.LockState = kJustEntered;
  Timer1.setEnabled(true);
  hsCenter.setEnabled(false);
  if (record.Initializing) return false;
  if (!were.lockOrHold()) PlotScale::SetupPlot(program_);
  sendSampleSettings();
  if (were.overtaken()) return false;
  ReadLockData(program_, program_.cycle.LockSample);
  if (were.overtaken()) return false;
  HoldAtField(program_, record.FieldCenter);
  vbLock_mod::deriveThresholds(program_, noiseOnEntry());
  if (were.overtaken()) return false;
  SendLoopConstants(program_);
  if (record.LogEnabled) LockLog::WriteLogHeader(program_);
  if (were.overtaken()) return false;
  LockModeOn(program_);
  return true;
}

bool frmLock::modeSweep(const WereDown& were) {
  LockParameters& record = program_.record;
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeSweep;
  record.LockStatus = "SWEEP";
  Timer1.setEnabled(true);
  hsCenter.setEnabled(true);
  const bool wasLocked = record.PreviousLockMode == kModeLock && record.LockState == kLocked;
  if (wasLocked || record.PreviousLockMode == kModeHold) recentreScrollBar();
  if (were.overtaken()) return false;
  beginPlot();
  if (!record.Testing) showImaginary(kFalse, false);
  selectFilter(record.SweepRxFilter);
  const auto& down = record.ModeButtonDown;
  if (down[kModeLock] == 1 || down[kModeHold] == 1 || down[kModeOff] == 1) shiftTxPower(SweepOffset::Add);
  sendTypedTxPower();
  if (were.overtaken()) return false;
  markDown(kModeSweep);
  program_.cycle.SweepTurnCount = 0;
  ShowAutoReadouts(true);
  if (record.Initializing) return false;
  PlotScale::SetupPlot(program_);
  sendSampleSettings();
  if (were.overtaken()) return false;
  LockModeSweep(program_);
  program_.autoLock.AutoLockTrim = kFalse;
  return true;
}

bool frmLock::modeHold(const WereDown& were) {
  LockParameters& record = program_.record;
  if (!were.lockOrHold()) beginLockPlot();
  selectFilter(record.LockHoldRxFilter);
  if (were.sweep) shiftTxPower(SweepOffset::Remove);
  sendTypedTxPower();
  if (were.overtaken()) return false;
  markDown(kModeHold);
  ShowAutoReadouts(false);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeHold;
  const bool wasLocked = record.PreviousLockMode == kModeLock && record.LockState == kLocked;
  if (wasLocked) ReadLockData(program_, program_.cycle.LockSample);
  if (were.overtaken()) return false;
  record.LockStatus = "HOLD";
  Timer1.setEnabled(true);
  hsCenter.setEnabled(true);
  if (wasLocked) moveScrollBarToField();
  if (record.Initializing) return false;
  if (!were.lockOrHold()) PlotScale::SetupPlot(program_);
  sendSampleSettings();
  if (were.overtaken()) return false;
  HoldAtField(program_, record.FieldCenter);
  HoldAtField(program_, record.FieldCenter); // twice: the hardware takes the field over on the second
  program_.autoLock.AutoLockTrim = kFalse;
  return true;
}

bool frmLock::modeAuto(const WereDown& were) {
  LockParameters& record = program_.record;
  frmControls& panel = program_.frmControls.get();
  panel.optBW[1].setValue(true);
  sendFilter(record.LockHoldRxFilter);
  ShowAutoReadouts(true);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeAuto;
  hsCenter.setEnabled(false);
  program_.cycle.SweepTurnCount = 0;
  SendLockPhase(program_);
  sendRxFilter();
  if (record.UseDefaultTxRx) useSolventDefaults();
  ::frmSweep& sweep = program_.frmSweep.get();
  sweep.cmbSweepSpeed.setText(base::numberText(record.AutoLockSweepSpeed));
  sweep.cmbSweepWidth.setText(base::numberText(record.AutoLockSweepWidth));
  SetAutoLockSweep();
  SampleLockData(program_);
  if (were.overtaken()) return false;
  const double noise = HostGetLockData(program_, 6);
  program_.autoLock.NoiseThreshold = base::roundHalfEven(std::abs(noise) * record.PeakThresholdFactor);
  if (were.overtaken()) return false;
  LockModeAuto(program_);
  beginAutoProcedures();
  Timer1.setEnabled(true);
  record.LockStatus = "Auto Locking...";
  markDown(kModeAuto, 4);
  return true;
}

bool frmLock::modePhase(const WereDown& were) {
  LockParameters& record = program_.record;
  ShowAutoReadouts(true);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModePhase;
  program_.cycle.SweepTurnCount = 0;
  sendSampleSettings();
  if (were.overtaken()) return false;
  LockModeAuto(program_);
  beginAutoProcedures();
  Timer1.setEnabled(true);
  hsCenter.setEnabled(true);
  record.LockStatus = "Auto Phasing...";
  program_.autoLock.AutoLockTrim = kFalse;
  // No button counts as down after AutoPhase: the next Sweep adds no offset, and the next Lock, Hold or Off
  // removes none.
  markDown(kModePhase);
  return true;
}

// A procedure left half-way must not leave its findings to the next run.
void frmLock::beginAutoProcedures() {
  program_.autoLock = AutoLockState{};
  AutoLockState& state = program_.autoLock;
  state.PhaseSetting = static_cast<float>(program_.record.LockPhase);
  state.PhaseStep = 45;
}

void frmLock::useSolventDefaults() {
  frmControls& panel = program_.frmControls.get();
  const int chosen = panel.cmbSolvents.listIndex();
  if (chosen < 0) return;
  const auto i = static_cast<std::size_t>(chosen);
  const SolventTables& tables = program_.solvents;
  if (tables.RxGainPresent) panel.vsRxGain.setValue(tables.RxGain[i]);
  if (tables.TxPowerPresent)
    panel.vsTxPwr.setValue(base::toInt32(2 * (program_.record.DeltaTxPwr + tables.TxPower[i])));
}

void frmLock::SetAutoLockSweep() {
  LockParameters& record = program_.record;
  ActiveNMRAppInterface::SetSweepSpeed(program_, record.AutoLockSweepSpeed);
  record.SweepWidth = record.AutoLockSweepWidth;
  record.SweepUpper = base::toInt32(record.FieldCenter + record.SweepWidth / 2.0);
  record.SweepLower = base::toInt32(record.FieldCenter - record.SweepWidth / 2.0);
  PlotScale::SetupPlot(program_);
  if (record.Initializing) return;
  HostSetLockField(program_, record.FieldCenter);
  HostSetLockSweepWidth(program_, record.SweepWidth);
}

// Sweep, phase and filter as the record has them, then one sample beside the line.
void frmLock::sendSampleSettings() {
  SendSweepSettings(program_);
  SendLockPhase(program_);
  sendRxFilter();
  SampleLockData(program_);
}

void frmLock::sendRxFilter() {
  const std::int16_t index = program_.record.RxFilterIndex;
  if (index < 0 || index > 5) base::raiseSubscript("RxFilterIndex");
  SetLockRxFilter(program_, program_.record.RxFilterBW[static_cast<std::size_t>(index)]);
}

// A choice outside 0 to 3 (test settings use -1) selects nothing and sends nothing.
void frmLock::sendFilter(std::int16_t choice) {
  if (choice >= 0 && choice <= 3)
    SetLockRxFilter(program_, program_.record.RxFilterBW[static_cast<std::size_t>(choice)]);
}

void frmLock::selectFilter(std::int16_t choice) {
  if (choice >= 0 && choice <= 3)
    program_.frmControls->optBW[static_cast<std::size_t>(choice)].setValue(true);
  sendFilter(choice);
}

void frmLock::shiftTxPower(SweepOffset direction) {
  LockParameters& record = program_.record;
  frmControls& panel = program_.frmControls.get();
  const double sign = direction == SweepOffset::Add ? 1 : -1;
  const double shifted = StrToFloatVal(panel.txtTxPwr.text()) + sign * record.DeltaTxPwr;
  panel.txtTxPwr.setText(base::numberText(shifted));
  if (record.DeltaTxPwr < record.StartDeltaTxPwr) program_.beep(); // the sweep has less power than configured
  const double power = StrToFloatVal(panel.txtTxPwr.text());
  if (power > kMaxTxPower || power < 0) {
    program_.beep();
    panel.txtTxPwr.setFocus();
    return;
  }
  panel.vsTxPwr.setValue(base::toInt32(power * 2));
  record.TxPower = power;
}

void frmLock::sendTypedTxPower() {
  HostSetLockTxPower(program_, StrToFloatVal(program_.frmControls->txtTxPwr.text()));
}

// The noise word is an unsigned 16-bit word; without noise the lock goes on with the smallest thresholds.
std::int32_t frmLock::noiseOnEntry() {
  double word = program_.cycle.LockSample[6];
  if (word < 0) word += 65536;
  if (word > 0) return base::toInt32(std::sqrt(word));
  program_.platform.dialogs().message("Warning - low noise level", program_.platform.version().title,
                                      ports::Buttons::Ok, ports::Icon::Exclamation);
  return 1;
}

void frmLock::beginPlot() {
  Picture1.cls();
  PlotScale::RedrawPlotBackground(program_);
}

void frmLock::beginLockPlot() {
  beginPlot();
  if (!program_.record.Testing) showImaginary(kTrue, true);
}

void frmLock::showImaginary(std::int16_t shown, bool checked) {
  program_.record.ShowImag = shown;
  mnuPrefs(2).setChecked(checked);
}

void frmLock::ShowAutoReadouts(bool show) {
  for (std::size_t i = 0; i < 3; ++i) Label2[i].setVisible(show);
}

void frmLock::markDown(int mode, int last) {
  for (int k = 0; k <= last; ++k)
    program_.record.ModeButtonDown[static_cast<std::size_t>(k)] = k == mode ? 1 : 0;
}

void frmLock::recentreScrollBar() {
  ReadLockData(program_, program_.cycle.LockSample);
  moveScrollBarToField();
}

// The bar's own range is as wide as the field's: a field word past its end must not keep the lock from
// switching.
void frmLock::moveScrollBarToField() {
  const double position = base::roundHalfEven(program_.cycle.LockSample[0] / 4.0);
  hsCenter.setValue(static_cast<int>(std::clamp<double>(position, hsCenter.minimum(), hsCenter.maximum())));
}
