#include "base/RuntimeError.h"

#include <cstdint>
#include <cstdio>
#include <utility>

namespace base {

RuntimeError::RuntimeError(long errorNumber, std::string errorText, std::string doing)
    : std::runtime_error(errorText), number(errorNumber), text(std::move(errorText)),
      context(std::move(doing)) {}

RuntimeError RuntimeError::within(const std::string& doing) const {
  return context.empty() ? RuntimeError(number, text, doing) : *this;
}

std::string RuntimeError::message() const {
  std::string shown = std::to_string(number);
  if (isAutomation()) {
    char hex[16];
    std::snprintf(hex, sizeof hex, " (%08x)", static_cast<unsigned>(static_cast<std::uint32_t>(number)));
    shown += hex;
  }
  std::string result = "Run-time error '" + shown + "':\r\n\r\n" + text;
  if (!context.empty()) result += "\r\n\r\n" + context;
  return result;
}

void raiseInvalidCall(std::string doing) {
  throw RuntimeError(kInvalidCall, "Invalid procedure call or argument", std::move(doing));
}

void raiseOverflow(std::string doing) { throw RuntimeError(kOverflow, "Overflow", std::move(doing)); }

void raiseSubscript(std::string doing) {
  throw RuntimeError(kSubscript, "Subscript out of range", std::move(doing));
}

void raiseTypeMismatch(std::string doing) {
  throw RuntimeError(kTypeMismatch, "Type mismatch", std::move(doing));
}

void raiseInvalidValue(std::string doing) {
  throw RuntimeError(kInvalidValue, "Invalid property value", std::move(doing));
}

} // namespace base
