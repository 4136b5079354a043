#include "base/NumberText.h"

#include "base/RuntimeError.h"
#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace base {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isSkipped(char c) { return c == ' ' || c == '\t' || c == '\n'; }

bool isExponentLetter(char c) { return c == 'E' || c == 'e' || c == 'D' || c == 'd'; }

int digitValue(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 99;
}

// Walks a text and never sees blanks, tabs or line feeds; the end looks like a NUL, which ends a number as
// well.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  char peek() {
    while (at_ < text_.size() && isSkipped(text_[at_])) ++at_;
    return at_ < text_.size() ? text_[at_] : '\0';
  }
  void skip() { ++at_; }
  bool takeSign(std::string& into) {
    const char c = peek();
    if (c != '+' && c != '-') return false;
    if (c == '-') into += c;
    skip();
    return true;
  }
  void takeDigits(std::string& into) {
    for (char c = peek(); isDigit(c); c = peek()) {
      into += c;
      skip();
    }
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

// The reader stands on '&'.
double radixNumber(Reader reader) {
  reader.skip();
  const char letter = reader.peek();
  const bool hex = letter == 'H' || letter == 'h', octal = letter == 'O' || letter == 'o';
  if (!hex && !octal) return 0;
  reader.skip();
  const int radix = hex ? 16 : 8;
  double value = 0;
  for (int digit = digitValue(reader.peek()); digit < radix; digit = digitValue(reader.peek())) {
    value = value * radix + digit;
    reader.skip();
  }
  return value;
}

// Where a number that no double can hold lies: the decimal exponent of its first digit that is not 0 tells.
double beyondRange(const std::string& number) {
  const double sign = number.front() == '-' ? -1.0 : 1.0;
  const std::size_t letter = number.find('e');
  const std::string mantissa = number.substr(0, letter);
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string::npos) return 0;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  double exponent = static_cast<double>(point) - static_cast<double>(first);
  if (letter != std::string::npos) {
    const bool negative = number[letter + 1] == '-';
    double digits = 0;
    for (std::size_t at = letter + (negative ? 2 : 1); at < number.size(); ++at)
      digits = digits * 10 + (number[at] - '0');
    exponent += negative ? -digits : digits;
  }
  return exponent > 0 ? sign * std::numeric_limits<double>::infinity() : 0;
}

// number: [-]digits[.digits][e[-]digits] with at least one digit before the exponent.
double parseDecimal(const std::string& number) {
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) return beyondRange(number);
  return value + 0.0; // -0 becomes 0
}

// The whole text, blanks around it taken off, as the operator's form of a number.
bool hasNumberForm(std::string_view text) {
  while (!text.empty() && isSkipped(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSkipped(text.back())) text.remove_suffix(1);
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t from = at;
    while (at < text.size() && isDigit(text[at])) ++at;
    return at - from;
  };
  const auto sign = [&] {
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  };
  if (text.size() > 2 && text[0] == '&' && (text[1] == 'H' || text[1] == 'h')) {
    for (at = 2; at < text.size(); ++at)
      if (digitValue(text[at]) > 15) return false;
    return true;
  }
  sign();
  std::size_t count = digits();
  if (at < text.size() && (text[at] == '.' || text[at] == ',')) {
    ++at;
    count += digits();
  }
  if (count == 0) return false;
  if (at < text.size() && isExponentLetter(text[at])) {
    ++at;
    sign();
    if (digits() == 0) return false;
  }
  return at == text.size();
}

double operatorNumber(std::string_view text) {
  return leadingNumber(replaceAll(std::string(text), ",", "."));
}

// value = 0.d1d2d3... * 10^point, rounded to at most the given number of digits, without trailing zeros.
struct Decimal {
  bool negative;
  std::string digits; // empty for zero
  int point;
};

Decimal toDecimal(double value, int digits) {
  char buffer[64];
  const double magnitude = std::fabs(value);
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, digits - 1).ptr;
  const std::string text(buffer, end);
  const std::size_t letter = text.find('e');
  Decimal result{value < 0, text.substr(0, 1) + text.substr(2, letter - 2),
                 std::stoi(text.substr(letter + 1)) + 1};
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  return result;
}

std::string exponentText(const Decimal& d) {
  std::string text = d.digits.substr(0, 1);
  if (d.digits.size() > 1) text += "." + d.digits.substr(1);
  const int exponent = d.point - 1;
  const std::string size = std::to_string(std::abs(exponent));
  return text + (exponent < 0 ? "E-" : "E+") + (size.size() < 2 ? "0" : "") + size;
}

std::string plainText(const Decimal& d) {
  const int count = static_cast<int>(d.digits.size());
  if (d.point <= 0) return "0." + std::string(static_cast<std::size_t>(-d.point), '0') + d.digits;
  if (d.point >= count) return d.digits + std::string(static_cast<std::size_t>(d.point - count), '0');
  const auto whole = static_cast<std::size_t>(d.point);
  return d.digits.substr(0, whole) + "." + d.digits.substr(whole);
}

std::string generalText(double value, int maxDigits) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-1E+999" : "1E+999";
  if (value == 0) return "0";
  const Decimal d = toDecimal(value, maxDigits);
  const bool plain = d.point > -4 && d.point <= maxDigits;
  return (d.negative ? "-" : "") + (plain ? plainText(d) : exponentText(d));
}

// The digits up to keep places, counted from the first digit, rounded half away from zero; may gain one in
// front.
void roundDigits(Decimal& d, int keep) {
  if (keep >= static_cast<int>(d.digits.size())) return;
  const bool up = keep >= 0 && d.digits[static_cast<std::size_t>(keep)] >= '5';
  d.digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
  if (!up) return;
  std::size_t at = d.digits.size();
  while (at > 0 && d.digits[at - 1] == '9') d.digits[--at] = '0';
  if (at > 0) {
    ++d.digits[at - 1];
  } else {
    d.digits.insert(d.digits.begin(), '1');
    ++d.point;
  }
}

} // namespace

double leadingNumber(std::string_view text) {
  Reader reader(text);
  if (reader.peek() == '&') return radixNumber(reader);
  std::string number;
  reader.takeSign(number);
  const std::size_t start = number.size();
  reader.takeDigits(number);
  std::size_t digits = number.size() - start;
  if (reader.peek() == '.') {
    reader.skip();
    number += '.';
    reader.takeDigits(number);
    digits = number.size() - start - 1;
  }
  if (digits == 0) return 0;
  if (isExponentLetter(reader.peek())) {
    reader.skip();
    std::string sign, exponent;
    reader.takeSign(sign);
    reader.takeDigits(exponent);
    if (!exponent.empty()) number += "e" + sign + exponent;
  }
  return parseDecimal(number);
}

bool isNumeric(std::string_view text) { return hasNumberForm(text) && std::isfinite(operatorNumber(text)); }

double toDouble(std::string_view text) {
  if (!hasNumberForm(text)) raiseTypeMismatch();
  const double value = operatorNumber(text);
  if (!std::isfinite(value)) raiseOverflow();
  return value;
}

float toSingle(std::string_view text) { return toSingle(toDouble(text)); }

float toSingle(double value) {
  // Half a unit above the largest single still rounds down to it; casting anything above would be undefined.
  constexpr double limit = 0x1.ffffffp127;
  if (!(std::fabs(value) < limit)) raiseOverflow();
  return static_cast<float>(value);
}

bool toBoolean(std::string_view text) {
  const std::string word = trimBlanks(text);
  if (equalIgnoringCase(word, "True")) return true;
  if (equalIgnoringCase(word, "False")) return false;
  return toDouble(word) != 0;
}

std::string numberText(double value) { return generalText(value, 15); }
std::string numberText(float value) { return generalText(static_cast<double>(value), 7); }
std::string numberText(std::int32_t value) { return std::to_string(value); }
std::string numberText(std::int16_t value) { return std::to_string(value); }

std::string signedText(double value) {
  const std::string text = numberText(value);
  return text.front() == '-' ? text : " " + text;
}

std::string fixedText(double value, int minIntegerDigits, int decimals) {
  if (!std::isfinite(value)) return numberText(value);
  Decimal d = value == 0 ? Decimal{false, "", 0} : toDecimal(value, 15);
  roundDigits(d, d.point + decimals);
  const bool zero = d.digits.find_first_not_of('0') == std::string::npos;
  std::string fraction, whole;
  for (int place = 0; place < std::max(d.point, 0) + decimals; ++place) {
    const int index = d.point >= 0 ? place : place + d.point;
    const bool stored = index >= 0 && index < static_cast<int>(d.digits.size());
    (place < std::max(d.point, 0) ? whole : fraction) +=
        stored ? d.digits[static_cast<std::size_t>(index)] : '0';
  }
  const auto least = static_cast<std::size_t>(std::max(minIntegerDigits, 0));
  if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
  return (d.negative && !zero ? "-" : "") + whole + (decimals > 0 ? "." + fraction : "");
}

} // namespace base
