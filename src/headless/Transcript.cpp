#include "headless/Transcript.h"
#include <algorithm>

namespace headless {

void Transcript::want(Kind kind, bool wanted) {
  wanted_ = wanted ? wanted_ | bit(kind) : wanted_ & ~bit(kind);
}

void Transcript::add(Kind kind, std::string text) {
  if (!wants(kind)) return;
  if (listener)
    listener({kind, std::move(text)});
  else
    lines_.push_back({kind, std::move(text)});
}

std::vector<std::string> Transcript::texts(std::initializer_list<Kind> kinds) const {
  unsigned mask = kinds.size() == 0 ? ~0U : 0U;
  for (const Kind kind : kinds) mask |= bit(kind);
  std::vector<std::string> found;
  for (const Line& line : lines_)
    if (mask & bit(line.kind)) found.push_back(line.text);
  return found;
}

namespace {

// Length of the longest common subsequence of the tails that begin at i and j.
std::vector<std::vector<int>> commonTails(const std::vector<std::string>& a,
                                          const std::vector<std::string>& b) {
  std::vector<std::vector<int>> length(a.size() + 1, std::vector<int>(b.size() + 1, 0));
  for (std::size_t i = a.size(); i-- > 0;)
    for (std::size_t j = b.size(); j-- > 0;)
      length[i][j] = a[i] == b[j] ? length[i + 1][j + 1] + 1 : std::max(length[i + 1][j], length[i][j + 1]);
  return length;
}

std::string padded(const std::string& text, std::size_t width) {
  return text.size() >= width ? text : text + std::string(width - text.size(), ' ');
}

} // namespace

std::string compareLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual) {
  if (expected == actual) return {};
  std::size_t width = 10;
  for (const std::string& line : expected) width = std::max(width, line.size());
  width = std::min<std::size_t>(width, 70);
  const auto length = commonTails(expected, actual);
  std::string out = "\n  " + padded("expected", width) + " | actual\n";
  std::size_t i = 0, j = 0;
  while (i < expected.size() || j < actual.size()) {
    const bool both = i < expected.size() && j < actual.size();
    if (both && expected[i] == actual[j]) {
      out += "  " + padded(expected[i++], width) + " | " + actual[j++] + "\n";
    } else if (both && length[i + 1][j + 1] == length[i][j]) {
      out += "! " + padded(expected[i++], width) + " | " + actual[j++] + "\n";
    } else if (i < expected.size() && (j == actual.size() || length[i + 1][j] >= length[i][j + 1])) {
      out += "- " + padded(expected[i++], width) + " |\n";
    } else {
      out += "+ " + padded("", width) + " | " + actual[j++] + "\n";
    }
  }
  return out;
}

} // namespace headless
