#include "sim/Console.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kJudgeTime = 0.5; // s, time constant of the judged level and error

// Loop constants P = 10000 and I = 50 mean 0.05 DAC units per unit of error, and 0.5 of them per second.
constexpr double kProportional = 0.05 / 10000;
constexpr double kIntegral = 0.5 / 50;
constexpr double kDerivative = 1e-7; // s

} // namespace

Console::Console(const Settings& settings)
    : settings_(settings), noise_(settings.seed), magnet_(settings.seed ^ 0x6D61676E6574),
      receiver_(settings_), systemValue_(settings.systemValue) {
  setSample(settings.sample);
  powerUp();
}

void Console::setSample(const Sample& sample) {
  settings_.sample = sample;
  spins_.clear();
  for (const Line& line : sample.lines)
    spins_.emplace_back(line.t1, sample.effectiveT2(line), line.amplitude);
}

void Console::powerUp() {
  mode_ = Mode::Off;
  receiver_.powerUp();
  sweep_ = Sweep();
  setTxPower(0);
  frequency_ = settings_.protonFreq / settings_.gammaRatio + settings_.sidebandFreq * 1e-6;
  loopP_ = 10000;
  loopI_ = 50;
  loopD_ = 0;
  field_ = 0;
  lockedFlag_ = false;
  judged_ = 0;
}

void Console::advance(double seconds) { due_ += seconds / kStep; }

void Console::kick(double dacUnits) {
  catchUp();
  drift_ += dacUnits;
}

void Console::catchUp() {
  const auto until = static_cast<std::int64_t>(std::floor(due_ + 1e-6));
  while (clock_ < until) step();
}

void Console::step() {
  ++clock_;
  drift_ += settings_.driftHzPerHour / settings_.protonFreq / settings_.ppmPerDac / 3600 * kStep;
  if (settings_.kicksPerHour > 0 && magnet_.uniform() < settings_.kicksPerHour / 3600 * kStep)
    drift_ += settings_.kickSize * magnet_.normal();

  const double before = field_;
  if (sweeping()) {
    sweep_.move();
    followSweep();
  }
  const double after = field_;
  field_ = (before + after) / 2; // the mean over the step
  const double b1 = mode_ == Mode::Off ? 0 : b1_;
  std::complex<double> filtered = 0;
  for (std::size_t i = 0; i < spins_.size(); ++i) {
    const double offset = lineOffset(i);
    if (std::abs(offset) < kTwoPi * kPassBand)
      filtered += spins_[i].step(offset, b1, receiver_.filter());
    else
      spins_[i].relax();
  }
  field_ = after;

  signal_ = receiver_.step(filtered, noise_);
  judged_ += kStep / kJudgeTime * (signal_ - judged_);
  if (mode_ == Mode::AutoSweep) sweep_.take(signal_);
  if (mode_ == Mode::Lock || mode_ == Mode::Hold) receiver_.watchNoise();
  if (mode_ == Mode::Lock) stepLoop();
}

void Console::followSweep() { field_ = std::clamp(sweep_.position(), -kFieldLimit, kFieldLimit); }

// The error is positive when the field is too high.
void Console::stepLoop() {
  const double error = signal_.imag();
  const double p = loopP_ * kProportional, d = loopD_ * kDerivative;
  loopSum_ += loopI_ * kIntegral * kStep * error;
  const double correction = p * error + loopSum_ + d * (error - loopLast_) / kStep;
  loopLast_ = error;
  field_ = loopBase_ - correction;
  if (std::abs(field_) <= kFieldLimit) return;
  field_ = std::clamp(field_, -kFieldLimit, kFieldLimit);
  loopSum_ -= loopI_ * kIntegral * kStep * error; // at the stop: do not wind up
}

double Console::hertzPerDac(std::size_t line) const {
  const double shift = settings_.sample.lines[line].shift;
  return ((shift - settings_.protonDelta) * 1e-6 + 1) * settings_.protonFreq / settings_.gammaRatio *
         settings_.ppmPerDac;
}

double Console::lineOffset(std::size_t line) const {
  const double perDac = hertzPerDac(line);
  const double resonance = perDac / settings_.ppmPerDac; // MHz, no field shift
  const double transmitter = frequency_ - settings_.sidebandFreq * 1e-6;
  const double hertz = (resonance - transmitter) * 1e6 + (field_ - settings_.lineField - drift_) * perDac;
  return kTwoPi * hertz;
}

double Console::field() {
  catchUp();
  return field_;
}

double Console::offset(std::size_t line) {
  catchUp();
  return lineOffset(line) / kTwoPi;
}

double Console::lineField(std::size_t line) {
  catchUp();
  return field_ - lineOffset(line) / kTwoPi / hertzPerDac(line);
}

std::complex<double> Console::transverse(std::size_t line) {
  catchUp();
  return spins_.at(line).transverse();
}

double Console::longitudinal(std::size_t line) {
  catchUp();
  return spins_.at(line).longitudinal();
}

std::complex<double> Console::cleanSignal() {
  catchUp();
  return receiver_.clean();
}

} // namespace sim
