#include "win32/WinHost.h"
#include "base/RuntimeError.h"
#include "win32/SystemText.h"
#include "win32/WideText.h"
#include <array>

namespace win32 {

namespace {

constexpr wchar_t kProgId[] = L"Pelorin.Application";
constexpr IID kHostInterface = {0xE3AECBB1, 0x381A, 0x11D0, {0xB9, 0x95, 0x00, 0x40, 0x33, 0x3C, 0x6B, 0xC3}};
constexpr std::size_t kMostArguments = 4;

void freeTexts(EXCEPINFO& info) {
  SysFreeString(info.bstrSource);
  SysFreeString(info.bstrDescription);
  SysFreeString(info.bstrHelpFile);
}

[[noreturn]] void raise(int dispid, HRESULT result, EXCEPINFO& info) {
  std::string text;
  if (result == DISP_E_EXCEPTION) {
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    if (info.bstrDescription) text = ansiText({info.bstrDescription, SysStringLen(info.bstrDescription)});
    if (info.scode != 0) result = info.scode;
  }
  freeTexts(info);
  if (text.empty()) text = systemText(static_cast<DWORD>(result));
  throw base::RuntimeError(result, text, "host operation " + std::to_string(dispid));
}

class Host : public ports::HostDispatch {
 public:
  explicit Host(IDispatch* object) : object_(object) {}
  ~Host() override { object_->Release(); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  double call(int dispid, std::span<const ports::HostArg> args) override {
    std::array<VARIANT, kMostArguments> values{};
    std::array<double, kMostArguments> reals{};
    std::array<LONG, kMostArguments> wholes{};
    const std::size_t count = std::min(args.size(), kMostArguments);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t last = count - 1 - i; // the last argument stands first
      reals[i] = args[i].value;
      if (args[i].type == ports::HostArg::Type::I4 || args[i].type == ports::HostArg::Type::RefI4)
        wholes[i] = static_cast<LONG>(args[i].value);
      values[last] = variant(args[i].type, reals[i], wholes[i]);
    }
    DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(count), 0};
    VARIANT result{};
    EXCEPINFO info{};
    IDispatch* const object = object_; // a handler inside the call may replace the host
    object->AddRef();
    const HRESULT hr = object->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                      &result, &info, nullptr);
    object->Release();
    if (FAILED(hr)) raise(dispid, hr, info);
    return number(dispid, result);
  }

 private:
  static VARIANT variant(ports::HostArg::Type type, double& real, LONG& whole) {
    VARIANT v{};
    switch (type) {
    case ports::HostArg::Type::I4:
      v.vt = VT_I4;
      v.lVal = whole;
      break;
    case ports::HostArg::Type::R8:
      v.vt = VT_R8;
      v.dblVal = real;
      break;
    case ports::HostArg::Type::RefI4:
      v.vt = VT_BYREF | VT_I4;
      v.plVal = &whole;
      break;
    case ports::HostArg::Type::RefR8:
      v.vt = VT_BYREF | VT_R8;
      v.pdblVal = &real;
      break;
    }
    return v;
  }
  static double number(int dispid, VARIANT& result) {
    if (result.vt == VT_EMPTY || result.vt == VT_NULL) return 0;
    if (result.vt == VT_R8) return result.dblVal;
    VARIANT real{};
    const HRESULT hr = VariantChangeType(&real, &result, 0, VT_R8);
    VariantClear(&result);
    EXCEPINFO none{};
    if (FAILED(hr)) raise(dispid, hr, none);
    return real.dblVal;
  }
  IDispatch* object_;
};

} // namespace

std::unique_ptr<ports::HostDispatch> hostOn(IDispatch* object) { return std::make_unique<Host>(object); }

std::unique_ptr<ports::HostDispatch> WinHostFinder::findRunningHost() {
  CLSID clsid{};
  if (FAILED(CLSIDFromProgID(kProgId, &clsid))) return nullptr;
  IUnknown* running = nullptr;
  if (FAILED(GetActiveObject(clsid, nullptr, &running)) || !running) return nullptr;
  IDispatch* host = nullptr;
  // Another process's interface of its own needs its type library on this machine; late binding does without.
  if (FAILED(running->QueryInterface(kHostInterface, reinterpret_cast<void**>(&host))))
    running->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&host));
  running->Release();
  return host ? hostOn(host) : nullptr;
}

} // namespace win32
