// The automation interface as a table: the members in the fixed order of the interface, with their names,
// types, dispatch identifiers, help texts and the call each one makes. The type library, the documentation
// and late-bound calls are all held against it.
#pragma once
#include "automation/NMRLock.h"
#include <array>
#include <string_view>
#include <variant>

namespace automation {

inline constexpr std::string_view kClassName = "VantrelLock.NMRLock"; // also the source of every error

enum class MemberKind { Method, PropertyGet, PropertyPut };
enum class ValueType { None, Int16, Int32, Single, Text };
enum class Passing { None, ByValue, OptionalByReference };

// An argument or a result; what it holds fits the member's declared type.
using Value = std::variant<std::monostate, std::int16_t, std::int32_t, float, std::string>;

struct Member {
  int number; // place in the interface, from 1
  std::string_view name;
  MemberKind kind;
  long dispid; // the two accessors of a property share one
  std::string_view argument;
  ValueType argumentType;
  Passing passing;
  ValueType result;
  std::string_view help;
  Value (*run)(NMRLock& lock, const Value& argument);
};

namespace detail {

template <void (NMRLock::*Call)()>
constexpr Member method(int number, std::string_view name, long dispid, std::string_view help) {
  return {number,
          name,
          MemberKind::Method,
          dispid,
          {},
          ValueType::None,
          Passing::None,
          ValueType::None,
          help,
          [](NMRLock& lock, const Value&) -> Value { return (lock.*Call)(), Value{}; }};
}

template <auto Call>
constexpr Member get(int number, std::string_view name, long dispid, ValueType type, std::string_view help) {
  return {number,
          name,
          MemberKind::PropertyGet,
          dispid,
          {},
          ValueType::None,
          Passing::None,
          type,
          help,
          [](NMRLock& lock, const Value&) -> Value { return (lock.*Call)(); }};
}

template <class T, void (NMRLock::*Call)(T)>
constexpr Member put(int number, std::string_view name, long dispid, std::string_view argument,
                     ValueType type, std::string_view help) {
  return {number,
          name,
          MemberKind::PropertyPut,
          dispid,
          argument,
          type,
          Passing::ByValue,
          ValueType::None,
          help,
          [](NMRLock& lock, const Value& value) -> Value {
            return (lock.*Call)(std::get<std::remove_cvref_t<T>>(value)), Value{};
          }};
}

} // namespace detail

using enum ValueType;

// clang-format off
inline constexpr std::array<Member, 30> kMembers = {{
  detail::method<&NMRLock::ExitLockApp>(1, "ExitLockApp", 1, "Ends the program at once; nothing is asked or saved."),
  {2, "ShowLockWindow", MemberKind::Method, 2, "Modality", Int32, Passing::OptionalByReference, None,
   "Shows the main window and the panels that are open. The argument is ignored.",
   [](NMRLock& lock, const Value&) -> Value { return lock.ShowLockWindow(), Value{}; }},
  detail::get<&NMRLock::LockSweepSpeed>(3, "LockSweepSpeed", 3, Int32, "Speed of the field sweep, DAC units per second."),
  detail::put<std::int32_t, &NMRLock::putLockSweepSpeed>(4, "LockSweepSpeed", 3, "speed", Int32, "Speed of the field sweep, DAC units per second."),
  detail::get<&NMRLock::LockSweepWidth>(5, "LockSweepWidth", 4, Int32, "Width of the field sweep, DAC units."),
  detail::put<std::int32_t, &NMRLock::putLockSweepWidth>(6, "LockSweepWidth", 4, "Width", Int32, "Width of the field sweep, DAC units."),
  detail::put<float, &NMRLock::putLockFieldCenter>(7, "LockFieldCenter", 5, "value", Single, "Centre of the field, DAC units, -131068 to 131068 in steps of 4."),
  detail::get<&NMRLock::LockFieldCenter>(8, "LockFieldCenter", 5, Single, "Centre of the field, DAC units, -131068 to 131068 in steps of 4."),
  detail::put<float, &NMRLock::putLockSolventPPM>(9, "LockSolventPPM", 6, "ppm", Single, "Shift of the solvent, ppm. Writing retunes the lock frequency; reading gives the chosen solvent's shift."),
  detail::get<&NMRLock::LockSolventPPM>(10, "LockSolventPPM", 6, Single, "Shift of the solvent, ppm. Writing retunes the lock frequency; reading gives the chosen solvent's shift."),
  detail::put<const std::string&, &NMRLock::putLockSolventText>(11, "LockSolventText", 7, "solventname", Text, "Name of the solvent, spelled as in the settings file."),
  detail::get<&NMRLock::LockSolventText>(12, "LockSolventText", 7, Text, "Name of the solvent, spelled as in the settings file."),
  detail::put<float, &NMRLock::putLockTxPower>(13, "LockTxPower", 8, "power", Single, "Transmitter power. Reads back as twice the value written."),
  detail::get<&NMRLock::LockTxPower>(14, "LockTxPower", 8, Single, "Transmitter power. Reads back as twice the value written."),
  detail::put<float, &NMRLock::putLockRxGain>(15, "LockRxGain", 9, "gain", Single, "Receiver gain, a whole number."),
  detail::get<&NMRLock::LockRxGain>(16, "LockRxGain", 9, Single, "Receiver gain, a whole number."),
  detail::put<float, &NMRLock::putLockNMRPhase>(17, "LockNMRPhase", 10, "phase", Single, "Lock phase, degrees. Stored now, sent when the parameters are next applied."),
  detail::get<&NMRLock::LockNMRPhase>(18, "LockNMRPhase", 10, Single, "Lock phase, degrees. Stored now, sent when the parameters are next applied."),
  detail::get<&NMRLock::GetLockState>(19, "GetLockState", 11, Int16, "256 x status + mode; 513 when locked."),
  detail::get<&NMRLock::LockLevel>(20, "LockLevel", 12, Single, "Level of the lock signal, as the level meter shows it."),
  detail::put<std::int16_t, &NMRLock::putLockLoopChar>(21, "LockLoopChar", 13, "loopindex", Int16, "Accepted and ignored."),
  detail::method<&NMRLock::StartLock>(22, "StartLock", 14, "Presses the Lock button."),
  detail::method<&NMRLock::StartAutoPhase>(23, "StartAutoPhase", 15, "Presses the Phase button."),
  detail::method<&NMRLock::StartAutoLock>(24, "StartAutoLock", 16, "Presses the Auto button."),
  detail::method<&NMRLock::StartHold>(25, "StartHold", 17, "Presses the Hold button."),
  detail::method<&NMRLock::StartSweep>(26, "StartSweep", 18, "Presses the Sweep button."),
  detail::method<&NMRLock::StopLock>(27, "StopLock", 19, "Presses the Off button."),
  detail::method<&NMRLock::HideWindows>(28, "HideWindows", 20, "Hides the main window and all panels and stops the display."),
  detail::method<&NMRLock::MinimizeLockWindow>(29, "MinimizeLockWindow", 21, "Minimises the main window, hides the open panels and stops the display."),
  detail::get<&NMRLock::hWndLockWindow>(30, "hWndLockWindow", 22, Int32, "Handle of the main window."),
}};
// clang-format on

} // namespace automation
