// The simulated console as the host object that the program holds: any number of handles on one console, with
// faults on request.
#pragma once
#include "ports/HostDispatch.h"
#include "sim/Console.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace sim {

inline constexpr std::int32_t kServerUnavailable = static_cast<std::int32_t>(0x800706BAu);
inline constexpr std::int32_t kUnspecifiedFailure = static_cast<std::int32_t>(0x80004005u);

// What goes wrong. All off at the start; may be changed at any time.
struct Faults {
  bool noData = false;   // data word 0 reads -1, the others 0
  bool hostGone = false; // every call fails with kServerUnavailable and reaches nothing

  std::int32_t failWith = 0;     // HRESULT of the failing calls; 0: none fails
  std::optional<int> failDispid; // only this operation fails; empty: all do
  std::int64_t failFrom = 0;     // the first failing call, counting all calls from 1; 0: at once

  std::map<int, double> forcedWords;          // data words that read as given
  std::function<void(int dispid)> beforeCall; // runs first: a slow host, or a fault set at the right moment

  std::int64_t calls = 0; // made so far, failed ones too
};

// One console with its faults, shared by all handles; the host application is running while `running` is
// true.
struct Spectrometer {
  explicit Spectrometer(const Settings& settings = {}) : console(settings) {}
  Console console;
  Faults faults;
  bool running = true;
};

class SimHost : public ports::HostDispatch {
 public:
  explicit SimHost(std::shared_ptr<Spectrometer> spectrometer) : spectrometer_(std::move(spectrometer)) {}

  using ports::HostDispatch::call;
  double call(int dispid, std::span<const ports::HostArg> args) override;

 private:
  std::shared_ptr<Spectrometer> spectrometer_;
};

class SimHostFinder : public ports::HostFinder {
 public:
  explicit SimHostFinder(std::shared_ptr<Spectrometer> spectrometer)
      : spectrometer_(std::move(spectrometer)) {}
  std::unique_ptr<ports::HostDispatch> findRunningHost() override;

 private:
  std::shared_ptr<Spectrometer> spectrometer_;
};

} // namespace sim
