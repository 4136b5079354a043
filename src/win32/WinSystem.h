// The small ports on the system's own functions: clock, files, registry and starting programs.
#pragma once
#include "ports/Platform.h"

namespace win32 {

class WinClock : public ports::Clock {
 public:
  double now() override;
  std::string generalDateText(double at) override;
};

class WinFiles : public ports::Files {
 public:
  std::string append(const std::string& path, const std::string& text) override;
  bool exists(const std::string& path) override;
};

class WinShell : public ports::Shell {
 public:
  std::optional<ports::RegistryValue> registryValue(const std::string& key, const std::string& name) override;
  bool start(const std::string& program) override;
};

} // namespace win32
