#include "e2e/support/RecordingHost.h"
#include "win32/console/ConsoleObject.h"
#include <sstream>

namespace e2e {

namespace {

std::string argumentText(const VARIANT& v) {
  std::ostringstream text;
  text.precision(10);
  switch (V_VT(&v)) {
  case VT_I4:
    text << "I4 " << V_I4(&v);
    break;
  case VT_R8:
    text << "R8 " << V_R8(&v);
    break;
  case VT_I4 | VT_BYREF:
    text << "ref I4 " << *V_I4REF(&v);
    break;
  case VT_R8 | VT_BYREF:
    text << "ref R8 " << *V_R8REF(&v);
    break;
  default:
    text << "type " << V_VT(&v);
  }
  return text.str();
}

std::string callText(DISPID id, const DISPPARAMS& parameters) {
  std::string text = std::to_string(id);
  for (UINT i = parameters.cArgs; i-- > 0;) text += " " + argumentText(parameters.rgvarg[i]);
  return text;
}

} // namespace

class RecordingHost::Object final : public IDispatch {
 public:
  explicit Object(RecordingHost& host) : host_(host) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == win32::kLockHardware;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    {
      const std::lock_guard guard(host_.mutex_);
      host_.calls_.push_back(callText(id, *parameters));
      if (const auto failure = host_.failures_.find(id); failure != host_.failures_.end()) {
        if (failure->second.second.empty() || !exception) return failure->second.first;
        *exception = {};
        exception->scode = failure->second.first;
        exception->bstrDescription = SysAllocString(failure->second.second.c_str());
        return DISP_E_EXCEPTION;
      }
    }
    if (!result) return S_OK;
    VariantInit(result);
    if (id == 201) answer(*result, VT_R8, host_.words[index(*parameters)]);
    if (id == 197) answer(*result, VT_I4, host_.hardwareState);
    return S_OK;
  }

 private:
  static std::size_t index(const DISPPARAMS& parameters) {
    const VARIANT& v = parameters.rgvarg[0];
    return static_cast<std::size_t>(V_VT(&v) & VT_BYREF ? *V_I4REF(&v) : V_I4(&v));
  }
  static void answer(VARIANT& result, VARTYPE type, long value) {
    V_VT(&result) = type;
    if (type == VT_R8)
      V_R8(&result) = static_cast<double>(value);
    else
      V_I4(&result) = value;
  }
  RecordingHost& host_;
};

RecordingHost::RecordingHost() : thread_([this] { serve(); }) {
  while (!threadId_) Sleep(1);
}

RecordingHost::~RecordingHost() {
  PostThreadMessageA(threadId_, WM_QUIT, 0, 0);
  thread_.join();
}

void RecordingHost::serve() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Object object(*this);
  DWORD cookie = 0;
  RegisterActiveObject(&object, win32::kConsoleClass, ACTIVEOBJECT_STRONG, &cookie);
  MSG message;
  PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); // makes the queue
  threadId_ = GetCurrentThreadId();
  while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
  RevokeActiveObject(cookie, nullptr);
  CoDisconnectObject(&object, 0);
  CoUninitialize();
}

Lines RecordingHost::calls(bool withWords) const {
  const std::lock_guard guard(mutex_);
  Lines lines;
  for (const std::string& line : calls_)
    if (withWords || line.rfind("201 ", 0) != 0) lines.push_back(line);
  return lines;
}

Lines RecordingHost::waitForCalls(std::size_t count, DWORD longestMs) const {
  const DWORD start = GetTickCount();
  while (calls().size() < count && GetTickCount() - start < longestMs) Sleep(10);
  return calls();
}

void RecordingHost::clear() {
  const std::lock_guard guard(mutex_);
  calls_.clear();
}

void RecordingHost::fail(int dispid, HRESULT code, const std::wstring& text) {
  const std::lock_guard guard(mutex_);
  if (code == S_OK)
    failures_.erase(dispid);
  else
    failures_[dispid] = {code, text};
}

} // namespace e2e
