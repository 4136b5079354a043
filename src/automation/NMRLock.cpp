#include "automation/NMRLock.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "display/PlotScale.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include <cmath>
#include <exception>

using namespace ActiveNMRAppInterface;

namespace {

// Neither the record nor the hardware may ever see a value that is no number.
void requireNumber(float value) {
  if (!std::isfinite(value)) base::raiseOverflow();
}

template <class F> void showIfOpen(std::int16_t open, Program::Slot<F>& window) {
  if (open) window->show();
}

template <class F> void hideIfVisible(Program::Slot<F>& window) {
  if (F* loaded = window.ifLoaded(); loaded && loaded->visible()) loaded->hide();
}

template <class F> void hideIfOpen(std::int16_t open, Program::Slot<F>& window) {
  if (open) window->hide();
}

} // namespace

// A window closed while a call is still busy with it lives until the call is done, as during an operator's
// gesture. The error, though, is the client's and not the operator's.
template <class F> void NMRLock::act(F&& f) {
  std::exception_ptr failure;
  program_.desktop.gesture([&] {
    try {
      f();
    } catch (const base::RuntimeError&) {
      failure = std::current_exception();
    }
  });
  if (failure) std::rethrow_exception(failure);
}

void NMRLock::ExitLockApp() { program_.platform.end(); }

void NMRLock::ShowLockWindow() {
  act([this] {
    auto& main = program_.frmLock;
    const PanelFlags& panels = program_.panels;
    main->show();
    showIfOpen(panels.ControlsOpen, program_.frmControls);
    showIfOpen(panels.AmplOpen, program_.frmAmpl);
    showIfOpen(panels.SweepOpen, program_.frmSweep);
    showIfOpen(panels.TuningOpen, program_.frmTuning);
    if (main->windowState() != controls::WindowState::Minimised && program_.record.LockMode != kModeOff)
      main->Timer1.setEnabled(true);
  });
}

std::int32_t NMRLock::LockSweepSpeed() const { return program_.record.SweepSpeed; }

void NMRLock::putLockSweepSpeed(std::int32_t speed) {
  act([&] { SetSweepSpeed(program_, speed); });
}

std::int32_t NMRLock::LockSweepWidth() const { return program_.record.SweepWidth; }

void NMRLock::putLockSweepWidth(std::int32_t width) {
  act([&] { SetSweepWidth(program_, width); });
}

// By way of the scroll bar, so that its own change handling stores and sends the field.
void NMRLock::putLockFieldCenter(float value) {
  act([&] {
    const float quarter = value / 4.0f;
    program_.frmLock->hsCenter.setValue(base::toInt16(static_cast<double>(quarter)));
  });
}

float NMRLock::LockFieldCenter() const { return static_cast<float>(program_.record.FieldCenter); }

void NMRLock::putLockSolventPPM(float ppm) {
  act([&] {
    requireNumber(ppm);
    program_.record.Frequency = PlotScale::SolventLockFrequency(program_, ppm);
    HostSetLockFrequency(program_, program_.record.Frequency);
  });
}

float NMRLock::LockSolventPPM() const { return program_.record.SolventPPM; }

void NMRLock::putLockSolventText(const std::string& solventname) {
  act([&] {
    program_.record.LockSolvent = solventname;
    program_.frmControls->SetupSolventList();
  });
}

std::string NMRLock::LockSolventText() const { return program_.record.LockSolvent; }

// Clients count on the doubling: the record holds half-units, the hardware takes the power as given.
void NMRLock::putLockTxPower(float power) {
  act([&] {
    requireNumber(power);
    const double given = static_cast<double>(power);
    program_.record.TxPower = given + given;
    HostSetLockTxPower(program_, given);
  });
}

float NMRLock::LockTxPower() const { return base::toSingle(program_.record.TxPower); }

void NMRLock::putLockRxGain(float gain) {
  act([&] {
    program_.record.RxGain = base::toInt32(static_cast<double>(gain));
    SetLockRxGain(program_, program_.record.RxGain);
  });
}

float NMRLock::LockRxGain() const { return static_cast<float>(program_.record.RxGain); }

// Folded once each way: what lies beyond +-540 stays outside +-180. The hardware hears of it when the
// parameters are next applied.
void NMRLock::putLockNMRPhase(float phase) {
  act([&] {
    if (phase < -180.0f) phase += 360.0f;
    if (phase > 180.0f) phase -= 360.0f;
    program_.record.LockPhase = base::toInt32(static_cast<double>(phase));
  });
}

float NMRLock::LockNMRPhase() const { return static_cast<float>(program_.record.LockPhase); }

std::int16_t NMRLock::GetLockState() const {
  const LockParameters& record = program_.record;
  return base::toInt16(std::pow(2.0, 8) * record.LockState + record.LockMode);
}

float NMRLock::LockLevel() {
  float level = 0;
  act([&] { level = base::toSingle(StrToFloatVal(program_.frmLevel->txtLockLevel.text())); });
  return level;
}

void NMRLock::putLockLoopChar(std::int16_t) {} // the loop preset is chosen in the tuning panel alone

void NMRLock::pressModeButton(int button) {
  act([&] { program_.frmLock->pressModeButton(button); });
}

void NMRLock::StartLock() { pressModeButton(frmLock::ButtonLock); }
void NMRLock::StartAutoPhase() { pressModeButton(frmLock::ButtonPhase); }
void NMRLock::StartAutoLock() { pressModeButton(frmLock::ButtonAuto); }
void NMRLock::StartHold() { pressModeButton(frmLock::ButtonHold); }
void NMRLock::StartSweep() { pressModeButton(frmLock::ButtonSweep); }
void NMRLock::StopLock() { pressModeButton(frmLock::ButtonOff); }

void NMRLock::HideWindows() {
  act([this] {
    program_.frmLock->Timer1.setEnabled(false);
    program_.frmLock->hide();
    hideIfVisible(program_.frmAmpl);
    hideIfVisible(program_.frmControls);
    hideIfVisible(program_.frmSweep);
    hideIfVisible(program_.frmTuning);
  });
}

void NMRLock::MinimizeLockWindow() {
  act([this] {
    program_.frmLock->Timer1.setEnabled(false);
    program_.frmLock->setWindowState(controls::WindowState::Minimised);
    const PanelFlags& panels = program_.panels;
    hideIfOpen(panels.ControlsOpen, program_.frmControls);
    hideIfOpen(panels.AmplOpen, program_.frmAmpl);
    hideIfOpen(panels.SweepOpen, program_.frmSweep);
    hideIfOpen(panels.TuningOpen, program_.frmTuning);
  });
}

std::int32_t NMRLock::hWndLockWindow() {
  std::int32_t handle = 0;
  act([&] {
    handle = static_cast<std::int32_t>(program_.platform.windows().nativeHandle(program_.frmLock.get()));
  });
  return handle;
}
