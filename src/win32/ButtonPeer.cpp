#include "win32/Peers.h"

namespace win32 {
namespace {

class ButtonPeer final : public ControlPeer {
 public:
  ButtonPeer(FormPeer& form, controls::Button& button) : ControlPeer(form, button), button_(button) {
    create("BUTTON", button.caption().c_str(),
           WS_GROUP | static_cast<DWORD>(button.isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON));
  }
  void onCommand(WPARAM wParam) override {
    if (HIWORD(wParam) == BN_CLICKED) gesture([this] { button_.click(); });
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Text) setWindowText(window(), button_.caption());
  }

 private:
  controls::Button& button_;
};

class OptionPeer final : public ControlPeer {
 public:
  OptionPeer(FormPeer& form, controls::OptionButton& button) : ControlPeer(form, button), button_(button) {
    const bool first = sibling(0) == &button;
    create("BUTTON", button.caption().c_str(), BS_AUTORADIOBUTTON | (first ? WS_GROUP : 0U));
  }
  void onCommand(WPARAM wParam) override {
    if (HIWORD(wParam) == BN_CLICKED && SendMessageA(window(), BM_GETCHECK, 0, 0) == BST_CHECKED)
      gesture([this] { button_.choose(); });
  }
  HBRUSH colours(HDC dc) override {
    SetBkMode(dc, TRANSPARENT);
    return form().background();
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Text) setWindowText(window(), button_.caption());
    if (aspect == controls::Aspect::Value) compare();
  }
  void compare() override {
    const WPARAM wanted = button_.value() ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(SendMessageA(window(), BM_GETCHECK, 0, 0)) != wanted)
      SendMessageA(window(), BM_SETCHECK, wanted, 0);
    // The Tab key stops at the chosen button, at the first one while none is chosen.
    bool chosen = false;
    for (int i = 0; const auto* other = sibling(i); ++i) chosen = chosen || other->value();
    const bool stop = button_.tabIndex() >= 0 && (button_.value() || (!chosen && sibling(0) == &button_));
    const LONG style = GetWindowLongA(window(), GWL_STYLE);
    SetWindowLongA(window(), GWL_STYLE, stop ? style | WS_TABSTOP : style & ~WS_TABSTOP);
  }

 private:
  const controls::OptionButton* sibling(int number) const {
    for (const controls::Control* c : button_.parent().children())
      if (c->kind() == controls::Kind::OptionButton && number-- == 0)
        return static_cast<const controls::OptionButton*>(c);
    return nullptr;
  }
  controls::OptionButton& button_;
};

} // namespace

PeerPtr makeButtonPeer(FormPeer& form, controls::Button& button) {
  return std::make_unique<ButtonPeer>(form, button);
}
PeerPtr makeOptionPeer(FormPeer& form, controls::OptionButton& button) {
  return std::make_unique<OptionPeer>(form, button);
}

} // namespace win32
