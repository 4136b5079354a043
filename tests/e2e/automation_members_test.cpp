// Every member called from another process: what the host is told, with exact types, and what is read back.
#include "automation/Members.h"
#include "e2e/support/Client.h"
#include "e2e/support/RecordingHost.h"
#include "e2e/support/Site.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

using namespace e2e;

namespace {

// One panel for all tests of the suite; each leaves it switched off.
struct Scene {
  RecordingHost host;
  Panel panel;
  Client client;
};

class AutomationMembers : public testing::Test {
 protected:
  static inline std::unique_ptr<Scene> scene;
  static void SetUpTestSuite() {
    writeSettings(standardSettings());
    scene = std::make_unique<Scene>();
  }
  static void TearDownTestSuite() { scene.reset(); }
  void SetUp() override {
    ASSERT_TRUE(scene->panel.ready());
    ASSERT_EQ(scene->client.creation(), S_OK);
    host.words[6] = 400;
    settle();
  }
  void TearDown() override { EXPECT_TRUE(lock.call(L"StopLock").ok()); }
  // Nothing that was put off is still to be sent.
  void settle() {
    std::size_t before = 0;
    do {
      before = host.calls().size();
      Sleep(100);
    } while (host.calls().size() != before);
    host.clear();
  }
  HWND window() { return scene->panel.window().window(); }
  RecordingHost& host = scene->host;
  Client& lock = scene->client;
};

Lines sample(const std::string& frequency, const std::string& shifted) {
  return {"198 ref R8 " + shifted, "31 I4 7", "198 ref R8 " + frequency};
}

Lines join(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

} // namespace

TEST_F(AutomationMembers, sweepSpeed) {
  EXPECT_TRUE(lock.put(L"LockSweepSpeed", Var::i4(12345)).ok());
  EXPECT_EQ(host.calls(), Lines({"206 R8 12345"}));
  const Reply speed = lock.get(L"LockSweepSpeed");
  EXPECT_EQ(speed.type(), VT_I4);
  EXPECT_EQ(speed.number(), 12345);
}

TEST_F(AutomationMembers, sweepWidth) {
  ASSERT_TRUE(lock.put(L"LockFieldCenter", Var::r4(400)).ok());
  settle();
  EXPECT_TRUE(lock.put(L"LockSweepWidth", Var::i4(6000)).ok());
  EXPECT_EQ(host.calls(), Lines({"30 R8 400", "204 R8 6000"}));
  EXPECT_EQ(lock.get(L"LockSweepWidth").type(), VT_I4);
  EXPECT_EQ(lock.get(L"LockSweepWidth").number(), 6000);
}

TEST_F(AutomationMembers, fieldCenter) {
  ASSERT_TRUE(lock.put(L"LockSweepWidth", Var::i4(8000)).ok());
  ASSERT_TRUE(lock.put(L"LockSweepSpeed", Var::i4(20000)).ok());
  settle();
  EXPECT_TRUE(lock.put(L"LockFieldCenter", Var::r4(1000)).ok());
  EXPECT_EQ(host.waitForCalls(4), Lines({"30 R8 1000", "204 R8 8000", "206 R8 20000", "206 R8 20000"}));
  const Reply centre = lock.get(L"LockFieldCenter");
  EXPECT_EQ(centre.type(), VT_R4);
  EXPECT_EQ(centre.number(), 1000);
  EXPECT_TRUE(lock.put(L"LockFieldCenter", Var::r4(1002)).ok());
  EXPECT_EQ(lock.get(L"LockFieldCenter").number(), 1000);
  EXPECT_TRUE(lock.put(L"LockFieldCenter", Var::r4(1006)).ok());
  EXPECT_EQ(lock.get(L"LockFieldCenter").number(), 1008);
}

TEST_F(AutomationMembers, solventPPM) {
  ASSERT_TRUE(lock.put(L"LockSolventText", Var::text(L"CDCl3")).ok());
  settle();
  EXPECT_TRUE(lock.put(L"LockSolventPPM", Var::r4(4.8f)).ok());
  EXPECT_EQ(host.calls(), Lines({"198 ref R8 46.0446373"}));
  const Reply shift = lock.get(L"LockSolventPPM");
  EXPECT_EQ(shift.type(), VT_R4);
  EXPECT_FLOAT_EQ(static_cast<float>(shift.number()), 7.24f);
}

TEST_F(AutomationMembers, solventText) {
  ASSERT_TRUE(lock.put(L"LockSolventText", Var::text(L"CDCl3")).ok());
  settle();
  EXPECT_TRUE(lock.put(L"LockSolventText", Var::text(L"D2O")).ok());
  const Lines calls = host.waitForCalls(2);
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls[0], "198 ref R8 46.0446373");
  EXPECT_EQ(lock.get(L"LockSolventText").string(), L"D2O");
  EXPECT_FLOAT_EQ(static_cast<float>(lock.get(L"LockSolventPPM").number()), 4.8f);
  EXPECT_EQ(lock.get(L"LockRxGain").number(), 800);
  EXPECT_EQ(lock.get(L"LockTxPower").number(), 30);
}

TEST_F(AutomationMembers, solventTextThatIsNotListed) {
  for (const std::wstring& name : {std::wstring(), std::wstring(10000, L'x'), std::wstring(L"cdcl3")}) {
    ASSERT_TRUE(lock.put(L"LockSolventText", Var::text(L"D2O")).ok());
    EXPECT_TRUE(lock.put(L"LockSolventText", Var::text(name)).ok());
    EXPECT_FLOAT_EQ(static_cast<float>(lock.get(L"LockSolventPPM").number()), 7.24f) << name.size();
  }
}

TEST_F(AutomationMembers, txPower) {
  EXPECT_TRUE(lock.put(L"LockTxPower", Var::r4(10)).ok());
  EXPECT_EQ(host.calls(), Lines({"28 ref R8 10"}));
  const Reply power = lock.get(L"LockTxPower");
  EXPECT_EQ(power.type(), VT_R4);
  EXPECT_EQ(power.number(), 20);
}

TEST_F(AutomationMembers, rxGain) {
  EXPECT_TRUE(lock.put(L"LockRxGain", Var::r4(1234.5f)).ok());
  EXPECT_EQ(host.calls(), Lines({"26 R8 1234"}));
  const Reply gain = lock.get(L"LockRxGain");
  EXPECT_EQ(gain.type(), VT_R4);
  EXPECT_EQ(gain.number(), 1234);
}

TEST_F(AutomationMembers, nmrPhase) {
  const std::pair<float, double> cases[] = {{-190, 170},  {190, -170}, {180, 180},
                                            {-180, -180}, {600, 240},  {12.5f, 12}};
  for (const auto& [given, stored] : cases) {
    EXPECT_TRUE(lock.put(L"LockNMRPhase", Var::r4(given)).ok());
    EXPECT_EQ(lock.get(L"LockNMRPhase").number(), stored) << given;
  }
  EXPECT_EQ(lock.get(L"LockNMRPhase").type(), VT_R4);
  EXPECT_EQ(host.calls(), Lines());
}

TEST_F(AutomationMembers, level) {
  const Reply level = lock.get(L"LockLevel");
  EXPECT_EQ(level.type(), VT_R4);
  EXPECT_EQ(level.number(), 0);
  EXPECT_EQ(host.calls(), Lines());
}

TEST_F(AutomationMembers, loopChar) {
  EXPECT_TRUE(lock.put(L"LockLoopChar", Var::i2(2)).ok());
  EXPECT_TRUE(lock.put(L"LockLoopChar", Var::i2(-32768)).ok());
  EXPECT_EQ(host.calls(), Lines());
}

TEST_F(AutomationMembers, modesAndTheirStates) {
  const std::pair<const wchar_t*, double> cases[] = {{L"StartSweep", -254},
                                                     {L"StartHold", -253},
                                                     {L"StartAutoLock", -252},
                                                     {L"StartAutoPhase", -251},
                                                     {L"StopLock", -256}};
  for (const auto& [member, state] : cases) {
    EXPECT_TRUE(lock.call(member).ok());
    const Reply now = lock.get(L"GetLockState");
    EXPECT_EQ(now.type(), VT_I2);
    EXPECT_EQ(now.number(), state);
  }
}

TEST_F(AutomationMembers, stopLock) {
  ASSERT_TRUE(lock.put(L"LockFieldCenter", Var::r4(400)).ok());
  settle();
  EXPECT_TRUE(lock.call(L"StopLock").ok());
  EXPECT_EQ(host.calls(), Lines({"22 I4 0", "31 I4 3", "30 R8 400", "31 I4 0"}));
}

TEST(AutomationLock, tellsTheHostWhatTheLockButtonTellsItAndReadsTheJudgement) {
  writeSettings(standardSettings());
  Scene fresh;
  ASSERT_EQ(fresh.client.creation(), S_OK);
  fresh.host.words[6] = 400;
  fresh.host.clear();
  EXPECT_TRUE(fresh.client.call(L"StartLock").ok());
  const auto state = [&] { return fresh.client.get(L"GetLockState").number(); };
  EXPECT_TRUE(eventually([&] { return state() == 257; }));
  fresh.host.words[1] = fresh.host.words[3] = 900;
  EXPECT_TRUE(eventually([&] { return state() == 513; }));
  EXPECT_EQ(fresh.panel.window().status(), "LOCKED");
  EXPECT_TRUE(fresh.panel.window().isPressed(2));
  // Up to the switch of the host to lock mode; the flag of the judgement follows.
  const Lines calls = fresh.host.calls();
  const auto last = std::find(calls.begin(), calls.end(), "31 I4 1");
  ASSERT_NE(last, calls.end());
  EXPECT_EQ(
      Lines(calls.begin(), last + 1),
      join({{"22 I4 0", "199 ref R8 20", "199 ref R8 20", "28 ref R8 20", "30 R8 400", "204 R8 8000",
             "206 R8 20000", "206 R8 20000", "27 ref R8 30", "199 ref R8 20"},
            sample("46.0447496", "46.0579946"),
            {"31 I4 3", "30 R8 400", "202 I4 0 R8 8000", "202 I4 1 R8 60", "202 I4 2 R8 3", "31 I4 1"}}));
}

TEST_F(AutomationMembers, windowsHideShowAndMinimise) {
  const Reply handle = lock.get(L"hWndLockWindow");
  EXPECT_EQ(handle.type(), VT_I4);
  const HWND main = window();
  EXPECT_EQ(static_cast<LONG>(handle.number()), static_cast<LONG>(reinterpret_cast<LONG_PTR>(main)));
  EXPECT_TRUE(lock.call(L"HideWindows").ok());
  EXPECT_FALSE(IsWindowVisible(main));
  EXPECT_TRUE(lock.call(L"ShowLockWindow").ok());
  EXPECT_TRUE(IsWindowVisible(main));
  EXPECT_TRUE(lock.call(L"MinimizeLockWindow").ok());
  EXPECT_TRUE(eventually([&] { return IsIconic(main); }));
  SendMessageA(main, WM_SYSCOMMAND, SC_RESTORE, 0);
  EXPECT_TRUE(eventually([&] { return !IsIconic(main); }));
}

TEST_F(AutomationMembers, showTakesAnyModalityAndGivesItBackUnchanged) {
  long given = 7;
  Var variable = Var::text(L"12");
  ASSERT_TRUE(lock.call(L"HideWindows").ok());
  for (const std::vector<Var>& arguments : {std::vector<Var>{},
                                            {Var::missing()},
                                            {Var::i4(1)},
                                            {Var::i2(1)},
                                            {Var::r8(0.4)},
                                            {Var::byRef(given)},
                                            {Var::byRef(variable)}}) {
    EXPECT_EQ(lock.call(L"ShowLockWindow", arguments).code, S_OK);
    EXPECT_TRUE(IsWindowVisible(window()));
    EXPECT_TRUE(IsWindowEnabled(window()));
  }
  EXPECT_EQ(given, 7);
  EXPECT_EQ(std::wstring(V_BSTR(&variable.v)), L"12");
}

TEST_F(AutomationMembers, numbersOfAnyTypeAreConverted) {
  long byReference = 4000;
  Var variable = Var::r8(5000.5);
  const std::pair<Var, double> cases[] = {{Var::i2(100), 100},          {Var::r4(200.5f), 200},
                                          {Var::r8(201.5), 202},        {Var::text(L"300"), 300},
                                          {Var::boolean(true), -1},     {Var::byRef(byReference), 4000},
                                          {Var::byRef(variable), 5000}, {Var(), 0}};
  for (const auto& [given, stored] : cases) {
    EXPECT_EQ(lock.put(L"LockSweepSpeed", given).code, S_OK);
    EXPECT_EQ(lock.get(L"LockSweepSpeed").number(), stored);
  }
  EXPECT_TRUE(lock.put(L"LockSolventText", Var::i4(5)).ok()); // a number's text is a name like another
  EXPECT_TRUE(lock.put(L"LockNMRPhase", Var::text(L"45.5")).ok());
  EXPECT_EQ(lock.get(L"LockNMRPhase").number(), 46);
}

TEST_F(AutomationMembers, secondClientSeesTheSameLock) {
  Client other;
  ASSERT_EQ(other.creation(), S_OK);
  EXPECT_TRUE(other.put(L"LockNMRPhase", Var::r4(77)).ok());
  EXPECT_EQ(lock.get(L"LockNMRPhase").number(), 77);
  EXPECT_EQ(processes("VantrelLock.exe").size(), 1U);
}
