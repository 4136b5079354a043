// The lock receiver: low-pass, gain, phase, thermal noise, a 16-bit converter; and its own measure of its
// noise.
#pragma once
#include "sim/Random.h"
#include "sim/Settings.h"
#include "sim/Spins.h"

#include <complex>

namespace sim {

inline constexpr double kFullScale = 32767; // of the converter, per channel
inline constexpr double kUnitsPerGain = 40; // output at gain 1 for a transverse magnetisation of 1
inline constexpr double kPassBand = 5000;   // Hz around the receiver's frequency; nothing beyond is seen

class Receiver {
 public:
  explicit Receiver(const Settings& settings);

  void powerUp();
  void setGain(double gain); // 0..10000
  void setPhase(double degrees);
  void setBandwidth(double bandwidth); // Hz
  void settle() { fresh_ = 3; } // the signal jumps for another reason: keep it out of the noise measure

  double gain() const { return gain_; }
  double phase() const { return phase_; }
  double bandwidth() const { return bandwidth_; }
  const LowPass& filter() const { return filter_; }

  // One step; filtered is what the lines added to the low-pass output. Returns the converter's output, real =
  // level, imaginary = error.
  std::complex<double> step(std::complex<double> filtered, Random& random);
  void watchNoise(); // take the step just made into the running measure of the noise

  // A burst of samples on the spot, far enough apart to be independent; signal: let the lines' signal into
  // it.
  enum class Signal { Outside, Inside };
  void sampleNoise(Signal signal, Random& random);

  std::complex<double> clean() const; // the output without noise and converter
  double noisePower() const;          // measured, per channel, at the present gain and bandwidth

 private:
  double nominalPower() const; // what the makers' calibration says, at the present gain and bandwidth
  void update();

  const Settings& settings_;
  double gain_ = 0, phase_ = 0, bandwidth_ = 0;
  LowPass filter_{0};
  std::complex<double> scale_;              // gain and phase
  double thermal_ = 0, nominalThermal_ = 0; // rms per channel: as it is, and as calibrated
  double innovation_ = 0;
  std::complex<double> filtered_{0, 0}, noise_{0, 0};
  std::complex<double> last_[3];
  int fresh_ = 3;
  double measured_ = 1; // noise power over the nominal one
};

} // namespace sim
