// A panel on which something happens in the middle of something else: at the k-th turn of the pump, or inside
// the k-th host call. The host keeps the mode it was last given, as hardware does.
#pragma once
#include "support/Panel.h"
#include "ui/panels/frmSweep.h"
#include <optional>

namespace support {

constexpr const char* kModeButtons[] = {"Off", "Lock", "Sweep", "Hold", "Auto", "Phase"};

enum class Point { PumpTurn, HostCall };

class ReentryPanel : public Panel {
 public:
  ReentryPanel() {
    host().words[0] = 800;
    host().words[6] = 100;
    host().answer = [this](int dispid, std::span<const ports::HostArg> args) -> std::optional<double> {
      if (dispid == 31) hardwareMode = static_cast<int>(args[0].value);
      if (dispid == 198) hardwareFrequency = args[0].value;
      if (dispid == 28) hardwarePower = args[0].value;
      // The host has carried the call out already when others are let in before it returns.
      if (insideCall_ && !happened && host().calls() == callNumber_) insideCall_();
      if (dispid == 197) return hardwareMode;
      return words ? words(dispid, args) : std::nullopt;
    };
    startUp();
    controls(); // opening it tunes to the solvent, which is no part of a mode change
    pass(3);
    clear();
  }

  int hardwareMode = 0;
  double hardwareFrequency = 46.04475, hardwarePower = 20;
  std::function<std::optional<double>(int, std::span<const ports::HostArg>)> words;

  // Runs the gesture once, at the k-th point from now on (1: the first).
  void at(Point point, std::uint64_t k, std::function<void()> gesture) {
    const auto once = [this, gesture = std::move(gesture)] {
      happened = true;
      gesture();
    };
    if (point == Point::PumpTurn) return platform.pump().atYield(k, once);
    callNumber_ = host().calls() + k;
    insideCall_ = once;
  }
  std::uint64_t pointsSoFar(Point point) {
    return point == Point::PumpTurn ? platform.pump().yields() : host().calls();
  }
  bool happened = false;

 private:
  std::function<void()> insideCall_;
  std::uint64_t callNumber_ = 0;
};

inline int hardwareCode(int lockMode) { return lockMode < 4 ? lockMode : 5; }

// Lets the idle loop carry out whatever is due. One change is carried out for each request, so the others are
// asked for again, as the next slider would.
inline void carryOutAll(ReentryPanel& p) {
  LockParameters& r = p.record();
  p.pass(2);
  for (int left = 8; left > 0; --left) {
    if (r.PendingTxPower || r.PendingRxGain || r.PendingPhase || r.PendingFieldCenter)
      r.PendingControl = kTrue;
    p.pass();
  }
}

// One mode, and everything agrees with it.
inline void expectLegalState(ReentryPanel& p) {
  carryOutAll(p);
  const LockParameters& r = p.record();
  const int mode = r.LockMode;
  ASSERT_GE(mode, 0);
  ASSERT_LE(mode, 5);
  EXPECT_EQ(p.main().Toolbar1.pressed(), mode + 1);
  EXPECT_EQ(p.hardwareMode, hardwareCode(mode));
  EXPECT_EQ(p.hardwareFrequency, r.Frequency);
  EXPECT_EQ(p.main().Timer1.running(), mode != kModeOff);
  EXPECT_FALSE(p.main().Timer1.firing());
  EXPECT_EQ(p.main().hsCenter.enabled(), mode != kModeLock && mode != kModeAuto);
  for (int k = 0; k <= 3; ++k)
    EXPECT_EQ(r.ModeButtonDown[static_cast<std::size_t>(k)], k == mode ? 1 : 0) << "down " << k;
  EXPECT_FALSE(r.PendingControl);
  EXPECT_FALSE(r.PendingTxPower || r.PendingRxGain || r.PendingPhase || r.PendingFieldCenter);
  EXPECT_EQ(p.hardwarePower, r.TxPower);
  EXPECT_EQ(r.LockState == kNotInLock, mode != kModeLock);
  static constexpr const char* kStatus[] = {
      "OFF", "HOLD", "SWEEP", "HOLD", "Auto Locking...", "Auto Phasing..."};
  if (mode == kModeOff || mode == kModeSweep || mode == kModeHold) {
    EXPECT_EQ(p.status(), kStatus[mode]);
  } else {
    EXPECT_NE(p.status(), "OFF");
    EXPECT_NE(p.status(), "SWEEP");
  }
  // The ticks go on in every mode but Off, and in Off nothing is sent.
  p.clear();
  p.tick(2);
  EXPECT_EQ(p.calls().empty(), mode == kModeOff);
}

} // namespace support
