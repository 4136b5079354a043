// The settings store without Windows: on real files, and in memory for tests. Both follow the rules of
// IniFile.
#pragma once
#include "headless/IniFile.h"
#include "ports/SettingsStore.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace headless {

// A file is read whole and kept until its time or size changes, so an edit from outside is seen by the next
// read. A write goes to a new file beside it, which then takes its name: a failure at any moment leaves the
// old file whole.
class FileSettings : public ports::SettingsStore {
 public:
  std::string read(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& fallback, int capacity) override;
  std::string keyList(const std::string& path, const std::string& section, int capacity) override;
  bool write(const std::string& path, const std::string& section, const std::string& key,
             const std::string& value) override;
  std::string error() const override { return error_; }
  bool copyFile(const std::string& from, const std::string& to) override;

 private:
  struct Kept {
    std::optional<IniFile> file; // empty: there is no such file
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    bool settled = false; // old enough when it was read that a later edit cannot carry the same time
  };

  Kept& current(const std::string& path);
  bool failed(const std::string& reason);

  std::map<std::string, Kept> kept_;
  std::string error_;
};

class MemorySettings : public ports::SettingsStore {
 public:
  std::string read(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& fallback, int capacity) override;
  std::string keyList(const std::string& path, const std::string& section, int capacity) override;
  bool write(const std::string& path, const std::string& section, const std::string& key,
             const std::string& value) override;
  std::string error() const override { return error_; }
  bool copyFile(const std::string& from, const std::string& to) override;

  // The whole text of a file, which exists from now on; may be changed freely.
  std::string& text(const std::string& path) { return texts_[path]; }
  bool exists(const std::string& path) const { return texts_.contains(path); }
  void remove(const std::string& path) { texts_.erase(path); }

  // From now on every write and copy fails with this reason; an empty reason lets them pass again.
  void failWrites(const std::string& reason) { failure_ = reason; }

 private:
  IniFile& parsed(const std::string& path);

  std::map<std::string, std::string> texts_;
  std::map<std::string, std::optional<IniFile>> parsed_; // refreshed when the text differs
  std::string failure_, error_;
};

} // namespace headless
