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

Complex normal(Random& random) {
  const double x = random.normal();
  return {x, random.normal()};
}

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
  const double perBandwidth = gain_ * std::sqrt(bandwidth_ / kCalibratedBandwidth);
  thermal_ = settings_.noise * perBandwidth;
  nominalThermal_ = kNominalNoise * perBandwidth;
  innovation_ = std::sqrt(1 - filter_.decay * filter_.decay);
  settle();
}

Complex Receiver::step(Complex filtered, Random& random) {
  filtered_ = filtered_ * filter_.decay + filtered;
  noise_ = noise_ * filter_.decay + innovation_ * normal(random);
  last_[2] = last_[1];
  last_[1] = last_[0];
  last_[0] = convert(scale_ * filtered_ + thermal_ * noise_ + settings_.adcNoise * normal(random));
  return last_[0];
}

void Receiver::watchNoise() {
  if (fresh_ > 0) {
    --fresh_;
    return;
  }
  // The second difference: a lock signal that builds up or wanders leaves next to nothing in it.
  const Complex d = last_[0] - 2.0 * last_[1] + last_[2];
  const double c = filter_.decay; // correlation of the filtered noise from sample to sample
  const double expected =
      nominalThermal_ * nominalThermal_ * (6 - 8 * c + 2 * c * c) + kNominalAdcNoise * kNominalAdcNoise * 6;
  measured_ += kStep / kNoiseMemory * (std::norm(d) / 2 / expected - measured_);
}

void Receiver::sampleNoise(Signal signal, Random& random) {
  const Complex carrier = signal == Signal::Inside ? clean() : Complex(0);
  double sum = 0;
  for (int i = 0; i < kBurst; ++i) {
    last_[0] = convert(carrier + thermal_ * normal(random) + settings_.adcNoise * normal(random));
    sum += std::norm(last_[0]);
  }
  measured_ = sum / (2 * kBurst) / nominalPower();
  settle();
}

Complex Receiver::clean() const { return scale_ * filtered_; }

double Receiver::nominalPower() const {
  return nominalThermal_ * nominalThermal_ + kNominalAdcNoise * kNominalAdcNoise;
}

double Receiver::noisePower() const { return measured_ * nominalPower(); }

} // namespace sim
