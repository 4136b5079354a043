#include "base/NumberText.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "ui/main/frmLock.h"

using controls::WindowState;

namespace vbLock_mod {

namespace {

// Writes keys; the first failure is kept for the operator and the rest is still tried.
class Writer {
 public:
  explicit Writer(Program& program) : settings_(program.platform.settings()), path_(program.record.IniPath) {}
  void section(const char* name) { section_ = name; }
  void text(const std::string& key, const std::string& value) {
    if (!settings_.write(path_, section_, key, value) && reason_.empty())
      reason_ = "[" + section_ + "] " + key + "=" + value + "\r\n" + settings_.error();
  }
  template <class Number> void number(const std::string& key, Number value) {
    text(key, base::numberText(value));
  }
  const std::string& reason() const { return reason_; }

 private:
  ports::SettingsStore& settings_;
  const std::string path_;
  std::string section_, reason_;
};

void saveHardware(Program& program, Writer& file) {
  LockParameters& record = program.record;
  file.section("Hardware");
  file.text("LockSolvent", record.LockSolvent);
  file.number("SolventPPM", record.SolventPPM);
  file.number("Frequency", record.Frequency);
  file.number("FieldCenter", record.FieldCenter);
  file.number("SweepWidth", record.SweepWidth);
  file.number("SweepSpeed", record.SweepSpeed);
  file.number("LockPhase", record.LockPhase);
  file.number("RxGain", record.RxGain);
  file.number("RxFilterIndex", record.RxFilterIndex);
  // While sweeping, the next start gets the power without the sweep's offset, the solvent's own entry the one
  // in use.
  const bool sweeping = program.frmLock->Toolbar1.isPressed(frmLock::ButtonSweep);
  if (sweeping) record.TxPower -= record.DeltaTxPwr;
  file.number("TxPower", record.TxPower);
  file.section("Solvents_RxGain");
  file.number(record.LockSolvent, record.RxGain);
  if (sweeping) record.TxPower += record.DeltaTxPwr;
  file.section("Solvents_TxPwr");
  file.number(record.LockSolvent, record.TxPower);
}

void saveLoop(const LockParameters& record, Writer& file) {
  file.section("Loop");
  file.number("ActiveSet", record.ActiveSet);
  file.number("P", record.LoopP);
  file.number("I", record.LoopI);
  file.number("D", record.LoopD);
}

void saveDisplay(Program& program, Writer& file) {
  const LockParameters& record = program.record;
  const frmLock& main = program.frmLock.get();
  file.section("Display");
  file.number("PlotMax", record.PlotMax);
  file.number("PlotOffset", record.PlotOffset);
  file.number("ShowControls", record.ShowControls);
  file.number("ShowReal", record.ShowReal);
  file.number("ShowImag", record.ShowImag);
  if (main.windowState() == WindowState::Normal) {
    file.number("FormLeft", main.left());
    file.number("FormTop", main.top());
    file.number("FormWidth", main.width());
    file.number("FormHeight", main.height());
  }
  if (main.windowState() != WindowState::Minimised)
    file.number("FormMax", static_cast<std::int16_t>(main.windowState()));
  file.text("StayOnTop", record.StayOnTop ? "True" : "False");
}

void savePlace(Writer& file, const char* section, float top, float left) {
  file.section(section);
  file.number("Top", top);
  file.number("Left", left);
}

} // namespace

void SaveLockSettings(Program& program) {
  const LockParameters& record = program.record;
  Writer file(program);
  saveHardware(program, file);
  saveLoop(record, file);
  saveDisplay(program, file);
  savePlace(file, "Amplitude", record.AmplitudeTop, record.AmplitudeLeft);
  savePlace(file, "NMRControls", record.NMRControlsTop, record.NMRControlsLeft);
  savePlace(file, "Sweep", record.SweepTop, record.SweepLeft);
  savePlace(file, "Tuning", record.TuningTop, record.TuningLeft);
  file.section("AutoLock");
  file.number("PeakThresholdFactor", record.PeakThresholdFactor);
  if (file.reason().empty()) return;
  program.platform.dialogs().message(
      "The settings could not be saved to " + record.IniPath + ":\r\n" + file.reason(),
      program.platform.version().title, ports::Buttons::Ok, ports::Icon::Exclamation);
}

} // namespace vbLock_mod
