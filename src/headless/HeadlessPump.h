// The message pump without a window system: posted gestures, timers on virtual time, focus moves. Time stands
// still while messages are delivered, and jumps to the next thing that is due when the program waits.
#pragma once
#include "controls/Desktop.h"
#include "controls/Timer.h"
#include "headless/VirtualClock.h"
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <vector>

namespace headless {

class HeadlessPump : public ports::Pump {
 public:
  using Gesture = std::function<void()>;
  static constexpr Micros kNever = INT64_MAX;

  explicit HeadlessPump(VirtualClock& clock) : clock_(clock) {}

  int doEvents() override {
    if (++yields_ == nextHook_ || clock_.micros() >= wakeAt_ || graveyard_ || focusMoves()) deliver();
    return desktop_ ? desktop_->loadedForms() : 0;
  }
  // Jumps to the next timer or scheduled gesture; Stuck when there is none.
  void waitForMessage() override;

  void post(Gesture gesture); // delivered by the next turn
  void postAfter(Micros delay, Gesture gesture);
  bool gestureWaits() const { return !posted_.empty() || !scheduled_.empty(); }
  bool nothingWaits() const { return clock_.micros() < wakeAt_ && !focusMoves(); }
  Micros nextDue() const { return wakeAt_; } // kNever: nothing is due at any time

  // Runs the gesture inside the k-th turn from now (1: the next one), before anything else is delivered.
  void atYield(std::uint64_t k, Gesture gesture);
  std::uint64_t yields() const { return yields_; } // turns so far

  // For the window system.
  void attach(controls::Desktop& desktop);
  void detach();          // the last window's object is gone
  void expectGraveyard(); // a window was unloaded
  std::unique_ptr<controls::Peer> peerFor(controls::Timer& timer);
  int timerPeers() const { return static_cast<int>(timers_.size()); }

 private:
  class TimerPeer;
  bool focusMoves() const {
    if (!desktop_) return false;
    controls::Focus& focus = desktop_->focus();
    return focus.target() && focus.target() != focus.current();
  }
  void deliver();
  void deliverFocus();
  void runHooks();
  void runPosted();
  void runScheduled(Micros limit);
  void fireTimers(Micros limit);
  void setWakeUp();

  VirtualClock& clock_;
  controls::Desktop* desktop_ = nullptr;
  bool detached_ = false, graveyard_ = false;
  int depth_ = 0;
  Micros wakeAt_ = kNever;
  std::uint64_t yields_ = 0, nextHook_ = 0;
  std::deque<Gesture> posted_;
  std::multimap<Micros, Gesture> scheduled_;
  std::multimap<std::uint64_t, Gesture> hooks_;
  std::vector<TimerPeer*> timers_;
};

} // namespace headless
