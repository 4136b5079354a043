#include "win32/Icons.h"
#include "win32/Peers.h"
#include "win32/WideText.h"
#include <algorithm>

namespace win32 {
namespace {

constexpr int kFirstCommand = 30000; // button n is command kFirstCommand + n
constexpr float kButtonWidth = 1020; // twips

class ToolbarPeer final : public ControlPeer {
 public:
  ToolbarPeer(FormPeer& form, controls::Toolbar& toolbar) : ControlPeer(form, toolbar), toolbar_(toolbar) {
    create(TOOLBARCLASSNAMEA, toolbar.accessibleName().c_str(),
           WS_GROUP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER);
    SendMessageA(window(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    pushImages();
    for (int i = 1; i <= toolbar.count(); ++i) {
      TBBUTTON button{};
      button.iBitmap = i - 1;
      button.idCommand = kFirstCommand + i;
      button.fsState = TBSTATE_ENABLED;
      button.fsStyle = BTNS_CHECKGROUP;
      button.iString = reinterpret_cast<INT_PTR>(toolbar.item(i).caption.c_str());
      SendMessageA(window(), TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    }
    SetWindowSubclass(window(), mouseProc, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  ~ToolbarPeer() override { RemoveWindowSubclass(window(), mouseProc, 1); }
  ToolbarPeer(const ToolbarPeer&) = delete;
  ToolbarPeer& operator=(const ToolbarPeer&) = delete;

  void place() override {
    ControlPeer::place();
    const int height = toPixels(toolbar_.height(), dpi()) - toPixels(30, dpi());
    const int width = toPixels(kButtonWidth, dpi());
    SendMessageA(window(), TB_SETBUTTONWIDTH, 0, MAKELPARAM(width, width));
    SendMessageA(window(), TB_SETBUTTONSIZE, 0, MAKELPARAM(width, height));
    toolbar_.itemWidths.clear();
    for (int i = 0; i < toolbar_.count(); ++i) {
      RECT r{};
      SendMessageA(window(), TB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&r));
      toolbar_.itemWidths.push_back(toTwips(static_cast<int>(r.right - r.left), dpi()));
    }
  }
  void densityChanged() override {
    pushImages();
    ControlPeer::densityChanged();
  }

  void onCommand(WPARAM wParam) override {
    const int number = LOWORD(wParam) - kFirstCommand;
    gesture([&] { toolbar_.click(number); });
  }
  LRESULT onNotify(NMHDR& header) override {
    if (header.code == static_cast<UINT>(TTN_GETDISPINFOA)) {
      tip_ = toolbar_.tip();
      reinterpret_cast<NMTTDISPINFOA&>(header).lpszText = tip_.data();
    }
    if (header.code == static_cast<UINT>(TTN_GETDISPINFOW)) {
      wideTip_ = wideText(toolbar_.tip());
      reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = wideTip_.data();
    }
    return 0;
  }

 protected:
  void push(controls::Aspect aspect) override {
    if (aspect == controls::Aspect::Value) compare();
  }
  void compare() override {
    for (int i = 1; i <= toolbar_.count(); ++i) {
      const WPARAM id = static_cast<WPARAM>(kFirstCommand) + static_cast<WPARAM>(i);
      const bool down = SendMessageA(window(), TB_ISBUTTONCHECKED, id, 0) != 0;
      if (down != toolbar_.isPressed(i)) SendMessageA(window(), TB_CHECKBUTTON, id, MAKELPARAM(!down, 0));
    }
  }
  bool valuesWait() const override { return false; } // a message box may hold up the click that pressed it
  void pushTip() override {}                         // asked for when it is about to be shown

 private:
  void pushImages() {
    std::vector<std::string> keys;
    for (int i = 1; i <= toolbar_.count(); ++i) keys.push_back(toolbar_.item(i).key);
    OwnedImageList made = toolbarImages(keys, toPixels(360, dpi()));
    SendMessageA(window(), TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(made.get()));
    images_ = std::move(made);
  }
  static LRESULT CALLBACK mouseProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR data) {
    auto* peer = reinterpret_cast<ToolbarPeer*>(data);
    if (message == WM_MOUSEMOVE) {
      const int x = static_cast<short>(LOWORD(lParam));
      if (x != peer->mouseAt_) {
        peer->mouseAt_ = x;
        const float twips = toTwips(x, peer->dpi());
        peer->gesture([&] { peer->toolbar_.userMouseMove(twips); });
      }
    }
    return DefSubclassProc(window, message, wParam, lParam);
  }
  controls::Toolbar& toolbar_;
  OwnedImageList images_;
  std::string tip_;
  std::wstring wideTip_;
  int mouseAt_ = -1;
};

} // namespace

PeerPtr makeToolbarPeer(FormPeer& form, controls::Toolbar& toolbar) {
  return std::make_unique<ToolbarPeer>(form, toolbar);
}

} // namespace win32
