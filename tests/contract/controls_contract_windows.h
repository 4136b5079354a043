// Part of controls_contract.h: the life of a window, timers, and where an error ends.
#pragma once
#include "contract/controls_world.h"

namespace contract {

TEST(ControlsContract, aWindowLoadsOnFirstTouchAndIsNotShown) {
  World world;
  EXPECT_FALSE(world.slot.loaded());
  EXPECT_EQ(world.slot.ifLoaded(), nullptr);
  EXPECT_EQ(world.backEnd->turn(), 0);
  world.slot->first.setText("x");
  EXPECT_EQ(world.taken(), (Log{"Load", "first Change"}));
  EXPECT_FALSE(world.slot->visible());
  EXPECT_EQ(world.backEnd->turn(), 1); // a loaded window keeps the program alive
  EXPECT_EQ(world.backEnd->nativeWindows(), 1);
}

TEST(ControlsContract, aHiddenWindowStaysLoaded) {
  World world;
  Sample& form = world.shown();
  form.hide();
  EXPECT_EQ(world.backEnd->turn(), 1);
  EXPECT_TRUE(form.loaded());
  form.show();
  EXPECT_EQ(world.taken(), Log{}); // no second Load
}

TEST(ControlsContract, theFirstShowTellsTheSizeAfterTheLoad) {
  World world;
  bool resizedInLoad = false;
  world.onLoad = [&] {
    Sample& form = *world.slot.ifLoaded();
    form.logResizes = true;
    form.move({300, 300, form.width() + 600, form.height()});
    resizedInLoad = world.log.size() > 1;
  };
  world.slot->show();
  world.backEnd->turn();
  EXPECT_FALSE(resizedInLoad);
  const Log log = world.taken();
  ASSERT_GE(log.size(), 2U);
  EXPECT_EQ(log[0], "Load");
  EXPECT_EQ(log.back(), "Resize 0");
  EXPECT_FLOAT_EQ(world.slot->innerWidth(), 6600);
}

TEST(ControlsContract, aSizeSetByTheProgramIsToldAsAResize) {
  World world;
  Sample& form = world.shown();
  form.logResizes = true;
  form.setWidth(form.width() + 900);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"Resize 0"});
  EXPECT_FLOAT_EQ(form.innerWidth(), 6900);
  form.setWidth(form.width());
  form.move({form.left() + 150, form.top(), form.width(), form.height()});
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{}); // only its place
}

TEST(ControlsContract, aSizeSetInsideAResizeIsANestedResize) {
  World world;
  Sample& form = world.shown();
  float asked = 0;
  form.onResize = [&] {
    world.log.push_back("in " + std::to_string(static_cast<int>(form.innerWidth())));
    if (form.innerWidth() < 4500) form.setWidth(form.width() + asked);
    world.log.push_back("out");
  };
  asked = 1500;
  form.setWidth(form.width() - 3000);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"in 3000", "in 4500", "out", "out"}));
}

TEST(ControlsContract, minimisingAndRestoringAreToldAndKeepTheNormalPlace) {
  World world;
  Sample& form = world.shown();
  form.logResizes = true;
  const controls::Rect normal = form.rect();
  const float inner = form.innerWidth();
  form.setWindowState(controls::WindowState::Minimised);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"Resize 1"});
  form.setWindowState(controls::WindowState::Normal);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"Resize 0"});
  EXPECT_EQ(form.rect(), normal);
  EXPECT_FLOAT_EQ(form.innerWidth(), inner);
}

TEST(ControlsContract, maximisingGivesTheScreenAndKeepsTheNormalPlace) {
  World world;
  Sample& form = world.shown();
  const controls::Rect normal = form.rect();
  form.logResizes = true;
  form.setWindowState(controls::WindowState::Maximised);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"Resize 2"});
  EXPECT_GT(form.innerWidth(), normal.width);
  EXPECT_EQ(form.rect(), normal);
}

TEST(ControlsContract, closingAsksThenUnloadsAndTheObjectGoesWhenThePumpIsIdle) {
  World world;
  Sample& form = world.shown();
  form.userClose();
  EXPECT_FALSE(world.slot.loaded());
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload"}));
  EXPECT_EQ(world.backEnd->nativeWindows(), 0);
  EXPECT_EQ(world.backEnd->turn(), 0);
  EXPECT_EQ(world.taken(), Log{"destroyed"});
}

TEST(ControlsContract, aWindowMayUnloadItselfInsideItsOwnEvent) {
  World world;
  Sample& form = world.shown();
  form.toolbar.ButtonClick = [&](int n) {
    world.slot.unload();
    world.backEnd->turn(); // the handler pumps on
    world.log.push_back("still running " + std::to_string(n) + " " + form.first.name());
  };
  form.toolbar.click(3);
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload", "still running 3 first"}));
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"destroyed"});
}

TEST(ControlsContract, touchingAnUnloadedWindowLoadsANewOne) {
  World world;
  world.shown().first.setText("old");
  world.slot.unload();
  world.taken();
  EXPECT_EQ(world.slot->first.text(), "");
  EXPECT_EQ(world.taken(), Log{"Load"});
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"destroyed"}); // the old one
  EXPECT_TRUE(world.slot.loaded());
}

TEST(ControlsContract, aFailingLoadUnloadsTheWindowAgain) {
  World world;
  world.onLoad = [] { base::raiseOverflow(); };
  EXPECT_THROW(world.slot.get(), base::RuntimeError);
  EXPECT_FALSE(world.slot.loaded());
  EXPECT_EQ(world.backEnd->turn(), 0);
  EXPECT_EQ(world.backEnd->nativeWindows(), 0);
  world.onLoad = nullptr;
  EXPECT_TRUE(world.slot->loaded());
}

TEST(ControlsContract, unloadingForgetsTheFocus) {
  World world;
  Sample& form = world.shown();
  form.first.userFocus();
  world.backEnd->turn();
  world.slot.unload();
  world.backEnd->turn();
  EXPECT_EQ(world.desktop.focus().current(), nullptr);
  Sample& again = world.shown();
  again.second.userFocus();
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"second GotFocus"});
}

TEST(ControlsContract, aModalWindowHoldsTheProgramUntilItIsClosed) {
  World world;
  world.shown();
  world.backEnd->whenModal([&] {
    world.log.push_back("open");
    EXPECT_TRUE(world.other->isModal());
    world.other->userClose();
  });
  world.other->show(controls::Modality::Modal);
  world.log.push_back("after");
  Log log = world.taken();
  std::erase(log, "destroyed");
  EXPECT_EQ(log, (Log{"Load", "open", "QueryUnload", "Unload", "after"}));
  EXPECT_FALSE(world.other.loaded());
}

TEST(ControlsContract, aModalWindowEndsWhenItIsHidden) {
  World world;
  world.shown();
  world.backEnd->whenModal([&] { world.other->hide(); });
  world.other->show(controls::Modality::Modal);
  EXPECT_TRUE(world.other.loaded());
  EXPECT_FALSE(world.other->isModal());
}

TEST(ControlsContract, aTimerTicksWhileItIsEnabled) {
  World world;
  Sample& form = world.shown();
  form.timer.setEnabled(true);
  world.backEnd->wait(200);
  const std::size_t ticks = world.taken().size();
  EXPECT_GE(ticks, 5U);
  EXPECT_LE(ticks, 21U);
  form.timer.setInterval(0);
  world.backEnd->turn();
  world.taken();
  world.backEnd->wait(50);
  EXPECT_EQ(world.taken(), Log{});
  form.timer.setInterval(10);
  form.timer.setEnabled(false);
  world.backEnd->wait(50);
  EXPECT_EQ(world.taken(), Log{});
}

TEST(ControlsContract, aTimerOfAHiddenWindowTicksToo) {
  World world;
  Sample& form = world.shown();
  form.hide();
  form.timer.setEnabled(true);
  world.backEnd->wait(200);
  EXPECT_GE(world.taken().size(), 5U);
}

TEST(ControlsContract, aTimerDoesNotTickInsideItsOwnTick) {
  World world;
  Sample& form = world.shown();
  int depth = 0, deepest = 0, ticks = 0;
  form.timer.Tick = [&] {
    ++ticks;
    deepest = std::max(deepest, ++depth);
    if (ticks <= 3) world.backEnd->wait(50); // slower than the interval
    --depth;
  };
  form.timer.setEnabled(true);
  world.backEnd->wait(400);
  EXPECT_EQ(deepest, 1);
  EXPECT_GT(ticks, 3);
}

TEST(ControlsContract, otherEventsRunInsideATick) {
  World world;
  Sample& form = world.shown();
  form.timer.Tick = [&] {
    form.timer.setEnabled(false);
    form.toolbar.click(1);
    world.log.push_back("tick ends");
  };
  form.timer.setEnabled(true);
  world.backEnd->wait(100);
  EXPECT_EQ(world.taken(), (Log{"ButtonClick 1", "tick ends"}));
}

TEST(ControlsContract, aWindowMayUnloadInsideItsTimersTick) {
  World world;
  Sample& form = world.shown();
  form.timer.Tick = [&] { world.slot.unload(); };
  form.timer.setEnabled(true);
  world.backEnd->wait(100);
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload", "destroyed"}));
}

TEST(ControlsContract, anErrorEndsTheGestureIsReportedAndTheProgramGoesOn) {
  World world;
  Sample& form = world.shown();
  form.toolbar.ButtonClick = [&](int) {
    form.first.setText("before");
    form.bar.setValue(1000);
    form.first.setText("after");
  };
  form.toolbar.click(1);
  EXPECT_EQ(form.first.text(), "before");
  ASSERT_EQ(world.reports.size(), 1U);
  EXPECT_EQ(world.reports[0].substr(0, 3), "380");
  form.bar.stepTo(3);
  EXPECT_EQ(form.bar.value(), 3);
}

TEST(ControlsContract, anErrorInATickIsReportedAndTheTimerTicksOn) {
  World world;
  Sample& form = world.shown();
  form.timer.Tick = [&] { base::raiseOverflow(); };
  form.timer.setEnabled(true);
  world.backEnd->wait(200);
  EXPECT_GE(world.reports.size(), 2U);
}

TEST(ControlsContract, anErrorInALostFocusHandlerDoesNotStopTheFocus) {
  World world;
  Sample& form = world.shown();
  form.first.LostFocus = [] { base::raiseTypeMismatch(); };
  form.first.userFocus();
  world.backEnd->turn();
  form.second.userFocus();
  world.backEnd->turn();
  EXPECT_EQ(world.reports.size(), 1U);
  EXPECT_TRUE(form.second.hasFocus());
}

TEST(ControlsContract, nothingIsLeftOverWhenTheProgramIsTakenDown) {
  auto backEnd = makeBackEnd();
  {
    World world;
    world.shown();
    world.other->show();
    EXPECT_EQ(world.backEnd->nativeWindows(), 2);
    world.slot.unload();
    world.other.unload();
    EXPECT_EQ(world.backEnd->nativeWindows(), 0);
  }
  EXPECT_EQ(backEnd->nativeWindows(), 0);
}

} // namespace contract
