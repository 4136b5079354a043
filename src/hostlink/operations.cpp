#include "base/Rounding.h"
#include "core/Program.h"
#include "hostlink/ActiveNMRAppInterface.h"

using ports::HostArg;

namespace ActiveNMRAppInterface {

namespace {
double call(Program& program, int dispid, std::initializer_list<HostArg> args = {}) {
  return program.HostApp->call(dispid, args);
}
} // namespace

void HostSetLockedFlag(Program& program, std::int32_t locked) { call(program, 22, {HostArg::i4(locked)}); }
void HostSetLockRxGain(Program& program, double gain) { call(program, 26, {HostArg::r8(gain)}); }
void HostSetLockPhase(Program& program, double degrees) { call(program, 27, {HostArg::refR8(degrees)}); }
void HostSetLockTxPower(Program& program, double power) { call(program, 28, {HostArg::refR8(power)}); }
void HostSetLockField(Program& program, double dac) { call(program, 30, {HostArg::r8(dac)}); }
void HostSetLockMode(Program& program, std::int32_t code) { call(program, 31, {HostArg::i4(code)}); }
void HostResetSystem(Program& program) { call(program, 45); }
void HostSetSystemValue(Program& program, std::int32_t value) { call(program, 51, {HostArg::refI4(value)}); }
std::int32_t HostGetSystemValue(Program& program) { return base::toInt32(call(program, 52)); }
std::int32_t HostGetLockHardwareState(Program& program) { return base::toInt32(call(program, 197)); }
void HostSetLockFrequency(Program& program, double megahertz) {
  call(program, 198, {HostArg::refR8(megahertz)});
}
void HostSetLockRxFilter(Program& program, double bandwidth) {
  call(program, 199, {HostArg::refR8(bandwidth)});
}
void HostResetLockHardware(Program& program) { call(program, 200); }

std::int32_t HostGetLockData(Program& program, std::int32_t word, IndexPassing passing) {
  const HostArg index = passing == IndexPassing::ByReference ? HostArg::refI4(word) : HostArg::i4(word);
  return base::toInt32(call(program, 201, {index}));
}

void HostSetLockLoopParam(Program& program, std::int32_t index, double value) {
  call(program, 202, {HostArg::i4(index), HostArg::r8(value)});
}

void HostSetLockSweepWidth(Program& program, double dac) { call(program, 204, {HostArg::r8(dac)}); }
void HostSetLockSweepSpeed(Program& program, double dacPerSecond) {
  call(program, 206, {HostArg::r8(dacPerSecond)});
}

} // namespace ActiveNMRAppInterface
