#include "e2e/support/Client.h"
#include <algorithm>

namespace e2e {

Var Var::i2(short n) {
  Var r;
  V_VT(&r.v) = VT_I2;
  V_I2(&r.v) = n;
  return r;
}
Var Var::i4(long n) {
  Var r;
  V_VT(&r.v) = VT_I4;
  V_I4(&r.v) = n;
  return r;
}
Var Var::r4(float n) {
  Var r;
  V_VT(&r.v) = VT_R4;
  V_R4(&r.v) = n;
  return r;
}
Var Var::r8(double n) {
  Var r;
  V_VT(&r.v) = VT_R8;
  V_R8(&r.v) = n;
  return r;
}
Var Var::text(const std::wstring& t) {
  Var r;
  V_VT(&r.v) = VT_BSTR;
  V_BSTR(&r.v) = SysAllocStringLen(t.data(), static_cast<UINT>(t.size()));
  return r;
}
Var Var::boolean(bool b) {
  Var r;
  V_VT(&r.v) = VT_BOOL;
  V_BOOL(&r.v) = b ? VARIANT_TRUE : VARIANT_FALSE;
  return r;
}
Var Var::null() {
  Var r;
  V_VT(&r.v) = VT_NULL;
  return r;
}
Var Var::missing() {
  Var r;
  V_VT(&r.v) = VT_ERROR;
  V_ERROR(&r.v) = DISP_E_PARAMNOTFOUND;
  return r;
}
Var Var::byRef(long& n) {
  Var r;
  V_VT(&r.v) = VT_BYREF | VT_I4;
  V_I4REF(&r.v) = &n;
  return r;
}
Var Var::byRef(Var& other) {
  Var r;
  V_VT(&r.v) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&r.v) = &other.v;
  return r;
}

double Reply::number() const {
  Var real;
  VariantChangeType(&real.v, const_cast<VARIANT*>(&value.v), 0, VT_R8);
  return V_VT(&real.v) == VT_R8 ? V_R8(&real.v) : -1e300;
}

std::wstring Reply::string() const {
  return type() == VT_BSTR ? std::wstring(V_BSTR(&value.v), SysStringLen(V_BSTR(&value.v))) : std::wstring();
}

HRESULT Client::tryCreate(IDispatch** object) {
  *object = nullptr;
  CLSID clsid{};
  const HRESULT hr = CLSIDFromProgID(L"VantrelLock.NMRLock", &clsid);
  if (FAILED(hr)) return hr;
  return CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                          reinterpret_cast<void**>(object));
}

Client::Client() : creation_(tryCreate(&object_)) {}

Client::~Client() {
  if (object_) object_->Release();
}

INMRLock* Client::early() const {
  INMRLock* lock = nullptr;
  object_->QueryInterface(IID_INMRLock, reinterpret_cast<void**>(&lock));
  return lock;
}

DISPID Client::id(const wchar_t* name) const {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
  if (object_) object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  return id;
}

Reply Client::invoke(DISPID id, WORD flags, std::vector<Var>& arguments, bool named) const {
  std::vector<VARIANT> raw;
  for (auto i = arguments.rbegin(); i != arguments.rend(); ++i) raw.push_back(i->v); // lent, not owned
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{raw.data(), named ? &putId : nullptr, static_cast<UINT>(raw.size()), named ? 1U : 0U};
  EXCEPINFO exception{};
  UINT wrong = 0;
  Reply reply;
  if (!object_) { // every call of a client without an object fails with the reason it has none
    reply.code = FAILED(creation_) ? creation_ : E_POINTER;
    return reply;
  }
  reply.code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                               named ? nullptr : &reply.value.v, &exception, &wrong);
  if (reply.code == DISP_E_EXCEPTION) {
    reply.code = exception.scode;
    if (exception.bstrSource) reply.source = exception.bstrSource;
    if (exception.bstrDescription) reply.text = exception.bstrDescription;
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
  }
  return reply;
}

Reply Client::invoke(DISPID id, WORD flags, std::vector<Var> arguments) const {
  return invoke(id, flags, arguments, flags == DISPATCH_PROPERTYPUT && !arguments.empty());
}

Reply Client::call(const wchar_t* name, std::vector<Var> arguments) const {
  return invoke(id(name), DISPATCH_METHOD, std::move(arguments));
}

Reply Client::get(const wchar_t* name) const { return invoke(id(name), DISPATCH_PROPERTYGET); }

Reply Client::put(const wchar_t* name, const Var& value) const {
  return invoke(id(name), DISPATCH_PROPERTYPUT, {value});
}

} // namespace e2e
