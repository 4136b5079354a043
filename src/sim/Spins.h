// One deuterium line: the Bloch equations in the frame that turns with the transmitter, integrated exactly
// for the offset held during a step. The magnetisation lives on whatever the console does.
#pragma once
#include <complex>

namespace sim {

inline constexpr double kStep = 1e-3; // s, the console's own sampling interval

// A single-pole low-pass of the given bandwidth (Hz, -3 dB), stepped exactly.
struct LowPass {
  explicit LowPass(double bandwidth);
  double rate;  // 1/s
  double decay; // over one step
};

class Spins {
 public:
  Spins(double t1, double t2, double amplitude);

  // One step at an offset (rad/s, line minus transmitter) under B1 (rad/s). Returns what the line adds to the
  // output of the receiver's low-pass: its transverse magnetisation, real = absorption, imaginary =
  // dispersion, filtered.
  std::complex<double> step(double offset, double b1, const LowPass& filter);

  // One step out of reach of transmitter and receiver.
  void relax();

  std::complex<double> transverse() const { return m_; }
  double longitudinal() const { return mz_; }

 private:
  double t1_, rate2_, amplitude_;
  double decay1_, decay2_, mean1_; // over one step; mean1_ weighs a constant pull on mz
  std::complex<double> m_{0, 0};
  double mz_;
  double turnOffset_ = 0;
  std::complex<double> turn_; // decay and precession over one step at turnOffset_
};

} // namespace sim
