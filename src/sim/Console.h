// The simulated spectrometer console: lock hardware, magnet and sample under one virtual clock, driven
// through the host's operations. Physics catches up with the clock when something is asked or changed.
#pragma once
#include "ports/HostDispatch.h"
#include "sim/Random.h"
#include "sim/Receiver.h"
#include "sim/Settings.h"
#include "sim/Spins.h"
#include "sim/Sweep.h"

#include <array>
#include <complex>
#include <cstdint>
#include <span>
#include <vector>

namespace sim {

inline constexpr double kFieldLimit = 131071; // the field DAC has 18 bits, sign included

enum class Mode { Off = 0, Lock = 1, Sweep = 2, Hold = 3, AutoSweep = 5, Sample = 7 };

class Console {
 public:
  explicit Console(const Settings& settings = {});
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // One host operation. An unknown operation, a wrong argument or an index or code out of range raises
  // base::RuntimeError with a DISP_E_ code as its (negative) number.
  double call(int dispid, std::span<const ports::HostArg> args);

  void advance(double seconds); // moves the virtual clock; splitting a time into parts changes nothing

  // What happens to a console.
  void powerUp(); // hardware reset: everything off and at its power-up value; field, spins and clock go on
  void kick(double dacUnits);           // a sudden field step
  void setSample(const Sample& sample); // another tube: its spins start at equilibrium

  // The truth, for tests and benchmarks.
  double time() const {
    return static_cast<double>(clock_) * kStep;
  } // s, as far as physics has been asked for
  Mode mode() const { return mode_; }
  double field();                         // DAC units
  double lineField(std::size_t line = 0); // DAC value that puts a line on the present lock frequency
  double offset(std::size_t line = 0);    // Hz, line minus transmitter
  std::complex<double> transverse(std::size_t line = 0);
  double longitudinal(std::size_t line = 0);
  std::complex<double> cleanSignal(); // what level and error would read without noise and converter
  double b1() const { return b1_; }   // rad/s, while the transmitter is on
  const Receiver& receiver() const { return receiver_; }
  const Sweep& sweep() const { return sweep_; }
  double txPower() const { return txPower_; }
  double frequency() const { return frequency_; } // MHz, as last sent
  bool lockedFlag() const { return lockedFlag_; }
  const Settings& settings() const { return settings_; }

 private:
  void catchUp();
  void step();
  bool sweeping() const { return mode_ == Mode::Sweep || mode_ == Mode::AutoSweep; }
  void followSweep();
  void stepLoop();
  double lineOffset(std::size_t line) const; // rad/s at the present field
  double hertzPerDac(std::size_t line) const;

  void setMode(std::int32_t code);
  void setField(double dac);
  void setSweepWidth(double dac);
  void setTxPower(double power);
  void setLoop(std::int32_t index, double value);
  double hardwareState() const;
  double word(std::int32_t index) const;
  double word16(std::int32_t index) const;
  double perform(int dispid, std::span<const ports::HostArg> args);

  Settings settings_;
  Random noise_, magnet_;
  Receiver receiver_;
  Sweep sweep_;
  std::vector<Spins> spins_;

  std::int64_t clock_ = 0; // steps done
  double due_ = 0;         // steps, what the clock has been moved to
  Mode mode_ = Mode::Off;
  double field_ = 0; // DAC units
  double drift_ = 0; // DAC units the lines have moved since the start
  double txPower_ = 0, b1_ = 0, frequency_ = 0;
  double loopP_ = 0, loopI_ = 0, loopD_ = 0;
  double loopBase_ = 0, loopSum_ = 0, loopLast_ = 0;
  bool lockedFlag_ = false;
  std::int32_t systemValue_ = 0;
  std::complex<double> signal_{0, 0}; // received
  std::complex<double> judged_{0, 0}; // the same, heavily filtered
};

} // namespace sim
