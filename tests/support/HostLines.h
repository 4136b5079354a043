// The lines a transcript shows for host calls, with the types each operation must use, so that a test reads
// as the list of what it expects: expectCalls({host::mode(3), host::field(0), host::readData()}).
#pragma once
#include "headless/FakeHost.h"
#include <string>
#include <vector>

namespace host {

using ports::HostArg;
using Lines = std::vector<std::string>;

inline std::string line(int dispid, std::initializer_list<HostArg> args = {}) {
  return headless::callText(dispid, std::span<const HostArg>(args.begin(), args.size()));
}
inline std::string lockedFlag(int v) { return line(22, {HostArg::i4(v)}); } // -1 locked, 0 not
inline std::string rxGain(double v) { return line(26, {HostArg::r8(v)}); }
inline std::string phase(double degrees) { return line(27, {HostArg::refR8(degrees)}); }
inline std::string txPower(double v) { return line(28, {HostArg::refR8(v)}); }
inline std::string field(double dac) { return line(30, {HostArg::r8(dac)}); }
inline std::string mode(int code) { return line(31, {HostArg::i4(code)}); }
inline std::string resetSystem() { return line(45); }
inline std::string setSystemValue(int v) { return line(51, {HostArg::refI4(v)}); }
inline std::string getSystemValue() { return line(52); }
inline std::string hardwareState() { return line(197); }
inline std::string frequency(double megahertz) { return line(198, {HostArg::refR8(megahertz)}); }
inline std::string rxFilter(double bandwidth) { return line(199, {HostArg::refR8(bandwidth)}); }
inline std::string resetHardware() { return line(200); }
inline std::string dataWord(int index) { return line(201, {HostArg::i4(index)}); }
inline std::string loopParam(int index, double v) { return line(202, {HostArg::i4(index), HostArg::r8(v)}); }
inline std::string sweepWidth(double dac) { return line(204, {HostArg::r8(dac)}); }
inline std::string sweepSpeed(double v) { return line(206, {HostArg::r8(v)}); }

// Words 0 to 8, as every read of the lock data asks for them: the index by reference.
inline Lines readData() {
  Lines lines;
  for (int i = 0; i < 9; ++i) lines.push_back(line(201, {HostArg::refI4(i)}));
  return lines;
}

inline void append(Lines& to, const Lines& more) { to.insert(to.end(), more.begin(), more.end()); }

// A data sample beside the line at the given lock frequency.
inline Lines sample(double megahertz) {
  Lines lines{frequency(megahertz + 0.013245), mode(7), frequency(megahertz)};
  append(lines, readData());
  return lines;
}

inline Lines holdAt(double dac) { return {mode(3), field(dac)}; }
// Field, width and the speed twice, as the sweep bounds are sent outside start-up.
inline Lines sweepSettings(double centre, double width, double speed) {
  return {field(centre), sweepWidth(width), sweepSpeed(speed), sweepSpeed(speed)};
}
inline Lines loopConstants(double p, double i, double d) {
  return {loopParam(0, p), loopParam(1, i), loopParam(2, d)};
}

// One line or several, as the builders return them.
struct Item {
  Lines lines;
  Item(std::string one) : lines{std::move(one)} {}
  Item(const char* one) : lines{one} {}
  Item(Lines several) : lines(std::move(several)) {}
};

inline Lines flat(std::initializer_list<Item> items) {
  Lines all;
  for (const Item& item : items) append(all, item.lines);
  return all;
}

} // namespace host
