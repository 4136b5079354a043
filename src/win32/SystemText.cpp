#include "win32/SystemText.h"

namespace win32 {

std::string systemText(DWORD error) {
  char text[512]{};
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                                    FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                nullptr, error, 0, text, sizeof(text), nullptr);
  while (length > 0 && static_cast<unsigned char>(text[length - 1]) <= ' ') --length;
  if (length > 0) return {text, length};
  wsprintfA(text, "Error 0x%08lX", error);
  return text;
}

} // namespace win32
