#include "win32/GdiCounts.h"
#include "win32/Rig.h"

namespace native {
namespace {

std::string systemText(HMENU menu, UINT id) {
  char text[64]{};
  GetMenuStringA(menu, id, text, sizeof(text), MF_BYCOMMAND);
  return text;
}

TEST(Windows, nothingIsLeftAfterAHundredRounds) {
  World world;
  world.shown().first.setTip("a tip");
  world.slot.unload();
  world.backEnd->turn();
  const win32::GdiCounts before = win32::gdiCounts();
  for (int i = 0; i < 100; ++i) {
    Sample& form = world.shown();
    form.first.setTip("a tip");
    form.picture.line(-100, 50, 100, -50, controls::rgb(255, 0, 0));
    form.label.setCaption("on the picture");
    form.timer.setEnabled(true);
    SendMessageA(of(form.picture), WM_PAINT, 0, 0);
    world.slot.unload();
    world.backEnd->turn();
  }
  const win32::GdiCounts after = win32::gdiCounts();
  EXPECT_TRUE(before == after) << after.windows << " windows, " << after.menus << " menus, " << after.fonts
                               << " fonts, " << after.bitmaps << " bitmaps, " << after.dcs << " DCs, "
                               << after.imageLists << " image lists";
  EXPECT_EQ(after.windows, 0);
}

TEST(Windows, theCloseBoxIsTheFormsGesture) {
  World world;
  const HWND window = of(world.shown());
  PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  world.backEnd->turn();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload", "destroyed"}));
}

TEST(Windows, aResizeByTheOperatorTellsTheInnerSize) {
  World world;
  Sample& form = world.shown();
  form.logResizes = true;
  RECT r{};
  GetWindowRect(of(form), &r);
  SetWindowPos(of(form), nullptr, 0, 0, static_cast<int>(r.right - r.left) + 40,
               static_cast<int>(r.bottom - r.top), SWP_NOMOVE | SWP_NOZORDER);
  RECT client{};
  GetClientRect(of(form), &client);
  EXPECT_EQ(world.taken(), Log{"Resize 0"});
  EXPECT_FLOAT_EQ(form.innerWidth(),
                  static_cast<float>(client.right) * 1440 / static_cast<float>(win32::dpiOf(of(form))));
}

TEST(Windows, minimisedByTheOperatorAndBack) {
  World world;
  Sample& form = world.shown();
  form.logResizes = true;
  const controls::Rect place = form.rect();
  PostMessageA(of(form), WM_SYSCOMMAND, SC_MINIMIZE, 0);
  world.backEnd->turn();
  EXPECT_EQ(form.windowState(), controls::WindowState::Minimised);
  PostMessageA(of(form), WM_SYSCOMMAND, SC_RESTORE, 0);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"Resize 1", "Resize 0"}));
  EXPECT_EQ(form.rect(), place);
}

TEST(Windows, menusShowCaptionsChecksAndShortcutsAndLeaveHiddenItemsOut) {
  World world;
  Sample& form = world.shown();
  HMENU popup = GetSubMenu(GetMenu(of(form)), 0);
  EXPECT_EQ(GetMenuItemCount(popup), 3);
  char text[64]{};
  GetMenuStringA(popup, 0, text, sizeof(text), MF_BYPOSITION);
  EXPECT_STREQ(text, "&First\tCtrl+R");
  form.items(1).setChecked(true);
  EXPECT_TRUE(GetMenuState(popup, 0, MF_BYPOSITION) & MF_CHECKED);
  form.items(5).setCaption("&Other");
  GetMenuStringA(popup, 2, text, sizeof(text), MF_BYPOSITION);
  EXPECT_STREQ(text, "&Other");
  form.items(5).setVisible(false);
  EXPECT_EQ(GetMenuItemCount(GetSubMenu(GetMenu(of(form)), 0)), 2);
}

TEST(Windows, openingATopLevelMenuAndChoosingAnItem) {
  World world;
  Sample& form = world.shown();
  HMENU popup = GetSubMenu(GetMenu(of(form)), 0);
  send(of(form), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), MAKELPARAM(0, FALSE));
  PostMessageA(of(form), WM_COMMAND, GetMenuItemID(popup, 2), 0);
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), (Log{"menuBar Click 0", "items Click 5"}));
}

TEST(Windows, aShortcutIsTheMenuItems) {
  World world;
  Sample& form = world.shown();
  BYTE keys[256]{};
  keys[VK_CONTROL] = 0x80;
  SetKeyboardState(keys);
  key(of(form.first), 'R');
  world.backEnd->turn();
  keys[VK_CONTROL] = 0;
  SetKeyboardState(keys);
  EXPECT_EQ(world.taken(), (Log{"items Click 1", "KeyUp 82"}));
}

TEST(Windows, systemMenuItemsStandBeforeRestoreAndAreCheckedAndTakenAway) {
  World world;
  Sample& form = world.shown();
  HMENU menu = GetSystemMenu(of(form), FALSE);
  const int count = GetMenuItemCount(menu);
  world.backEnd->windows().insertSystemItem(form, 60001, "Lock O&n");
  world.backEnd->windows().insertSystemItem(form, 60000, "-");
  EXPECT_EQ(GetMenuItemCount(menu), count + 2);
  EXPECT_EQ(GetMenuItemID(menu, 0), 60001U);
  EXPECT_EQ(systemText(menu, 60001), "Lock O&n");
  world.backEnd->windows().checkSystemItem(form, 60001, true);
  EXPECT_TRUE(GetMenuState(menu, 60001, MF_BYCOMMAND) & MF_CHECKED);
  world.backEnd->windows().deleteSystemItem(form, 60001);
  world.backEnd->windows().deleteSystemItem(form, 60000);
  EXPECT_EQ(GetMenuItemCount(menu), count);
}

TEST(Windows, aHookSeesTheWholeWordAndTheMessageGoesOn) {
  World world;
  Sample& form = world.shown();
  std::vector<std::uintptr_t> seen;
  ports::WindowSystem& windows = world.backEnd->windows();
  windows.hook(form, [&](std::uintptr_t wParam) {
    if (wParam == 60001 || wParam == ports::kSystemClose) seen.push_back(wParam);
    if (wParam == ports::kSystemClose) windows.unhook(form);
  });
  PostMessageA(of(form), WM_SYSCOMMAND, 60001, 0);
  PostMessageA(of(form), WM_SYSCOMMAND, SC_CLOSE, 0);
  world.backEnd->turn();
  EXPECT_EQ(seen, (std::vector<std::uintptr_t>{60001, ports::kSystemClose}));
  EXPECT_EQ(world.taken(), (Log{"QueryUnload", "Unload", "destroyed"}));
}

TEST(Windows, topmostIsSetAndCleared) {
  World world;
  Sample& form = world.shown();
  world.backEnd->windows().setTopmost(form, true);
  EXPECT_TRUE(GetWindowLongA(of(form), GWL_EXSTYLE) & WS_EX_TOPMOST);
  world.backEnd->windows().setTopmost(form, false);
  EXPECT_FALSE(GetWindowLongA(of(form), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST(Windows, otherWindowsRefuseInputWhileOneIsModal) {
  World world;
  Sample& form = world.shown();
  bool enabled = true;
  world.backEnd->whenModal([&] {
    enabled = IsWindowEnabled(of(form));
    world.other->userClose();
  });
  world.other->show(controls::Modality::Modal);
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(IsWindowEnabled(of(form)));
}

TEST(Windows, aDenserMonitorMakesEverythingLarger) {
  World world;
  Sample& form = world.shown();
  const int dpi = win32::dpiOf(of(form));
  RECT before{}, outer{};
  GetWindowRect(of(form.first), &before);
  GetWindowRect(of(form), &outer);
  RECT suggested{outer.left, outer.top, outer.left + 2 * (outer.right - outer.left),
                 outer.top + 2 * (outer.bottom - outer.top)};
  send(of(form), WM_DPICHANGED, MAKEWPARAM(2 * dpi, 2 * dpi), reinterpret_cast<LPARAM>(&suggested));
  RECT after{};
  GetWindowRect(of(form.first), &after);
  EXPECT_EQ(after.right - after.left, 2 * (before.right - before.left));
  LOGFONTA font{};
  GetObjectA(reinterpret_cast<HFONT>(send(of(form.first), WM_GETFONT)), sizeof(font), &font);
  EXPECT_LT(font.lfHeight, -20 * dpi / 96);
}

TEST(Pictures, linesLabelsAndClicks) {
  World world;
  Sample& form = world.shown();
  form.picture.setBackColour(controls::rgb(0, 0, 0));
  form.picture.cls();
  form.picture.line(-100, 0, 100, 0, controls::rgb(255, 0, 0));
  form.label.move({0, 0, 900, 300});
  form.label.setForeColour(controls::rgb(0, 255, 0));
  form.label.setCaption("MMMM");
  world.backEnd->turn();
  const HWND window = of(form.picture);
  RECT r{};
  GetClientRect(window, &r);
  HDC dc = GetDC(window);
  int red = 0;
  for (int y = 0; y < r.bottom; ++y)
    red += GetPixel(dc, static_cast<int>(r.right) / 3, y) == RGB(255, 0, 0) ? 1 : 0;
  EXPECT_GE(red, 1);
  bool green = false;
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 60; ++x) green = green || GetPixel(dc, x, y) == RGB(0, 255, 0);
  EXPECT_TRUE(green);
  ReleaseDC(window, dc);
  PostMessageA(window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(r.right / 2, r.bottom / 2));
  world.backEnd->turn();
  EXPECT_EQ(world.taken(), Log{"MouseDown 2 0 0 0"});
}

} // namespace
} // namespace native
