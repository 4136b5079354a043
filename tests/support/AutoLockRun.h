// One AutoLock of the whole panel on the simulated console, from a random start, and what came of it.
#pragma once
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "headless/Errors.h"
#include "headless/HeadlessPlatform.h"
#include "headless/Operator.h"
#include "headless/RecordingCanvas.h"
#include "headless/SimulatedHost.h"
#include "sim/Console.h"
#include "sim/Random.h"
#include "ui/main/frmLock.h"
#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

namespace support {

inline std::string defaultSettings() {
  std::ifstream file(LOCK_SOURCE_DIR "/packaging/LOCK.INI", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

struct AutoLockStart {
  std::uint64_t seed = 1;
  std::string solvent = "CDCl3";
  double strength = 1;    // of the deuterium signal, 1: the neat solvent
  double lineField = 900; // DAC units
  double bestPhase = 20;  // degrees
  double driftHzPerHour = 0;
};

struct AutoLockResult {
  bool done = false;
  int halfSweeps = 0;
  double seconds = 0;    // simulated, from the button to " : AutoLock Done"
  double phaseError = 0; // degrees, -180 .. 180
  int level = 0;         // at the end
  std::string status;
  std::string box; // an unexpected one ended the run
};

// A start anywhere within four AutoLock sweep widths of the centre, at any phase.
inline AutoLockStart randomStart(std::uint64_t seed, const std::string& solvent, double strength) {
  sim::Random random(seed);
  const auto uniform = [&](double low, double high) { return low + (high - low) * random.uniform(); };
  AutoLockStart start{seed, solvent, strength, 0, 0, 0};
  start.lineField = uniform(-4, 4) * 16384;
  start.bestPhase = uniform(-180, 180);
  start.driftHzPerHour = uniform(-50, 50);
  return start;
}

class AutoLockRun {
 public:
  AutoLockRun(const std::string& settings, const AutoLockStart& start)
      : start_(start), console_(simulated(start)), program_(prepared(platform_, settings)) {
    platform_.transcript().want(headless::Transcript::Kind::Call, false);
    headless::connectConsole(platform_.host(), platform_.clock(), console_);
    platform_.memorySettings().write(headless::HeadlessPlatform::kIniPath, "Hardware", "LockSolvent",
                                     start.solvent);
    vbLock_mod::startUp(program_);
  }

  AutoLockResult run(double limitSeconds) {
    headless::Operator(program_.desktop, platform_.windows()).press("Auto");
    AutoLockResult result;
    const headless::Micros begin = platform_.clock().micros();
    const auto limit = begin + static_cast<headless::Micros>(limitSeconds * headless::kSecond);
    std::int32_t rising = program_.cycle.SweepRising;
    try {
      while (platform_.clock().micros() < limit && !result.done) {
        tick();
        if (program_.cycle.SweepRising != rising) ++result.halfSweeps;
        rising = program_.cycle.SweepRising;
        result.done = program_.record.LockState == kLocked && program_.autoLock.AutoLockTrimDone;
      }
    } catch (const headless::UnexpectedBox& box) {
      result.box = box.what();
    }
    result.seconds = static_cast<double>(platform_.clock().micros() - begin) / headless::kSecond;
    result.phaseError = std::remainder(program_.record.LockPhase - start_.bestPhase, 360);
    for (int i = 0; i < 100 && result.done; ++i) tick(); // the level settles
    result.level = program_.cursor.previousLevel;
    result.status = program_.record.LockStatus;
    return result;
  }

  Program& program() { return program_; }
  sim::Console& console() { return console_; }

 private:
  static sim::Settings simulated(const AutoLockStart& start) {
    sim::Settings settings;
    settings.seed = start.seed;
    settings.sample = sim::sampleOf(start.solvent);
    for (sim::Line& line : settings.sample.lines) line.amplitude *= start.strength;
    settings.lineField = start.lineField;
    settings.bestPhase = start.bestPhase;
    settings.driftHzPerHour = start.driftHzPerHour;
    return settings;
  }
  static headless::HeadlessPlatform& prepared(headless::HeadlessPlatform& platform,
                                              const std::string& settings) {
    platform.memorySettings().text(headless::HeadlessPlatform::kIniPath) = settings;
    return platform;
  }
  void tick() {
    while (vbLock_mod::idlePass(program_))
      if (vbLock_mod::idleMayWait(program_) && platform_.pump().nothingWaits()) break;
    platform_.clock().advance(
        std::max<headless::Micros>(platform_.pump().nextDue() - platform_.clock().micros(), 0));
  }

  AutoLockStart start_;
  headless::HeadlessPlatform platform_;
  sim::Console console_;
  Program program_;
};

} // namespace support
