// The host application's automation object as the program calls it: by dispatch identifier, positional
// arguments.
#pragma once
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>

namespace ports {

// One argument with its exact VARIANT type. By-reference types carry a copy: the program never looks at what
// the host may write back.
struct HostArg {
  enum class Type { I4, R8, RefI4, RefR8 };
  Type type;
  double value; // every 32-bit whole number is exact in a double

  static HostArg i4(std::int32_t v) { return {Type::I4, static_cast<double>(v)}; }
  static HostArg r8(double v) { return {Type::R8, v}; }
  static HostArg refI4(std::int32_t v) { return {Type::RefI4, static_cast<double>(v)}; }
  static HostArg refR8(double v) { return {Type::RefR8, v}; }
  friend bool operator==(const HostArg&, const HostArg&) = default;
};

class HostDispatch {
 public:
  virtual ~HostDispatch() = default;

  // One method call. Returns the result as a number (0 when the host returns nothing). A failed call raises
  // base::RuntimeError with the HRESULT as its (negative) number. Pumps: handlers and client calls may run
  // inside.
  virtual double call(int dispid, std::span<const HostArg> args) = 0;

  double call(int dispid, std::initializer_list<HostArg> args) {
    return call(dispid, std::span<const HostArg>(args.begin(), args.size()));
  }
};

class HostFinder {
 public:
  virtual ~HostFinder() = default;

  // The running host object; null when the host is not running. Never starts the host.
  virtual std::unique_ptr<HostDispatch> findRunningHost() = 0;
};

} // namespace ports
