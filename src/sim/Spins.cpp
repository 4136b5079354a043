#include "sim/Spins.h"

#include <cmath>
#include <numbers>

namespace sim {
namespace {

using Complex = std::complex<double>;

Complex reciprocal(Complex z) { return std::conj(z) / std::norm(z); }

} // namespace

LowPass::LowPass(double bandwidth) : rate(2 * std::numbers::pi * bandwidth), decay(std::exp(-rate * kStep)) {}

Spins::Spins(double t1, double t2, double amplitude)
    : t1_(t1), rate2_(1 / t2), amplitude_(amplitude), decay1_(std::exp(-kStep / t1)),
      decay2_(std::exp(-kStep / t2)), mean1_((1 - decay1_) * t1 / kStep), mz_(amplitude), turn_(decay2_) {}

Complex Spins::step(double offset, double b1, const LowPass& filter) {
  if (offset != turnOffset_) {
    turnOffset_ = offset;
    turn_ = decay2_ * Complex(std::cos(offset * kStep), std::sin(offset * kStep));
  }
  // dm/dt = lambda m + b1 mz, dmz/dt = (M0 - mz)/T1 - b1 Re m. The turn of m is exact; mz, which b1 moves by
  // less than 2 % in a step, enters with its value at mid-step.
  const Complex lambda(-rate2_, offset);
  const double mid = mz_ + kStep / 2 * ((amplitude_ - mz_) / t1_ - b1 * m_.real());
  const Complex inverse = reciprocal(lambda);
  const Complex steady = -b1 * mid * inverse;
  const Complex away = m_ - steady;
  const Complex mean = steady + away * (turn_ - 1.0) * inverse / kStep;

  const Complex gap = lambda + filter.rate;
  const Complex passed = std::norm(gap) * kStep * kStep < 1e-12
                             ? Complex(filter.rate * kStep * filter.decay)
                             : filter.rate * (turn_ - filter.decay) * reciprocal(gap);
  m_ = steady + away * turn_;
  mz_ = amplitude_ + (mz_ - amplitude_) * decay1_ - b1 * mean.real() * mean1_ * kStep;
  return steady * (1 - filter.decay) + away * passed;
}

void Spins::relax() {
  m_ *= decay2_;
  mz_ = amplitude_ + (mz_ - amplitude_) * decay1_;
}

} // namespace sim
