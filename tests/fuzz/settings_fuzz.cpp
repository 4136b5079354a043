// Any bytes as a settings file, any names and values: reading keeps its limits, an edit changes one value and
// is found again, and every other value stays what it was.
#include "base/Text.h"
#include "fuzz_check.h"
#include "headless/IniFile.h"
#include "ports/SettingsStore.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

using headless::IniFile;

namespace {

constexpr int kAmple = 1 << 24;
const std::string kFallback = "\x01no such key";

// What a name or value becomes on its way into a file, written without a look at the code under test.
std::string stored(const std::string& text) {
  std::string line;
  for (const char c : text) {
    if (c == '\0' || c == '\r' || c == '\n') break;
    line += c;
  }
  const std::size_t first = line.find_first_not_of(" \t\v\f");
  return first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(" \t\v\f") - first + 1);
}

std::string unquoted(const std::string& value) {
  const bool quoted = value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::vector<std::string> names(IniFile& file, const std::string& section) {
  const std::string list = file.keyList(section, kAmple);
  std::vector<std::string> result;
  for (std::size_t at = 0, end; at < list.size(); at = end + 1) {
    end = list.find('\0', at);
    FUZZ_CHECK(end != std::string::npos);
    result.push_back(list.substr(at, end - at));
  }
  return result;
}

std::map<std::string, std::string> values(IniFile& file, const std::string& section) {
  std::map<std::string, std::string> result;
  for (const std::string& name : names(file, section)) {
    const std::string value = file.read(section, name, kFallback, kAmple);
    FUZZ_CHECK(value != kFallback || value.find('\x01') == 0);
    result[base::lowerCase(name)] = value;
  }
  return result;
}

void checkLimits(IniFile& file, const std::string& section, const std::string& key, int capacity) {
  const std::string whole = file.read(section, key, "", kAmple);
  FUZZ_CHECK(file.read(section, key, "", capacity) ==
             whole.substr(0, static_cast<std::size_t>(std::max(capacity - 1, 0))));
  const std::string list = file.keyList(section, kAmple), cut = file.keyList(section, capacity);
  FUZZ_CHECK(cut.empty() || cut.back() == '\0');
  FUZZ_CHECK(cut.size() <= static_cast<std::size_t>(std::max(capacity - 1, 0)));
  FUZZ_CHECK(list.substr(0, cut.size() - (cut.empty() ? 0 : 1)) ==
             cut.substr(0, cut.size() - (cut.empty() ? 0 : 1)));
}

void checkEdit(const std::string& text, const std::string& section, const std::string& key,
               const std::string& value, const std::string& other) {
  IniFile file(text);
  const auto before = values(file, section), otherBefore = values(file, other);
  const std::size_t count = names(file, section).size();
  const bool changed = file.set(section, key, value);
  FUZZ_CHECK(changed == (file.text() != text));
  FUZZ_CHECK(file.read(section, key, kFallback, kAmple) == unquoted(stored(value)));
  FUZZ_CHECK(!file.set(section, key, value));
  IniFile again(file.text());
  auto after = values(again, section);
  FUZZ_CHECK(after == values(file, section));
  const std::string name = base::lowerCase(stored(key));
  for (const auto& [k, v] : before) FUZZ_CHECK(k == name || (after.contains(k) && after[k] == v));
  const bool listed = name.empty() || name[0] != ';';
  const std::size_t added = listed && !before.contains(name) ? 1 : 0;
  FUZZ_CHECK(names(again, section).size() == count + added);
  if (base::lowerCase(stored(other)) != base::lowerCase(stored(section)))
    FUZZ_CHECK(values(again, other) == otherBefore);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const std::string section = input.ConsumeRandomLengthString(12), key = input.ConsumeRandomLengthString(12);
  const std::string value = input.ConsumeRandomLengthString(20), other = input.ConsumeRandomLengthString(12);
  const int capacity = input.ConsumeIntegralInRange<int>(-2, 300);
  const std::string text = input.ConsumeRemainingBytesAsString();
  IniFile file(text);
  checkLimits(file, section, key, capacity);
  FUZZ_CHECK(file.text() == text);
  if (!stored(section).empty() && ports::keyNameProblem(key).empty())
    checkEdit(text, section, key, value, other);
  return 0;
}
