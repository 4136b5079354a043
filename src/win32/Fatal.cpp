#include "win32/Fatal.h"
#include "win32/Win.h"
#include <cstdio>

namespace win32 {

void fatal(const std::string& text) {
  std::fprintf(stderr, "%s\n", text.c_str());
  std::fflush(stderr);
  MessageBoxA(nullptr, text.c_str(), "Vantrel Lock", MB_OK | MB_ICONERROR | MB_TASKMODAL | MB_SETFOREGROUND);
  ExitProcess(3);
}

} // namespace win32
