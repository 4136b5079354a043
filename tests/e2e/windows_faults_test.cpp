// Hosts that are missing, slow, refusing or gone, and a second copy: what the operator sees of it.
#include "e2e/support/Hands.h"
#include <gtest/gtest.h>

using namespace e2e;

namespace {

// The panel as it is before it has found its host.
struct Start {
  Start() : process("\"" + panelExe() + "\"") {}
  Process process;
  Hands hands{process};
};

// The simulated console as a process of its own.
struct Console {
  explicit Console(const std::string& options) : process("\"" + consoleExe() + "\" --quiet " + options) {
    EXPECT_TRUE(eventually([] {
      CLSID clsid{};
      IUnknown* found = nullptr;
      if (SUCCEEDED(CLSIDFromProgID(L"Pelorin.Application", &clsid)) &&
          SUCCEEDED(GetActiveObject(clsid, nullptr, &found))) {
        found->Release();
        return true;
      }
      return false;
    })) << "the console did not come up";
  }
  Process process;
};

// Long answers of the host let the window answer between them.
bool answersSoon(const Hands& hands, DWORD withinMs) { return hands.main().answers(withinMs); }

} // namespace

TEST(HostFaults, missingHostIsAskedForAndCancelEndsThePanel) {
  writeSettings(operatorSettings());
  const std::string before = fileContent(kSettings);
  Start s;
  const Box box = s.hands.box(20000);
  EXPECT_EQ(box.caption, "Warning!");
  EXPECT_EQ(box.text, "There was an error attempting to open the Automation object!\r\n"
                      "Start the Pelorin application; then Retry to continue the Lock session.\r\n"
                      "Cancel to terminate the Lock session.");
  box.answer(IDRETRY);
  const Box again = s.hands.box();
  EXPECT_EQ(again.caption, "Warning!");
  PostMessageA(again.window.window(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(s.process.ends());
  EXPECT_EQ(fileContent(kSettings), before);
}

TEST(HostFaults, hostStartedLaterIsFoundByRetry) {
  writeSettings(operatorSettings());
  Start s;
  const Box box = s.hands.box(20000);
  RecordingHost host;
  box.answer(IDRETRY);
  EXPECT_TRUE(s.hands.shown(Hands::kMain));
  EXPECT_TRUE(s.hands.statusBecomes("OFF"));
  const Lines told = host.waitForCalls(4);
  EXPECT_EQ(told.front(), "197");
  const auto main = win32::RemotePanel(s.hands.main().window());
  EXPECT_TRUE(main.isPressed(1));
}

TEST(HostFaults, secondCopyAppliesItsParametersAndRefuses) {
  Desk d;
  Start second;
  const Box box = second.hands.box(20000);
  EXPECT_EQ(box.caption, "Vantrel Lock");
  EXPECT_EQ(box.text, "Cannot run two copies of Vantrel Lock");
  const Lines told = d.host.calls();
  EXPECT_NE(std::find(told.begin(), told.end(), "28 ref R8 20"), told.end()) << testing::PrintToString(told);
  PostMessageA(box.window.window(), WM_COMMAND, IDOK, 0);
  EXPECT_TRUE(second.process.ends());
  EXPECT_TRUE(d.hands.main().answers());
  EXPECT_EQ(d.hands.status(), "OFF");
}

TEST(HostFaults, hostThatRefusesAtStartUpEndsThePanelWithAMessage) {
  writeSettings(operatorSettings());
  RecordingHost host;
  host.fail(28, E_FAIL, L"The amplifier is off");
  Start s;
  const Box box = s.hands.box(20000);
  EXPECT_NE(box.text.find("The amplifier is off"), std::string::npos) << box.text;
  PostMessageA(box.window.window(), WM_COMMAND, IDOK, 0);
  EXPECT_TRUE(s.process.ends());
}

TEST(HostFaults, hostThatDiesWhileLockedLeavesThePanelAlive) {
  writeSettings(fileContent(std::string(LOCK_SOURCE_DIR) + "/packaging/LOCK.INI"));
  Console console("--seed 1");
  Panel panel;
  ASSERT_TRUE(panel.ready());
  const Hands hands(panel.process);
  hands.mode(2);
  ASSERT_TRUE(hands.statusBecomes("LOCKED", 60000)) << hands.status();
  console.process.kill();
  EXPECT_TRUE(answersSoon(hands, 5000));
  hands.mode(3);
  Box box = hands.box(20000);
  EXPECT_FALSE(box.text.empty());
  box.answer(IDOK);
  // At most one for each tick that was under way, then the panel rests.
  for (int more = 0; more < 3 && eventually([&] { return hands.asks(); }, 1000); ++more)
    hands.box().answer(IDOK);
  EXPECT_FALSE(hands.asks());
  EXPECT_EQ(hands.status(2).rfind("Lvl:", 0), 0U) << hands.status(2);
  EXPECT_TRUE(panel.process.running());
  EXPECT_TRUE(answersSoon(hands, 5000));
  hands.main().close();
  hands.box().answer(IDNO);
  EXPECT_TRUE(panel.process.ends());
}

TEST(HostFaults, deadHostIsReportedByAModeButton) {
  auto host = std::make_unique<RecordingHost>();
  writeSettings(operatorSettings());
  Panel panel;
  ASSERT_TRUE(panel.ready());
  const Hands hands(panel.process);
  ASSERT_TRUE(hands.statusBecomes("OFF"));
  host.reset();
  hands.mode(3);
  const Box box = hands.box(20000);
  EXPECT_FALSE(box.text.empty());
  box.answer(IDOK);
  EXPECT_TRUE(answersSoon(hands, 5000));
  EXPECT_TRUE(panel.process.running());
}

TEST(HostFaults, slowHostLeavesTheWindowAnswering) {
  writeSettings(fileContent(std::string(LOCK_SOURCE_DIR) + "/packaging/LOCK.INI"));
  Console console("--fault slow=200");
  Panel panel;
  const Hands hands(panel.process);
  ASSERT_TRUE(eventually([&] { return hands.status() == "OFF"; }, 20000));
  hands.mode(4);
  ASSERT_TRUE(hands.statusBecomes("HOLD", 20000));
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(answersSoon(hands, 1000)) << i;
  hands.menu("td"); // and so does its menu
  EXPECT_TRUE(hands.shown(Hands::kDisplay));
  hands.mode(1);
  EXPECT_TRUE(hands.statusBecomes("OFF", 20000));
}
