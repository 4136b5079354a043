#include "win32/Rig.h"
#include "win32/WinDialogs.h"
#include "win32/WinSystem.h"

namespace native {
namespace {

// Answers the dialog that is open when its turn comes, from inside the dialog's own message loop.
struct Answering {
  Answering(World& world, std::function<void(HWND)> act) {
    world.backEnd->whenModal([act = std::move(act)] {
      HWND dialog = FindWindowA("#32770", nullptr);
      for (int i = 0; i < 100 && !dialog; ++i) {
        Sleep(10);
        dialog = FindWindowA("#32770", nullptr);
      }
      if (dialog) act(dialog);
    });
  }
};

struct Boxes {
  World world;
  win32::WinDialogs dialogs{static_cast<win32::WinWindowSystem&>(world.backEnd->windows())};
};

TEST(Dialogs, aMessageIsOwnedByTheActiveWindowAndTheOthersWait) {
  Boxes boxes;
  Sample& form = boxes.world.shown();
  std::string caption, text;
  bool enabled = true;
  Answering answering(boxes.world, [&](HWND dialog) {
    caption = win32::windowText(dialog);
    text = win32::windowText(GetDlgItem(dialog, 0xFFFF));
    enabled = IsWindowEnabled(of(form));
    PostMessageA(dialog, WM_COMMAND, IDNO, 0);
  });
  EXPECT_EQ(
      boxes.dialogs.message("Save the changes?", "Save On Exit", ports::Buttons::YesNo, ports::Icon::None),
      ports::Answer::No);
  EXPECT_EQ(caption, "Save On Exit");
  EXPECT_EQ(text, "Save the changes?");
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(IsWindowEnabled(of(form)));
}

TEST(Dialogs, closingARetryBoxIsCancel) {
  Boxes boxes;
  Answering answering(boxes.world, [](HWND dialog) { PostMessageA(dialog, WM_CLOSE, 0, 0); });
  EXPECT_EQ(boxes.dialogs.message("x", "Warning!", ports::Buttons::RetryCancel, ports::Icon::Critical),
            ports::Answer::Cancel);
}

TEST(Dialogs, anInputBoxOffersTheOldTextAndGivesTheNewOne) {
  Boxes boxes;
  std::string offered;
  Answering answering(boxes.world, [&](HWND dialog) {
    HWND edit = FindWindowExA(dialog, nullptr, "EDIT", nullptr);
    offered = win32::windowText(edit);
    SetWindowTextA(edit, "4711");
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  });
  EXPECT_EQ(boxes.dialogs.input("New Field Center (DAC Units)", "Vantrel Lock", "12"), "4711");
  EXPECT_EQ(offered, "12");
}

TEST(Dialogs, aCancelledInputBoxGivesNothing) {
  Boxes boxes;
  Answering answering(boxes.world, [](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_EQ(boxes.dialogs.input("prompt", "caption", "12"), "");
}

TEST(System, filesGrowByAppendingAndSayWhyTheyCannot) {
  char temp[MAX_PATH]{};
  GetTempPathA(sizeof(temp), temp);
  const std::string path = std::string(temp) + "lock-files-test.log";
  DeleteFileA(path.c_str());
  win32::WinFiles files;
  EXPECT_FALSE(files.exists(path));
  EXPECT_EQ(files.append(path, "one"), "");
  EXPECT_EQ(files.append(path, "two"), "");
  EXPECT_TRUE(files.exists(path));
  WIN32_FILE_ATTRIBUTE_DATA data{};
  GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
  EXPECT_EQ(data.nFileSizeLow, 6U);
  DeleteFileA(path.c_str());
  EXPECT_NE(files.append(std::string(temp) + "no such folder\\x.log", "x"), "");
}

TEST(System, theRegistryGivesTextsWithTheirEndAndNumbers) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\VantrelLockTest", &key), ERROR_SUCCESS);
  const DWORD number = 0x12AB;
  RegSetValueExA(key, "Text", 0, REG_SZ, reinterpret_cast<const BYTE*>("C:\\x"), 5);
  RegSetValueExA(key, "Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof(number));
  RegCloseKey(key);
  win32::WinShell shell;
  const auto text = shell.registryValue("SOFTWARE\\VantrelLockTest", "Text");
  const auto value = shell.registryValue("SOFTWARE\\VantrelLockTest", "Number");
  EXPECT_FALSE(shell.registryValue("SOFTWARE\\VantrelLockTest", "Missing").has_value());
  RegDeleteKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\VantrelLockTest");
  EXPECT_FALSE(shell.registryValue("SOFTWARE\\VantrelLockTest", "Text").has_value());
  ASSERT_TRUE(text && value);
  EXPECT_EQ(text->text, std::string("C:\\x\0", 5));
  EXPECT_TRUE(value->isNumber);
  EXPECT_EQ(value->number, 0x12ABU);
}

TEST(System, aProgramThatDoesNotExistCannotBeStarted) {
  EXPECT_FALSE(win32::WinShell().start("C:\\no\\such\\program.exe"));
}

TEST(System, midnightIsADateAlone) {
  win32::WinClock clock;
  EXPECT_EQ(clock.generalDateText(46000).find(' '), std::string::npos);
  EXPECT_NE(clock.generalDateText(46000.5).find(' '), std::string::npos);
  EXPECT_GT(clock.now(), 45000);
}

} // namespace
} // namespace native
