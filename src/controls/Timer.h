// A window's timer. It runs while enabled with an interval above 0, and never raises its event while the
// previous one is still running: a host slower than the interval must not grow the stack.
#pragma once
#include "base/Event.h"
#include "controls/Peer.h"
#include <memory>

namespace controls {

class Form;

class Timer {
 public:
  Timer(Form& form, int intervalMs);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  bool enabled() const { return enabled_; }
  void setEnabled(bool v);
  int interval() const { return interval_; } // milliseconds, 0: stopped
  void setInterval(int ms);
  bool running() const { return enabled_ && interval_ > 0; }
  bool firing() const { return firing_; }
  base::Event<> Tick;
  void fire(); // gesture: the time is up
  Form& form() const { return form_; }
  void attachPeer(std::unique_ptr<Peer> peer) { peer_ = std::move(peer); }

 private:
  void changed();
  Form& form_;
  int interval_;
  bool enabled_ = false, firing_ = false;
  std::unique_ptr<Peer> peer_;
};

} // namespace controls
