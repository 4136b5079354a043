// Everything the program did to the world outside, in order: one line per host call, box, beep and, when
// asked for, text.
#pragma once
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace headless {

class Transcript {
 public:
  enum class Kind { Call, Find, Box, Beep, Status, Window, File, Note };
  static constexpr unsigned bit(Kind kind) { return 1U << static_cast<unsigned>(kind); }

  struct Line {
    Kind kind;
    std::string text;
  };

  bool wants(Kind kind) const { return (wanted_ & bit(kind)) != 0; }
  void want(Kind kind, bool wanted); // at first everything but Status and Window lines
  void add(Kind kind, std::string text);
  void clear() { lines_.clear(); }
  // Takes each line in place of keeping it.
  std::function<void(const Line&)> listener;
  const std::vector<Line>& lines() const { return lines_; }
  std::vector<std::string>
  texts(std::initializer_list<Kind> kinds) const; // of these kinds; all when the list is empty

 private:
  unsigned wanted_ = ~(bit(Kind::Status) | bit(Kind::Window));
  std::vector<Line> lines_;
};

// Empty when both are equal. Otherwise both columns side by side, the lines that differ marked.
std::string compareLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual);

} // namespace headless
