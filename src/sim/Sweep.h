// The field sweep: a triangle between two limits, and what the console's firmware finds in each half sweep of
// it.
#pragma once
#include <array>
#include <complex>
#include <optional>

namespace sim {

// What was found in one completed half sweep.
struct HalfSweep {
  double position = 0;  // DAC units, where the magnitude was largest
  double magnitude = 0; // there
  double level = 0;     // real part there
  double phaseWord = 0; // see docs/simulator.md
};

class Sweep {
 public:
  void setCentre(double dac);
  void setWidth(double dac); // at least 0
  void setSpeed(double dacPerSecond) { speed_ = dacPerSecond; }
  void restart(); // from the lower limit, rising; what was found so far is dropped

  double centre() const { return centre_; }
  double width() const { return width_; }
  double speed() const { return speed_; }
  double lower() const { return centre_ - width_ / 2; }
  double upper() const { return centre_ + width_ / 2; }
  double position() const { return position_; }
  bool rising() const { return direction_ > 0; }

  void move();                            // one step of the field
  void take(std::complex<double> signal); // the signal received at the end of that step

  // The last complete half sweep; empty until one is complete after a restart.
  const std::optional<HalfSweep>& found() const { return found_; }

 private:
  static constexpr int kBins = 256;
  void beginHalf();
  void finishHalf();
  double phaseWord(double line, double magnitude) const;

  double centre_ = 0, width_ = 10000, speed_ = 25000;
  double position_ = 0;
  int direction_ = 1;
  bool turned_ = false;

  std::array<std::complex<double>, kBins> bins_{}; // received signal, summed by field
  double power_[2] = {0, 0};                       // the last two samples'
  double at_[2] = {0, 0};
  double level_ = 0;
  double bestPower_ = 0;
  HalfSweep best_;
  std::optional<HalfSweep> found_;
  double lag_ = 0; // DAC units, of the peak behind the line; outlives a restart
};

} // namespace sim
