// A private-profile settings file: [section], key=value, ';' comments. Paths name the file on every call.
#pragma once
#include <string>
#include <string_view>

namespace ports {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The value of a key, or fallback (less its trailing blanks) when file, section or key is missing; at most
  // capacity - 1 characters (capacity 255: 254). Sections and keys match in any case.
  virtual std::string read(const std::string& path, const std::string& section, const std::string& key,
                           const std::string& fallback, int capacity) = 0;

  // All key names of a section in file order, each ended by a NUL, as the platform's reader fills a zeroed
  // buffer of the given capacity: at most capacity - 2 characters before the last NUL, the last name cut when
  // the list is longer.
  virtual std::string keyList(const std::string& path, const std::string& section, int capacity) = 0;

  // False when nothing was written (vanished folder, read-only file, full disk); error() then names the
  // reason. A value equal to the one in the file leaves the file as it is.
  virtual bool write(const std::string& path, const std::string& section, const std::string& key,
                     const std::string& value) = 0;
  virtual std::string error() const = 0; // of the last write or copy; empty when it went well

  // Copies a settings file over an existing one or to a new one. False and error() on failure.
  virtual bool copyFile(const std::string& from, const std::string& to) = 0;
};

// Why no key of this name can be read back from a settings file: written all the same, each save would add
// another line. Empty when it can.
inline std::string keyNameProblem(std::string_view key) {
  const std::size_t first = key.find_first_not_of(" \t\v\f");
  const bool bracket = first != std::string_view::npos && key[first] == '[';
  if (!bracket && key.find('=') == std::string_view::npos) return {};
  return "A settings key cannot be named \"" + std::string(key) + "\"";
}

} // namespace ports
