#include "win32/Peers.h"
#include <algorithm>

namespace win32 {
namespace {

class TextPeer final : public ControlPeer {
 public:
  TextPeer(FormPeer& form, controls::TextBox& box) : ControlPeer(form, box), box_(box) {
    create("EDIT", box.text().c_str(), WS_GROUP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
  }
  // An edit shows its line at the top: a box as high as its font wants it stands in the middle of the model's
  // height.
  void place() override {
    RECT r = form().pixelRect(box_);
    const int height = static_cast<int>(r.bottom - r.top);
    const int line = static_cast<int>(textPixels(form().font(box_.font()), "0").cy);
    const int wanted = std::min(height, line + toPixels(120, dpi()));
    SetWindowPos(window(), nullptr, static_cast<int>(r.left), static_cast<int>(r.top) + (height - wanted) / 2,
                 static_cast<int>(r.right - r.left), wanted, SWP_NOZORDER | SWP_NOACTIVATE);
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
