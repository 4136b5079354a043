// The simulated console as an automation object: any client, late bound, any numeric argument, by value or
// reference.
#pragma once
#include "sim/SimHost.h"
#include "win32/automation/Com.h"
#include <functional>

namespace win32 {

inline constexpr CLSID kConsoleClass = {
    0xB0C4D0F2, 0x94A3, 0x4E0E, {0x8F, 0x57, 0x2F, 0x6A, 0x3D, 0x1B, 0x7C, 0x95}};
inline constexpr GUID kConsoleLibrary = {
    0x5D7A7C1E, 0x3F0B, 0x4C57, {0x9C, 0x1D, 0x6A, 0x52, 0xF1, 0xC0, 0xE8, 0xB4}};
inline constexpr IID kLockHardware = {
    0xE3AECBB1, 0x381A, 0x11D0, {0xB9, 0x95, 0x00, 0x40, 0x33, 0x3C, 0x6B, 0xC3}};
inline constexpr wchar_t kConsoleProgId[] = L"Pelorin.Application";

// Lives as long as the process; clients' references do not keep it alive.
class ConsoleObject final : public IDispatch {
 public:
  // beforeCall runs first in every call: the clock is brought up to date there.
  ConsoleObject(std::shared_ptr<sim::Spectrometer> spectrometer, std::function<void()> beforeCall);
  ~ConsoleObject();
  ConsoleObject(const ConsoleObject&) = delete;
  ConsoleObject& operator=(const ConsoleObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

 private:
  sim::SimHost host_;
  std::function<void()> beforeCall_;
  ITypeInfo* type_ = nullptr; // of our own library; null when it cannot be read
};

// Hands out the one console there is, to clients that ask for a new one.
class ConsoleFactory final : public IClassFactory {
 public:
  explicit ConsoleFactory(ConsoleObject& object) : object_(object) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  ConsoleObject& object_;
};

} // namespace win32
