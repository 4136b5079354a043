#include "win32/Peers.h"
#include <cstdlib>

namespace win32 {
namespace {

// The native range always starts at 0 at the left or top end, so a bar whose top value is the larger one
// needs no care.
class ScrollPeer final : public ControlPeer {
 public:
  ScrollPeer(FormPeer& form, controls::ScrollBar& bar) : ControlPeer(form, bar), bar_(bar) {
    create("SCROLLBAR", bar.accessibleName().c_str(),
           WS_GROUP |
               static_cast<DWORD>(bar.direction() == controls::Direction::Vertical ? SBS_VERT : SBS_HORZ));
  }

  void onScroll(int code, int position) override {
    switch (code) {
    case SB_LINEUP:
      return step(-bar_.smallChange());
    case SB_LINEDOWN:
      return step(bar_.smallChange());
    case SB_PAGEUP:
      return step(-bar_.largeChange());
    case SB_PAGEDOWN:
      return step(bar_.largeChange());
    case SB_TOP:
      return gesture([this] { bar_.stepTo(bar_.minimum()); });
    case SB_BOTTOM:
      return gesture([this] { bar_.stepTo(bar_.maximum()); });
    case SB_THUMBTRACK:
      return gesture([&] { bar_.drag(fromNative(full(position))); });
    case SB_THUMBPOSITION: {
      std::weak_ptr<char> here = here_;
      gesture([&] { bar_.drag(fromNative(full(position))); });
      if (!here.expired()) gesture([this] { bar_.release(); });
      return;
    }
    case SB_ENDSCROLL:
      return gesture([this] { bar_.release(); });
    default:
      return;
    }
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Value) compare();
    if (aspect != controls::Aspect::Range) return;
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nPage = static_cast<UINT>(bar_.largeChange());
    // The native thumb's last position is a page less one below the end.
    info.nMax = std::abs(bar_.maximum() - bar_.minimum()) + bar_.largeChange() - 1;
    info.nPos = toNative(bar_.value());
    SetScrollInfo(window(), SB_CTL, &info, TRUE);
  }
  void compare() override {
    if (bar_.dragging()) return; // the thumb is where the operator holds it
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_POS;
    GetScrollInfo(window(), SB_CTL, &info);
    const int wanted = toNative(bar_.value());
    if (info.nPos == wanted) return;
    info.nPos = wanted;
    SetScrollInfo(window(), SB_CTL, &info, TRUE);
  }

 private:
  int sign() const { return bar_.maximum() >= bar_.minimum() ? 1 : -1; }
  int toNative(int value) const { return sign() * (value - bar_.minimum()); }
  int fromNative(int position) const { return bar_.minimum() + sign() * position; }
  void step(int by) {
    gesture([&] { bar_.stepTo(bar_.value() + sign() * by); });
  }
  // A notification carries the lower 16 bits of the position; the bar knows the rest while its thumb is held.
  int full(int low16) const {
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(window(), SB_CTL, &info);
    return (info.nTrackPos & 0xFFFF) == low16 ? info.nTrackPos : low16;
  }
  controls::ScrollBar& bar_;
  std::shared_ptr<char> here_ = std::make_shared<char>();
};

class UpDownPeer final : public ControlPeer {
 public:
  UpDownPeer(FormPeer& form, controls::UpDown& upDown) : ControlPeer(form, upDown), upDown_(upDown) {
    create(UPDOWN_CLASSA, upDown.accessibleName().c_str(), UDS_ARROWKEYS);
  }
  LRESULT onNotify(NMHDR& header) override {
    if (header.code != static_cast<UINT>(UDN_DELTAPOS)) return 0;
    const int delta = reinterpret_cast<NMUPDOWN&>(header).iDelta;
    const bool up = (delta > 0) == (upDown_.upper() >= upDown_.lower());
    gesture([&] { up ? upDown_.stepUp() : upDown_.stepDown(); });
    return TRUE; // the model says where it stands
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Range) {
      SendMessageA(window(), UDM_SETRANGE32, static_cast<WPARAM>(upDown_.lower()), upDown_.upper());
      UDACCEL step{0, 1}; // one increment at a time, however long the arrow is held
      SendMessageA(window(), UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&step));
    }
    if (aspect == controls::Aspect::Value || aspect == controls::Aspect::Range) compare();
    if (aspect == controls::Aspect::Text && upDown_.buddy)
      if (const auto* buddy = dynamic_cast<const ControlPeer*>(upDown_.buddy->peer()))
        SendMessageA(window(), UDM_SETBUDDY, reinterpret_cast<WPARAM>(buddy->window()), 0);
  }
  void compare() override {
    if (SendMessageA(window(), UDM_GETPOS32, 0, 0) != upDown_.value())
      SendMessageA(window(), UDM_SETPOS32, 0, upDown_.value());
  }

 private:
  controls::UpDown& upDown_;
};

} // namespace

PeerPtr makeScrollPeer(FormPeer& form, controls::ScrollBar& bar) {
  return std::make_unique<ScrollPeer>(form, bar);
}
PeerPtr makeUpDownPeer(FormPeer& form, controls::UpDown& upDown) {
  return std::make_unique<UpDownPeer>(form, upDown);
}

} // namespace win32
