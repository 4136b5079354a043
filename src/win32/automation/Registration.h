// The automation class in the registry: /RegServer, /UnregServer, /RegServerPerUser, /UnregServerPerUser.
#pragma once
#include "win32/Win.h"
#include <optional>
#include <string_view>

namespace win32 {

// Carries out a registration switch of the command line, without a word on the screen; '-' or '/', in any
// case. Returns the process's exit code, 0 on success, else the system's error number; nothing when there is
// no such switch. /RegServer registers for the whole machine, or for the user alone when the machine's
// registry may not be written.
std::optional<int> registrationSwitch(std::wstring_view commandLine);

bool hasSwitch(std::wstring_view commandLine, std::wstring_view name);

} // namespace win32
