#include "base/DateText.h"

#include "base/RuntimeError.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace base {

namespace {

constexpr int kSecondsPerDay = 86400;
constexpr double kFirstDay = -657434, kLastDay = 2958465; // 0100-01-01, 9999-12-31

std::chrono::sys_days toDays(int year, int month, int day) {
  return std::chrono::sys_days(std::chrono::year_month_day(std::chrono::year(year),
                                                           std::chrono::month(static_cast<unsigned>(month)),
                                                           std::chrono::day(static_cast<unsigned>(day))));
}

std::chrono::sys_days dayZero() { return toDays(1899, 12, 30); }

} // namespace

DateFields dateFields(double serial) {
  double day = std::trunc(serial);
  if (!(day >= kFirstDay && day <= kLastDay)) raiseInvalidCall();
  int seconds = static_cast<int>(std::floor(std::fabs(serial - day) * kSecondsPerDay + 0.5));
  if (seconds == kSecondsPerDay) {
    if (day == kLastDay) raiseInvalidCall();
    day += 1;
    seconds = 0;
  }
  const std::chrono::year_month_day date(dayZero() + std::chrono::days(static_cast<int>(day)));
  DateFields fields;
  fields.year = static_cast<int>(date.year());
  fields.month = static_cast<int>(static_cast<unsigned>(date.month()));
  fields.day = static_cast<int>(static_cast<unsigned>(date.day()));
  fields.hour = seconds / 3600;
  fields.minute = seconds / 60 % 60;
  fields.second = seconds % 60;
  return fields;
}

double dateSerial(const DateFields& f) {
  const double day = static_cast<double>((toDays(f.year, f.month, f.day) - dayZero()).count());
  const double part = (f.hour * 3600 + f.minute * 60 + f.second) / static_cast<double>(kSecondsPerDay);
  return day < 0 ? day - part : day + part;
}

std::string generalDateText(const DateFields& f) {
  const DateFields zero;
  const bool noDate = f.year == zero.year && f.month == zero.month && f.day == zero.day;
  const bool noTime = f.hour == 0 && f.minute == 0 && f.second == 0;
  char date[48], time[48];
  std::snprintf(date, sizeof date, "%d/%d/%d", f.month, f.day, f.year);
  const int hour = f.hour % 12 == 0 ? 12 : f.hour % 12;
  std::snprintf(time, sizeof time, "%d:%02d:%02d %s", hour, f.minute, f.second, f.hour < 12 ? "AM" : "PM");
  if (noDate) return time;
  return noTime ? std::string(date) : std::string(date) + " " + time;
}

} // namespace base
