// The text of a private-profile file, read and edited with the rules of the platform's own functions. Any
// bytes at all are a legal text.
//
// Lines end with CR, LF or both; a UTF-8 mark in front is skipped. "[name]" opens a section, up to the line's
// last ']'; a "[name" without ']' is a line like any other. Of two sections of one name only the first is
// read, of two keys the first wins. Lines before any section belong to the section "". Only ASCII letters
// match in either case. A line without '=' is no key. A line that begins with ';' is a comment: it is not
// listed, and only somebody who asks for a key with that ';' in its name finds it. "=value" is a key with an
// empty name, listed as such: a save without a solvent name leaves one. Names and values are trimmed and end
// at a NUL; one pair of quotes is taken off a value.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace headless {

class IniFile {
 public:
  explicit IniFile(std::string text = {});
  IniFile(const IniFile&) = delete; // what it found points into its own text
  IniFile& operator=(const IniFile&) = delete;

  const std::string& text() const { return text_; }

  // As ports::SettingsStore says.
  std::string read(std::string_view section, std::string_view key, std::string_view fallback, int capacity);
  std::string keyList(std::string_view section, int capacity);

  // Edits the one value and nothing else; a new key goes to the end of its section, before the blank lines
  // there, a new section to the end of the text. Section, key and value end at their first line end or NUL.
  // The key's name must have passed ports::keyNameProblem. True when the text changed.
  bool set(std::string_view section, std::string_view key, std::string_view value);

 private:
  struct Entry {
    std::string_view name;  // trimmed, as it stands
    std::string_view value; // trimmed, quotes and all; also says where in the text it stands
  };
  struct Section {
    std::size_t begin, end;   // its lines after the header
    bool entriesRead = false; // entries are looked for when the section is first asked for
    std::vector<Entry> entries;
    std::unordered_map<std::string, std::size_t> byName; // lower-case name to its first entry
  };

  void findSections();
  Section* section(std::string_view name);
  const Entry* entry(Section& section, std::string_view key);
  void replace(std::size_t at, std::size_t length, const std::string& with);
  std::string lineEnd() const;
  void addLine(const Section& section, const std::string& line);

  std::string text_;
  std::unordered_map<std::string, Section> sections_; // by lower-case name; the first of each name
};

} // namespace headless
