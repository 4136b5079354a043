#include "win32/WideText.h"
#include "win32/Win.h"

namespace win32 {

std::wstring wideText(std::string_view ansi) {
  const int length = static_cast<int>(ansi.size());
  std::wstring wide(ansi.size(), L'\0');
  wide.resize(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, ansi.data(), length, wide.data(), length)));
  return wide;
}

std::string ansiText(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int room = WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string ansi(static_cast<std::size_t>(room), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, ansi.data(), room, nullptr, nullptr);
  return ansi;
}

} // namespace win32
