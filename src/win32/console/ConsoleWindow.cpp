#include "win32/console/ConsoleWindow.h"
#include "base/NumberText.h"
#include "win32/Win.h"
#include <cmath>

namespace win32 {

namespace {

constexpr float kMargin = 180, kRowHeight = 300, kNameWidth = 1800, kValueWidth = 3600;
constexpr double kKick = 60; // DAC units
enum Fault { kNoData = 1, kRefuse = 2, kSlow = 3, kKickUp = 5, kKickDown = 6, kPowerUp = 8 };

const char* modeName(sim::Mode mode) {
  switch (mode) {
  case sim::Mode::Off:
    return "Off";
  case sim::Mode::Lock:
    return "Lock";
  case sim::Mode::Sweep:
    return "Sweep";
  case sim::Mode::Hold:
    return "Hold";
  case sim::Mode::AutoSweep:
    return "Automatic sweep";
  case sim::Mode::Sample:
    return "Data sample";
  }
  return "";
}

std::string fixed(double value, int decimals) {
  return (value < 0 ? "-" : "") + base::fixedText(std::abs(value), 1, decimals);
}

} // namespace

void applyFaults(sim::Spectrometer& spectrometer, bool noData, bool refuse, int slowMs, long long dieAfter) {
  sim::Faults& faults = spectrometer.faults;
  faults.noData = noData;
  faults.failWith = refuse ? sim::kUnspecifiedFailure : 0;
  faults.beforeCall = nullptr;
  if (slowMs > 0 || dieAfter > 0)
    faults.beforeCall = [&faults, slowMs, dieAfter](int) {
      if (dieAfter > 0 && faults.calls >= dieAfter) ExitProcess(9);
      if (slowMs > 0) Sleep(static_cast<DWORD>(slowMs));
    };
}

ConsoleWindow::ConsoleWindow(controls::Desktop& desktop, std::shared_ptr<sim::Spectrometer> spectrometer,
                             std::function<void()> advance, int slowMs)
    : Form(desktop, "frmConsole"), spectrometer_(std::move(spectrometer)), advance_(std::move(advance)),
      slowMs_(slowMs) {
  design();
  faults_.Click = [this](int index) { fault(index); };
  sample_.Click = [this](int index) {
    spectrometer_->console.setSample(sim::sampleOf(sim::solvents()[static_cast<std::size_t>(index)].name));
    for (auto& item : sample_.items()) item.setChecked(item.index() == index);
  };
  timer_.Tick = [this] { refresh(); };
  timer_.setEnabled(true);
}

void ConsoleWindow::design() {
  constexpr const char* names[kRows] = {"Mode",         "Field",       "Line at", "Line offset",
                                        "Level, error", "Transmitter", "Phase",   "Sweep",
                                        "Client says",  "Calls",       "Time"};
  setCaption("Pelorin console, simulated");
  float top = kMargin;
  for (std::size_t i = 0; i < kRows; ++i, top += kRowHeight) {
    names_[i] = std::make_unique<controls::Label>(*this, "lblName", static_cast<int>(i));
    names_[i]->setCaption(names[i]);
    names_[i]->move({kMargin, top, kNameWidth, kRowHeight});
    values_[i] = std::make_unique<controls::Label>(*this, "lblValue", static_cast<int>(i));
    values_[i]->move({kMargin + kNameWidth, top, kValueWidth, kRowHeight});
  }
  controls::MenuItem& faults = bar_.add(0, "&Faults", nullptr);
  faults_.add(kNoData, "&No data", &faults);
  faults_.add(kRefuse, "&Refuse every call", &faults);
  faults_.add(kSlow, "&Slow calls (200 ms)", &faults);
  faults_.add(4, "-", &faults);
  faults_.add(kKickUp, "&Kick the field up", &faults, "Ctrl+K");
  faults_.add(kKickDown, "Kick the field &down", &faults, "Ctrl+D");
  faults_.add(7, "-", &faults);
  faults_.add(kPowerUp, "&Power the hardware up again", &faults);
  controls::MenuItem& sample = bar_.add(1, "&Sample", nullptr);
  int index = 0;
  for (const sim::Solvent& s : sim::solvents()) {
    auto& item = sample_.add(index++, std::string(s.name), &sample);
    item.setChecked(s.name == spectrometer_->console.settings().sample.name);
  }
  setInnerSize(
      {2 * kMargin + kNameWidth + kValueWidth, 2 * kMargin + static_cast<float>(kRows) * kRowHeight});
  move({300, 300, width(), height()});
  checkFaults();
  refresh();
}

void ConsoleWindow::fault(int index) {
  sim::Faults& faults = spectrometer_->faults;
  sim::Console& console = spectrometer_->console;
  switch (index) {
  case kNoData:
    faults.noData = !faults.noData;
    break;
  case kRefuse:
    faults.failWith = faults.failWith ? 0 : sim::kUnspecifiedFailure;
    break;
  case kSlow:
    slowMs_ = slowMs_ > 0 ? 0 : 200;
    applyFaults(*spectrometer_, faults.noData, faults.failWith != 0, slowMs_, 0);
    break;
  case kKickUp:
    console.kick(kKick);
    break;
  case kKickDown:
    console.kick(-kKick);
    break;
  case kPowerUp:
    console.powerUp();
    break;
  default:
    break;
  }
  checkFaults();
}

void ConsoleWindow::checkFaults() {
  faults_(kNoData).setChecked(spectrometer_->faults.noData);
  faults_(kRefuse).setChecked(spectrometer_->faults.failWith != 0);
  faults_(kSlow).setChecked(slowMs_ > 0);
}

void ConsoleWindow::refresh() {
  if (advance_) advance_();
  sim::Console& console = spectrometer_->console;
  const auto signal = console.cleanSignal();
  put(Mode, modeName(console.mode()));
  put(Field, fixed(console.field(), 0) + " DAC");
  put(LineAt, fixed(console.lineField(), 0) + " DAC");
  put(Offset, fixed(console.offset(), 2) + " Hz");
  put(Signal, fixed(signal.real(), 0) + ", " + fixed(signal.imag(), 0));
  put(Power, "power " + fixed(console.txPower(), 1) + ", gain " + fixed(console.receiver().gain(), 0));
  put(Phase, fixed(console.receiver().phase(), 1) + " degrees");
  put(Sweep, fixed(console.sweep().lower(), 0) + " to " + fixed(console.sweep().upper(), 0) + " at " +
                 fixed(console.sweep().speed(), 0) + " DAC/s");
  put(Told, console.lockedFlag() ? "locked" : "not locked");
  put(Calls, std::to_string(spectrometer_->faults.calls));
  put(Time, fixed(console.time(), 1) + " s");
}

} // namespace win32
