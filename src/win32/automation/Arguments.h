// Between automation's VARIANTs and the members' own types.
#pragma once
#include "automation/Members.h"
#include "win32/automation/Com.h"

namespace win32 {

// Any VARIANT, also by reference, as a member's argument type, converted as automation converts. Failures:
// DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW (also for what is no number), DISP_E_PARAMNOTOPTIONAL (left out).
HRESULT toValue(const VARIANT& given, automation::ValueType type, LCID locale, automation::Value& value);

bool isLeftOut(const VARIANT& given); // an optional argument that the client did not give

void fromValue(const automation::Value& value, VARIANT& result);

} // namespace win32
