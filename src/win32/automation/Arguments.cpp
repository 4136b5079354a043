#include "win32/automation/Arguments.h"
#include "win32/WideText.h"
#include <cmath>

namespace win32 {

using automation::Value;
using automation::ValueType;

namespace {

class Plain { // a VARIANT of our own
 public:
  Plain() { VariantInit(&value); }
  ~Plain() { VariantClear(&value); }
  Plain(const Plain&) = delete;
  Plain& operator=(const Plain&) = delete;
  VARIANT value;
};

VARTYPE nativeType(ValueType type) {
  switch (type) {
  case ValueType::Int16:
    return VT_I2;
  case ValueType::Int32:
    return VT_I4;
  case ValueType::Single:
    return VT_R4;
  case ValueType::Text:
    return VT_BSTR;
  case ValueType::None:
    break;
  }
  return VT_EMPTY;
}

// The system's conversion would make some whole number or text of them.
bool isNoNumber(const VARIANT& v) {
  return (V_VT(&v) == VT_R4 && !std::isfinite(V_R4(&v))) || (V_VT(&v) == VT_R8 && !std::isfinite(V_R8(&v)));
}

Value ownValue(const VARIANT& v) {
  switch (V_VT(&v)) {
  case VT_I2:
    return V_I2(&v);
  case VT_I4:
    return static_cast<std::int32_t>(V_I4(&v));
  case VT_R4:
    return V_R4(&v);
  case VT_BSTR:
    return ansiText(std::wstring_view(V_BSTR(&v), SysStringLen(V_BSTR(&v))));
  default:
    return {};
  }
}

} // namespace

bool isLeftOut(const VARIANT& given) {
  const VARIANT& v = V_VT(&given) == (VT_BYREF | VT_VARIANT) ? *V_VARIANTREF(&given) : given;
  return V_VT(&v) == VT_ERROR && V_ERROR(&v) == DISP_E_PARAMNOTFOUND;
}

HRESULT toValue(const VARIANT& given, ValueType type, LCID locale, Value& value) {
  if (isLeftOut(given)) return DISP_E_PARAMNOTOPTIONAL;
  Plain plain;
  HRESULT hr = VariantCopyInd(&plain.value, const_cast<VARIANT*>(&given));
  if (FAILED(hr)) return hr == E_OUTOFMEMORY ? hr : DISP_E_TYPEMISMATCH;
  if (isNoNumber(plain.value)) return DISP_E_OVERFLOW;
  hr = VariantChangeTypeEx(&plain.value, &plain.value, locale, 0, nativeType(type));
  if (hr == DISP_E_BADVARTYPE) return DISP_E_TYPEMISMATCH;
  if (FAILED(hr)) return hr;
  if (isNoNumber(plain.value)) return DISP_E_OVERFLOW; // read from a text
  value = ownValue(plain.value);
  return S_OK;
}

void fromValue(const Value& value, VARIANT& result) {
  VariantInit(&result);
  if (const auto* number = std::get_if<std::int16_t>(&value)) {
    V_VT(&result) = VT_I2;
    V_I2(&result) = *number;
  } else if (const auto* whole = std::get_if<std::int32_t>(&value)) {
    V_VT(&result) = VT_I4;
    V_I4(&result) = *whole;
  } else if (const auto* single = std::get_if<float>(&value)) {
    V_VT(&result) = VT_R4;
    V_R4(&result) = *single;
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    const std::wstring wide = wideText(*text);
    V_VT(&result) = VT_BSTR;
    V_BSTR(&result) = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  }
}

} // namespace win32
