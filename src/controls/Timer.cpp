#include "controls/Timer.h"
#include "controls/Form.h"
#include <algorithm>

namespace controls {

Timer::Timer(Form& form, int intervalMs) : form_(form), interval_(intervalMs) {
  form_.timers_.push_back(this);
}

Timer::~Timer() { std::erase(form_.timers_, this); }

void Timer::changed() {
  if (peer_) peer_->sync(Aspect::Value);
}

void Timer::setEnabled(bool v) {
  if (enabled_ == v) return;
  enabled_ = v;
  changed();
}

void Timer::setInterval(int ms) {
  if (interval_ == ms) return;
  interval_ = ms;
  changed();
}

void Timer::fire() {
  if (firing_ || !running()) return;
  firing_ = true;
  struct Done {
    bool& flag;
    ~Done() { flag = false; }
  } done{firing_};
  form_.desktop().gesture([&] { Tick(); });
}

} // namespace controls
