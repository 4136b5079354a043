#include "ui/winutil/SystemMenu.h"
#include "core/Program.h"
#include "ports/WindowSystem.h"
#include "ui/main/frmLock.h"

namespace SystemMenu {

namespace {

void check(Program& program, unsigned id, bool checked) {
  program.platform.windows().checkSystemItem(program.frmLock.get(), id, checked);
}

constexpr unsigned kNone = 0;

void checkOnly(Program& program, unsigned id) {
  for (const unsigned item : {kLockOn, kLockOff, kLockHold}) check(program, item, item == id);
}

void choose(Program& program, unsigned id, int button) {
  checkOnly(program, id);
  program.frmLock->pressModeButton(button);
}

} // namespace

void AddLockSystemMenu(Program& program) {
  ports::WindowSystem& windows = program.platform.windows();
  frmLock& main = program.frmLock.get();
  windows.insertSystemItem(main, kLockOn, "Lock O&n");
  windows.insertSystemItem(main, kLockOff, "&Lock Of&f");
  windows.insertSystemItem(main, kLockHold, "&Lock &Hold");
  windows.insertSystemItem(main, kSeparator, "-");
  UpdateLockSystemMenu(program);
}

void RemoveLockSystemMenu(Program& program) {
  UpdateLockSystemMenu(program);
  ports::WindowSystem& windows = program.platform.windows();
  for (const unsigned item : {kLockOn, kLockOff, kLockHold, kSeparator})
    windows.deleteSystemItem(program.frmLock.get(), item);
}

void UpdateLockSystemMenu(Program& program) {
  switch (program.record.LockMode) {
  case kModeOff:
    return checkOnly(program, kLockOff);
  case kModeLock:
    return checkOnly(program, kLockOn);
  case kModeSweep:
    return checkOnly(program, kNone);
  case kModeHold:
    return checkOnly(program, kLockHold);
  default:
    return; // the automatic modes leave the marks as they are
  }
}

void HookMainWindow(Program& program) {
  program.platform.windows().hook(program.frmLock.get(), [&program](std::uintptr_t wParam) {
    // A mode change that fails is reported here, so that the message still reaches the window's own
    // procedure.
    program.desktop.gesture([&] { LockMenuWindowProc(program, wParam); });
  });
}

void UnhookMainWindow(Program& program) { program.platform.windows().unhook(program.frmLock.get()); }

// Looks at wParam only, whatever the message: the identifiers are unlikely anywhere but in a system command.
void LockMenuWindowProc(Program& program, std::uintptr_t wParam) {
  switch (wParam) {
  case kLockOn:
    return choose(program, kLockOn, frmLock::ButtonLock);
  case kLockOff:
    return choose(program, kLockOff, frmLock::ButtonOff);
  case kLockHold:
    return choose(program, kLockHold, frmLock::ButtonHold);
  case ports::kSystemClose:
    return UnhookMainWindow(program);
  default:
    return;
  }
}

} // namespace SystemMenu
