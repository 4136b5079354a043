#include "headless/HeadlessPump.h"
#include "headless/Errors.h"
#include <algorithm>

namespace headless {

// Runs one timer model. A timer that is late comes once, not once per missed interval.
class HeadlessPump::TimerPeer : public controls::Peer {
 public:
  TimerPeer(HeadlessPump& pump, controls::Timer& timer) : pump_(pump), timer_(timer) {
    pump_.timers_.push_back(this);
    TimerPeer::sync(controls::Aspect::Value);
  }
  ~TimerPeer() override {
    std::erase(pump_.timers_, this);
    pump_.setWakeUp();
  }

  void sync(controls::Aspect) override {
    if (!timer_.running()) {
      due = kNever;
      interval_ = 0;
    } else if (timer_.interval() != interval_) {
      interval_ = timer_.interval();
      due = pump_.clock_.micros() + interval_ * kMillisecond;
    }
    pump_.setWakeUp();
  }

  void fire() {
    const Micros step = interval_ * kMillisecond, now = pump_.clock_.micros();
    due += step;
    if (due <= now) due = now + step;
    pump_.setWakeUp();
    timer_.fire();
  }

  Micros due = kNever;

 private:
  HeadlessPump& pump_;
  controls::Timer& timer_;
  int interval_ = 0;
};

std::unique_ptr<controls::Peer> HeadlessPump::peerFor(controls::Timer& timer) {
  return std::make_unique<TimerPeer>(*this, timer);
}

void HeadlessPump::setWakeUp() {
  wakeAt_ = kNever;
  if (!posted_.empty()) wakeAt_ = 0;
  if (!scheduled_.empty()) wakeAt_ = std::min(wakeAt_, scheduled_.begin()->first);
  for (const TimerPeer* timer : timers_) wakeAt_ = std::min(wakeAt_, timer->due);
}

void HeadlessPump::post(Gesture gesture) {
  posted_.push_back(std::move(gesture));
  setWakeUp();
}

void HeadlessPump::postAfter(Micros delay, Gesture gesture) {
  scheduled_.emplace(clock_.micros() + delay, std::move(gesture));
  setWakeUp();
}

void HeadlessPump::atYield(std::uint64_t k, Gesture gesture) {
  hooks_.emplace(yields_ + std::max<std::uint64_t>(k, 1), std::move(gesture));
  nextHook_ = hooks_.begin()->first;
}

void HeadlessPump::attach(controls::Desktop& desktop) {
  desktop_ = &desktop;
  detached_ = false;
}

void HeadlessPump::detach() {
  graveyard_ = false;
  detached_ = depth_ > 0; // a turn that is under way still empties the graveyard
  if (!detached_) desktop_ = nullptr;
  setWakeUp();
}

void HeadlessPump::expectGraveyard() { graveyard_ = true; }

void HeadlessPump::waitForMessage() {
  if (!nothingWaits()) return;
  if (wakeAt_ == kNever) throw Stuck("the program waits, but no timer runs and no gesture is scripted");
  clock_.advance(wakeAt_ - clock_.micros());
}

void HeadlessPump::deliver() {
  struct Depth {
    explicit Depth(HeadlessPump& p) : pump(p) { ++pump.depth_; }
    ~Depth() {
      if (--pump.depth_ == 0 && pump.detached_) pump.desktop_ = nullptr;
    }
    HeadlessPump& pump;
  } depth(*this);
  const Micros limit = clock_.micros();
  runHooks();
  deliverFocus();
  runPosted();
  runScheduled(limit);
  fireTimers(limit);
  if (desktop_) desktop_->emptyGraveyard();
  graveyard_ = desktop_ && !desktop_->graveyardEmpty(); // a gesture may still be running
  setWakeUp();
}

void HeadlessPump::deliverFocus() {
  if (focusMoves()) desktop_->focus().deliver();
}

void HeadlessPump::runHooks() {
  while (!hooks_.empty() && hooks_.begin()->first <= yields_) {
    const Gesture gesture = std::move(hooks_.begin()->second);
    hooks_.erase(hooks_.begin());
    nextHook_ = hooks_.empty() ? 0 : hooks_.begin()->first;
    gesture();
  }
}

void HeadlessPump::runPosted() {
  for (std::size_t left = posted_.size(); left > 0 && !posted_.empty(); --left) {
    const Gesture gesture = std::move(posted_.front());
    posted_.pop_front();
    setWakeUp();
    gesture();
    deliverFocus();
  }
}

void HeadlessPump::runScheduled(Micros limit) {
  while (!scheduled_.empty() && scheduled_.begin()->first <= limit) {
    const Gesture gesture = std::move(scheduled_.begin()->second);
    scheduled_.erase(scheduled_.begin());
    setWakeUp();
    gesture();
    deliverFocus();
  }
}

void HeadlessPump::fireTimers(Micros limit) {
  for (;;) {
    TimerPeer* next = nullptr;
    for (TimerPeer* timer : timers_)
      if (timer->due <= limit && (!next || timer->due < next->due)) next = timer;
    if (!next) return;
    next->fire(); // any timer may be gone now
    deliverFocus();
  }
}

} // namespace headless
