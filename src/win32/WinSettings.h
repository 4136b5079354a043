// The settings file through the system's own private-profile functions.
#pragma once
#include "ports/SettingsStore.h"

namespace win32 {

class WinSettings : public ports::SettingsStore {
 public:
  std::string read(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& fallback, int capacity) override;
  std::string keyList(const std::string& path, const std::string& section, int capacity) override;
  bool write(const std::string& path, const std::string& section, const std::string& key,
             const std::string& value) override;
  std::string error() const override { return error_; }
  bool copyFile(const std::string& from, const std::string& to) override;

 private:
  bool done(bool ok);
  std::string error_;
};

} // namespace win32
