#include "support/Panel.h"
#include "ui/winutil/SystemMenu.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

class LockSystemMenu : public testing::Test {
 protected:
  void SetUp() override {
    p.host().words[6] = 12; // some noise, as a receiver has
    p.started();
  }
  headless::HeadlessWindows& windows() { return p.platform.windows(); }
  void minimise(std::int16_t mode) {
    p.record().LockMode = mode;
    windows().minimise(p.main());
  }
  std::vector<std::string> texts() {
    std::vector<std::string> all;
    for (const auto& item : windows().systemMenu(p.main())) all.push_back(item.text);
    return all;
  }
  // The checked ones of Lock On, Lock Off, Lock Hold.
  std::vector<unsigned> checked() {
    std::vector<unsigned> all;
    for (const auto& item : windows().systemMenu(p.main()))
      if (item.checked) all.push_back(item.id);
    return all;
  }
  using Ids = std::vector<unsigned>;
  Panel p;
};

TEST_F(LockSystemMenu, minimisingPutsTheLockCommandsBeforeRestore) {
  minimise(kModeOff);
  const auto menu = texts();
  ASSERT_GE(menu.size(), 5U);
  EXPECT_EQ(std::vector<std::string>(menu.begin(), menu.begin() + 5),
            (std::vector<std::string>{"Lock O&n", "&Lock Of&f", "&Lock &Hold", "-", "&Restore"}));
  EXPECT_EQ(windows().systemMenu(p.main())[3].id, 60000U);
  EXPECT_TRUE(windows().hooked(p.main()));
}

TEST_F(LockSystemMenu, restoringRemovesThemAndTheHook) {
  const auto before = texts();
  minimise(kModeLock);
  windows().restore(p.main());
  EXPECT_EQ(texts(), before);
  EXPECT_FALSE(windows().hooked(p.main()));
}

TEST_F(LockSystemMenu, theMarksFollowTheLockMode) {
  const std::pair<std::int16_t, Ids> cases[] = {
      {kModeOff, {60002}}, {kModeLock, {60001}}, {kModeSweep, {}}, {kModeHold, {60003}}};
  for (const auto& [mode, marks] : cases) {
    minimise(mode);
    EXPECT_EQ(checked(), marks) << mode;
    windows().restore(p.main());
  }
}

TEST_F(LockSystemMenu, theAutomaticModesLeaveTheMarksAsTheyAre) {
  for (const std::int16_t mode : {kModeAuto, kModePhase}) {
    minimise(kModeHold);
    p.record().LockMode = mode;
    SystemMenu::UpdateLockSystemMenu(p.program());
    EXPECT_EQ(checked(), Ids{60003});
    p.record().LockMode = kModeOff;
    windows().restore(p.main());
  }
}

TEST_F(LockSystemMenu, choosingHoldActsAsTheToolbarsHoldButtonAndMovesTheMark) {
  p.press("Lock");
  windows().minimise(p.main());
  EXPECT_EQ(checked(), Ids{60001});
  p.clear();
  windows().systemMenuChoose(p.main(), 60003);
  EXPECT_EQ(p.record().LockMode, kModeHold);
  EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonHold);
  EXPECT_EQ(checked(), Ids{60003});
  EXPECT_FALSE(p.calls().empty());
}

TEST_F(LockSystemMenu, choosingOnAndOffPressesTheirButtons) {
  windows().minimise(p.main());
  windows().systemMenuChoose(p.main(), 60001);
  EXPECT_EQ(p.record().LockMode, kModeLock);
  EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonLock);
  EXPECT_EQ(checked(), Ids{60001});
  windows().systemMenuChoose(p.main(), 60002);
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.main().Toolbar1.pressed(), frmLock::ButtonOff);
  EXPECT_EQ(checked(), Ids{60002});
}

TEST_F(LockSystemMenu, aModeChangeThatFailsIsReportedAndTheWindowLives) {
  windows().minimise(p.main());
  p.host().failAll();
  p.platform.dialogs().otherwise = [](const std::string&, ports::Buttons) { return ports::Answer::Ok; };
  windows().systemMenuChoose(p.main(), 60001);
  p.host().failNever();
  EXPECT_FALSE(p.boxes().empty());
  EXPECT_TRUE(p.main().loaded());
  EXPECT_TRUE(windows().hooked(p.main()));
  EXPECT_EQ(checked(), Ids{60001}); // the mark moves before the button is pressed
}

TEST_F(LockSystemMenu, closingUnhooksBeforeTheCloseIsProcessed) {
  windows().minimise(p.main());
  bool hookedWhileAsked = true;
  p.expectBox("Save the changes?", ports::Answer::No, [&] { hookedWhileAsked = windows().hooked(p.main()); });
  EXPECT_TRUE(p.ends([&] { p.close(); }));
  EXPECT_FALSE(hookedWhileAsked);
}

TEST_F(LockSystemMenu, onlyWParamCounts) {
  windows().minimise(p.main());
  SystemMenu::LockMenuWindowProc(p.program(), 60000); // the separator, and anything else, is only passed on
  SystemMenu::LockMenuWindowProc(p.program(), 0);
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_TRUE(windows().hooked(p.main()));
  SystemMenu::LockMenuWindowProc(p.program(), ports::kSystemClose);
  EXPECT_FALSE(windows().hooked(p.main()));
}

} // namespace
