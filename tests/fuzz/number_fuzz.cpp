// Any bytes as number text, any double as number: reading never fails, typed numbers agree with read ones,
// and what is written reads back.
#include "base/DateText.h"
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "fuzz_check.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <optional>
#include <string>

namespace {

template <class F> auto resultOf(F&& f, long* error = nullptr) -> std::optional<decltype(f())> {
  try {
    return f();
  } catch (const base::RuntimeError& e) {
    if (error) *error = e.number;
    return {};
  }
}

void checkReading(const std::string& text) {
  const double value = base::leadingNumber(text);
  FUZZ_CHECK(!std::isnan(value));
  FUZZ_CHECK(base::leadingNumber(text + std::string(1, '\0') + "7") == value);
  FUZZ_CHECK(base::leadingNumber(" \t\n" + text + " ") == value);
  FUZZ_CHECK(base::leadingNumber(base::replaceAll(text, " ", "")) == value);
  long error = 0;
  const auto typed = resultOf([&] { return base::toDouble(text); }, &error);
  FUZZ_CHECK(base::isNumeric(text) == typed.has_value());
  if (typed)
    FUZZ_CHECK(*typed == base::leadingNumber(base::replaceAll(text, ",", ".")) && std::isfinite(*typed));
  if (!typed) FUZZ_CHECK(error == base::kTypeMismatch || error == base::kOverflow);
  if (typed) FUZZ_CHECK(base::toBoolean(text) == (*typed != 0));
}

void checkWriting(double value) {
  const std::string text = base::numberText(value);
  if (std::isnan(value)) return;
  const double back = base::leadingNumber(text);
  FUZZ_CHECK(base::leadingNumber(base::signedText(value)) == back);
  if (std::isinf(back)) {
    FUZZ_CHECK(std::fabs(value) > 1.797693134862315e308 && std::signbit(back) == std::signbit(value));
    return;
  }
  FUZZ_CHECK(base::isNumeric(text));
  FUZZ_CHECK(std::fabs(back - value) <= std::fabs(value) * 5.1e-15 || std::fabs(value) < 1e-300);
  FUZZ_CHECK(base::numberText(back) == text);
  const auto single = resultOf([&] { return base::toSingle(value); });
  FUZZ_CHECK(single.has_value() == (std::fabs(value) < 0x1.ffffffp127));
  if (!single) return;
  const std::string shorter = base::numberText(*single);
  const auto again = resultOf([&] { return base::toSingle(shorter); });
  if (again) FUZZ_CHECK(base::numberText(*again) == shorter);
}

void checkFixed(double value, int decimals) {
  if (!(std::fabs(value) < 1e14)) return;
  const std::string text = base::fixedText(value, 1, decimals);
  const std::size_t point = text.find('.');
  FUZZ_CHECK(decimals == 0 ? point == std::string::npos
                           : point == text.size() - static_cast<std::size_t>(decimals) - 1);
  const double slack = 0.5 * std::pow(10.0, -decimals) + std::fabs(value) * 1e-14;
  FUZZ_CHECK(std::fabs(base::leadingNumber(text) - value) <= slack * (1 + 1e-9));
}

void checkRounding(double value) {
  const auto whole = resultOf([&] { return base::toInt32(value); });
  FUZZ_CHECK(whole.has_value() == (value >= -2147483648.5 && value < 2147483647.5));
  if (whole) {
    const double off = std::fabs(*whole - value);
    FUZZ_CHECK(off < 0.5 || (off == 0.5 && *whole % 2 == 0));
    FUZZ_CHECK(base::Int(value) <= value && value < base::Int(value) + 1);
  }
  const auto small = resultOf([&] { return base::toInt16(value); });
  FUZZ_CHECK(small.has_value() == (whole && *whole >= -32768 && *whole <= 32767));
}

void checkDate(double serial) {
  const auto fields = resultOf([&] { return base::dateFields(serial); });
  if (!fields) return;
  FUZZ_CHECK(base::dateFields(base::dateSerial(*fields)) == *fields);
  FUZZ_CHECK(!base::generalDateText(*fields).empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  double value = 0;
  input.ConsumeData(&value, sizeof value);
  const int decimals = input.ConsumeIntegralInRange<int>(0, 8);
  const std::string text = input.ConsumeRemainingBytesAsString();
  checkReading(text);
  for (const double v : {value, base::leadingNumber(text)}) {
    checkWriting(v);
    checkFixed(v, decimals);
    checkRounding(v);
    checkDate(v);
  }
  return 0;
}
