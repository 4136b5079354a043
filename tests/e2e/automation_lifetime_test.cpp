// The panel's life as its clients see it: started by them, serving several, busy, gone.
#include "e2e/support/Client.h"
#include "e2e/support/RecordingHost.h"
#include "e2e/support/Site.h"
#include <algorithm>
#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

using namespace e2e;

namespace {

struct AutomationLifetime : testing::Test {
  AutomationLifetime() { writeSettings(standardSettings()); }
  ~AutomationLifetime() override { endPanels(); }
};

bool turnedAway(HRESULT code) { return code == RPC_E_SERVERCALL_RETRYLATER || code == RPC_E_CALL_REJECTED; }

std::size_t panels() { return processes("VantrelLock.exe").size(); }

double state(const Client& client) { return client.get(L"GetLockState").number(); }

// Answers the message box that the panel shows.
bool answerBox(WPARAM button) {
  HWND box = nullptr;
  const auto found = [&box] {
    for (DWORD process : processes("VantrelLock.exe"))
      if (!box) box = dialogOf(process);
    return box != nullptr;
  };
  return eventually(found) && PostMessageA(box, WM_COMMAND, button, 0);
}

} // namespace

TEST_F(AutomationLifetime, creatingAnObjectStartsThePanelAndTheFirstCallIsCarriedOut) {
  RecordingHost host;
  ASSERT_EQ(panels(), 0U);
  Client client;
  ASSERT_EQ(client.creation(), S_OK);
  EXPECT_EQ(client.get(L"GetLockState").code, S_OK);
  EXPECT_EQ(state(client), -256);
  EXPECT_EQ(panels(), 1U);
}

TEST_F(AutomationLifetime, runningPanelServesNewClientsAndOutlivesThem) {
  RecordingHost host;
  Panel panel;
  for (int i = 0; i < 3; ++i) {
    Client client;
    EXPECT_EQ(client.creation(), S_OK);
    EXPECT_EQ(state(client), -256);
  }
  EXPECT_EQ(panels(), 1U);
  EXPECT_TRUE(panel.process.running());
}

TEST_F(AutomationLifetime, clientsThatComeAtTheSameMomentGetOnePanel) {
  RecordingHost host;
  ASSERT_EQ(panels(), 0U);
  std::atomic<int> served{0};
  const auto visit = [&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      Client client;
      if (client.creation() == S_OK && state(client) == -256) ++served;
    }
    CoUninitialize();
  };
  std::thread first(visit), second(visit);
  first.join();
  second.join();
  EXPECT_EQ(served, 2);
  EXPECT_TRUE(eventually([] { return panels() == 1; })) << panels() << " panels are left";
  Client later;
  EXPECT_EQ(state(later), -256);
}

TEST_F(AutomationLifetime, exitEndsThePanelWhateverOthersHold) {
  RecordingHost host;
  Panel panel;
  Client one, other;
  ASSERT_EQ(state(other), -256);
  EXPECT_TRUE(one.put(L"LockNMRPhase", Var::r4(99)).ok());
  one.call(L"ExitLockApp"); // nobody is left to answer
  EXPECT_TRUE(panel.process.ends());
  EXPECT_EQ(panel.process.exitCode(), 0U);
  EXPECT_FALSE(other.get(L"GetLockState").ok());
  EXPECT_FALSE(other.call(L"StartLock").ok());
  char phase[16] = {};
  GetPrivateProfileStringA("Hardware", "LockPhase", "", phase, sizeof phase, kSettings);
  EXPECT_STREQ(phase, "30"); // nothing is saved
  Client next;
  ASSERT_EQ(next.creation(), S_OK);
  EXPECT_EQ(next.get(L"LockNMRPhase").number(), 30);
}

TEST_F(AutomationLifetime, clientThatDiesLeavesThePanelAlone) {
  RecordingHost host;
  Panel panel;
  const std::string script = std::string(kFolder) + "\\dies.vbs";
  std::ofstream(script) << "Set lock = CreateObject(\"VantrelLock.NMRLock\")\r\nlock.StartSweep\r\n"
                           "CreateObject(\"WScript.Shell\").Run \"ping -n 3 127.0.0.1\", 0, True\r\n"
                           "WScript.Echo lock.GetLockState\r\n";
  Client client;
  {
    Process doomed("C:\\windows\\system32\\cscript.exe //nologo " + script);
    EXPECT_TRUE(eventually([&] { return state(client) == -254; }));
    ASSERT_TRUE(doomed.running());
    doomed.kill();
  }
  DeleteFileA(script.c_str());
  EXPECT_EQ(state(client), -254);
  EXPECT_TRUE(client.call(L"StopLock").ok());
  EXPECT_EQ(state(client), -256);
}

TEST_F(AutomationLifetime, withoutAWindowUntilAClientAsksForIt) {
  RecordingHost host;
  Panel panel("/NoWindow");
  EXPECT_FALSE(IsWindowVisible(panel.window().window()));
  Client client;
  ASSERT_EQ(client.creation(), S_OK);
  EXPECT_EQ(state(client), -256);
  EXPECT_FALSE(IsWindowVisible(panel.window().window()));
  EXPECT_TRUE(client.call(L"ShowLockWindow").ok());
  EXPECT_TRUE(IsWindowVisible(panel.window().window()));
}

TEST_F(AutomationLifetime, whileTheOperatorIsAskedForTheHostCallsAreBusyAndThenCarriedOut) {
  Client client; // starts the panel; no host runs
  ASSERT_EQ(client.creation(), S_OK);
  EXPECT_TRUE(turnedAway(client.get(L"GetLockState").code));
  EXPECT_TRUE(turnedAway(client.call(L"StartLock").code));
  Client second;
  EXPECT_EQ(second.creation(), S_OK);
  EXPECT_TRUE(turnedAway(second.call(L"StopLock").code));
  EXPECT_EQ(panels(), 1U);
  RecordingHost host;
  ASSERT_TRUE(answerBox(IDRETRY));
  EXPECT_TRUE(eventually([&] { return client.get(L"GetLockState").ok(); }));
  EXPECT_EQ(state(client), -256);
  EXPECT_TRUE(second.call(L"StopLock").ok());
  endPanels();
}

TEST_F(AutomationLifetime, cancelledStartEndsThePanelAndTheNextClientStartsItAnew) {
  {
    Client client;
    ASSERT_EQ(client.creation(), S_OK);
    ASSERT_TRUE(answerBox(IDCANCEL));
    EXPECT_TRUE(eventually([] { return panels() == 0; }));
    EXPECT_FALSE(client.get(L"GetLockState").ok());
  }
  RecordingHost host;
  Client next;
  ASSERT_EQ(next.creation(), S_OK);
  EXPECT_EQ(state(next), -256);
  endPanels();
}

TEST_F(AutomationLifetime, whileAMessageBoxIsOpenOtherClientsAreToldToComeAgain) {
  RecordingHost host;
  Panel panel;
  host.words[6] = 0; // entering Lock warns of the low noise level
  std::atomic<HRESULT> code{E_PENDING};
  std::thread locker([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      Client client;
      code = client.call(L"StartLock").code;
    }
    CoUninitialize();
  });
  Client other;
  EXPECT_TRUE(eventually([&] { return turnedAway(other.get(L"GetLockState").code); }));
  host.clear();
  EXPECT_TRUE(turnedAway(other.call(L"StopLock").code));
  EXPECT_TRUE(turnedAway(other.put(L"LockTxPower", Var::r4(1)).code));
  const Lines calls = host.calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "28 ref R8 1"), 0);
  EXPECT_EQ(code, E_PENDING) << "the call that opened the box waits with it";
  EXPECT_TRUE(answerBox(IDOK));
  locker.join();
  EXPECT_EQ(code, S_OK);
  EXPECT_TRUE(other.get(L"GetLockState").ok());
  EXPECT_TRUE(other.call(L"StopLock").ok());
  EXPECT_EQ(state(other), -256);
}
