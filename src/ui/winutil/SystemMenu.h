// The lock commands in the main window's system menu while it is minimised.
#pragma once
#include <cstdint>

class Program;

namespace SystemMenu {

inline constexpr unsigned kSeparator = 60000, kLockOn = 60001, kLockOff = 60002, kLockHold = 60003;

void AddLockSystemMenu(Program& program);
void RemoveLockSystemMenu(Program& program);
void UpdateLockSystemMenu(Program& program); // check marks from LockMode
void HookMainWindow(Program& program);
void UnhookMainWindow(Program& program);
void LockMenuWindowProc(Program& program, std::uintptr_t wParam); // Pumps (a mode change may run inside).

} // namespace SystemMenu
