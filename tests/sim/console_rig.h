// A console with its operations by name, as the tests drive it.
#pragma once
#include "base/RuntimeError.h"
#include "sim/SimHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace rig {

using ports::HostArg;

// The lock frequency that clients compute for a shift, sideband included.
inline double lockFrequency(double ppm) { return ((ppm - 4.8) * 1e-6 + 1) * 299.935 / 6.514288 + 0.002; }

// A receiver without noise, a magnet without drift.
inline sim::Settings quiet() {
  sim::Settings s;
  s.noise = s.adcNoise = 0;
  s.driftHzPerHour = 0;
  s.lineField = 0;
  s.bestPhase = 0;
  return s;
}

inline sim::Sample sampleWith(double t1, double t2) { return {"test", {{4.8, t1, t2, 1}}, 0}; }

class Rig {
 public:
  explicit Rig(const sim::Settings& settings)
      : spectrometer(std::make_shared<sim::Spectrometer>(settings)), console(spectrometer->console),
        host(spectrometer) {
    frequency(lockFrequency(settings.sample.lines[0].shift));
    call(27, {HostArg::refR8(settings.bestPhase)});
    gain(1000);
    power(36);
  }

  double call(int dispid, std::initializer_list<HostArg> args = {}) { return host.call(dispid, args); }

  void gain(double v) { call(26, {HostArg::r8(v)}); }
  void phase(double degrees) { call(27, {HostArg::refR8(degrees)}); }
  void power(double v) { call(28, {HostArg::refR8(v)}); }
  void b1(double radPerSecond) { power(63.5 + 20 * std::log10(radPerSecond / (6 * std::numbers::pi))); }
  void field(double dac) { call(30, {HostArg::r8(dac)}); }
  void mode(int code) { call(31, {HostArg::i4(code)}); }
  void frequency(double mhz) { call(198, {HostArg::refR8(mhz)}); }
  void filter(double hertz) { call(199, {HostArg::refR8(hertz)}); }
  long word(int index) { return static_cast<long>(call(201, {HostArg::refI4(index)})); }
  void width(double dac) { call(204, {HostArg::r8(dac)}); }
  void speed(double dacPerSecond) { call(206, {HostArg::r8(dacPerSecond)}); }
  void sample(double mhz) {
    frequency(mhz + 0.013245);
    mode(7);
    frequency(mhz);
  }
  void wait(double seconds) { console.advance(seconds); }

  double peakPower() {
    return static_cast<double>(word(5) & 65535) * 65536 + static_cast<double>(word(4) & 65535);
  }

  // The HRESULT with which a call fails; 0 when it succeeds.
  std::uint32_t refusal(int dispid, std::initializer_list<HostArg> args = {}) {
    try {
      call(dispid, args);
    } catch (const base::RuntimeError& e) {
      EXPECT_LT(e.number, 0);
      return static_cast<std::uint32_t>(e.number);
    }
    return 0;
  }

  std::shared_ptr<sim::Spectrometer> spectrometer;
  sim::Console& console;
  sim::SimHost host;
};

} // namespace rig
