// The native window system with its pump, for suites that drive models on real windows.
#pragma once
#include "contract/controls_world.h"
#include "win32/FormPeer.h"
#include "win32/WinPump.h"
#include "win32/WinWindowSystem.h"
#include <objbase.h>

namespace contract {

class NativeBackEnd : public BackEnd {
 public:
  NativeBackEnd() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~NativeBackEnd() override {
    later() = nullptr;
    CoUninitialize();
  }
  ports::WindowSystem& windows() override { return windows_; }
  int turn() override {
    int loaded = 0;
    for (int i = 0; i < 3; ++i) loaded = pump_.doEvents(); // a timer ends a turn of its own
    return loaded;
  }
  void wait(int milliseconds) override {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    for (;;) {
      pump_.doEvents();
      const ULONGLONG now = GetTickCount64();
      if (now >= end) return;
      MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT,
                                  MWMO_INPUTAVAILABLE);
    }
  }
  void whenModal(std::function<void()> gesture) override {
    later() = std::move(gesture);
    SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
      KillTimer(nullptr, id);
      if (auto run = std::exchange(later(), nullptr)) run();
    });
  }
  int nativeWindows() override {
    int count = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM data) -> BOOL {
          if (win32::FormPeer::of(window)) ++*reinterpret_cast<int*>(data);
          return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
  }

 private:
  static std::function<void()>& later() {
    static std::function<void()> gesture;
    return gesture;
  }
  win32::WinWindowSystem windows_;
  win32::WinPump pump_{windows_};
};

} // namespace contract
