#include "sim/Sweep.h"

#include "sim/Receiver.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sim {
namespace {

using Complex = std::complex<double>;

constexpr double kPhaseSwing =
    24 * std::numbers::pi / 180; // of the phase word's axis, with the sweep's direction
// To either side of the line, in full and then as much again fading out: this share of the sweep, or what is
// swept in this time when that is more, so that a narrow fast sweep keeps its ringing inside.
constexpr double kWindowShare = 1.0 / 8, kWindowSeconds = 1.0 / 12;

} // namespace

void Sweep::setCentre(double dac) {
  if (dac == centre_) return;
  centre_ = dac;
  restart();
}

void Sweep::setWidth(double dac) {
  dac = std::max(dac, 0.0);
  if (dac == width_) return;
  width_ = dac;
  restart();
}

void Sweep::restart() {
  position_ = lower();
  direction_ = 1;
  found_.reset();
  turned_ = false;
  beginHalf();
}

void Sweep::beginHalf() {
  bins_.fill(0);
  power_[0] = power_[1] = 0;
  bestPower_ = 0;
  best_ = {position_, 0, 0, 0};
}

void Sweep::move() {
  if (turned_) {
    turned_ = false;
    finishHalf();
    direction_ = -direction_;
    beginHalf();
  }
  position_ += direction_ * std::abs(speed_) * kStep;
  const double limit = direction_ > 0 ? upper() : lower();
  if (direction_ * (position_ - limit) < 0) return;
  position_ = limit;
  turned_ = width_ > 0 && speed_ != 0;
}

void Sweep::take(Complex signal) {
  const double power = std::norm(signal);
  if (power_[0] >= bestPower_ && power_[0] > power_[1] && power_[0] >= power) {
    // A local maximum: its place and height between the samples from the parabola through three of them.
    const double bend = power_[1] - 2 * power_[0] + power;
    const double shift = bend < 0 ? (power_[1] - power) / (2 * bend) : 0;
    const double height = std::min(power_[0] - (power_[1] - power) * shift / 4, 2 * kFullScale * kFullScale);
    bestPower_ = power_[0];
    best_ = {at_[0] + shift * (position_ - at_[0]), std::sqrt(height), level_, 0};
  }
  power_[1] = power_[0];
  at_[1] = at_[0];
  power_[0] = power;
  at_[0] = position_;
  level_ = signal.real();
  if (width_ > 0) {
    const int bin = static_cast<int>((position_ - lower()) / width_ * kBins);
    bins_[static_cast<std::size_t>(std::clamp(bin, 0, kBins - 1))] += signal;
  }
}

void Sweep::finishHalf() {
  if (best_.magnitude == 0) best_ = {at_[0], std::sqrt(power_[0]), level_, 0};
  // The peak lags behind the line in either direction: two half sweeps tell by how much.
  if (found_) lag_ = direction_ * (best_.position - found_->position) / 2;
  const double line = best_.position - direction_ * lag_;
  best_.phaseWord = phaseWord(line, best_.magnitude);
  found_ = best_;
}

// The signal added up around the line has the phase of a slow passage, however fast the sweep: lag and
// ringing cancel in the sum. It is seen along an axis that swings to one side in rising and to the other in
// falling half sweeps, so that the two readings differ by a measure of the phase error.
double Sweep::phaseWord(double line, double magnitude) const {
  const int middle = static_cast<int>((line - lower()) / width_ * kBins);
  const double share = std::max(kWindowShare, std::min(std::abs(speed_) * kWindowSeconds / width_, 1.0));
  const int window = static_cast<int>(share * kBins);
  Complex sum = 0;
  for (int k = -2 * window; k <= 2 * window; ++k) {
    const int bin = middle + k;
    if (bin < 0 || bin >= kBins) continue;
    const int beyond = std::max(std::abs(k) - window, 0);
    const double taper = 0.5 + 0.5 * std::cos(std::numbers::pi * beyond / window);
    sum += taper * bins_[static_cast<std::size_t>(bin)];
  }
  return magnitude * std::cos(std::arg(sum) + direction_ * kPhaseSwing);
}

} // namespace sim
