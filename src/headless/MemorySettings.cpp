#include "headless/HeadlessSettings.h"

#include <cerrno>
#include <system_error>

namespace headless {

IniFile& MemorySettings::parsed(const std::string& path) {
  const auto found = texts_.find(path);
  static const std::string nothing;
  const std::string& text = found == texts_.end() ? nothing : found->second;
  std::optional<IniFile>& file = parsed_[path];
  if (!file || file->text() != text) file.emplace(text);
  return *file;
}

std::string MemorySettings::read(const std::string& path, const std::string& section, const std::string& key,
                                 const std::string& fallback, int capacity) {
  return parsed(path).read(section, key, fallback, capacity);
}

std::string MemorySettings::keyList(const std::string& path, const std::string& section, int capacity) {
  return parsed(path).keyList(section, capacity);
}

bool MemorySettings::write(const std::string& path, const std::string& section, const std::string& key,
                           const std::string& value) {
  error_ = failure_.empty() ? ports::keyNameProblem(key) : failure_;
  if (!error_.empty()) return false;
  IniFile& file = parsed(path);
  if (file.set(section, key, value)) texts_[path] = file.text();
  return true;
}

bool MemorySettings::copyFile(const std::string& from, const std::string& to) {
  error_ = failure_;
  if (error_.empty() && !exists(from)) error_ = std::generic_category().message(ENOENT);
  if (!error_.empty()) return false;
  texts_[to] = std::string(texts_[from]);
  return true;
}

} // namespace headless
