#include "win32/FormMenu.h"
#include <algorithm>

namespace win32 {

using controls::MenuItem;

namespace {
std::string shownText(const MenuItem& item) {
  return item.shortcut().empty() ? item.caption() : item.caption() + "\t" + item.shortcut();
}

UINT flags(const MenuItem& item) {
  return (item.checked() ? MF_CHECKED : MF_UNCHECKED) | (item.enabled() ? MF_ENABLED : MF_GRAYED);
}

void fill(HMENU menu, const std::vector<MenuItem*>& items) {
  for (const MenuItem* item : items) {
    if (!item->visible()) continue;
    const auto id = static_cast<UINT_PTR>(item->commandId);
    if (item->separator()) {
      AppendMenuA(menu, MF_SEPARATOR, id, nullptr);
    } else if (item->children.empty()) {
      AppendMenuA(menu, MF_STRING | flags(*item), id, shownText(*item).c_str());
    } else {
      HMENU under = CreatePopupMenu();
      fill(under, item->children);
      AppendMenuA(menu, MF_POPUP | MF_STRING | flags(*item), reinterpret_cast<UINT_PTR>(under),
                  item->caption().c_str());
    }
  }
}

bool listsItem(const std::vector<MenuItem*>& items, const MenuItem& item) {
  return std::any_of(items.begin(), items.end(), [&](const MenuItem* i) {
    return i == &item || (i->visible() && listsItem(i->children, item));
  });
}
} // namespace

bool FormMenu::any() const {
  return std::any_of(form_.menuBar.begin(), form_.menuBar.end(),
                     [](const MenuItem* i) { return i->visible(); });
}

void FormMenu::attach(HWND window) {
  window_ = window;
  if (any()) rebuild();
}

void FormMenu::rebuild() {
  OwnedMenu made(CreateMenu());
  fill(made.get(), form_.menuBar);
  SetMenu(window_, made.get());
  bar_ = std::move(made);
}

void FormMenu::changed(const MenuItem& item) {
  // The items of a hidden top-level item are made when they are shown as a pop-up.
  if (!bar_ || !listsItem(form_.menuBar, item)) return;
  MENUITEMINFOA info{};
  info.cbSize = sizeof(info);
  info.fMask = MIIM_STATE;
  const auto id = static_cast<UINT>(item.commandId);
  const bool listed = item.children.empty() && GetMenuItemInfoA(bar_.get(), id, FALSE, &info);
  if (!item.children.empty() || listed != item.visible()) return rebuild();
  if (!listed || item.separator()) return;
  std::string text = shownText(item);
  info.fMask = MIIM_STATE | MIIM_STRING;
  info.fState = flags(item); // the same bits by either name
  info.dwTypeData = text.data();
  SetMenuItemInfoA(bar_.get(), id, FALSE, &info);
}

MenuItem* FormMenu::topItem(HMENU popup) const {
  int position = 0;
  for (MenuItem* item : form_.menuBar) {
    if (!item->visible()) continue;
    if (bar_ && GetSubMenu(bar_.get(), position) == popup) return item;
    ++position;
  }
  return nullptr;
}

MenuItem* FormMenu::itemOf(int nativeId) const { return form_.menuByCommand(nativeId); }

MenuItem* FormMenu::choose(HWND window, const MenuItem& item) {
  OwnedMenu popup(CreatePopupMenu());
  fill(popup.get(), item.children);
  POINT at{};
  GetCursorPos(&at);
  const int chosen =
      TrackPopupMenu(popup.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
  return chosen ? itemOf(chosen) : nullptr;
}

} // namespace win32
