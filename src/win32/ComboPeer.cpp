#include "win32/Peers.h"

namespace win32 {
namespace {

class ComboPeer final : public ControlPeer {
 public:
  ComboPeer(FormPeer& form, controls::ComboBox& box) : ControlPeer(form, box), box_(box) {
    const DWORD style =
        box.style() == controls::ComboStyle::List ? CBS_DROPDOWNLIST : CBS_DROPDOWN | CBS_AUTOHSCROLL;
    create("COMBOBOX", "", WS_GROUP | WS_VSCROLL | CBS_HASSTRINGS | style);
  }

  void place() override {
    // A combo box is as high as its font wants it; it stands in the middle of the model's height, level with
    // its label. The native height is that of the open list.
    RECT r = form().pixelRect(box_), now{};
    const auto entry = static_cast<int>(SendMessageA(window(), CB_GETITEMHEIGHT, 0, 0));
    const int width = static_cast<int>(r.right - r.left), height = static_cast<int>(r.bottom - r.top);
    SetWindowPos(window(), nullptr, 0, 0, width, height + 14 * entry,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    GetWindowRect(window(), &now);
    const int top = static_cast<int>(r.top) + (height - static_cast<int>(now.bottom - now.top)) / 2;
    SetWindowPos(window(), nullptr, static_cast<int>(r.left), top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }

  void onCommand(WPARAM wParam) override {
    if (HIWORD(wParam) == CBN_SELCHANGE)
      gesture([this] { box_.choose(static_cast<int>(SendMessageA(window(), CB_GETCURSEL, 0, 0))); });
    if (HIWORD(wParam) == CBN_EDITCHANGE) gesture([this] { box_.type(windowText(window())); });
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::List) pushList();
    if (aspect == controls::Aspect::List || aspect == controls::Aspect::Selection ||
        aspect == controls::Aspect::Text)
      pushChoice();
  }
  void compare() override {
    pushList();
    pushChoice();
  }

 private:
  std::string nativeItem(int index) const {
    const auto i = static_cast<WPARAM>(index);
    std::string text(static_cast<std::size_t>(SendMessageA(window(), CB_GETLBTEXTLEN, i, 0)) + 1, '\0');
    SendMessageA(window(), CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
  }
  void pushList() {
    const auto& items = box_.items();
    auto count = static_cast<int>(SendMessageA(window(), CB_GETCOUNT, 0, 0));
    int same = 0;
    while (same < count && same < static_cast<int>(items.size()) &&
           nativeItem(same) == items[static_cast<std::size_t>(same)])
      ++same;
    if (same < count) {
      SendMessageA(window(), CB_RESETCONTENT, 0, 0);
      same = 0;
    }
    for (; same < static_cast<int>(items.size()); ++same)
      SendMessageA(window(), CB_ADDSTRING, 0,
                   reinterpret_cast<LPARAM>(items[static_cast<std::size_t>(same)].c_str()));
  }
  void pushChoice() {
    LRESULT wanted = box_.listIndex();
    const bool list = box_.style() == controls::ComboStyle::List;
    if (list && wanted < 0 &&
        !box_.text().empty()) // a drop-down list can show a text only as one of its entries
      wanted = SendMessageA(window(), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(box_.text().c_str()));
    if (SendMessageA(window(), CB_GETCURSEL, 0, 0) != wanted)
      SendMessageA(window(), CB_SETCURSEL, static_cast<WPARAM>(wanted), 0);
    if (!list) setWindowText(window(), box_.text());
  }
  controls::ComboBox& box_;
};

} // namespace

PeerPtr makeComboPeer(FormPeer& form, controls::ComboBox& box) {
  return std::make_unique<ComboPeer>(form, box);
}

} // namespace win32
