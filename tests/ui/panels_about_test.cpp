#include "support/Panel.h"
#include "ui/panels/frmAbout.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

constexpr const char* kTools = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* kLocation = "SOFTWARE\\Microsoft\\Shared Tools Location";
constexpr const char* kUnavailable = "System Information Is Unavailable At This Time";

ports::RegistryValue text(std::string raw) {
  return {.isNumber = false, .text = std::move(raw), .number = 0};
}

class About : public testing::Test {
 protected:
  void SetUp() override {
    p.platform.versionInfo.legalNotice = "All rights reserved.";
    p.started();
    shell = &p.platform.shell();
  }
  frmAbout& box() { return p.program().frmAbout.get(); }
  bool read(const char* key, const char* name, std::string& value) {
    return box().GetKeyValue(frmAbout::KeyRoot::LocalMachine, key, name, value);
  }
  Panel p;
  headless::FakeShell* shell = nullptr;
};

TEST_F(About, showsTheProgramsOwnVersionInformation) {
  EXPECT_EQ(box().caption(), "About Vantrel Lock");
  EXPECT_EQ(box().lblTitle.caption(), "Vantrel Lock");
  EXPECT_EQ(box().lblVersion.caption(), "Version 3.0.81");
  EXPECT_EQ(box().lblDescription.caption(), "Field-frequency lock control");
  EXPECT_EQ(box().lblDisclaimer.caption(), "All rights reserved.");
}

TEST_F(About, theHelpMenuShowsItModallyUntilOk) {
  bool modal = false;
  p.platform.pump().post([&] {
    modal = p.platform.windows().modalForm() == p.program().frmAbout.ifLoaded() && box().isModal();
    p.press("OK");
  });
  p.menu("Help/About");
  EXPECT_TRUE(modal);
  EXPECT_FALSE(p.program().frmAbout.loaded());
}

TEST_F(About, enterAndEscapeBelongToOk) {
  EXPECT_TRUE(box().cmdOK.isDefault);
  EXPECT_TRUE(box().cmdOK.isCancel);
}

TEST_F(About, startsTheToolTheRegistryNames) {
  shell->registry[{kTools, "PATH"}] = text(std::string("C:\\tools\\msinfo32.exe\0junk", 26));
  box().StartSysInfo();
  EXPECT_EQ(shell->started, std::vector<std::string>{"C:\\tools\\msinfo32.exe"});
}

TEST_F(About, otherwiseLooksInTheSharedToolsFolder) {
  shell->registry[{kLocation, "MSINFO"}] = text(std::string("C:\\shared\0", 10));
  p.platform.files().texts["C:\\shared\\MSINFO32.EXE"] = "";
  box().show();
  p.press("cmdSysInfo");
  EXPECT_EQ(shell->started, std::vector<std::string>{"C:\\shared\\MSINFO32.EXE"});
}

TEST_F(About, saysSoWhenTheToolIsNotThere) {
  shell->registry[{kLocation, "MSINFO"}] = text(std::string("C:\\shared\0", 10));
  p.expectBox(kUnavailable, ports::Answer::Ok);
  box().StartSysInfo();
  EXPECT_TRUE(shell->started.empty());
}

TEST_F(About, saysSoWhenTheRegistryKnowsNoTool) {
  p.expectBox(kUnavailable, ports::Answer::Ok);
  box().StartSysInfo();
  EXPECT_TRUE(shell->started.empty());
}

TEST_F(About, saysSoWhenTheToolCannotBeStarted) {
  shell->registry[{kTools, "PATH"}] = text(std::string("C:\\gone.exe\0", 12));
  shell->canStart = false;
  p.expectBox(kUnavailable, ports::Answer::Ok);
  box().StartSysInfo();
  EXPECT_EQ(shell->started.size(), 1U);
}

TEST_F(About, aRegistryTextEndsAtItsFirstNul) {
  shell->registry[{"k", "n"}] = text(std::string("one\0two\0", 8));
  std::string value;
  EXPECT_TRUE(read("k", "n", value));
  EXPECT_EQ(value, "one");
}

TEST_F(About, aRegistryTextWithoutNulLosesItsLastCharacter) {
  shell->registry[{"k", "n"}] = text("C:\\tools\\");
  shell->registry[{"k", "empty"}] = text("");
  std::string value;
  EXPECT_TRUE(read("k", "n", value));
  EXPECT_EQ(value, "C:\\tools");
  EXPECT_TRUE(read("k", "empty", value));
  EXPECT_EQ(value, "");
}

TEST_F(About, aRegistryNumberReadsAsHexadecimalFromTheHighestByteDown) {
  shell->registry[{"k", "n"}] = {.isNumber = true, .text = "", .number = 0x01A0002FU};
  std::string value;
  EXPECT_TRUE(read("k", "n", value));
  EXPECT_EQ(value, "&h01A0002F");
}

TEST_F(About, aMissingRegistryValueLeavesTheCallersTextAlone) {
  std::string value = "before";
  EXPECT_FALSE(read("k", "missing", value));
  EXPECT_EQ(value, "before");
}

} // namespace
