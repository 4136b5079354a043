// The system's ANSI code page to UTF-16 and back, for interfaces that know only UTF-16.
#pragma once
#include <string>
#include <string_view>

namespace win32 {

std::wstring wideText(std::string_view ansi);
std::string ansiText(std::wstring_view wide);

} // namespace win32
