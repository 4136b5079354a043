// Part of controls_contract.h: values, choices and texts.
#pragma once
#include "contract/controls_world.h"

namespace contract {

TEST(ControlsContract, settingTheSameValueRaisesNothing) {
  World world;
  Sample& form = world.shown();
  form.bar.setValue(5);
  form.first.setText("10");
  form.fast.setValue(true);
  form.list.addItem("a");
  form.list.setListIndex(0);
  form.upDown.setValue(3);
  EXPECT_EQ(world.taken(),
            (Log{"bar Change 5", "first Change", "fast Click", "list Click 0", "upDown Change 3"}));
  form.bar.setValue(5);
  form.first.setText("10");
  form.fast.setValue(true);
  form.list.setListIndex(0);
  form.upDown.setValue(3);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, pressingAToolbarButtonFromCodeRaisesNothing) {
  World world;
  Sample& form = world.shown();
  form.toolbar.press(2);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
  EXPECT_TRUE(form.toolbar.isPressed(2));
  EXPECT_FALSE(form.toolbar.isPressed(1));
}

TEST(ControlsContract, clickingAToolbarButtonPressesItAndRaisesButtonClickAlsoWhenItIsDown) {
  World world;
  Sample& form = world.shown();
  form.toolbar.click(2);
  form.toolbar.click(2);
  form.toolbar.click(7); // there is none
  EXPECT_EQ(world.taken(), (Log{"ButtonClick 2", "ButtonClick 2"}));
  EXPECT_EQ(form.toolbar.pressed(), 2);
}

TEST(ControlsContract, choosingAnOptionFromCodeRaisesItsClickAndClearsTheOthersSilently) {
  World world;
  Sample& form = world.shown();
  form.slow.setValue(true);
  form.fast.setValue(true);
  EXPECT_EQ(world.taken(), (Log{"slow Click", "fast Click"}));
  EXPECT_FALSE(form.slow.value());
  form.fast.setValue(false);
  EXPECT_EQ(world.taken(), Log{});
  form.slow.choose();
  EXPECT_EQ(world.taken(), Log{"slow Click"});
  EXPECT_TRUE(form.slow.value());
}

TEST(ControlsContract, choosingAListEntryFromCodeRaisesClickAndShowsItsText) {
  World world;
  Sample& form = world.shown();
  form.list.addItem("CDCl3");
  form.list.addItem("D2O");
  form.list.setListIndex(1);
  EXPECT_EQ(form.list.text(), "D2O");
  EXPECT_EQ(world.taken(), Log{"list Click 1"});
  form.list.choose(1); // the operator may choose the present entry again
  EXPECT_EQ(world.taken(), Log{"list Click 1"});
}

TEST(ControlsContract, aListEntryThatIsNotThereIsAnInvalidValue) {
  World world;
  Sample& form = world.shown();
  try {
    form.list.setListIndex(0);
    FAIL() << "no error";
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.number, 380);
  }
  EXPECT_EQ(form.list.listIndex(), -1);
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, clearingAListLeavesNoChoiceAndRaisesNothing) {
  World world;
  Sample& form = world.shown();
  form.list.addItem("a");
  form.list.setListIndex(0);
  world.taken();
  form.list.clear();
  world.backEnd->turn();
  EXPECT_EQ(form.list.listIndex(), -1);
  EXPECT_EQ(form.list.text(), "");
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aScrollValueOutOfRangeIsRefusedBeforeAnythingIsStored) {
  World world;
  Sample& form = world.shown();
  form.bar.setValue(7);
  world.taken();
  for (const int outside : {101, -101, 32768}) {
    try {
      form.bar.setValue(outside);
      ADD_FAILURE() << outside << " was taken";
    } catch (const base::RuntimeError& error) {
      EXPECT_EQ(error.number, 380);
    }
  }
  EXPECT_EQ(form.bar.value(), 7);
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aScrollBarMayRunDownwards) {
  World world;
  Sample& form = world.shown();
  form.bar.setRange(180, -180, 1, 18);
  form.bar.setValue(-180);
  form.bar.setValue(180);
  EXPECT_THROW(form.bar.setValue(181), base::RuntimeError);
  EXPECT_EQ(world.taken(), (Log{"bar Change -180", "bar Change 180"}));
}

TEST(ControlsContract, draggingTheThumbScrollsAndLettingGoChanges) {
  World world;
  Sample& form = world.shown();
  form.bar.drag(10);
  form.bar.drag(20);
  form.bar.drag(20);
  EXPECT_EQ(world.taken(), (Log{"bar Scroll 10", "bar Scroll 20"}));
  EXPECT_EQ(form.bar.value(), 20);
  form.bar.release();
  EXPECT_EQ(world.taken(), Log{"bar Change 20"});
  form.bar.drag(500);
  EXPECT_EQ(world.taken(), Log{"bar Scroll 100"});
}

TEST(ControlsContract, draggingBackToTheOldValueChangesNothing) {
  World world;
  Sample& form = world.shown();
  form.bar.setValue(10);
  world.taken();
  form.bar.drag(15);
  form.bar.drag(10);
  form.bar.release();
  EXPECT_EQ(world.taken(), (Log{"bar Scroll 15", "bar Scroll 10"}));
}

TEST(ControlsContract, anArrowOrTheTroughChangesAtOnce) {
  World world;
  Sample& form = world.shown();
  form.bar.stepTo(1);
  form.bar.stepTo(999);
  EXPECT_EQ(world.taken(), (Log{"bar Change 1", "bar Change 100"}));
}

TEST(ControlsContract, anUpDownStepsBetweenItsEnds) {
  World world;
  Sample& form = world.shown();
  form.upDown.stepUp();
  form.upDown.stepDown();
  form.upDown.stepDown();
  EXPECT_EQ(world.taken(), (Log{"upDown Change 1", "upDown Change 0"}));
}

TEST(ControlsContract, typingRaisesChangeAndTheTextIsNotDoubled) {
  World world;
  Sample& form = world.shown();
  form.first.type("1");
  form.first.type("10");
  world.backEnd->turn();
  EXPECT_EQ(form.first.text(), "10");
  EXPECT_EQ(world.taken(), (Log{"first Change", "first Change"}));
}

TEST(ControlsContract, aTextSetInsideItsOwnChangeEndsThere) {
  World world;
  Sample& form = world.shown();
  form.first.Change = [&] {
    world.log.push_back("Change " + form.first.text());
    form.first.setText("5");
  };
  form.first.type("x");
  world.backEnd->turn();
  EXPECT_EQ(form.first.text(), "5");
  EXPECT_EQ(world.taken(), (Log{"Change x", "Change 5"}));
}

TEST(ControlsContract, onlyAnEditableListTakesTypedText) {
  World world;
  Sample& form = world.shown();
  form.list.type("x");
  form.editable.type("x");
  EXPECT_EQ(form.list.text(), "");
  EXPECT_EQ(form.editable.text(), "x");
  EXPECT_EQ(world.taken(), Log{"editable Change x"});
}

TEST(ControlsContract, aHiddenOrDisabledControlCannotBeUsed) {
  World world;
  Sample& form = world.shown();
  form.toolbar.setEnabled(false);
  form.bar.setEnabled(false);
  form.first.setVisible(false);
  form.frame.setVisible(false); // and with it what lies on it
  form.toolbar.click(1);
  form.bar.drag(5);
  form.bar.stepTo(6);
  form.first.type("x");
  form.fast.choose();
  EXPECT_EQ(world.taken(), Log{});
  form.bar.setValue(5); // the program itself still may
  EXPECT_EQ(world.taken(), Log{"bar Change 5"});
}

TEST(ControlsContract, aMenuArrayTellsTheIndexAndTheTopMenuOpensFirst) {
  World world;
  Sample& form = world.shown();
  form.menu->click();
  form.items(5).click();
  form.items(2).click(); // a separator
  form.items(1).setEnabled(false);
  form.items(1).click();
  EXPECT_EQ(world.taken(), (Log{"menuBar Click 0", "items Click 5"}));
}

TEST(ControlsContract, aMenuIndexThatIsNotThereIsASubscriptError) {
  World world;
  Sample& form = world.shown();
  try {
    form.items(3);
    FAIL() << "no error";
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.number, 9);
  }
}

TEST(ControlsContract, aCheckMarkSetFromCodeRaisesNothing) {
  World world;
  Sample& form = world.shown();
  form.items(1).setChecked(true);
  world.backEnd->turn();
  EXPECT_TRUE(form.items(1).checked());
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aShortcutChoosesItsItem) {
  World world;
  Sample& form = world.shown();
  EXPECT_TRUE(form.userAccelerator("Ctrl+R"));
  EXPECT_FALSE(form.userAccelerator("Ctrl+Q"));
  form.items(1).setEnabled(false);
  EXPECT_FALSE(form.userAccelerator("Ctrl+R"));
  EXPECT_EQ(world.taken(), Log{"items Click 1"});
}

TEST(ControlsContract, theMouseOnAPictureSpeaksInItsOwnScale) {
  World world;
  Sample& form = world.shown();
  form.picture.mouseDown(controls::MouseButton::Right, 1, 750,
                         750); // a quarter across, half down of 3000 x 1500
  EXPECT_EQ(world.taken(), Log{"MouseDown 2 1 -50 0"});
}

TEST(ControlsContract, aPictureTellsWhenItsSizeChanges) {
  World world;
  Sample& form = world.shown();
  form.logResizes = true;
  form.picture.setHeight(2400);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"picture Resize"});
  form.picture.setLeft(300);
  form.picture.setHeight(2400);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aStatusPanelIsCountedFromOne) {
  World world;
  Sample& form = world.shown();
  form.status.setText(2, "LOCKED");
  EXPECT_EQ(form.status.text(1), "one");
  EXPECT_EQ(form.status.text(2), "LOCKED");
  EXPECT_THROW(form.status.setText(3, "x"), std::out_of_range);
}

TEST(ControlsContract, aLabelTakesTheSizeOfItsText) {
  World world;
  Sample& form = world.shown();
  form.label.setCaption("12345");
  form.label.fitText();
  const controls::Size five = form.label.textSize();
  EXPECT_GT(five.width, 0);
  EXPECT_EQ(form.label.width(), five.width);
  form.label.setCaption("1234567890");
  EXPECT_GT(form.label.textSize().width, five.width);
}

} // namespace contract
