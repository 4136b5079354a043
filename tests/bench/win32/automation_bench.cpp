// What a client's call on the panel costs over an empty method of a bare automation server, in one run: calls
// per second, median and 99th percentile, with the lock Off. Runs from C:\pelorin's programs.
#include "win32/automation/Com.h"
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr CLSID kBareClass = {0x6d0a3c5e, 0x2b1f, 0x4f7c, {0x8e, 0x02, 0x5a, 0x91, 0x77, 0x3c, 0x44, 0xd6}};
constexpr int kRounds = 20, kCallsARound = 250;
constexpr double kHighestRatio = 1.2;

// The least an automation object can do.
class Bare final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
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
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return S_OK;
  }
};

int serveBare() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Bare object;
  DWORD cookie = 0;
  if (FAILED(RegisterActiveObject(&object, kBareClass, ACTIVEOBJECT_STRONG, &cookie))) return 1;
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
  RevokeActiveObject(cookie, nullptr);
  CoUninitialize();
  return 0;
}

class Process {
 public:
  explicit Process(std::string commandLine) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &info_))
      std::printf("%s does not start: error %lu\n", commandLine.c_str(), GetLastError());
  }
  ~Process() {
    PostThreadMessageA(info_.dwThreadId, WM_QUIT, 0, 0); // what it registered goes with it
    if (WaitForSingleObject(info_.hProcess, 5000) != WAIT_OBJECT_0) TerminateProcess(info_.hProcess, 0);
    CloseHandle(info_.hProcess);
    CloseHandle(info_.hThread);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  bool ends() const { return WaitForSingleObject(info_.hProcess, 20000) == WAIT_OBJECT_0; }

 private:
  PROCESS_INFORMATION info_{};
};

IDispatch* runningObject(const CLSID& clsid) {
  for (int tries = 0; tries < 500; ++tries, Sleep(20)) {
    IUnknown* running = nullptr;
    if (FAILED(GetActiveObject(clsid, nullptr, &running))) continue;
    IDispatch* object = nullptr;
    running->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&object));
    running->Release();
    if (object) return object;
  }
  return nullptr;
}

// Times of single calls, microseconds.
class Series {
 public:
  Series(const char* name, IDispatch& object, DISPID id, WORD flags)
      : name_(name), object_(object), id_(id), flags_(flags) {}
  bool round() {
    for (int i = 0; i < kCallsARound; ++i) {
      DISPPARAMS none{};
      VARIANT result{};
      const auto start = Clock::now();
      if (FAILED(object_.Invoke(id_, IID{}, 0, flags_, &none, &result, nullptr, nullptr))) return false;
      times_.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
      VariantClear(&result);
    }
    return true;
  }
  double percentile(double share) const {
    std::vector<double> sorted = times_;
    std::sort(sorted.begin(), sorted.end());
    return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
  }
  void print() const {
    double sum = 0;
    for (double t : times_) sum += t;
    std::printf("  %-28s %8.0f calls/s   median %7.0f us   99th percentile %7.0f us\n", name_,
                1e6 * static_cast<double>(times_.size()) / sum, percentile(0.5), percentile(0.99));
  }

 private:
  const char* name_;
  IDispatch& object_;
  DISPID id_;
  WORD flags_;
  std::vector<double> times_;
};

int measure(IDispatch& bareObject, IDispatch& lock) {
  constexpr DISPID kGetLockState = 11, kAny = 1;
  Series bare("bare server, empty method", bareObject, kAny, DISPATCH_METHOD);
  Series panel("NMRLock.GetLockState, Off", lock, kGetLockState, DISPATCH_PROPERTYGET);
  for (int i = 0; i < kRounds; ++i)
    if (!bare.round() || !panel.round()) {
      std::puts("automation: a call failed");
      return 1;
    }
  std::puts("automation calls from another process");
  bare.print();
  panel.print();
  const double ratio = panel.percentile(0.5) / bare.percentile(0.5);
  std::printf("  ratio of the medians %.2f (at most %.1f)\n", ratio, kHighestRatio);
  return 0;
}

int compare(const char* self) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Process console("C:\\pelorin\\PelorinSim.exe --quiet");
  CLSID host{};
  for (int tries = 0; tries < 250 && FAILED(CLSIDFromProgID(L"Pelorin.Application", &host)); ++tries)
    Sleep(20);
  IDispatch* consoleObject = runningObject(host);
  if (!consoleObject) {
    std::puts("automation: the console does not come up");
    return 1;
  }
  consoleObject->Release();
  Process("C:\\pelorin\\VantrelLock.exe /RegServer").ends();
  Process bareServer("\"" + std::string(self) + "\" --bare");
  IDispatch* bare = runningObject(kBareClass);
  IDispatch* lock = nullptr;
  const HRESULT hr = CoCreateInstance(CLSID_NMRLock, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                      reinterpret_cast<void**>(&lock));
  int verdict = 1;
  if (!bare || FAILED(hr))
    std::printf("automation: the panel cannot be reached: 0x%08lX\n", static_cast<unsigned long>(hr));
  else
    verdict = measure(*bare, *lock);
  if (lock) {
    DISPPARAMS none{};
    lock->Invoke(1, IID{}, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr); // ExitLockApp
    lock->Release();
  }
  if (bare) bare->Release();
  Process("C:\\pelorin\\VantrelLock.exe /UnregServer").ends();
  return verdict;
}

} // namespace

int main(int count, char** arguments) {
  if (count > 1 && std::strcmp(arguments[1], "--bare") == 0) return serveBare();
  return compare(arguments[0]);
}
