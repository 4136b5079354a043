// One handler for one event, bound in one line. Raising an unbound event does nothing.
#pragma once
#include <functional>
#include <utility>

namespace base {

template <class... Args> class Event {
 public:
  template <class F> void operator=(F&& handler) { handler_ = std::forward<F>(handler); }
  explicit operator bool() const { return static_cast<bool>(handler_); }

  void operator()(Args... args) const {
    if (!handler_) return;
    auto handler = handler_; // the handler may unload the window that owns this event
    handler(args...);
  }

 private:
  std::function<void(Args...)> handler_;
};

} // namespace base
