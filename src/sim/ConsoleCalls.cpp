// The host's operations on the console: arguments checked, commands carried out, data words made.
#include "base/RuntimeError.h"
#include "sim/Console.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace sim {
namespace {

using ports::HostArg;
using Type = HostArg::Type;

constexpr std::uint32_t kMemberNotFound = 0x80020003, kTypeMismatch = 0x80020005, kOverflow = 0x8002000A,
                        kBadIndex = 0x8002000B, kBadParamCount = 0x8002000E;

[[noreturn]] void refuse(std::uint32_t code, const char* text) {
  throw base::RuntimeError(static_cast<std::int32_t>(code), text);
}

struct Operation {
  int dispid;
  int count;    // of arguments
  Type type[2]; // of each
};

constexpr Operation kOperations[]{
    {22, 1, {Type::I4, {}}},        // locked flag
    {26, 1, {Type::R8, {}}},        // receiver gain
    {27, 1, {Type::RefR8, {}}},     // phase, degrees
    {28, 1, {Type::RefR8, {}}},     // transmitter power
    {30, 1, {Type::R8, {}}},        // field, DAC units
    {31, 1, {Type::I4, {}}},        // mode
    {45, 0, {}},                    // reset the system
    {51, 1, {Type::RefI4, {}}},     // system value
    {52, 0, {}},                    // system value, back
    {197, 0, {}},                   // hardware state
    {198, 1, {Type::RefR8, {}}},    // frequency, MHz
    {199, 1, {Type::RefR8, {}}},    // receiver filter, Hz
    {200, 0, {}},                   // reset the lock hardware
    {201, 1, {Type::I4, {}}},       // data word; a reference is taken too
    {202, 2, {Type::I4, Type::R8}}, // loop constant
    {204, 1, {Type::R8, {}}},       // sweep width, DAC units
    {206, 1, {Type::R8, {}}},       // sweep speed, DAC units per second
};

void check(int dispid, std::span<const HostArg> args) {
  const auto* op = std::find_if(std::begin(kOperations), std::end(kOperations),
                                [dispid](const Operation& o) { return o.dispid == dispid; });
  if (op == std::end(kOperations)) refuse(kMemberNotFound, "Member not found");
  if (static_cast<int>(args.size()) != op->count) refuse(kBadParamCount, "Invalid number of parameters");
  for (std::size_t i = 0; i < args.size(); ++i) {
    const bool indexByReference = dispid == 201 && args[i].type == Type::RefI4;
    if (args[i].type != op->type[i] && !indexByReference) refuse(kTypeMismatch, "Type mismatch");
    if (!std::isfinite(args[i].value)) refuse(kOverflow, "Overflow");
  }
}

// A 16-bit data word as clients receive it.
double signed16(double value) {
  const auto bits = static_cast<std::uint32_t>(std::clamp(std::nearbyint(value), 0.0, 65535.0));
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits));
}

double limited16(double value) { return std::clamp(std::nearbyint(value), -32768.0, 32767.0); }

} // namespace

double Console::call(int dispid, std::span<const HostArg> args) {
  check(dispid, args);
  catchUp();
  return perform(dispid, args);
}

double Console::perform(int dispid, std::span<const HostArg> args) {
  const double value = args.empty() ? 0 : args[0].value;
  switch (dispid) {
  case 22:
    lockedFlag_ = value != 0;
    break;
  case 26:
    receiver_.setGain(value);
    break;
  case 27:
    receiver_.setPhase(value);
    break;
  case 28:
    setTxPower(value);
    break;
  case 30:
    setField(value);
    break;
  case 31:
    setMode(static_cast<std::int32_t>(value));
    break;
  case 45:
    powerUp();
    systemValue_ = 0;
    break;
  case 51:
    systemValue_ = static_cast<std::int32_t>(value);
    break;
  case 52:
    return systemValue_;
  case 197:
    return hardwareState();
  case 198:
    frequency_ = value;
    break;
  case 199:
    receiver_.setBandwidth(value);
    break;
  case 200:
    powerUp();
    break;
  case 201:
    return word(static_cast<std::int32_t>(value));
  case 202:
    setLoop(static_cast<std::int32_t>(value), args[1].value);
    break;
  case 204:
    setSweepWidth(value);
    break;
  case 206:
    sweep_.setSpeed(value);
    break;
  }
  return 0;
}

void Console::setTxPower(double power) {
  txPower_ = std::clamp(power, 0.0, 63.5);
  b1_ = 2 * std::numbers::pi * settings_.maxB1 * std::pow(10, (txPower_ - 63.5) / 20);
  receiver_.settle();
}

void Console::setField(double dac) {
  dac = std::clamp(std::nearbyint(dac), -kFieldLimit, kFieldLimit);
  sweep_.setCentre(dac);
  if (sweeping()) return followSweep();
  field_ = loopBase_ = dac;
  loopSum_ = 0;
  receiver_.settle();
}

void Console::setSweepWidth(double dac) {
  sweep_.setWidth(dac);
  if (sweeping()) followSweep();
}

void Console::setMode(std::int32_t code) {
  switch (code) {
  case 0:
    mode_ = Mode::Off;
    break;
  case 1:
    mode_ = Mode::Lock;
    loopBase_ = field_;
    loopSum_ = 0;
    loopLast_ = signal_.imag();
    judged_ = 0;
    break;
  case 2:
  case 5:
    mode_ = code == 2 ? Mode::Sweep : Mode::AutoSweep;
    sweep_.restart();
    followSweep();
    break;
  case 3:
    mode_ = Mode::Hold;
    break;
  case 7: {
    mode_ = Mode::Sample;
    const bool inside = std::any_of(spins_.begin(), spins_.end(), [this](const Spins& s) {
      const auto line = static_cast<std::size_t>(&s - spins_.data());
      return std::abs(lineOffset(line)) < 2 * std::numbers::pi * kPassBand;
    });
    receiver_.sampleNoise(inside ? Receiver::Signal::Inside : Receiver::Signal::Outside, noise_);
    break;
  }
  default:
    refuse(kOverflow, "No such lock mode");
  }
  receiver_.settle();
}

void Console::setLoop(std::int32_t index, double value) {
  switch (index) {
  case 0:
    loopP_ = value;
    break;
  case 1:
    loopI_ = value;
    break;
  case 2:
    loopD_ = value;
    break;
  default:
    refuse(kBadIndex, "No such loop constant");
  }
}

double Console::hardwareState() const {
  if (mode_ == Mode::AutoSweep || mode_ == Mode::Sample) return static_cast<double>(Mode::Sweep);
  return static_cast<double>(mode_);
}

double Console::word(std::int32_t index) const {
  switch (index) {
  case 0:
    return std::nearbyint(field_);
  case 1:
    return std::nearbyint(signal_.real());
  case 2:
    return std::nearbyint(signal_.imag());
  case 3:
  case 4:
  case 5:
  case 6:
  case 7:
    return word16(index);
  case 8:
    return 0;
  default:
    refuse(kBadIndex, "No such data word");
  }
}

double Console::word16(std::int32_t index) const {
  const bool automatic = mode_ == Mode::AutoSweep;
  if (!automatic || !sweep_.found()) {
    if (index == 6) return signed16(receiver_.noisePower());
    if (automatic || index == 5 || index == 7) return 0;
    return limited16(index == 3 ? judged_.real() : judged_.imag());
  }
  const HalfSweep& half = *sweep_.found();
  const double power = std::nearbyint(half.magnitude * half.magnitude);
  switch (index) {
  case 3:
    return limited16(half.level);
  case 4:
    return signed16(std::fmod(power, 65536));
  case 5:
    return signed16(std::floor(power / 65536));
  case 6:
    return limited16(half.position / 4);
  default:
    return limited16(half.phaseWord);
  }
}

} // namespace sim
