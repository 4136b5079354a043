#include "win32/WinPump.h"
#include "controls/Simple.h"
#include "win32/FormPeer.h"

namespace win32 {

using controls::Kind;

namespace {

int shiftState() {
  return (GetKeyState(VK_SHIFT) < 0 ? 1 : 0) | (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) |
         (GetKeyState(VK_MENU) < 0 ? 4 : 0);
}

// "Ctrl+R", "Shift+F3", "F5"; empty for a key that no menu item can have.
std::string shortcutOf(WPARAM key, int shift) {
  std::string name;
  if (key >= VK_F1 && key <= VK_F12)
    name = "F" + std::to_string(key - VK_F1 + 1);
  else if ((shift & 2) != 0 && ((key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9')))
    name = std::string(1, static_cast<char>(key));
  if (name.empty() || (shift & 4) != 0) return {};
  return ((shift & 2) != 0 ? "Ctrl+" : std::string()) + ((shift & 1) != 0 ? "Shift+" : "") + name;
}

controls::Button* buttonFor(const controls::Form& form, WPARAM key) {
  for (controls::Control* control : form.tabOrder()) {
    if (control->kind() != Kind::Button || !control->reachable()) continue;
    auto* button = static_cast<controls::Button*>(control);
    if (key == VK_RETURN ? button->isDefault : button->isCancel) return button;
  }
  return nullptr;
}

bool listIsOpen(const ControlPeer& peer) {
  return peer.control().kind() == Kind::ComboBox &&
         SendMessageA(peer.window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
}

void pass(const MSG& message) {
  TranslateMessage(&message);
  DispatchMessageA(&message);
}

} // namespace

int WinPump::doEvents() {
  struct Depth {
    explicit Depth(int& d) : depth(d) { ++depth; }
    ~Depth() { --depth; }
    int& depth;
  } inside(depth_);
  MSG message;
  while (!quit_ && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      quit_ = true;
      break;
    }
    windows_.settleFocus(); // a message sent by the system may have moved it
    deliver(message);
    windows_.settleFocus();
    // A timer comes only when nothing else waits. A host slower than the timer would never let this loop end.
    if (message.message == WM_TIMER) break;
  }
  // Asking for the native focus has its price: not in every turn of a tick.
  if (depth_ == 1 || windows_.moveWaits()) windows_.settleFocus();
  controls::Desktop* desktop = windows_.desktop();
  if (desktop) desktop->emptyGraveyard();
  return desktop && !quit_ ? desktop->loadedForms() : 0;
}

void WinPump::waitForMessage() {
  if (quit_ || windows_.moveWaits()) return;
  MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

// The window sees a key before its control does, a menu's shortcut before either.
void WinPump::deliver(MSG& message) {
  FormPeer* peer = FormPeer::of(message.hwnd);
  if (!peer) return pass(message);
  controls::Form& form = peer->form();
  const HWND root = peer->window();
  const bool down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  if (down) {
    const int shift = shiftState();
    const std::string shortcut = shortcutOf(message.wParam, shift);
    if (!shortcut.empty() && form.userAccelerator(shortcut)) return;
    if (form.userKeyDown(static_cast<int>(message.wParam), shift) || !IsWindow(message.hwnd)) return;
  }
  if (message.message == WM_KEYUP || message.message == WM_SYSKEYUP) {
    form.userKeyUp(static_cast<int>(message.wParam), shiftState());
    if (!IsWindow(message.hwnd)) return;
  }
  ControlPeer* target = peer->peerOf(message.hwnd);
  const bool typed =
      target && (target->control().kind() == Kind::TextBox || target->control().kind() == Kind::ComboBox);
  if (message.message == WM_CHAR && typed) {
    if (target->control().userKeyPress(static_cast<int>(message.wParam)) || !IsWindow(message.hwnd)) return;
    if (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE)
      return; // nobody wants it: no alarm sound either
  }
  if (message.message == WM_KEYDOWN && (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE)) {
    if (target && listIsOpen(*target)) return pass(message);
    const bool onButton = target && target->control().kind() == Kind::Button && message.wParam == VK_RETURN;
    controls::Button* button =
        onButton ? static_cast<controls::Button*>(&target->control()) : buttonFor(form, message.wParam);
    if (button) return button->click();
    return pass(message);
  }
  if (!IsDialogMessageA(root, &message)) pass(message);
}

} // namespace win32
