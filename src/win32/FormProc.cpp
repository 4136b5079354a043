// The window procedure of all forms, and the procedure that may be put in front of it.
#include "controls/Timer.h"
#include "win32/Fatal.h"
#include "win32/FormPeer.h"
#include "win32/WinWindowSystem.h"

namespace win32 {

LRESULT CALLBACK FormPeer::windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE)
    SetWindowLongPtrA(window, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams));
  auto* peer = reinterpret_cast<FormPeer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (!peer || !peer->window_) return DefWindowProcA(window, message, wParam, lParam);
  return guarded([&] { return peer->handle(message, wParam, lParam); });
}

// Which message it is does not matter to the hook, only its wParam; the message always goes on.
LRESULT CALLBACK FormPeer::hookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* peer = reinterpret_cast<FormPeer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (!peer || !peer->behindHook_) return DefWindowProcA(window, message, wParam, lParam);
  const WNDPROC behind = peer->behindHook_;
  guarded([&] {
    auto procedure = peer->hook_; // it may take itself away
    peer->form_.desktop().gesture([&] { procedure(wParam); });
    return LRESULT{0};
  });
  return CallWindowProcA(behind, window, message, wParam, lParam);
}

// Whatever runs a gesture may end the form and with it this peer: nothing here is touched afterwards.
LRESULT FormPeer::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND self = window();
  switch (message) {
  case WM_COMMAND:
  case WM_NOTIFY:
  case WM_HSCROLL:
  case WM_VSCROLL:
  case WM_CTLCOLORSTATIC:
  case WM_CTLCOLORBTN: {
    bool done = false;
    const LRESULT result = reflect(message, wParam, lParam, done);
    return done ? result : DefWindowProcA(self, message, wParam, lParam);
  }
  case WM_TIMER:
    if (wParam >= 1 && wParam <= form_.timers().size()) form_.timers()[wParam - 1]->fire();
    return 0;
  case WM_WINDOWPOSCHANGED: {
    const std::weak_ptr<char> alive = alive_;
    const LRESULT result = DefWindowProcA(self, message, wParam, lParam);
    if (!alive.expired()) report();
    return result;
  }
  case WM_SIZE:
    placeDocked();
    return 0;
  case WM_CLOSE:
    form_.userClose();
    return 0;
  case WM_INITMENUPOPUP:
    if (HIWORD(lParam) == 0)
      if (controls::MenuItem* item = menu_.topItem(reinterpret_cast<HMENU>(wParam))) item->click();
    return 0;
  case WM_ACTIVATE:
    if (LOWORD(wParam) != WA_INACTIVE && HIWORD(wParam) == 0) restoreFocus();
    return 0;
  case WM_SETFOCUS:
    restoreFocus();
    return 0;
  case WM_NEXTDLGCTL: { // an access key leads on from its label; only dialogs do this by themselves
    HWND next =
        LOWORD(lParam) ? reinterpret_cast<HWND>(wParam) : GetNextDlgTabItem(self, GetFocus(), wParam != 0);
    if (next) SetFocus(next);
    return 0;
  }
  case WM_DPICHANGED:
    densityChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
    return 0;
  case WM_SETTINGCHANGE:
  case WM_SYSCOLORCHANGE: {
    for (const auto& [child, peer] : peers_) SendMessageA(child, message, wParam, lParam);
    if (message == WM_SETTINGCHANGE && wParam == SPI_SETNONCLIENTMETRICS) densityChanged(dpi_, placed_);
    return 0;
  }
  default:
    return DefWindowProcA(self, message, wParam, lParam);
  }
}

LRESULT FormPeer::reflect(UINT message, WPARAM wParam, LPARAM lParam, bool& done) {
  done = true;
  if (message == WM_COMMAND && lParam == 0) {
    if (controls::MenuItem* item = menu_.itemOf(LOWORD(wParam))) item->click();
    return 0;
  }
  HWND from =
      message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(lParam)->hwndFrom : reinterpret_cast<HWND>(lParam);
  ControlPeer* peer = peerOf(from);
  if (message == WM_NOTIFY && !peer) // a toolbar's tips come from the tips' own window
    for (const auto& [child, owner] : peers_)
      if (owner->control().kind() == controls::Kind::Toolbar) peer = owner;
  if (peer) switch (message) {
    case WM_COMMAND:
      peer->onCommand(wParam);
      return 0;
    case WM_NOTIFY:
      return peer->onNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_HSCROLL:
    case WM_VSCROLL:
      peer->onScroll(LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      if (HBRUSH brush = peer->colours(reinterpret_cast<HDC>(wParam)))
        return reinterpret_cast<LRESULT>(brush);
      break;
    default:
      break;
    }
  done = false;
  return 0;
}

void FormPeer::placeDocked() {
  for (const auto& [child, peer] : peers_)
    if (peer->control().kind() == controls::Kind::StatusBar) peer->sync(controls::Aspect::Geometry);
}

void FormPeer::restoreFocus() {
  HWND child = lastFocus_;
  if (!child || !IsWindowVisible(child) || !IsWindowEnabled(child))
    child = GetNextDlgTabItem(window(), nullptr, FALSE);
  if (child && child != window()) SetFocus(child);
}

} // namespace win32
