#include "win32/ControlPeer.h"
#include "win32/AccessibleName.h"
#include "win32/FormPeer.h"

namespace win32 {

using controls::Aspect;

std::string windowText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

void setWindowText(HWND window, const std::string& text) {
  if (windowText(window) != text) SetWindowTextA(window, text.c_str());
}

ControlPeer::ControlPeer(FormPeer& form, controls::Control& control) : form_(form), control_(control) {}

ControlPeer::~ControlPeer() {
  if (!window_) return;
  if (named_) clearAccessibleName(window());
  form_.remove(window());
}

int ControlPeer::dpi() const { return form_.dpi(); }

void ControlPeer::create(const char* windowClass, const char* text, DWORD style, DWORD exStyle) {
  const RECT r = form_.pixelRect(control_);
  style |= WS_CHILD | WS_CLIPSIBLINGS;
  if (control_.tabIndex() >= 0) style |= WS_TABSTOP;
  window_ = OwnedWindow(CreateWindowExA(exStyle, windowClass, text, style, r.left, r.top, r.right - r.left,
                                        r.bottom - r.top, form_.parentWindow(control_), form_.nextChildId(),
                                        GetModuleHandleA(nullptr), this));
  form_.add(window(), *this);
}

void ControlPeer::pushAll() {
  writeWith([this] {
    pushFont();
    place();
    for (Aspect a : {Aspect::Text, Aspect::Range, Aspect::List, Aspect::Selection, Aspect::Value,
                     Aspect::Colours, Aspect::Picture})
      push(a);
    name();
    if (!control_.tip().empty()) pushTip();
    showAndEnable();
  });
}

void ControlPeer::sync(Aspect aspect) {
  switch (aspect) {
  case Aspect::Geometry:
    return writeWith([this] { place(); });
  case Aspect::Visible:
  case Aspect::Enabled:
    return writeWith([this] {
      showAndEnable();
      form_.showAndEnableInside(control_);
    });
  case Aspect::Font:
    return writeWith([this] { densityChanged(); });
  case Aspect::Focus:
    return form_.wantFocus(control_);
  case Aspect::Tip:
    return writeWith([this] { pushTip(); });
  case Aspect::Text:
  case Aspect::Value:
  case Aspect::List:
  case Aspect::Selection:
    if (gestures_ > 0 && valuesWait()) return;
    break;
  default:
    break;
  }
  writeWith([&] { push(aspect); });
}

void ControlPeer::place() {
  const RECT r = form_.pixelRect(control_);
  SetWindowPos(window(), nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void ControlPeer::pushFont() {
  SendMessageA(window(), WM_SETFONT, reinterpret_cast<WPARAM>(form_.font(control_.font())), TRUE);
}

void ControlPeer::pushTip() { form_.setTip(window(), control_.tip()); }

void ControlPeer::showAndEnable() {
  const Shown shown = form_.shown(control_);
  EnableWindow(window(), shown.enabled);
  ShowWindow(window(), shown.visible ? SW_SHOWNA : SW_HIDE);
}

void ControlPeer::name() {
  if (!control_.accessibleName().empty()) named_ = setAccessibleName(window(), control_.accessibleName());
}

} // namespace win32
