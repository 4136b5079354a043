// The panel on Windows, measured in one run: what a tick costs over nine bare calls on the same host, what
// the idle panel costs, how soon it is on the screen next to the system's own editor, and how large it is.
// Runs from C:\pelorin's programs.
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "engine/LockCycle.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "win32/WinPlatform.h"
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

class Process {
 public:
  explicit Process(std::string commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, "C:\\pelorin",
                        &startup, &info_))
      std::printf("%s does not start: error %lu\n", commandLine.c_str(), GetLastError());
  }
  ~Process() {
    TerminateProcess(info_.hProcess, 0);
    WaitForSingleObject(info_.hProcess, 5000);
    CloseHandle(info_.hProcess);
    CloseHandle(info_.hThread);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  double cpuSeconds() const {
    FILETIME created, ended, kernel, user;
    GetProcessTimes(info_.hProcess, &created, &ended, &kernel, &user);
    const auto of = [](const FILETIME& t) {
      return (double(t.dwHighDateTime) * 4294967296.0 + t.dwLowDateTime) * 1e-7;
    };
    return of(kernel) + of(user);
  }
  // The process has a visible window that answers.
  bool onScreen() const {
    struct Search {
      DWORD process;
      bool found;
    } search{info_.dwProcessId, false};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
          auto& s = *reinterpret_cast<Search*>(parameter);
          DWORD process = 0;
          GetWindowThreadProcessId(window, &process);
          DWORD_PTR answer = 0;
          s.found = process == s.process && IsWindowVisible(window) &&
                    SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 1000, &answer);
          return !s.found;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
  }
  bool waitOnScreen() const {
    const auto start = Clock::now();
    while (!onScreen()) {
      if (secondsSince(start) > 30) return false;
      Sleep(1);
    }
    return true;
  }

 private:
  PROCESS_INFORMATION info_{};
};

// Settings and host of the installed programs, wherever this program lies.
class BenchPlatform : public win32::WinPlatform {
 public:
  std::string programFolder() override { return "C:\\pelorin"; }
};

// One call of data word i without anything of ours around it.
void bareCall(IDispatch& host, LONG word) {
  VARIANTARG argument;
  VariantInit(&argument);
  V_VT(&argument) = VT_I4 | VT_BYREF;
  V_I4REF(&argument) = &word;
  DISPPARAMS parameters{&argument, nullptr, 1, 0};
  VARIANT result;
  VariantInit(&result);
  host.Invoke(201, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
}

IDispatch* runningHost() {
  CLSID id;
  IUnknown* unknown = nullptr;
  IDispatch* host = nullptr;
  if (SUCCEEDED(CLSIDFromProgID(L"Pelorin.Application", &id)) &&
      SUCCEEDED(GetActiveObject(id, nullptr, &unknown))) {
    unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&host));
    unknown->Release();
  }
  return host;
}

void measureTick() {
  BenchPlatform platform;
  Program program(platform);
  vbLock_mod::startUp(program);
  program.frmLock->pressModeButton(frmLock::ButtonSweep);
  program.frmLock->Timer1.setEnabled(false);
  program.doEvents();
  IDispatch* host = runningHost();
  std::vector<double> ticks, bare;
  for (int round = 0; round < 60; ++round) { // alternating, so that a slow spell of the machine hits both
    auto start = Clock::now();
    for (int i = 0; i < 5; ++i) vbLock_mod::LockCycle(program);
    ticks.push_back(secondsSince(start) / 5);
    start = Clock::now();
    for (int i = 0; i < 5; ++i)
      for (LONG word = 0; word < 9; ++word) bareCall(*host, word);
    bare.push_back(secondsSince(start) / 5);
  }
  host->Release();
  program.frmLock->pressModeButton(frmLock::ButtonOff);
  std::printf("panel tick %.3f ms, nine bare calls %.3f ms: ratio %.3f (at most 1.10)\n", median(ticks) * 1e3,
              median(bare) * 1e3, median(ticks) / median(bare));
}

void measureIdle() {
  const Process panel("C:\\pelorin\\VantrelLock.exe");
  if (!panel.waitOnScreen()) return;
  Sleep(1000);
  const double before = panel.cpuSeconds();
  Sleep(10000);
  std::printf("idle panel (Off): %.2f %% of a core over 10 s (at most 0.5)\n",
              (panel.cpuSeconds() - before) * 10);
}

double secondsToScreen(const char* commandLine) {
  const auto start = Clock::now();
  const Process process(commandLine);
  process.waitOnScreen();
  return secondsSince(start);
}

void measureStart() {
  std::vector<double> panel, editor;
  for (int round = 0; round < 5; ++round) {
    panel.push_back(secondsToScreen("C:\\pelorin\\VantrelLock.exe"));
    editor.push_back(secondsToScreen("C:\\windows\\notepad.exe"));
  }
  std::printf("start to the screen: panel %.0f ms, notepad %.0f ms: ratio %.2f (at most 2.0)\n",
              median(panel) * 1e3, median(editor) * 1e3, median(panel) / median(editor));
}

void measureSize() {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (GetFileAttributesExA("C:\\pelorin\\VantrelLock.exe", GetFileExInfoStandard, &data))
    std::printf("VantrelLock.exe: %.2f MB (at most 2)\n", double(data.nFileSizeLow) / 1e6);
}

} // namespace

int main() {
  const Process console("C:\\pelorin\\PelorinSim.exe");
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto start = Clock::now();
  IDispatch* host = nullptr;
  while (!(host = runningHost()) && secondsSince(start) < 30) Sleep(50);
  if (!host) {
    std::printf("the simulated console does not answer\n");
    return 1;
  }
  host->Release();
  measureSize();
  measureTick();
  measureStart();
  measureIdle();
  std::fflush(stdout);
}
