// Part of controls_contract.h: the keyboard focus and keys.
#pragma once
#include "contract/controls_world.h"

namespace contract {

TEST(ControlsContract, movingTheFocusTellsTheOldControlThenTheNewFromThePump) {
  World world;
  Sample& form = world.shown();
  form.first.userFocus();
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"first GotFocus"});
  EXPECT_TRUE(form.first.hasFocus());
  form.second.userFocus();
  EXPECT_EQ(world.taken(), Log{}); // not inside the gesture
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"first LostFocus", "second GotFocus"}));
}

TEST(ControlsContract, takingTheFocusAgainTellsNothing) {
  World world;
  Sample& form = world.shown();
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  form.first.setFocus();
  form.first.userFocus();
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aControlRefusesToLoseTheFocusAndTheOtherNeverHearsOfIt) {
  World world;
  Sample& form = world.shown();
  form.first.LostFocus = [&] {
    world.log.push_back("refused");
    form.first.setFocus();
  };
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  form.second.userFocus();
  world.backEnd->turn();
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"refused"});
  EXPECT_TRUE(form.first.hasFocus());
}

TEST(ControlsContract, twoInvalidBoxesDoNotFightForTheFocus) {
  World world;
  Sample& form = world.shown();
  form.first.LostFocus = [&] {
    world.log.push_back("first refused");
    form.first.setFocus();
  };
  form.second.LostFocus = [&] {
    world.log.push_back("second refused");
    form.second.setFocus();
  };
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  form.second.userFocus();
  for (int i = 0; i < 5; ++i) world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"first refused"});
  EXPECT_TRUE(form.first.hasFocus());
}

TEST(ControlsContract, aLostFocusHandlerMaySendTheFocusElsewhere) {
  World world;
  Sample& form = world.shown();
  form.first.LostFocus = [&] { form.picture.setFocus(); };
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  form.second.userFocus();
  world.backEnd->turn();
  EXPECT_TRUE(form.picture.hasFocus());
  EXPECT_EQ(world.taken(), Log{}); // the second box never had it
}

TEST(ControlsContract, aControlThatCannotTakeTheFocusIsPassedOver) {
  World world;
  Sample& form = world.shown();
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  form.second.setEnabled(false);
  form.second.setFocus();
  form.bar.setVisible(false);
  form.bar.setFocus();
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
  EXPECT_TRUE(form.first.hasFocus());
}

TEST(ControlsContract, aHiddenWindowTakesNoFocus) {
  World world;
  Sample& form = world.slot.get();
  form.first.setFocus();
  world.backEnd->turn();
  EXPECT_FALSE(form.first.hasFocus());
}

TEST(ControlsContract, keysReachTheWindowBeforeTheControl) {
  World world;
  Sample& form = world.shown();
  form.first.userFocus();
  world.backEnd->turn();
  world.taken();
  EXPECT_FALSE(form.userKeyDown(13, 1));
  EXPECT_FALSE(form.first.userKeyPress(13));
  form.userKeyUp(13, 0);
  EXPECT_EQ(world.taken(), (Log{"KeyDown 13 1", "first KeyPress 13", "KeyUp 13"}));
}

TEST(ControlsContract, aWindowSwallowsAKeyBySettingItsCodeToZero) {
  World world;
  Sample& form = world.shown();
  form.swallowKeys = true;
  EXPECT_TRUE(form.userKeyDown(40, 0));
}

TEST(ControlsContract, aBoxSwallowsACharacterBySettingItToZero) {
  World world;
  Sample& form = world.shown();
  form.first.KeyPress = [](int& key) {
    if (key == 13) key = 0;
  };
  EXPECT_TRUE(form.first.pressEnter());
  EXPECT_FALSE(form.first.userKeyPress('5'));
}

TEST(ControlsContract, theTabKeyFollowsTheTabOrder) {
  World world;
  Sample& form = world.shown();
  form.second.setTabIndex(-1);
  std::vector<std::string> names;
  for (const controls::Control* control : form.tabOrder()) names.push_back(control->name());
  EXPECT_EQ(names,
            (Log{"toolbar", "first", "bar", "speed", "speed", "list", "editable", "button", "picture"}));
}

} // namespace contract
