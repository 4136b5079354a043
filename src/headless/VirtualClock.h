// Time that passes only when somebody says so: microseconds since the start of the run.
#pragma once
#include "ports/Platform.h"
#include <cstdint>

namespace headless {

using Micros = std::int64_t;
inline constexpr Micros kMillisecond = 1000, kSecond = 1000000;

class VirtualClock : public ports::Clock {
 public:
  // startDate: the local date and time at which the run starts, days since 30 December 1899.
  explicit VirtualClock(double startDate = 45992.375) : startDate_(startDate) {} // 1 December 2025, 9 o'clock
  Micros micros() const { return micros_; }
  void advance(Micros by) { micros_ += by; }
  void setStartDate(double startDate) { startDate_ = startDate; }
  double now() override { return startDate_ + static_cast<double>(micros_) / (86400.0 * kSecond); }
  std::string generalDateText(double at) override;

 private:
  double startDate_;
  Micros micros_ = 0;
};

} // namespace headless
