#include "win32/console/ConsoleObject.h"
#include "base/RuntimeError.h"
#include "win32/WideText.h"
#include <algorithm>
#include <array>

namespace win32 {

using ports::HostArg;
using Type = HostArg::Type;

namespace {

enum class Result { None, Whole, Real };

struct Member {
  DISPID id;
  const wchar_t* name;
  int count;
  std::array<Type, 2> types;
  Result result;
};

constexpr std::array kMembers{
    Member{22, L"SetLockedFlag", 1, {Type::I4}, Result::None},
    Member{26, L"SetReceiverGain", 1, {Type::R8}, Result::None},
    Member{27, L"SetPhase", 1, {Type::RefR8}, Result::None},
    Member{28, L"SetTransmitterPower", 1, {Type::RefR8}, Result::None},
    Member{30, L"SetField", 1, {Type::R8}, Result::None},
    Member{31, L"SetMode", 1, {Type::I4}, Result::None},
    Member{45, L"ResetSystem", 0, {}, Result::None},
    Member{51, L"SetSystemValue", 1, {Type::RefI4}, Result::None},
    Member{52, L"GetSystemValue", 0, {}, Result::Whole},
    Member{197, L"GetHardwareState", 0, {}, Result::Whole},
    Member{198, L"SetFrequency", 1, {Type::RefR8}, Result::None},
    Member{199, L"SetReceiverFilter", 1, {Type::RefR8}, Result::None},
    Member{200, L"ResetLockHardware", 0, {}, Result::None},
    Member{201, L"GetDataWord", 1, {Type::I4}, Result::Real},
    Member{202, L"SetLoopConstant", 2, {Type::I4, Type::R8}, Result::None},
    Member{204, L"SetSweepWidth", 1, {Type::R8}, Result::None},
    Member{206, L"SetSweepSpeed", 1, {Type::R8}, Result::None},
};

const Member* member(DISPID id) {
  const auto* found =
      std::find_if(kMembers.begin(), kMembers.end(), [id](const Member& m) { return m.id == id; });
  return found == kMembers.end() ? nullptr : found;
}

HRESULT numberOf(VARIANT& given, Type type, HostArg& arg) {
  VARIANT value{}, number{};
  HRESULT hr = VariantCopyInd(&value, &given);
  const bool whole = type == Type::I4 || type == Type::RefI4;
  if (SUCCEEDED(hr)) hr = VariantChangeType(&number, &value, 0, whole ? VT_I4 : VT_R8);
  VariantClear(&value);
  if (SUCCEEDED(hr)) arg = {type, whole ? static_cast<double>(number.lVal) : number.dblVal};
  return hr;
}

HRESULT fail(const base::RuntimeError& error, EXCEPINFO* exception) {
  if (!exception) return static_cast<HRESULT>(error.number);
  *exception = {};
  exception->scode = static_cast<SCODE>(error.number);
  exception->bstrSource = SysAllocString(kConsoleProgId);
  exception->bstrDescription = SysAllocString(wideText(error.text).c_str());
  return DISP_E_EXCEPTION;
}

} // namespace

ConsoleObject::ConsoleObject(std::shared_ptr<sim::Spectrometer> spectrometer,
                             std::function<void()> beforeCall)
    : host_(std::move(spectrometer)), beforeCall_(std::move(beforeCall)) {
  std::wstring path(32768, L'\0');
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  ITypeLib* library = nullptr;
  if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library))) return;
  library->GetTypeInfoOfGuid(kLockHardware, &type_);
  library->Release();
}

ConsoleObject::~ConsoleObject() {
  if (type_) type_->Release();
}

HRESULT ConsoleObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = iid == IID_IUnknown || iid == IID_IDispatch || iid == kLockHardware ? this : nullptr;
  return *object ? S_OK : E_NOINTERFACE;
}

HRESULT ConsoleObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = type_ ? 1 : 0;
  return S_OK;
}

HRESULT ConsoleObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0 || !type_) return DISP_E_BADINDEX;
  type_->AddRef();
  *info = type_;
  return S_OK;
}

HRESULT ConsoleObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids) return E_POINTER;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  for (const Member& m : kMembers)
    if (count > 0 && CompareStringOrdinal(names[0], -1, m.name, -1, TRUE) == CSTR_EQUAL) ids[0] = m.id;
  return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME; // arguments have no names
}

HRESULT ConsoleObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                              EXCEPINFO* exception, UINT* badArgument) {
  const Member* called = member(id);
  if (!called || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
  if (!parameters || parameters->cArgs != static_cast<UINT>(called->count)) return DISP_E_BADPARAMCOUNT;
  if (parameters->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  std::array<HostArg, 2> args{};
  for (UINT i = 0; i < parameters->cArgs; ++i) {
    const UINT at = parameters->cArgs - 1 - i; // the last argument stands first
    if (const HRESULT hr = numberOf(parameters->rgvarg[at], called->types[i], args[i]); FAILED(hr)) {
      if (badArgument) *badArgument = at;
      return hr;
    }
  }
  try {
    beforeCall_();
    const double value = host_.call(id, std::span<const HostArg>(args.data(), parameters->cArgs));
    if (!result || called->result == Result::None) return S_OK;
    VariantInit(result);
    result->vt = called->result == Result::Whole ? VT_I4 : VT_R8;
    if (called->result == Result::Whole)
      result->lVal = static_cast<LONG>(value);
    else
      result->dblVal = value;
    return S_OK;
  } catch (const base::RuntimeError& error) {
    return fail(error, exception);
  } catch (...) {
    return E_UNEXPECTED;
  }
}

HRESULT ConsoleFactory::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
  return *object ? S_OK : E_NOINTERFACE;
}

HRESULT ConsoleFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  return outer ? CLASS_E_NOAGGREGATION : object_.QueryInterface(iid, object);
}

} // namespace win32
