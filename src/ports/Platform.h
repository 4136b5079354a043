// Everything the program asks of the world outside, in one bundle.
#pragma once
#include "ports/Dialogs.h"
#include "ports/HostDispatch.h"
#include "ports/SettingsStore.h"
#include "ports/WindowSystem.h"
#include <cstdint>
#include <optional>
#include <string>

namespace ports {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual double now() = 0; // local date and time, days since 30 December 1899
  virtual std::string
  generalDateText(double at) = 0; // short date, a blank, long time, as the user's system writes them
};

class Pump {
 public:
  virtual ~Pump() = default;
  // Delivers what is waiting: input, timers, focus moves, client calls. Returns the number of loaded windows.
  // Pumps: handlers, ticks and client calls may run inside.
  virtual int doEvents() = 0;
  virtual void waitForMessage() = 0; // returns when something is waiting; delivers nothing
};

class Files {
 public:
  virtual ~Files() = default;
  // Appends to a file, made when missing, closed again at once. Empty on success, else the system's reason.
  virtual std::string append(const std::string& path, const std::string& text) = 0;
  virtual bool exists(const std::string& path) = 0;
};

// A registry value as stored: text with its raw characters (a NUL may stand inside), or a 32-bit number.
struct RegistryValue {
  bool isNumber = false;
  std::string text;
  std::uint32_t number = 0;
};

class Shell {
 public:
  virtual ~Shell() = default;
  // A value below the local-machine root, opened with all-access rights; at most 1024 characters.
  virtual std::optional<RegistryValue> registryValue(const std::string& key, const std::string& name) = 0;
  virtual bool start(const std::string& program) = 0; // in a normal window; false when it cannot be started
};

// The program's own version information.
struct VersionInfo {
  std::string title, description, legalNotice;
  int major = 3, minor = 0, revision = 81;
};

class Platform {
 public:
  virtual ~Platform() = default;
  virtual std::string commandLine() = 0;
  virtual std::string programFolder() = 0; // "E:\tools\lock"
  virtual bool anotherCopyRuns() = 0;
  [[noreturn]] virtual void end() = 0; // the process ends at once, no window is asked
  virtual VersionInfo version() = 0;
  virtual HostFinder& hostFinder() = 0;
  virtual SettingsStore& settings() = 0;
  virtual WindowSystem& windows() = 0;
  virtual Dialogs& dialogs() = 0;
  virtual Clock& clock() = 0;
  virtual Pump& pump() = 0;
  virtual Files& files() = 0;
  virtual Shell& shell() = 0;
};

} // namespace ports
