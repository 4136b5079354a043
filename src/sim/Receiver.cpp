#include "sim/Receiver.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {
namespace {

using Complex = std::complex<double>;

constexpr double kCalibratedBandwidth = 100; // Hz
constexpr double kNoiseMemory = 4;           // s, of the running measure
constexpr int kBurst = 512;                  // samples

Complex convert(Complex s) {
  return {std::clamp(s.real(), -kFullScale, kFullScale), std::clamp(s.imag(), -kFullScale, kFullScale)};
}

} // namespace

Receiver::Receiver(const Settings& settings) : settings_(settings) { powerUp(); }

void Receiver::powerUp() {
  gain_ = 0;
  phase_ = 0;
  bandwidth_ = kCalibratedBandwidth;
  measured_ = 1;
  update();
}

void Receiver::setGain(double gain) {
  gain_ = std::clamp(gain, 0.0, 10000.0);
  update();
}

void Receiver::setPhase(double degrees) {
  phase_ = std::remainder(degrees, 360.0);
  update();
}

void Receiver::setBandwidth(double bandwidth) {
  bandwidth_ = std::clamp(bandwidth, 1.0, kPassBand);
  update();
}

void Receiver::update() {
  filter_ = LowPass(bandwidth_);
  const double angle = (phase_ - settings_.bestPhase) * std::numbers::pi / 180;
  scale_ = std::polar(gain_ * kUnitsPerGain, angle);
  const double thermal = settings_.noise * gain_;
  sigma_ = std::sqrt((thermal * thermal + settings_.adcNoise * settings_.adcNoise) * bandwidth_ /
                     kCalibratedBandwidth);
  const double c = filter_.decay;
  innovation_ = std::sqrt(1 - c * c);
  secondDifference_ = 6 - 8 * c + 2 * c * c;
  settle();
}

Complex Receiver::step(Complex filtered, Random& random) {
  filtered_ = filtered_ * filter_.decay + filtered;
  const double x = random.normal(), y = random.normal();
  noise_ = noise_ * filter_.decay + innovation_ * Complex(x, y);
  last_[2] = last_[1];
  last_[1] = last_[0];
  last_[0] = convert(scale_ * filtered_ + sigma_ * noise_);
  return last_[0];
}

void Receiver::watchNoise() {
  if (fresh_ > 0) {
    --fresh_;
    return;
  }
  // The second difference: a lock signal that builds up or wanders leaves next to nothing in it.
  const Complex d = last_[0] - 2.0 * last_[1] + last_[2];
  const double power = std::norm(d) / 2 / secondDifference_;
  measured_ += kStep / kNoiseMemory * (power / nominalPower() - measured_);
}

void Receiver::sampleNoise(Signal signal, Random& random) {
  const Complex carrier = signal == Signal::Inside ? clean() : Complex(0);
  double sum = 0;
  for (int i = 0; i < kBurst; ++i) {
    const double x = random.normal(), y = random.normal();
    last_[0] = convert(carrier + sigma_ * Complex(x, y));
    sum += std::norm(last_[0]);
  }
  measured_ = sum / (2 * kBurst) / nominalPower();
  settle();
}

Complex Receiver::clean() const { return scale_ * filtered_; }

double Receiver::nominalPower() const {
  const double thermal = kNominalNoise * gain_;
  return (thermal * thermal + kNominalAdcNoise * kNominalAdcNoise) * bandwidth_ / kCalibratedBandwidth;
}

double Receiver::noisePower() const { return measured_ * nominalPower(); }

} // namespace sim
