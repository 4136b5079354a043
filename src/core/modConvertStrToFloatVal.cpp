#include "core/modConvertStrToFloatVal.h"
#include "base/NumberText.h"
#include "base/Text.h"

namespace modConvertStrToFloatVal {

double StrToFloatVal(std::string_view text) {
  return base::leadingNumber(base::replaceAll(std::string(text), ",", "."));
}

float StrToFloatValSingle(std::string_view text) { return static_cast<float>(StrToFloatVal(text)); }

} // namespace modConvertStrToFloatVal
