#include "controls/RasterCanvas.h"
#include "win32/Fatal.h"
#include "win32/Peers.h"
#include <windowsx.h>

namespace win32 {
namespace {

constexpr char kPictureClass[] = "VantrelPicture";

int shiftState() {
  return (GetKeyState(VK_SHIFT) < 0 ? 1 : 0) | (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) |
         (GetKeyState(VK_MENU) < 0 ? 4 : 0);
}

class PicturePeer final : public ControlPeer {
 public:
  PicturePeer(FormPeer& form, controls::PictureBox& picture) : ControlPeer(form, picture), picture_(picture) {
    static const ATOM registered = [] {
      WNDCLASSA shape{};
      shape.lpfnWndProc = windowProc;
      shape.hInstance = GetModuleHandleA(nullptr);
      shape.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)); // the arrow
      shape.lpszClassName = kPictureClass;
      return RegisterClassA(&shape);
    }();
    if (registered) create(kPictureClass, picture.accessibleName().c_str(), WS_GROUP | WS_CLIPCHILDREN);
  }

  void place() override {
    ControlPeer::place();
    RECT client{};
    GetClientRect(window(), &client);
    if (client.right == told_.cx && client.bottom == told_.cy && dpi() == toldDpi_) return;
    told_ = {client.right, client.bottom};
    toldDpi_ = dpi();
    picture_.pixelSize(static_cast<int>(client.right), static_cast<int>(client.bottom), dpi());
    InvalidateRect(window(), nullptr, FALSE);
  }

  void labelChanged(RECT& shown, const controls::Label& label) {
    InvalidateRect(window(), &shown, FALSE);
    shown = label.visible() ? labelRect(label) : RECT{};
    InvalidateRect(window(), &shown, FALSE);
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect != controls::Aspect::Picture) return;
    const controls::PixelRect dirty = canvas().takeDirty();
    const RECT area{dirty.left, dirty.top, dirty.right, dirty.bottom};
    if (!dirty.empty()) InvalidateRect(window(), &area, FALSE);
  }

 private:
  controls::RasterCanvas& canvas() const { return static_cast<controls::RasterCanvas&>(picture_.canvas()); }

  static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
      SetWindowLongPtrA(window, GWLP_USERDATA,
                        reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams));
    auto* peer =
        static_cast<PicturePeer*>(reinterpret_cast<ControlPeer*>(GetWindowLongPtrA(window, GWLP_USERDATA)));
    if (!peer || !peer->window()) return DefWindowProcA(window, message, wParam, lParam);
    return guarded([&] { return peer->handle(message, wParam, lParam); });
  }

  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND self = window();
    switch (message) {
    case WM_PAINT:
      paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(self, nullptr, FALSE);
      return 0;
    case WM_LBUTTONDOWN:
      press(controls::MouseButton::Left, lParam);
      return 0;
    case WM_RBUTTONDOWN:
      press(controls::MouseButton::Right, lParam);
      return 0;
    case WM_MBUTTONDOWN:
      press(controls::MouseButton::Middle, lParam);
      return 0;
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      bool done = false;
      const LRESULT result = form().reflect(message, wParam, lParam, done);
      return done ? result : DefWindowProcA(self, message, wParam, lParam);
    }
    default:
      return DefWindowProcA(self, message, wParam, lParam);
    }
  }

  void press(controls::MouseButton button, LPARAM at) {
    if (picture_.tabIndex() >= 0) SetFocus(window());
    const float x = toTwips(GET_X_LPARAM(at), dpi()), y = toTwips(GET_Y_LPARAM(at), dpi());
    gesture([&] { picture_.mouseDown(button, shiftState(), x, y); });
  }

  // Everything is put together in memory and shown at once: nothing flickers.
  void paint() {
    PAINTSTRUCT work{};
    HDC screen = BeginPaint(window(), &work);
    const RECT& area = work.rcPaint;
    const int width = static_cast<int>(area.right - area.left),
              height = static_cast<int>(area.bottom - area.top);
    if (width > 0 && height > 0) {
      OwnedDc dc(CreateCompatibleDC(screen));
      OwnedBitmap bitmap(CreateCompatibleBitmap(screen, width, height));
      HGDIOBJ old = SelectObject(dc.get(), bitmap.get());
      SetViewportOrgEx(dc.get(), -static_cast<int>(area.left), -static_cast<int>(area.top), nullptr);
      paintPicture(dc.get(), area);
      for (const controls::Control* child : picture_.children())
        if (child->kind() == controls::Kind::Label && child->visible())
          paintLabel(dc.get(), static_cast<const controls::Label&>(*child));
      if (GetFocus() == window()) paintFocus(dc.get());
      SetViewportOrgEx(dc.get(), 0, 0, nullptr);
      BitBlt(screen, static_cast<int>(area.left), static_cast<int>(area.top), width, height, dc.get(), 0, 0,
             SRCCOPY);
      SelectObject(dc.get(), old);
    }
    EndPaint(window(), &work);
  }

  void paintPicture(HDC dc, const RECT& area) {
    controls::RasterCanvas& c = canvas();
    const int bottom = std::min(static_cast<int>(area.bottom), c.height());
    const int rows = bottom - static_cast<int>(area.top);
    if (rows <= 0 || c.width() <= 0) {
      FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
      return;
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = c.width();
    info.bmiHeader.biHeight = -rows; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const std::uint32_t* from = c.pixels() + static_cast<std::ptrdiff_t>(area.top) * c.width();
    SetDIBitsToDevice(dc, 0, static_cast<int>(area.top), static_cast<DWORD>(c.width()),
                      static_cast<DWORD>(rows), 0, 0, 0, static_cast<UINT>(rows), from, &info,
                      DIB_RGB_COLORS);
  }

  // A text that stands at the picture's very edge is hard to read: it keeps a little distance.
  RECT labelRect(const controls::Label& label) const {
    RECT r = toPixels(label.rect(), dpi()), client{};
    GetClientRect(window(), &client);
    const int gap = toPixels(60, dpi());
    if (r.left <= 0)
      OffsetRect(&r, gap, 0);
    else if (r.right >= client.right)
      OffsetRect(&r, -gap, 0);
    return r;
  }

  void paintLabel(HDC dc, const controls::Label& label) {
    RECT r = labelRect(label);
    HGDIOBJ old = SelectObject(dc, form().font(label.font()));
    if (label.opaque()) {
      OwnedBrush ground(CreateSolidBrush(picture_.backColour()));
      FillRect(dc, &r, ground.get());
    }
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, label.themed() ? RGB(224, 224, 224) : label.foreColour());
    DrawTextA(dc, label.caption().c_str(), -1, &r, DT_LEFT | DT_TOP | DT_NOPREFIX | DT_NOCLIP);
    SelectObject(dc, old);
  }

  // A quiet line inside the edge tells where the keys go.
  void paintFocus(HDC dc) {
    RECT edge{};
    GetClientRect(window(), &edge);
    OwnedBrush grey(CreateSolidBrush(RGB(112, 112, 112)));
    FrameRect(dc, &edge, grey.get());
  }

  controls::PictureBox& picture_;
  SIZE told_{-1, -1};
  int toldDpi_ = 0;
};

class PictureLabelPeer final : public controls::Peer {
 public:
  explicit PictureLabelPeer(controls::Label& label) : label_(label) { sync(controls::Aspect::Text); }
  void sync(controls::Aspect /*aspect*/) override {
    auto& picture = static_cast<controls::PictureBox&>(label_.parent());
    if (auto* peer = dynamic_cast<PicturePeer*>(picture.peer())) peer->labelChanged(shown_, label_);
  }

 private:
  controls::Label& label_;
  RECT shown_{};
};

} // namespace

PeerPtr makePicturePeer(FormPeer& form, controls::PictureBox& picture) {
  return std::make_unique<PicturePeer>(form, picture);
}
PeerPtr makePictureLabelPeer(controls::Label& label) { return std::make_unique<PictureLabelPeer>(label); }

} // namespace win32
