#include "win32/Peers.h"

namespace win32 {
namespace {

class LabelPeer final : public ControlPeer {
 public:
  LabelPeer(FormPeer& form, controls::Label& label) : ControlPeer(form, label), label_(label) {
    // A label of one line stands in the middle of its height, level with the field beside it.
    const bool oneLine = label.height() < 450;
    create("STATIC", label.caption().c_str(), SS_LEFT | (oneLine ? SS_CENTERIMAGE : 0U));
  }

  HBRUSH colours(HDC dc) override {
    if (!label_.themed()) SetTextColor(dc, label_.foreColour());
    SetBkMode(dc, TRANSPARENT);
    return form().background();
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Text) setWindowText(window(), label_.caption());
    if (aspect == controls::Aspect::Colours) InvalidateRect(window(), nullptr, TRUE);
  }

 private:
  controls::Label& label_;
};

// A group box. It lets its window paint the ground below it, so that what lies inside never flickers.
class FramePeer final : public ControlPeer {
 public:
  FramePeer(FormPeer& form, controls::Frame& frame) : ControlPeer(form, frame), frame_(frame) {
    create("BUTTON", frame.caption().c_str(), BS_GROUPBOX | WS_GROUP, WS_EX_TRANSPARENT);
  }

  void place() override {
    ControlPeer::place();
    for (controls::Control* child : frame_.children())
      if (auto* peer = dynamic_cast<ControlPeer*>(child->peer())) peer->place();
  }
  HBRUSH colours(HDC dc) override {
    SetBkMode(dc, TRANSPARENT);
    return form().background();
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Text) setWindowText(window(), frame_.caption());
  }

 private:
  controls::Frame& frame_;
};

} // namespace

PeerPtr makeLabelPeer(FormPeer& form, controls::Label& label) {
  return std::make_unique<LabelPeer>(form, label);
}
PeerPtr makeFramePeer(FormPeer& form, controls::Frame& frame) {
  return std::make_unique<FramePeer>(form, frame);
}

} // namespace win32
