// The window system's own headers, and the one place that includes them. Texts are in the system's ANSI code
// page throughout, as the models and the settings file hold them.
#pragma once
#include <windows.h>
// after windows.h
#include <commctrl.h>
#include <cstdint>

namespace win32 {

// A function of a system library that older systems lack; null there.
template <class F> F systemFunction(const char* library, const char* name) {
  HMODULE module = GetModuleHandleA(library);
  return module ? reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

} // namespace win32
