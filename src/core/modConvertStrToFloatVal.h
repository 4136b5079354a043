// The one conversion of typed or stored decimal text: ',' and '.' both mean the decimal point. Never fails.
#pragma once
#include <string_view>

namespace modConvertStrToFloatVal {

double StrToFloatVal(std::string_view text);
float StrToFloatValSingle(std::string_view text);

} // namespace modConvertStrToFloatVal
using modConvertStrToFloatVal::StrToFloatVal;
