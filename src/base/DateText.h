// Dates as a serial number, days since 1899-12-30 in local time, and as calendar fields and text.
#pragma once
#include <string>

namespace base {

struct DateFields {
  int year = 1899, month = 12, day = 30; // the day of serial 0
  int hour = 0, minute = 0, second = 0;  // 24-hour clock
  friend bool operator==(const DateFields&, const DateFields&) = default;
};

// Rounded to the nearest second. Invalid call (5) outside the years 100 to 9999. Before 1899-12-30 the part
// after the point still counts forward from midnight (-1.25 is 6 o'clock on the 29th).
DateFields dateFields(double serial);
double dateSerial(const DateFields& fields);

// Short date, a blank, long time: "11/21/2026 9:05:03 AM". At midnight the date alone; on the day of serial 0
// the time alone.
std::string generalDateText(const DateFields& fields);

} // namespace base
