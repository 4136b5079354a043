// Settings in memory that keep a list of what was read and written, in order.
#pragma once
#include "headless/HeadlessSettings.h"
#include <string>
#include <vector>

namespace support {

class RecordingSettings : public ports::SettingsStore {
 public:
  explicit RecordingSettings(headless::MemorySettings& memory) : memory_(memory) {}

  struct Read {
    std::string key, fallback; // key: "[Section] Key"
    int capacity;
  };
  std::vector<Read> reads;
  std::vector<std::string> lists;  // sections whose keys were listed
  std::vector<std::string> writes; // "[Section] Key=value" or "copy a to b", the failed ones too

  std::string read(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& fallback, int capacity) override {
    reads.push_back({"[" + section + "] " + key, fallback, capacity});
    return memory_.read(path, section, key, fallback, capacity);
  }
  std::string keyList(const std::string& path, const std::string& section, int capacity) override {
    lists.push_back(section);
    return memory_.keyList(path, section, capacity);
  }
  bool write(const std::string& path, const std::string& section, const std::string& key,
             const std::string& value) override {
    writes.push_back("[" + section + "] " + key + "=" + value);
    return memory_.write(path, section, key, value);
  }
  std::string error() const override { return memory_.error(); }
  bool copyFile(const std::string& from, const std::string& to) override {
    writes.push_back("copy " + from + " to " + to);
    return memory_.copyFile(from, to);
  }

 private:
  headless::MemorySettings& memory_;
};

} // namespace support
