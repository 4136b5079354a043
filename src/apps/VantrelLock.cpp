// The lock panel on Windows.
#include "base/RuntimeError.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "win32/Fatal.h"
#include "win32/WinPlatform.h"
#include "win32/automation/ComServer.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return win32::guarded([] {
    const wchar_t* commandLine = GetCommandLineW();
    if (const auto exitCode = win32::registrationSwitch(commandLine)) return *exitCode;
    win32::ServingTurn turn;
    if (turn.isSpare(commandLine)) return 0;
    win32::WinPlatform platform;
    Program program(platform);
    win32::ComServer server(program);
    platform.beforeEnd = [&server] { server.withdraw(); };
    vbLock_mod::Main(program);
    return 0;
  });
}
