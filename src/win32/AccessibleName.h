// What a screen reader calls a control that has no label and shows something else than its name.
#pragma once
#include "win32/Win.h"
#include <string>

namespace win32 {

bool setAccessibleName(HWND window, const std::string& name); // false: the system has no such service
void clearAccessibleName(HWND window);

} // namespace win32
