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
  // Runs the steps in order, each of which may let a newer press in; false as soon as one has.
  template <class... Step> bool steps(Step&&... step) const { return ((step(), !overtaken()) && ...); }
  Program& program;
  std::uint32_t press;
  bool lock, sweep, hold;
};

// No tick starts before a mode change is complete: it would judge the new mode with the old one's state.
struct frmLock::Changing {
  explicit Changing(int& count) : running(count) { ++running; }
  ~Changing() { --running; }
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;
  int& running;
};

void frmLock::pressModeButton(int button) {
  Toolbar1.press(button);
  Toolbar1_ButtonClick(button);
}

void frmLock::Toolbar1_ButtonClick(int button) {
  const WereDown were(program_);
  const Changing changing(changingMode_);
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
  if (record.PreviousLockMode == kModeLock && record.LockState == kLocked && !recentreScrollBar(were))
    return false;
  if (!were.steps([&] { LockModeOff(program_); })) return false;
  record.LockStatus = "OFF";
  if (were.sweep) shiftTxPower(SweepOffset::Remove);
  markDown(kModeOff);
  program_.autoLock.AutoLockTrim = kFalse;
  return true;
}

bool frmLock::modeLock(const WereDown& were) {
  LockParameters& record = program_.record;
  if (!were.lockOrHold()) beginLockPlot();
  if (!selectFilter(were, record.LockHoldRxFilter)) return false;
  // The AutoLock mark stays once set, so every Lock after an AutoLock takes the sweep's offset off again.
  if (record.ModeButtonDown[kModeSweep] == 1 || record.ModeButtonDown[kModeAuto] == 1)
    shiftTxPower(SweepOffset::Remove);
  markDown(kModeLock); // with the offset: a press that overtakes this one must find both as they are now
  if (!were.steps([&] { sendTypedTxPower(); })) return false;
  ShowAutoReadouts(false);
  record.LockMode = kModeLock; // PreviousLockMode stays: AutoPhase returns to the mode before this one
  record.LockStatus = "HOLD";
  record.LockState = kJustEntered;
  startTimer();
  hsCenter.setEnabled(false);
  if (record.Initializing) return false;
  if (!were.lockOrHold()) PlotScale::SetupPlot(program_);
  if (!sendSampleSettings(were)) return false;
  std::int32_t noise = 1;
  const bool measured =
      were.steps([&] { ReadLockData(program_, program_.cycle.LockSample); },
                 [&] { HoldAtField(program_, record.FieldCenter); }, [&] { noise = noiseOnEntry(); });
  if (!measured) return false;
  vbLock_mod::deriveThresholds(program_, noise);
  if (!were.steps([&] { SendLoopConstants(program_); })) return false;
  if (record.LogEnabled && !were.steps([&] { LockLog::WriteLogHeader(program_); })) return false;
  LockModeOn(program_);
  return true;
}

bool frmLock::modeSweep(const WereDown& were) {
  LockParameters& record = program_.record;
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeSweep;
  record.LockStatus = "SWEEP";
  startTimer();
  hsCenter.setEnabled(true);
  const bool wasLocked = record.PreviousLockMode == kModeLock && record.LockState == kLocked;
  if ((wasLocked || record.PreviousLockMode == kModeHold) && !recentreScrollBar(were)) return false;
  beginPlot();
  if (!record.Testing) showImaginary(kFalse, false);
  if (!selectFilter(were, record.SweepRxFilter)) return false;
  const auto& down = record.ModeButtonDown;
  if (down[kModeLock] == 1 || down[kModeHold] == 1 || down[kModeOff] == 1) shiftTxPower(SweepOffset::Add);
  markDown(kModeSweep);
  if (!were.steps([&] { sendTypedTxPower(); })) return false;
  program_.cycle.SweepTurnCount = 0;
  ShowAutoReadouts(true);
  if (record.Initializing) return false;
  PlotScale::SetupPlot(program_);
  if (!sendSampleSettings(were)) return false;
  program_.autoLock.AutoLockTrim = kFalse;
  LockModeSweep(program_);
  return true;
}

bool frmLock::modeHold(const WereDown& were) {
  LockParameters& record = program_.record;
  if (!were.lockOrHold()) beginLockPlot();
  if (!selectFilter(were, record.LockHoldRxFilter)) return false;
  if (were.sweep) shiftTxPower(SweepOffset::Remove);
  markDown(kModeHold);
  if (!were.steps([&] { sendTypedTxPower(); })) return false;
  ShowAutoReadouts(false);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeHold;
  const bool wasLocked = record.PreviousLockMode == kModeLock && record.LockState == kLocked;
  if (wasLocked && !were.steps([&] { ReadLockData(program_, program_.cycle.LockSample); })) return false;
  record.LockStatus = "HOLD";
  startTimer();
  hsCenter.setEnabled(true);
  if (wasLocked) moveScrollBarToField();
  if (record.Initializing) return false;
  if (!were.lockOrHold()) PlotScale::SetupPlot(program_);
  program_.autoLock.AutoLockTrim = kFalse;
  const auto hold = [&] { HoldAtField(program_, record.FieldCenter); };
  return sendSampleSettings(were) &&
         were.steps(hold, hold); // the hardware takes the field over on the second
}

bool frmLock::modeAuto(const WereDown& were) {
  LockParameters& record = program_.record;
  const bool filtered = were.steps([&] { program_.frmControls->optBW[1].setValue(true); },
                                   [&] { sendFilter(record.LockHoldRxFilter); });
  if (!filtered) return false;
  ShowAutoReadouts(true);
  record.PreviousLockMode = record.LockMode;
  record.LockMode = kModeAuto;
  hsCenter.setEnabled(false);
  program_.cycle.SweepTurnCount = 0;
  if (!were.steps([&] { SendLockPhase(program_); }, [&] { sendRxFilter(); })) return false;
  if (record.UseDefaultTxRx) useSolventDefaults();
  ::frmSweep& sweep = program_.frmSweep.get();
  sweep.cmbSweepSpeed.setText(base::numberText(record.AutoLockSweepSpeed));
  sweep.cmbSweepWidth.setText(base::numberText(record.AutoLockSweepWidth));
  double noise = 0;
  const bool sampled = SetAutoLockSweep(were) && were.steps([&] { SampleLockData(program_); },
                                                            [&] { noise = HostGetLockData(program_, 6); });
  if (!sampled) return false;
  program_.autoLock.NoiseThreshold = base::roundHalfEven(std::abs(noise) * record.PeakThresholdFactor);
  if (!were.steps([&] { LockModeAuto(program_); })) return false;
  beginAutoProcedures();
  startTimer();
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
  if (!sendSampleSettings(were) || !were.steps([&] { LockModeAuto(program_); })) return false;
  beginAutoProcedures();
  startTimer();
  hsCenter.setEnabled(true);
  record.LockStatus = "Auto Phasing...";
  program_.autoLock.AutoLockTrim = kFalse;
  // No button counts as down after AutoPhase: the next Sweep adds no offset, and the next Lock, Hold or Off
  // removes none.
  markDown(kModePhase);
  return true;
}

// A threshold key that is still held has stopped the ticks; the new mode must not wait for its release.
void frmLock::startTimer() {
  Timer1.setInterval(kTimerMs);
  Timer1.setEnabled(true);
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
  if (!tables.TxPowerPresent) return;
  // A solvent's power that leaves no room for the sweep's offset is swept at the highest power there is.
  const double power = std::min(program_.record.DeltaTxPwr + tables.TxPower[i], kMaxTxPower);
  panel.vsTxPwr.setValue(base::toInt32(2 * power));
}

bool frmLock::SetAutoLockSweep(const WereDown& were) {
  LockParameters& record = program_.record;
  if (!were.steps([&] { ActiveNMRAppInterface::SetSweepSpeed(program_, record.AutoLockSweepSpeed); }))
    return false;
  record.SweepWidth = record.AutoLockSweepWidth;
  record.SweepUpper = base::toInt32(record.FieldCenter + record.SweepWidth / 2.0);
  record.SweepLower = base::toInt32(record.FieldCenter - record.SweepWidth / 2.0);
  PlotScale::SetupPlot(program_);
  if (record.Initializing) return true;
  return were.steps([&] { HostSetLockField(program_, record.FieldCenter); },
                    [&] { HostSetLockSweepWidth(program_, record.SweepWidth); });
}

// Sweep, phase and filter as the record has them, then one sample beside the line.
bool frmLock::sendSampleSettings(const WereDown& were) {
  return were.steps([&] { SendSweepSettings(program_); }, [&] { SendLockPhase(program_); },
                    [&] { sendRxFilter(); }, [&] { SampleLockData(program_); });
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

bool frmLock::selectFilter(const WereDown& were, std::int16_t choice) {
  if (choice < 0 || choice > 3) return true;
  return were.steps([&] { program_.frmControls->optBW[static_cast<std::size_t>(choice)].setValue(true); },
                    [&] { sendFilter(choice); });
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
  const double typed = StrToFloatVal(program_.frmControls->txtTxPwr.text());
  // A typed number too large for any hardware leaves the power that was last accepted.
  HostSetLockTxPower(program_, std::isfinite(typed) ? typed : program_.record.TxPower);
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

bool frmLock::recentreScrollBar(const WereDown& were) {
  if (!were.steps([&] { ReadLockData(program_, program_.cycle.LockSample); })) return false;
  moveScrollBarToField();
  return true;
}

// The bar's own range is as wide as the field's: a field word past its end must not keep the lock from
// switching.
void frmLock::moveScrollBarToField() {
  const double position = base::roundHalfEven(program_.cycle.LockSample[0] / 4.0);
  hsCenter.setValue(static_cast<int>(std::clamp<double>(position, hsCenter.minimum(), hsCenter.maximum())));
}
