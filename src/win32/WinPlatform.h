// The whole world outside on Windows, in one bundle. Initialises COM for its thread.
#pragma once
#include "win32/WinDialogs.h"
#include "win32/WinHost.h"
#include "win32/WinPump.h"
#include "win32/WinSettings.h"
#include "win32/WinSystem.h"
#include <functional>

namespace win32 {

class WinPlatform : public ports::Platform {
 public:
  WinPlatform();
  ~WinPlatform() override;
  WinPlatform(const WinPlatform&) = delete;
  WinPlatform& operator=(const WinPlatform&) = delete;

  std::string commandLine() override; // what stands behind the program's name
  std::string programFolder() override;
  bool anotherCopyRuns() override { return anotherCopy_; }
  [[noreturn]] void end() override;
  std::function<void()> beforeEnd; // what other processes must not be left with
  ports::VersionInfo version() override;
  ports::HostFinder& hostFinder() override { return hostFinder_; }
  ports::SettingsStore& settings() override { return settings_; }
  WinWindowSystem& windows() override { return windows_; }
  ports::Dialogs& dialogs() override { return dialogs_; }
  ports::Clock& clock() override { return clock_; }
  ports::Pump& pump() override { return pump_; }
  ports::Files& files() override { return files_; }
  ports::Shell& shell() override { return shell_; }

 private:
  struct Com {
    Com();
    ~Com();
  } com_;
  WinWindowSystem windows_;
  WinPump pump_{windows_};
  WinDialogs dialogs_{windows_};
  WinHostFinder hostFinder_;
  WinSettings settings_;
  WinClock clock_;
  WinFiles files_;
  WinShell shell_;
  HANDLE mutex_;
  bool anotherCopy_;
};

std::string programPath();
// The version resource of the running exe; the defaults where it has none.
ports::VersionInfo ownVersion();

} // namespace win32
