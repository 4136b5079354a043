// The lock log: a header block each time the lock is switched on, then at most one line of lock data per log
// interval. The file is opened for every write and closed at once, so others may read it at any time.
#pragma once
#include <cstdint>
#include <string>

class Program;

namespace LockLog {

// A log that cannot be written is told to the operator once (naming file and reason) and logging is switched
// off.
void WriteLogHeader(Program& program);
void WriteLogLine(Program& program, std::int32_t fieldDac, std::int32_t real, std::int32_t imag);

// The log's way of printing. Padded: the number in at least integerDigits and exactly decimals, five blanks
// in front, only its last width characters kept.
std::string paddedValue(double value, int integerDigits, int decimals, std::size_t width);
std::string dataLine(const std::string& date, std::int32_t dac, std::int32_t real, std::int32_t imag);

} // namespace LockLog
