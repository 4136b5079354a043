// Whole sessions with the simulated console behind its own automation object.
#include "e2e/support/Client.h"
#include "e2e/support/Site.h"
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <psapi.h>
#include <sstream>
#include <thread>

using namespace e2e;

namespace {

struct AutomationSession : testing::Test {
  AutomationSession() { copySettings(LOCK_SOURCE_DIR "/packaging/LOCK.INI"); }
  ~AutomationSession() override { endPanels(); }
  Process console{"\"" + consoleExe() + "\" --quiet"};
  void SetUp() override {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"Pelorin.Application", &clsid), S_OK);
    ASSERT_TRUE(eventually([&] {
      IUnknown* running = nullptr;
      if (FAILED(GetActiveObject(clsid, nullptr, &running))) return false;
      running->Release();
      return true;
    })) << "the console did not come up";
  }
};

double state(const Client& client) { return client.get(L"GetLockState").number(); }

SIZE_T memoryOf(DWORD process) {
  HANDLE handle = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process);
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof counters;
  GetProcessMemoryInfo(handle, &counters, sizeof counters);
  CloseHandle(handle);
  return counters.WorkingSetSize;
}

DWORD handlesOf(DWORD process) { // 0 where the system does not count them
  HANDLE handle = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, process);
  DWORD count = 0;
  GetProcessHandleCount(handle, &count);
  CloseHandle(handle);
  return count;
}

// How long the load lasts: five seconds, or as many as LOCK_LOAD_SECONDS says.
DWORD loadMs() {
  const char* seconds = std::getenv("LOCK_LOAD_SECONDS");
  return 1000 * static_cast<DWORD>(seconds ? std::max(1, std::atoi(seconds)) : 5);
}

} // namespace

TEST_F(AutomationSession, exampleScriptLocksTheSample) {
  const std::string output = std::string(kFolder) + "\\script.txt";
  std::string script = LOCK_SOURCE_DIR "/docs/examples/lock_sample.vbs";
  for (char& c : script)
    if (c == '/') c = '\\';
  const std::string line =
      "cmd /c C:\\windows\\system32\\cscript.exe //nologo \"Z:" + script + "\" CDCl3 > " + output + " 2>&1";
  EXPECT_EQ(runToEnd(line, 200000), 0U);
  std::ostringstream said;
  said << std::ifstream(output).rdbuf();
  EXPECT_EQ(said.str().substr(0, 15), "Locked on CDCl3") << said.str();
  DeleteFileA(output.c_str());
  Client client;
  EXPECT_EQ(state(client), 513);
}

TEST_F(AutomationSession, twoHundredCallsASecondWhileAnotherClientPressesModes) {
  Client client;
  ASSERT_EQ(client.creation(), S_OK);
  ASSERT_TRUE(client.call(L"StartAutoLock").ok());
  ASSERT_TRUE(eventually([&] { return state(client) == 513; }, 120000));

  const DWORD process = processes("VantrelLock.exe").at(0), duration = loadMs();
  std::atomic<bool> over{false};
  std::atomic<int> presses{0}, refused{0};
  std::thread presser([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      Client other;
      const wchar_t* modes[] = {L"StartHold", L"StartLock", L"StartSweep",
                                L"StartLock", L"StopLock",  L"StartLock"};
      for (std::size_t i = 0; !over; ++i, ++presses) {
        if (!other.call(modes[i % 6]).ok()) ++refused;
        Sleep(100);
      }
    }
    CoUninitialize();
  });

  const wchar_t* reads[] = {L"GetLockState", L"LockLevel",       L"LockTxPower",    L"LockRxGain",
                            L"LockNMRPhase", L"LockFieldCenter", L"LockSweepWidth", L"hWndLockWindow"};
  DISPID ids[8] = {};
  for (int i = 0; i < 8; ++i) ids[i] = client.id(reads[i]);
  SIZE_T memoryEarly = 0;
  DWORD handlesEarly = 0;
  int calls = 0, failed = 0;
  const DWORD start = GetTickCount();
  while (GetTickCount() - start < duration) {
    if (!client.invoke(ids[calls % 8], DISPATCH_PROPERTYGET).ok()) ++failed;
    ++calls;
    if (!memoryEarly && GetTickCount() - start > duration / 4) {
      memoryEarly = memoryOf(process);
      handlesEarly = handlesOf(process);
    }
    const DWORD due = static_cast<DWORD>(calls) * 5, now = GetTickCount() - start;
    if (due > now) Sleep(due - now);
  }
  over = true;
  presser.join();
  const DWORD elapsed = GetTickCount() - start;
  EXPECT_EQ(failed, 0);
  EXPECT_EQ(refused, 0);
  EXPECT_GT(presses, 3);
  EXPECT_GT(calls * 1000.0 / elapsed, 150) << "calls a second";
  EXPECT_LT(memoryOf(process), memoryEarly + (4U << 20));
  EXPECT_LE(handlesOf(process), handlesEarly + 10);
  RecordProperty("calls", calls);

  EXPECT_TRUE(client.call(L"StopLock").ok());
  EXPECT_EQ(state(client), -256);
  const auto panel = win32::RemotePanel::find(process);
  ASSERT_TRUE(panel);
  EXPECT_EQ(panel->status(), "OFF");
  EXPECT_TRUE(panel->isPressed(1));
}
