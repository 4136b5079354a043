// The system's own words for its error numbers and HRESULTs.
#pragma once
#include "win32/Win.h"
#include <string>

namespace win32 {

std::string systemText(DWORD error); // one line, without a line end

} // namespace win32
