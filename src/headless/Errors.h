// What stops a headless run: a failed expectation of a test or script, and the program's own end.
#pragma once
#include <exception>
#include <stdexcept>

namespace headless {

// A test or script expected something else. Never a RuntimeError, so that no error boundary of the program
// takes it.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Nothing can ever happen any more, or a modal window waits for a gesture that nobody scripted.
struct Stuck : Failure {
  using Failure::Failure;
};

// A message box, input box or file dialog that nobody expected, or another one than expected.
struct UnexpectedBox : Failure {
  using Failure::Failure;
};

// Platform::end() was called.
struct Ended : std::exception {
  const char* what() const noexcept override { return "the program ended"; }
};

} // namespace headless
