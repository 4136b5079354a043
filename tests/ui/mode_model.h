// What the mode buttons must do, told as lists: a second, plain account of the six sequences, kept apart from
// the program's own. It knows the bench's standard settings and yields the host calls and the state
// afterwards.
#pragma once
#include "support/Panel.h"
#include <array>
#include <cmath>

namespace support {

struct ModeModel {
  // The bench's settings.
  static constexpr double bandwidth[] = {20, 100, 500, 0};
  static constexpr double solventPower = 20;
  int lockFilter = 0, sweepFilter = 2;
  bool testing = false;
  double startDelta = 10;
  double frequency = 46.04475;
  // What the host answers.
  double dac = 800;

  // State.
  int mode = 0, previous = 0, lockState = -1;
  std::string status = "OFF";
  std::array<int, 7> down{1, 0, 0, 0, 0, 0, 0};
  double power = 20, powerText = 20, delta = 10;
  int option = 1, showImag = 0, imagMark = 0;
  double centre = 400, width = 8000, speed = 20000;
  bool readouts = false, centreEnabled = true, redrawn = false;
  int beeps = 0;

  host::Lines calls;

  void hardwareRuns(int state) {
    if (state < 1 || state > 3) return;
    mode = state;
    status = state == 2 ? "SWEEP" : "HOLD";
    lockState = state == 1 ? 0 : -1;
    readouts = state == 2;
    down = {};
    down[static_cast<std::size_t>(state)] = 1;
    if (state == 2) power = powerText = power + delta;
  }
  void useTestSettings() {
    testing = true;
    delta = startDelta = 0;
    lockFilter = sweepFilter = -1;
  }

  void press(int button) { // 1 Off, 2 Lock, 3 Sweep, 4 Hold, 5 Auto, 6 Phase
    calls.clear();
    beeps = 0;
    redrawn = false;
    wasLock = down[1] == 1, wasSweep = down[2] == 1, wasHold = down[3] == 1;
    if (testing) delta = 0;
    send(host::lockedFlag(0));
    const bool locked = mode == 1 && lockState == 2;
    switch (button) {
    case 1:
      off(locked);
      break;
    case 2:
      lock();
      break;
    case 3:
      sweep(locked);
      break;
    case 4:
      hold(locked);
      break;
    case 5:
      automatic();
      break;
    case 6:
      phase();
      break;
    default:
      break;
    }
    if (mode != 1) lockState = -1;
  }

 private:
  bool wasLock = false, wasSweep = false, wasHold = false;

  void send(const host::Item& item) { host::append(calls, item.lines); }
  void recentre() { centre = std::nearbyint(dac / 4) * 4; }
  void mark(int which) {
    for (int k = 0; k <= 3; ++k) down[static_cast<std::size_t>(k)] = k == which ? 1 : 0;
  }
  void choose(int k) {
    if (k < 0) return;
    if (option != k) send(host::rxFilter(bandwidth[k])); // the option's own click
    option = k;
    send(host::rxFilter(bandwidth[k]));
  }
  void shift(double by) {
    powerText += by;
    if (delta < startDelta) ++beeps;
    if (powerText > 63.5 || powerText < 0)
      ++beeps;
    else
      power = powerText;
  }
  void settings() {
    send(host::sweepSettings(centre, width, speed));
    send(host::phase(30));
    send(host::rxFilter(bandwidth[option]));
    send(host::sample(frequency));
  }
  void imaginary(int shown) {
    if (testing) return;
    showImag = imagMark = shown;
  }

  void off(bool locked) {
    centreEnabled = true;
    previous = mode;
    mode = 0;
    if (locked) {
      send(host::readData());
      recentre();
    }
    send(host::holdAt(centre));
    send(host::mode(0));
    send(host::readData());
    status = "OFF";
    if (wasSweep) shift(-delta);
    mark(0);
  }

  void lock() {
    if (!wasLock && !wasHold) redrawn = true, imaginary(-1);
    choose(lockFilter);
    if (down[2] == 1 || down[4] == 1) shift(-delta);
    send(host::txPower(powerText));
    mark(1);
    readouts = false;
    mode = 1;
    status = "HOLD";
    lockState = 0;
    centreEnabled = false;
    settings();
    send(host::readData());
    send(host::holdAt(centre));
    send(host::loopConstants(8000, 60, 3));
    send(host::mode(1));
  }

  void sweep(bool locked) {
    previous = mode;
    mode = 2;
    status = "SWEEP";
    centreEnabled = true;
    if (locked || previous == 3) {
      send(host::readData());
      recentre();
    }
    redrawn = true;
    imaginary(0);
    choose(sweepFilter);
    if (down[1] == 1 || down[3] == 1 || down[0] == 1) shift(delta);
    send(host::txPower(powerText));
    mark(2);
    readouts = true;
    settings();
    send(host::mode(2));
  }

  void hold(bool locked) {
    if (!wasLock && !wasHold) redrawn = true, imaginary(-1);
    choose(lockFilter);
    if (wasSweep) shift(-delta);
    send(host::txPower(powerText));
    mark(3);
    readouts = false;
    previous = mode;
    mode = 3;
    if (locked) {
      send(host::readData());
      recentre();
    }
    status = "HOLD";
    centreEnabled = true;
    settings();
    send(host::holdAt(centre));
    send(host::holdAt(centre));
  }

  void automatic() {
    if (option != 1) send(host::rxFilter(bandwidth[1]));
    option = 1;
    if (lockFilter >= 0) send(host::rxFilter(bandwidth[lockFilter]));
    readouts = true;
    previous = mode;
    mode = 4;
    centreEnabled = false;
    send(host::phase(30));
    send(host::rxFilter(bandwidth[option]));
    power = powerText = delta + solventPower;
    speed = 32768;
    width = 16384;
    redrawn = true;
    send(host::sweepSpeed(speed));
    send(host::field(centre));
    send(host::sweepWidth(width));
    send(host::sample(frequency));
    send(host::dataWord(6));
    send(host::mode(5));
    status = "Auto Locking...";
    mark(4);
    down[4] = 1;
  }

  void phase() {
    readouts = true;
    previous = mode;
    mode = 5;
    settings();
    send(host::mode(5));
    centreEnabled = true;
    status = "Auto Phasing...";
    mark(5);
  }
};

} // namespace support
