// What PelorinSim.exe is told on its command line.
#pragma once
#include "sim/Settings.h"
#include <string>

namespace win32 {

struct ConsoleOptions {
  sim::Settings settings;
  double speed = 1;   // simulated seconds per second
  bool quiet = false; // no window
  bool noData = false, refuse = false;
  int slowMs = 0;         // how long each call takes
  long long dieAfter = 0; // the process ends inside this call, counted from 1; 0: never
  bool help = false;
  std::string problem; // what was not understood; empty: all is well
};

// "--seed N --solvent NAME --offset DAC --noise X --drift HZ_PER_HOUR --kicks PER_HOUR --speed N --quiet
// --fault nodata|refuse|slow=MS --die-after CALLS".
ConsoleOptions consoleOptions(const std::string& commandLine);
std::string consoleUsage();

} // namespace win32
