#include "win32/automation/LockObject.h"
#include "base/RuntimeError.h"
#include "base/Text.h"
#include "win32/WideText.h"
#include "win32/automation/Arguments.h"
#include <new>

namespace win32 {

using automation::kMembers;
using automation::Member;
using automation::MemberKind;
using automation::Passing;
using automation::Value;

namespace {

constexpr long kOutOfMemory = 7; // the run-time's own number

// The run-time's errors travel in a facility of their own; a failure of the host keeps its code.
HRESULT errorCode(long number) {
  return number < 0 ? static_cast<HRESULT>(number)
                    : static_cast<HRESULT>(0x800A0000UL | static_cast<ULONG>(number));
}

std::wstring errorText(const base::RuntimeError& error) {
  return wideText(error.context.empty() ? error.text : error.text + ": " + error.context);
}

BSTR allocate(std::wstring_view text) {
  return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

std::wstring source() { return wideText(automation::kClassName); }

void raise(const std::wstring& text) {
  ICreateErrorInfo* creator = nullptr;
  if (FAILED(CreateErrorInfo(&creator))) return;
  creator->SetGUID(IID_INMRLock);
  creator->SetSource(source().data());
  creator->SetDescription(const_cast<LPOLESTR>(text.c_str()));
  IErrorInfo* info = nullptr;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
    SetErrorInfo(0, info);
    info->Release();
  }
  creator->Release();
}

const Member* memberFor(DISPID id, WORD flags) {
  for (const Member& member : kMembers) {
    if (member.dispid != id) continue;
    const WORD wanted = member.kind == MemberKind::Method        ? DISPATCH_METHOD
                        : member.kind == MemberKind::PropertyGet ? DISPATCH_PROPERTYGET
                                                                 : DISPATCH_PROPERTYPUT;
    if (flags & wanted) return &member;
  }
  return nullptr;
}

// Finds the one argument a member may have; null: none was given.
HRESULT findArgument(const Member& member, const DISPPARAMS& given, const VARIANT*& argument) {
  argument = nullptr;
  const UINT most = member.passing == Passing::None ? 0 : 1,
             least = member.passing == Passing::ByValue ? 1 : 0;
  if (given.cArgs > most || given.cArgs < least || given.cNamedArgs > given.cArgs)
    return DISP_E_BADPARAMCOUNT;
  if (given.cNamedArgs == 1) {
    const DISPID expected = member.kind == MemberKind::PropertyPut ? DISPID_PROPERTYPUT : 0;
    if (given.rgdispidNamedArgs[0] != expected) return DISP_E_PARAMNOTFOUND;
  }
  if (given.cArgs == 1) argument = given.rgvarg;
  if (argument && member.passing == Passing::OptionalByReference && isLeftOut(*argument)) argument = nullptr;
  return S_OK;
}

bool sameName(const OLECHAR* given, std::string_view name) {
  return base::equalIgnoringCase(ansiText(given), name);
}

HRESULT infoFor(ITypeLib* library, REFGUID guid, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  return library ? library->GetTypeInfoOfGuid(guid, info) : TYPE_E_CANTLOADLIBRARY;
}

} // namespace

STDMETHODIMP LockObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  if (iid == IID_IUnknown || iid == IID_IDispatch || iid == IID_INMRLock)
    *object = static_cast<INMRLock*>(this);
  else if (iid == IID_IProvideClassInfo)
    *object = static_cast<IProvideClassInfo*>(this);
  else if (iid == IID_ISupportErrorInfo)
    *object = static_cast<ISupportErrorInfo*>(this);
  else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) LockObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP LockObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP LockObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (index != 0) return DISP_E_BADINDEX;
  return infoFor(service_->typeLibrary(), IID_INMRLock, info);
}

STDMETHODIMP LockObject::GetClassInfo(ITypeInfo** info) {
  return infoFor(service_->typeLibrary(), CLSID_NMRLock, info);
}

STDMETHODIMP LockObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  const Member* found = nullptr;
  for (const Member& member : kMembers)
    if (sameName(names[0], member.name) && (!found || !member.argument.empty())) found = &member;
  if (!found) return DISP_E_UNKNOWNNAME;
  ids[0] = found->dispid;
  HRESULT hr = S_OK;
  for (UINT i = 1; i < count; ++i) {
    if (!found->argument.empty() && sameName(names[i], found->argument))
      ids[i] = 0;
    else
      hr = DISP_E_UNKNOWNNAME;
  }
  return hr;
}

STDMETHODIMP LockObject::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) {
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters) return E_INVALIDARG;
  if (result) VariantInit(result);
  const Member* member = memberFor(id, flags);
  if (!member) return DISP_E_MEMBERNOTFOUND;

  const VARIANT* given = nullptr;
  HRESULT hr = findArgument(*member, *parameters, given);
  Value argument;
  if (SUCCEEDED(hr) && given) {
    hr = toValue(*given, member->argumentType, locale, argument);
    if (FAILED(hr) && wrongArgument) *wrongArgument = 0;
  }
  if (FAILED(hr)) return hr;

  const Outcome outcome = run(*member, argument);
  if (outcome.raised) {
    if (exception) {
      *exception = {};
      exception->scode = outcome.code;
      exception->bstrSource = allocate(source());
      exception->bstrDescription = allocate(outcome.text);
    }
    return DISP_E_EXCEPTION;
  }
  if (SUCCEEDED(outcome.code) && result) fromValue(outcome.result, *result);
  return outcome.code;
}

LockObject::Outcome LockObject::run(const Member& member, const Value& argument) {
  NMRLock* lock = service_->lock();
  if (!lock) return {.code = CO_E_OBJNOTCONNECTED, .text = {}, .result = {}};
  // The message filter says the same before the call comes here; not every system asks it.
  if (service_->busy()) return {.code = RPC_E_SERVERCALL_RETRYLATER, .text = {}, .result = {}};
  try {
    return {.text = {}, .result = member.run(*lock, argument)};
  } catch (const base::RuntimeError& error) {
    return {.code = errorCode(error.number), .raised = true, .text = errorText(error), .result = {}};
  } catch (const std::bad_alloc&) {
    return {.code = errorCode(kOutOfMemory), .raised = true, .text = L"Out of memory", .result = {}};
  }
}

HRESULT LockObject::call(int number, const Value& argument, Value& result) {
  Outcome outcome = run(kMembers[static_cast<std::size_t>(number - 1)], argument);
  if (outcome.raised) raise(outcome.text);
  result = std::move(outcome.result);
  return outcome.code;
}

HRESULT LockObject::method(int number) { return put(number, {}); }

HRESULT LockObject::put(int number, const Value& argument) {
  Value none;
  return call(number, argument, none);
}

STDMETHODIMP LockObject::put_LockSolventText(BSTR v) {
  return put(11, ansiText(std::wstring_view(v, SysStringLen(v))));
}

STDMETHODIMP LockObject::get_LockSolventText(BSTR* result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  Value value;
  const HRESULT hr = call(12, {}, value);
  if (SUCCEEDED(hr)) *result = allocate(wideText(std::get<std::string>(value)));
  return hr;
}

} // namespace win32
