// The whole world outside the program, without a window system, a host or a disk: every port with its
// scripted twin, and one transcript of what the program did, in order.
#pragma once
#include "headless/FakeHost.h"
#include "headless/HeadlessPump.h"
#include "headless/HeadlessSettings.h"
#include "headless/HeadlessWindows.h"
#include "headless/MemoryFiles.h"
#include "headless/ScriptedDialogs.h"
#include "headless/Transcript.h"
#include "headless/VirtualClock.h"
#include "ports/Platform.h"

namespace headless {

class HeadlessPlatform : public ports::Platform {
 public:
  HeadlessPlatform();

  // Programmable.
  std::string command, folder = "C:\\tools\\lock";
  bool otherCopyRuns = false;
  ports::VersionInfo versionInfo{"Vantrel Lock", "Field-frequency lock control", "", 3, 0, 81};
  void useSettings(ports::SettingsStore& store) { settings_ = &store; }    // in place of the ones in memory
  static constexpr const char* kIniPath = "C:\\pelorin\\config\\LOCK.INI"; // of a program in the folder above

  Transcript& transcript() { return transcript_; }
  MemorySettings& memorySettings() { return memorySettings_; }
  FakeHost& host() { return host_; }
  bool ended() const { return ended_; }
  void recordStatus(); // from now on the status bar's fourth text is in the transcript whenever it changes

  std::string commandLine() override { return command; }
  std::string programFolder() override { return folder; }
  bool anotherCopyRuns() override { return otherCopyRuns; }
  [[noreturn]] void end() override; // throws Ended
  ports::VersionInfo version() override { return versionInfo; }
  ScriptedFinder& hostFinder() override { return finder_; }
  ports::SettingsStore& settings() override { return *settings_; }
  HeadlessWindows& windows() override { return windows_; }
  ScriptedDialogs& dialogs() override { return dialogs_; }
  VirtualClock& clock() override { return clock_; }
  HeadlessPump& pump() override { return pump_; }
  MemoryFiles& files() override { return files_; }
  FakeShell& shell() override { return shell_; }

 private:
  Transcript transcript_;
  VirtualClock clock_;
  HeadlessPump pump_{clock_};
  HeadlessWindows windows_{pump_, transcript_};
  ScriptedDialogs dialogs_{pump_, transcript_};
  MemorySettings memorySettings_;
  ports::SettingsStore* settings_ = &memorySettings_;
  MemoryFiles files_{transcript_};
  FakeShell shell_;
  FakeHost host_{clock_, transcript_};
  ScriptedFinder finder_;
  bool ended_ = false;
};

} // namespace headless
