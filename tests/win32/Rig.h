// A window with one control of every kind on native windows, driven by the messages an operator's hands
// cause.
#pragma once
#include "contract/win32/NativeBackEnd.h"

namespace native {

using contract::Log;
using contract::Sample;
using contract::World;

inline HWND of(const controls::Control& control) {
  return dynamic_cast<const win32::ControlPeer&>(*control.peer()).window();
}
inline HWND of(const controls::Form& form) {
  return dynamic_cast<const win32::FormPeer&>(*form.peer()).window();
}
inline LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  return SendMessageA(window, message, wParam, lParam);
}
inline void clickAt(HWND window, int x, int y) {
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}
inline void key(HWND window, WPARAM code) {
  PostMessageA(window, WM_KEYDOWN, code, 1);
  PostMessageA(window, WM_KEYUP, code, static_cast<LPARAM>(0xC0000001));
}
inline void notify(const controls::Control& control, int code) {
  HWND window = of(control);
  send(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), code),
       reinterpret_cast<LPARAM>(window));
}
inline void scroll(const controls::ScrollBar& bar, int code, int position = 0) {
  const UINT message = bar.direction() == controls::Direction::Vertical ? WM_VSCROLL : WM_HSCROLL;
  HWND window = of(bar);
  send(GetParent(window), message, MAKEWPARAM(code, position), reinterpret_cast<LPARAM>(window));
}
inline int position(const controls::ScrollBar& bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof(info);
  info.fMask = SIF_ALL;
  GetScrollInfo(of(bar), SB_CTL, &info);
  return info.nPos;
}

} // namespace native
