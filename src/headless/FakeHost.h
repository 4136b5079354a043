// A host application that is only a notebook: it records every call with its exact types and answers as it is
// told. And the finder through which the program gets hold of it, or of the simulated console.
#pragma once
#include "headless/Transcript.h"
#include "headless/VirtualClock.h"
#include "ports/HostDispatch.h"
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace headless {

// "31 HostSetLockMode I4 3": identifier, operation, arguments with their types. An unknown identifier is
// named "?".
std::string callText(int dispid, std::span<const ports::HostArg> args);

class FakeHost {
 public:
  FakeHost(VirtualClock& clock, Transcript& transcript) : clock_(clock), transcript_(transcript) {}

  std::array<double, 9> words{}; // answers of HostGetLockData
  double hardwareState = 0;      // answer of HostGetLockHardwareState
  double systemValue = 0;        // answer of HostGetSystemValue
  // Asked first, for every call; nothing: the ordinary answer.
  std::function<std::optional<double>(int dispid, std::span<const ports::HostArg> args)> answer;
  Micros delay = 0;                 // virtual time each call takes
  std::map<int, Micros> delayOf;    // in place of delay, for one operation
  std::function<void()> pumpInside; // runs inside every call, as client calls may

  static constexpr long kServerGone = static_cast<std::int32_t>(0x800706BA);
  void fail(int dispid, long hresult = kServerGone) { failing_[dispid] = hresult; }
  void failAll(long hresult = kServerGone) { failAll_ = hresult; } // the host is gone
  void failNever() { failing_.clear(), failAll_.reset(); }

  double call(int dispid, std::span<const ports::HostArg> args); // a failing one is recorded as well
  std::uint64_t calls() const { return calls_; }
  int references() const { return references_; } // held by the program
  std::unique_ptr<ports::HostDispatch> reference();

 private:
  class Reference;
  double ordinaryAnswer(int dispid, std::span<const ports::HostArg> args) const;
  VirtualClock& clock_;
  Transcript& transcript_;
  std::map<int, long> failing_;
  std::optional<long> failAll_;
  std::uint64_t calls_ = 0;
  int references_ = 0;
};

class ScriptedFinder : public ports::HostFinder {
 public:
  using Source = std::function<std::unique_ptr<ports::HostDispatch>()>;
  ScriptedFinder(Source source, Transcript& transcript)
      : source_(std::move(source)), transcript_(transcript) {}

  std::unique_ptr<ports::HostDispatch> findRunningHost() override;
  // The next searches end so, one after the other; after them (and at first) the host runs or not as hostRuns
  // says.
  void thenFinds(std::initializer_list<bool> found) { next_.insert(next_.end(), found); }
  bool hostRuns = true;
  int searches() const { return searches_; }
  void setSource(Source source) { source_ = std::move(source); }

 private:
  Source source_;
  Transcript& transcript_;
  std::deque<bool> next_;
  int searches_ = 0;
};

} // namespace headless
