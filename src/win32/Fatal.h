// The end for what must never happen: shown to the operator, then the process ends. No exception may cross a
// window procedure.
#pragma once
#include <exception>
#include <string>

namespace win32 {

[[noreturn]] void fatal(const std::string& text);

template <class F> auto guarded(F&& f) -> decltype(f()) {
  try {
    return f();
  } catch (const std::exception& e) {
    fatal(e.what());
  } catch (...) {
    fatal("Unexpected error");
  }
}

} // namespace win32
