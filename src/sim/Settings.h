// Everything that can differ between two simulated spectrometers. The defaults make the run that an operator
// starts without any choice: CDCl3, its line off the centre of the sweep and the receiver somewhat out of
// phase.
#pragma once
#include "sim/Sample.h"

#include <cstdint>

namespace sim {

inline constexpr double kNominalNoise = 0.0065, kNominalAdcNoise = 1; // what the receiver is calibrated for

struct Settings {
  std::uint64_t seed = 1;
  Sample sample = sampleOf("CDCl3");

  // The magnet.
  double lineField = 900;      // DAC units: where the first line sits when its own lock frequency is set
  double driftHzPerHour = 2;   // of the proton frequency; positive moves the line to higher DAC values
  double kicksPerHour = 0;     // sudden field steps (a lift, a trolley), at random times
  double kickSize = 60;        // DAC units, root mean square
  double ppmPerDac = 0.001;    // field step per DAC unit
  double protonFreq = 299.935; // MHz
  double protonDelta = 4.8;    // ppm, the shift at which the proton frequency holds
  double gammaRatio = 6.514288;
  double sidebandFreq = 2000; // Hz, what clients add to the lock frequency

  // Transmitter and receiver.
  double maxB1 = 3;                   // Hz, precession about B1 at power 63.5; 0.5 power units are 0.5 dB
  double bestPhase = 20;              // degrees: the phase setting that makes the level pure absorption
  double noise = kNominalNoise;       // rms per channel and unit of gain, in a bandwidth of 100 Hz
  double adcNoise = kNominalAdcNoise; // rms per channel at any gain and bandwidth

  std::int32_t systemValue = 17; // the number kept for clients; a system reset forgets it
};

} // namespace sim
