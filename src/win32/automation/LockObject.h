// The automation object that clients hold: each member of the dual interface, early or late bound, becomes
// one call on the lock, and an error of the lock becomes the client's error, with number, text and source.
#pragma once
#include "automation/Members.h"
#include "win32/automation/Service.h"
#include <memory>

namespace win32 {

class LockObject final : public INMRLock, public IProvideClassInfo, public ISupportErrorInfo {
 public:
  explicit LockObject(std::shared_ptr<Service> service) : service_(std::move(service)) {}
  LockObject(const LockObject&) = delete;
  LockObject& operator=(const LockObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrongArgument) override;

  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == IID_INMRLock ? S_OK : S_FALSE;
  }

  STDMETHODIMP ExitLockApp() override { return method(1); }
  STDMETHODIMP ShowLockWindow(LONG*) override { return method(2); }
  STDMETHODIMP get_LockSweepSpeed(LONG* result) override { return get<std::int32_t>(3, result); }
  STDMETHODIMP put_LockSweepSpeed(LONG v) override { return put(4, std::int32_t{v}); }
  STDMETHODIMP get_LockSweepWidth(LONG* result) override { return get<std::int32_t>(5, result); }
  STDMETHODIMP put_LockSweepWidth(LONG v) override { return put(6, std::int32_t{v}); }
  STDMETHODIMP put_LockFieldCenter(float v) override { return put(7, v); }
  STDMETHODIMP get_LockFieldCenter(float* result) override { return get<float>(8, result); }
  STDMETHODIMP put_LockSolventPPM(float v) override { return put(9, v); }
  STDMETHODIMP get_LockSolventPPM(float* result) override { return get<float>(10, result); }
  STDMETHODIMP put_LockSolventText(BSTR v) override;
  STDMETHODIMP get_LockSolventText(BSTR* result) override;
  STDMETHODIMP put_LockTxPower(float v) override { return put(13, v); }
  STDMETHODIMP get_LockTxPower(float* result) override { return get<float>(14, result); }
  STDMETHODIMP put_LockRxGain(float v) override { return put(15, v); }
  STDMETHODIMP get_LockRxGain(float* result) override { return get<float>(16, result); }
  STDMETHODIMP put_LockNMRPhase(float v) override { return put(17, v); }
  STDMETHODIMP get_LockNMRPhase(float* result) override { return get<float>(18, result); }
  STDMETHODIMP get_GetLockState(SHORT* result) override { return get<std::int16_t>(19, result); }
  STDMETHODIMP get_LockLevel(float* result) override { return get<float>(20, result); }
  STDMETHODIMP put_LockLoopChar(SHORT v) override { return put(21, std::int16_t{v}); }
  STDMETHODIMP StartLock() override { return method(22); }
  STDMETHODIMP StartAutoPhase() override { return method(23); }
  STDMETHODIMP StartAutoLock() override { return method(24); }
  STDMETHODIMP StartHold() override { return method(25); }
  STDMETHODIMP StartSweep() override { return method(26); }
  STDMETHODIMP StopLock() override { return method(27); }
  STDMETHODIMP HideWindows() override { return method(28); }
  STDMETHODIMP MinimizeLockWindow() override { return method(29); }
  STDMETHODIMP get_hWndLockWindow(LONG* result) override { return get<std::int32_t>(30, result); }

 private:
  ~LockObject() = default;

  // How a call ended. raised: the member itself failed, and text says why; otherwise it was never carried
  // out.
  struct Outcome {
    HRESULT code = S_OK;
    bool raised = false;
    std::wstring text;
    automation::Value result;
  };
  Outcome run(const automation::Member& member, const automation::Value& argument);
  HRESULT call(int number, const automation::Value& argument, automation::Value& result); // early bound
  HRESULT method(int number);
  HRESULT put(int number, const automation::Value& argument);
  template <class T, class Out> HRESULT get(int number, Out* result) {
    if (!result) return E_POINTER;
    automation::Value value;
    const HRESULT hr = call(number, {}, value);
    *result = SUCCEEDED(hr) ? std::get<T>(value) : T{};
    return hr;
  }

  std::shared_ptr<Service> service_;
  ULONG references_ = 1; // only ever touched on the user-interface thread
};

} // namespace win32
