#include "win32/Rig.h"

namespace contract {
std::unique_ptr<BackEnd> makeBackEnd() { return std::make_unique<NativeBackEnd>(); }
} // namespace contract

namespace native {
namespace {

TEST(Peers, everyControlIsMadeShowingItsModel) {
  World world;
  Sample& form = world.slot.get();
  form.button.setCaption("Go");
  form.first.setText("abc");
  form.status.setText(1, "left");
  form.show();
  world.backEnd->turn();
  EXPECT_EQ(win32::windowText(of(form)), "Sample");
  EXPECT_EQ(win32::windowText(of(form.button)), "Go");
  EXPECT_EQ(win32::windowText(of(form.first)), "abc");
  char text[64]{};
  send(of(form.status), SB_GETTEXTA, 0, reinterpret_cast<LPARAM>(text));
  EXPECT_STREQ(text, "left");
  for (const controls::Control* control : form.tabOrder())
    EXPECT_TRUE(IsWindowVisible(of(*control))) << control->name();
}

TEST(Peers, typingReachesTheModelLetterByLetterInOrder) {
  World world;
  Sample& form = world.shown();
  PostMessageA(of(form.first), WM_CHAR, '1', 1);
  PostMessageA(of(form.first), WM_CHAR, '0', 1);
  world.backEnd->turn();
  EXPECT_EQ(form.first.text(), "10");
  EXPECT_EQ(win32::windowText(of(form.first)), "10");
  EXPECT_EQ(world.taken(), (Log{"first KeyPress 49", "first Change", "first KeyPress 48", "first Change"}));
}

TEST(Peers, whatAHandlerMakesOfATypedTextIsShownAfterwards) {
  World world;
  Sample& form = world.shown();
  form.first.Change = [&] { form.first.setText("0"); };
  SetWindowTextA(of(form.first), "abc");
  EXPECT_EQ(form.first.text(), "0");
  EXPECT_EQ(win32::windowText(of(form.first)), "0");
}

TEST(Peers, aTextFromTheProgramIsNoGesture) {
  World world;
  Sample& form = world.shown();
  form.first.setText("7");
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"first Change"});
  EXPECT_EQ(win32::windowText(of(form.first)), "7");
}

TEST(Peers, aDisabledBoxRefusesWhatReachesItAllTheSame) {
  World world;
  Sample& form = world.shown();
  form.first.setText("kept");
  form.first.setEnabled(false);
  SetWindowTextA(of(form.first), "other");
  EXPECT_EQ(form.first.text(), "kept");
  EXPECT_EQ(win32::windowText(of(form.first)), "kept");
}

TEST(Peers, enterInABoxIsItsKeyPressAfterTheWindowsKeyDown) {
  World world;
  Sample& form = world.shown();
  SetFocus(of(form.first));
  world.backEnd->turn();
  world.taken();
  PostMessageA(of(form.first), WM_KEYDOWN, VK_RETURN, 1);
  world.backEnd->turn();
  PostMessageA(of(form.first), WM_KEYUP, VK_RETURN, static_cast<LPARAM>(0xC0000001));
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"KeyDown 13 0", "first KeyPress 13", "KeyUp 13"}));
}

TEST(Peers, aKeyTheWindowSwallowsNeverReachesTheControl) {
  World world;
  Sample& form = world.shown();
  form.swallowKeys = true;
  key(of(form.first), 'A');
  world.backEnd->turn();
  EXPECT_EQ(form.first.text(), "");
}

TEST(Peers, enterPressesTheDefaultButtonAndEscapeTheCancelButton) {
  World world;
  Sample& form = world.slot.get();
  form.button.isDefault = form.button.isCancel = true;
  form.show();
  world.backEnd->turn();
  world.taken();
  key(of(form.bar), VK_RETURN);
  key(of(form.bar), VK_ESCAPE);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(),
            (Log{"KeyDown 13 0", "button Click", "KeyUp 13", "KeyDown 27 0", "button Click", "KeyUp 27"}));
}

TEST(Peers, theTabKeyWalksTheTabOrder) {
  World world;
  Sample& form = world.shown();
  SetFocus(of(form.first));
  world.backEnd->turn();
  EXPECT_TRUE(form.first.hasFocus());
  for (const controls::Control* next :
       {static_cast<const controls::Control*>(&form.second), static_cast<const controls::Control*>(&form.bar),
        static_cast<const controls::Control*>(&form.slow),
        static_cast<const controls::Control*>(&form.list)}) {
    key(GetFocus(), VK_TAB);
    world.backEnd->turn();
    EXPECT_TRUE(next->hasFocus()) << next->name();
  }
}

TEST(Peers, aFocusMoveOfTheProgramIsCarriedOutByThePump) {
  World world;
  Sample& form = world.shown();
  SetFocus(of(form.first));
  world.backEnd->turn();
  form.picture.setFocus();
  EXPECT_EQ(GetFocus(), of(form.first));
  world.backEnd->turn();
  EXPECT_EQ(GetFocus(), of(form.picture));
}

TEST(Peers, aRefusedFocusMoveBringsTheNativeFocusBack) {
  World world;
  Sample& form = world.shown();
  form.first.LostFocus = [&] { form.first.setFocus(); };
  SetFocus(of(form.first));
  world.backEnd->turn();
  clickAt(of(form.second), 5, 5);
  world.backEnd->turn();
  EXPECT_EQ(GetFocus(), of(form.first));
  EXPECT_TRUE(form.first.hasFocus());
}

TEST(Peers, scrollBarArrowsTroughAndThumb) {
  World world;
  Sample& form = world.shown();
  scroll(form.bar, SB_LINEDOWN);
  scroll(form.bar, SB_PAGEUP);
  EXPECT_EQ(world.taken(), (Log{"bar Change 1", "bar Change -9"}));
  EXPECT_EQ(position(form.bar), 91);
  scroll(form.bar, SB_THUMBPOSITION, 150);
  EXPECT_EQ(world.taken(), (Log{"bar Scroll 50", "bar Change 50"}));
  EXPECT_EQ(position(form.bar), 150);
}

TEST(Peers, aThumbIsFollowedWhileItIsHeldAndTakenWhenItIsLetGo) {
  World world;
  Sample& form = world.shown();
  scroll(form.bar, SB_THUMBTRACK, 130);
  scroll(form.bar, SB_THUMBTRACK, 140);
  EXPECT_EQ(world.taken(), (Log{"bar Scroll 30", "bar Scroll 40"}));
  EXPECT_EQ(position(form.bar), 100); // the thumb belongs to the hand that holds it
  scroll(form.bar, SB_ENDSCROLL);
  EXPECT_EQ(world.taken(), Log{"bar Change 40"});
  EXPECT_EQ(position(form.bar), 140);
}

TEST(Peers, aBarWithItsLargerValueOnTopGoesUpUpwards) {
  World world;
  Sample& form = world.shown();
  form.bar.setRange(127, 0, 1, 6);
  form.bar.setValue(100);
  EXPECT_EQ(position(form.bar), 27);
  scroll(form.bar, SB_LINEUP);
  EXPECT_EQ(form.bar.value(), 101);
  scroll(form.bar, SB_TOP);
  EXPECT_EQ(form.bar.value(), 127);
  scroll(form.bar, SB_BOTTOM);
  EXPECT_EQ(form.bar.value(), 0);
}

TEST(Peers, aBarHoldsMoreThanSixteenBits) {
  World world;
  Sample& form = world.shown();
  form.bar.setRange(-131068, 131068, 1, 100);
  form.bar.setValue(131000);
  EXPECT_EQ(position(form.bar), 262068);
  scroll(form.bar, SB_LINEDOWN);
  EXPECT_EQ(form.bar.value(), 131001);
}

TEST(Peers, upDownArrowsStepOneIncrementTowardsTheirEnd) {
  World world;
  Sample& form = world.shown();
  form.upDown.setRange(16, 1, 1);
  form.upDown.setValue(8);
  world.taken();
  RECT r{};
  GetClientRect(of(form.upDown), &r);
  clickAt(of(form.upDown), r.right / 2, r.bottom / 4); // the upper arrow
  world.backEnd->turn();
  EXPECT_EQ(form.upDown.value(), 7);
  clickAt(of(form.upDown), r.right / 2, r.bottom * 3 / 4);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"upDown Change 7", "upDown Change 8"}));
  EXPECT_EQ(send(of(form.upDown), UDM_GETPOS32), 8);
}

TEST(Peers, anOptionChosenByTheOperatorClearsItsSiblings) {
  World world;
  Sample& form = world.shown();
  send(of(form.slow), BM_CLICK);
  send(of(form.fast), BM_CLICK);
  EXPECT_EQ(world.taken(), (Log{"slow Click", "fast Click"}));
  EXPECT_EQ(send(of(form.slow), BM_GETCHECK), BST_UNCHECKED);
  form.slow.setValue(true);
  EXPECT_EQ(send(of(form.slow), BM_GETCHECK), BST_CHECKED);
  EXPECT_EQ(send(of(form.fast), BM_GETCHECK), BST_UNCHECKED);
}

TEST(Peers, aListEntryIsChosenAndATextTyped) {
  World world;
  Sample& form = world.shown();
  for (const char* item : {"128", "256", "512"}) {
    form.list.addItem(item);
    form.editable.addItem(item);
  }
  send(of(form.list), CB_SETCURSEL, 2);
  notify(form.list, CBN_SELCHANGE);
  EXPECT_EQ(form.list.listIndex(), 2);
  send(of(form.editable), CB_SETCURSEL, 1);
  notify(form.editable, CBN_SELCHANGE);
  EXPECT_EQ(form.editable.text(), "256");
  EXPECT_EQ(win32::windowText(of(form.editable)), "256");
  SetWindowTextA(of(form.editable), "3000");
  notify(form.editable, CBN_EDITCHANGE);
  EXPECT_EQ(form.editable.text(), "3000");
  EXPECT_EQ(world.taken(), (Log{"list Click 2", "editable Change 3000"}));
}

TEST(Peers, aListFollowsItsModel) {
  World world;
  Sample& form = world.shown();
  for (const char* item : {"a", "b", "c"}) form.list.addItem(item);
  form.list.setListIndex(1);
  EXPECT_EQ(send(of(form.list), CB_GETCOUNT), 3);
  EXPECT_EQ(send(of(form.list), CB_GETCURSEL), 1);
  form.list.setText("c"); // shown when it is an entry
  EXPECT_EQ(send(of(form.list), CB_GETCURSEL), 2);
  form.list.clear();
  form.list.addItem("z");
  EXPECT_EQ(send(of(form.list), CB_GETCOUNT), 1);
  EXPECT_EQ(send(of(form.list), CB_GETCURSEL), CB_ERR);
}

TEST(Peers, aToolbarClickAndAPressFromTheProgramShowTheSame) {
  World world;
  Sample& form = world.shown();
  const HWND bar = of(form.toolbar);
  RECT r{};
  send(bar, TB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
  clickAt(bar, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"ButtonClick 2"});
  form.toolbar.press(3);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{});
  TBBUTTON button{};
  for (int i = 0; i < 3; ++i) {
    send(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    EXPECT_EQ(send(bar, TB_ISBUTTONCHECKED, static_cast<WPARAM>(button.idCommand)) != 0, i == 2);
    EXPECT_GT(form.toolbar.itemWidth(i + 1), 0);
  }
}

TEST(Peers, aPressInsideTheClickIsShownWhileTheHandlerStillRuns) {
  World world;
  Sample& form = world.shown();
  LRESULT shown = 0;
  form.toolbar.ButtonClick = [&](int) {
    form.toolbar.press(1);
    TBBUTTON button{};
    send(of(form.toolbar), TB_GETBUTTON, 0, reinterpret_cast<LPARAM>(&button));
    shown = send(of(form.toolbar), TB_ISBUTTONCHECKED, static_cast<WPARAM>(button.idCommand));
  };
  RECT r{};
  send(of(form.toolbar), TB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&r));
  clickAt(of(form.toolbar), (r.left + r.right) / 2, (r.top + r.bottom) / 2);
  world.backEnd->turn();
  EXPECT_NE(shown, 0);
}

TEST(Peers, aButtonMayCloseItsOwnWindow) {
  World world;
  Sample& form = world.shown();
  form.button.Click = [&] { world.slot.unload(); };
  send(of(form.button), BM_CLICK);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload", "destroyed"}));
  EXPECT_EQ(world.backEnd->nativeWindows(), 0);
}

} // namespace
} // namespace native
