#include "win32/Peers.h"

namespace win32 {
namespace {

class TextPeer final : public ControlPeer {
 public:
  TextPeer(FormPeer& form, controls::TextBox& box) : ControlPeer(form, box), box_(box) {
    create("EDIT", box.text().c_str(), WS_GROUP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
  }
  void onCommand(WPARAM wParam) override {
    if (HIWORD(wParam) == EN_CHANGE) gesture([this] { box_.type(windowText(window())); });
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Text) compare();
  }
  void compare() override { setWindowText(window(), box_.text()); }

 private:
  controls::TextBox& box_;
};

} // namespace

PeerPtr makeTextPeer(FormPeer& form, controls::TextBox& box) { return std::make_unique<TextPeer>(form, box); }

} // namespace win32
