// The run-time errors a conversion, a control's range check or a failed host call raises.
#pragma once
#include <stdexcept>
#include <string>

namespace base {

// number: the run-time's own error number (5, 6, 9, 13, 380, ...) or, for a failed automation call, its
// HRESULT.
struct RuntimeError : std::runtime_error {
  RuntimeError(long errorNumber, std::string errorText, std::string doing = {});

  long number;
  std::string text;    // e.g. "Overflow"
  std::string context; // what was being read or done; empty when nothing more is known

  RuntimeError within(const std::string& doing) const; // the same error with a context, unless it has one
  bool isAutomation() const { return number < 0; }
  std::string message() const; // what the operator is shown
};

inline constexpr long kInvalidCall = 5, kOverflow = 6, kSubscript = 9, kTypeMismatch = 13,
                      kInvalidValue = 380;

[[noreturn]] void raiseInvalidCall(std::string doing = {});
[[noreturn]] void raiseOverflow(std::string doing = {});
[[noreturn]] void raiseSubscript(std::string doing = {});
[[noreturn]] void raiseTypeMismatch(std::string doing = {});
[[noreturn]] void raiseInvalidValue(std::string doing = {});

// Runs f and drops a RuntimeError: for the places where a failure must not stop the rest. True when f ended
// well.
template <class F> bool ignoringErrors(F&& f) {
  try {
    f();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

} // namespace base
