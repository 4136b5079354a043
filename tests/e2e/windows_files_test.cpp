// Opening, saving and closing: the system's own file dialogs, the save question and what stands in the file.
#include "e2e/support/Hands.h"
#include <algorithm>
#include <gtest/gtest.h>

using namespace e2e;

namespace {

constexpr char kOther[] = "C:\\pelorin-e2e\\OTHER.INI";
constexpr char kDialog[] = "Select Lock File";

class Files : public testing::Test {
 protected:
  void SetUp() override { DeleteFileA(kOther); }
  void TearDown() override { DeleteFileA(kOther); }
  static std::string commented() {
    return "; kept by hand\r\n[Mine]\r\n  odd  =  spacing \r\n" + operatorSettings();
  }
  // Gives the dialog a path, or none, and the button.
  static void answer(const Hands& hands, const std::string& path, int button) {
    const Box dialog = hands.box(20000);
    EXPECT_EQ(dialog.caption, kDialog);
    if (!path.empty()) {
      HWND name = GetDlgItem(dialog.window.window(), 0x47C);
      if (!name) name = GetDlgItem(dialog.window.window(), 0x480);
      SendMessageA(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    }
    PostMessageA(dialog.window.window(), WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(eventually(
        [&] { return !dialog.window.exists() || !IsWindowEnabled(dialog.window.window()); }, 20000));
  }
  static void writeOther(const std::string& text) {
    writeSettings(text);
    ASSERT_TRUE(CopyFileA(kSettings, kOther, FALSE));
  }
};

} // namespace

TEST_F(Files, quitEndsWithoutSaving) {
  Desk d;
  const std::string before = fileContent(kSettings);
  d.hands.enter(d.hands.main().child("EDIT"), "800");
  EXPECT_EQ(d.told(4).size(), 4U);
  EXPECT_TRUE(d.hands.main().chooseMenu("fq"));
  EXPECT_TRUE(d.panel.process.ends());
  EXPECT_EQ(fileContent(kSettings), before);
}

TEST_F(Files, exitSavesAndKeepsWhatIsNotItsOwn) {
  Desk d(commented());
  Settings before = readSettings();
  d.hands.enter(d.hands.main().child("EDIT"), "800");
  EXPECT_EQ(d.told(4).size(), 4U);
  EXPECT_TRUE(d.hands.main().chooseMenu("fx"));
  EXPECT_TRUE(d.panel.process.ends());
  const Settings after = readSettings();
  EXPECT_EQ(after.at("[Hardware] FieldCenter"), "800");
  EXPECT_EQ(after.at("[Display] ShowControls"), "1");
  EXPECT_NE(fileContent(kSettings).find("; kept by hand"), std::string::npos);
  EXPECT_NE(fileContent(kSettings).find("spacing"), std::string::npos);
  for (const char* key : {"[Hardware] TxPower", "[Hardware] SweepWidth", "[Solvents] D2O", "[Loop] P_0"})
    EXPECT_EQ(after.at(key), before[key]) << key;
}

TEST_F(Files, closeBoxAsksAndNoLeavesTheFileAlone) {
  Desk d;
  const std::string before = fileContent(kSettings);
  d.hands.main().close();
  const Box box = d.hands.box();
  EXPECT_EQ(box.caption, "Save On Exit");
  EXPECT_EQ(box.text, "Save the changes?");
  box.answer(IDNO);
  EXPECT_TRUE(d.panel.process.ends());
  EXPECT_EQ(fileContent(kSettings), before);
}

TEST_F(Files, closeBoxAsksAndYesSaves) {
  Desk d;
  SetWindowPos(d.hands.main().window(), nullptr, 75, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  d.settle();
  d.hands.main().close();
  d.hands.box().answer(IDYES);
  EXPECT_TRUE(d.panel.process.ends());
  EXPECT_EQ(readSettings()["[Display] FormLeft"], "1125");
  EXPECT_EQ(readSettings()["[Display] FormTop"], "900");
}

TEST_F(Files, openedFileIsLoadedSentAndNamedInTheCaption) {
  std::string other = operatorSettings();
  other.replace(other.find("TxPower=20"), 10, "TxPower=25");
  writeOther(other);
  Desk d;
  ASSERT_TRUE(d.hands.main().chooseMenu("fo"));
  answer(d.hands, {}, IDCANCEL);
  d.settle();
  EXPECT_EQ(d.hands.main().title(), "Lock Control");
  ASSERT_TRUE(d.hands.main().chooseMenu("fo"));
  answer(d.hands, kOther, IDOK);
  EXPECT_TRUE(
      eventually([&] { return d.hands.main().title() == std::string("Talvane Lock Control - ") + kOther; }));
  const Lines told = d.host.waitForCalls(3);
  EXPECT_NE(std::find(told.begin(), told.end(), "28 ref R8 25"), told.end()) << testing::PrintToString(told);
}

TEST_F(Files, saveAsCopiesToAnExistingFileOnly) {
  writeOther("; somebody's\r\n[Mine]\r\na=b\r\n");
  Desk d(commented());
  ASSERT_TRUE(d.hands.main().chooseMenu("fa"));
  answer(d.hands, "C:\\pelorin-e2e\\NOT.INI", IDOK);
  Box box = d.hands.box(20000);
  EXPECT_NE(box.text.find("File not found"), std::string::npos) << box.text;
  box.answer(IDOK);
  answer(d.hands, kOther, IDOK);
  if (eventually([&] { return d.hands.asks(); }, 2000)) d.hands.box().answer(IDYES); // replace it?
  EXPECT_TRUE(
      eventually([&] { return d.hands.main().title() == std::string("Talvane Lock Control - ") + kOther; }));
  EXPECT_NE(fileContent(kOther).find("; kept by hand"), std::string::npos);
  EXPECT_EQ(readSettings(kOther)["[Hardware] TxPower"], "20");
}

TEST_F(Files, saveThatFailsIsToldOnce) {
  Desk d;
  const std::string config = "C:\\pelorin\\config", moved = "C:\\pelorin\\config-away";
  ASSERT_TRUE(MoveFileA(config.c_str(), moved.c_str()));
  EXPECT_TRUE(d.hands.main().chooseMenu("fs"));
  const Box box = d.hands.box();
  EXPECT_NE(box.text.find("could not be saved"), std::string::npos) << box.text;
  ASSERT_TRUE(MoveFileA(moved.c_str(), config.c_str()));
  box.answer(IDOK);
  d.settle();
  EXPECT_FALSE(d.hands.asks());
  EXPECT_TRUE(d.hands.main().answers());
}

TEST_F(Files, lockLogGrowsInTheUsersDateFormatAndAHeldFileSwitchesItOffOnce) {
  const std::string log = "C:\\pelorin-e2e\\Lock.Log";
  DeleteFileA(log.c_str());
  std::string settings = operatorSettings();
  settings.insert(settings.find("[Display]\r\n") + 11, "LogFileName=" + log + "\r\nLogInterval=0\r\n");
  Desk d(settings);
  d.hands.menu("pl");
  d.hands.mode(2);
  EXPECT_TRUE(eventually([&] {
    const std::string text = fileContent(log);
    return std::count(text.begin(), text.end(), '\n') > 8;
  })) << fileContent(log);
  const std::string text = fileContent(log);
  EXPECT_EQ(text.rfind("Lock - Logging started at ", 0), 0U);
  SYSTEMTIME now{};
  GetLocalTime(&now);
  char today[64]{};
  GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, today, sizeof today);
  EXPECT_NE(text.find("\r\n" + std::string(today) + " "), std::string::npos) << text;
  // Another program takes the file for itself: told once, and the lock goes on.
  HANDLE held = INVALID_HANDLE_VALUE;
  EXPECT_TRUE(eventually([&] {
    held = CreateFileA(log.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    return held != INVALID_HANDLE_VALUE;
  }));
  const Box box = d.hands.box();
  EXPECT_NE(box.text.find(log), std::string::npos) << box.text;
  EXPECT_NE(box.text.find("switched off"), std::string::npos) << box.text;
  box.answer(IDOK);
  CloseHandle(held);
  const std::string after = fileContent(log);
  const std::size_t calls = d.host.calls().size();
  EXPECT_TRUE(eventually([&] { return d.host.calls().size() > calls + 20; }));
  EXPECT_EQ(fileContent(log), after);
  EXPECT_FALSE(d.hands.asks());
  DeleteFileA(log.c_str());
}
