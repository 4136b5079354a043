#include "headless/IniFile.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace headless {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view upToNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// What one line of a file can hold of a name or value given by the program.
std::string_view oneLine(std::string_view text) {
  return trimmed(upToNul(text.substr(0, text.find_first_of("\r\n"))));
}

std::string_view unquoted(std::string_view value) {
  const bool quoted =
      value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1); // tabs stay
}

std::string_view cutTo(std::string_view text, int most) {
  return text.substr(0, static_cast<std::size_t>(std::max(most, 0)));
}

// The line that starts at a place in a text; CR LF counts as two line ends with an empty line between.
std::string_view lineAt(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && !isLineEnd(text[end])) ++end;
  return text.substr(at, end - at);
}

} // namespace

IniFile::IniFile(std::string text) : text_(std::move(text)) { findSections(); }

void IniFile::findSections() {
  sections_.clear();
  const std::string_view text = text_;
  std::size_t at = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  Section* open = &sections_.try_emplace("", Section{at, at, false, {}, {}}).first->second;
  while (at < text.size()) {
    const std::string_view whole = lineAt(text, at), line = trimmed(whole);
    const std::size_t close = !line.empty() && line.front() == '[' ? line.rfind(']') : std::string_view::npos;
    if (close != std::string_view::npos) {
      if (open) open->end = at;
      const std::size_t body = at + whole.size();
      const std::string name = base::lowerCase(trimmed(upToNul(line.substr(1, close - 1))));
      const auto [found, isNew] = sections_.try_emplace(name, Section{body, body, false, {}, {}});
      open = isNew ? &found->second : nullptr;
    }
    at += whole.size() + 1;
  }
  if (open) open->end = text.size();
}

IniFile::Section* IniFile::section(std::string_view name) {
  const auto found = sections_.find(base::lowerCase(oneLine(name)));
  if (found == sections_.end()) return nullptr;
  Section& result = found->second;
  if (std::exchange(result.entriesRead, true)) return &result;
  const std::string_view body = std::string_view(text_).substr(0, result.end);
  for (std::size_t at = result.begin; at < body.size();) {
    const std::string_view line = lineAt(body, at);
    at += line.size() + 1;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    const Entry entry{trimmed(upToNul(line.substr(0, equals))), trimmed(upToNul(line.substr(equals + 1)))};
    result.byName.try_emplace(base::lowerCase(entry.name), result.entries.size());
    result.entries.push_back(entry);
  }
  return &result;
}

const IniFile::Entry* IniFile::entry(Section& section, std::string_view key) {
  const auto found = section.byName.find(base::lowerCase(oneLine(key)));
  return found == section.byName.end() ? nullptr : &section.entries[found->second];
}

std::string IniFile::read(std::string_view sectionName, std::string_view key, std::string_view fallback,
                          int capacity) {
  Section* const in = section(sectionName);
  const Entry* const found = in ? entry(*in, key) : nullptr;
  const std::string_view value = found ? unquoted(found->value) : withoutTrailingBlanks(upToNul(fallback));
  return std::string(cutTo(value, capacity - 1));
}

std::string IniFile::keyList(std::string_view sectionName, int capacity) {
  Section* const in = section(sectionName);
  if (!in) return {};
  std::string list;
  const auto most = static_cast<std::size_t>(std::max(capacity, 0));
  for (const Entry& e : in->entries) {
    if (list.size() > most) break;
    if (!e.name.starts_with(';')) list.append(e.name).push_back('\0');
  }
  list.resize(cutTo(list, capacity - 2).size());
  if (!list.empty() && list.back() != '\0') list.push_back('\0'); // a cut name is ended as well
  return list;
}

bool IniFile::set(std::string_view sectionName, std::string_view key, std::string_view value) {
  const std::string_view newValue = oneLine(value);
  Section* const in = section(sectionName);
  if (const Entry* const found = in ? entry(*in, key) : nullptr) {
    if (unquoted(found->value) == unquoted(newValue)) return false;
    const auto at = static_cast<std::size_t>(found->value.data() - text_.data());
    replace(at, found->value.size(), std::string(newValue));
    return true;
  }
  const std::string line = std::string(oneLine(key)) + "=" + std::string(newValue);
  if (in) {
    addLine(*in, line);
  } else {
    const std::string eol = lineEnd();
    const bool open = !text_.empty() && !isLineEnd(text_.back()) && text_ != kByteOrderMark;
    const std::string header = "[" + std::string(oneLine(sectionName)) + "]";
    replace(text_.size(), 0, (open ? eol : "") + header + eol + line + eol);
  }
  return true;
}

// After the section's last line that is not blank, so that the blank lines before the next header stay there.
void IniFile::addLine(const Section& section, const std::string& line) {
  const std::string_view body = std::string_view(text_).substr(0, section.end);
  const std::string eol = lineEnd();
  std::size_t end = section.end;
  while (end > section.begin && (isLineEnd(body[end - 1]) || isBlank(body[end - 1]))) --end;
  while (end < body.size() && !isLineEnd(body[end])) ++end; // that line's own trailing blanks
  const bool atStart = end == 0 || std::string_view(text_).substr(0, end) == kByteOrderMark;
  if (atStart) return replace(end, 0, line + eol);
  if (end == body.size()) return replace(end, 0, eol + line + eol);
  replace(end, 0, eol + line);
}

void IniFile::replace(std::size_t at, std::size_t length, const std::string& with) {
  text_.replace(at, length, with);
  findSections();
}

// The style of the first line end; a text without one gets the platform's.
std::string IniFile::lineEnd() const {
  const std::size_t at = text_.find_first_of("\r\n");
  if (at == std::string::npos) return "\r\n";
  if (text_[at] == '\n') return "\n";
  return at + 1 < text_.size() && text_[at + 1] == '\n' ? "\r\n" : "\r";
}

} // namespace headless
