#include "win32/FormPeer.h"
#include "controls/Simple.h"
#include "win32/Fatal.h"
#include "win32/MakePeer.h"
#include "win32/TimerPeer.h"
#include "win32/WinWindowSystem.h"
#include <algorithm>

namespace win32 {

using controls::Aspect;
using controls::Control;
using controls::Form;
using controls::Kind;
using controls::WindowState;

namespace {
constexpr char kWindowClass[] = "VantrelForm";

struct Writing {
  explicit Writing(int& d) : depth(d) { ++depth; }
  ~Writing() { --depth; }
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;
  int& depth;
};

// A form's own icon, or the program's.
HICON icon(const char* name, int size) {
  HMODULE program = GetModuleHandleA(nullptr);
  HANDLE own = *name ? LoadImageA(program, name, IMAGE_ICON, size, size, LR_SHARED) : nullptr;
  return static_cast<HICON>(
      own ? own : LoadImageA(program, MAKEINTRESOURCEA(1), IMAGE_ICON, size, size, LR_SHARED));
}
} // namespace

FormPeer::FormPeer(WinWindowSystem& system, Form& form)
    : system_(system), form_(form), menu_(form), dpi_(systemDpi()) {}

FormPeer::~FormPeer() {
  unhook();
  if (window_) SetWindowLongPtrA(window(), GWLP_USERDATA, 0);
}

ATOM FormPeer::windowClass() {
  static const ATOM registered = [] {
    WNDCLASSA shape{};
    shape.lpfnWndProc = windowProc;
    shape.hInstance = GetModuleHandleA(nullptr);
    shape.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512)); // the arrow
    shape.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<std::intptr_t>(COLOR_BTNFACE + 1));
    shape.lpszClassName = kWindowClass;
    return RegisterClassA(&shape);
  }();
  return registered;
}

FormPeer* FormPeer::of(HWND window) {
  HWND root = window ? GetAncestor(window, GA_ROOT) : nullptr;
  if (!root || GetClassLongPtrA(root, GCW_ATOM) != windowClass()) return nullptr;
  return reinterpret_cast<FormPeer*>(GetWindowLongPtrA(root, GWLP_USERDATA));
}

DWORD FormPeer::style(const Form& form) {
  const DWORD frame = form.style().resizable ? WS_OVERLAPPEDWINDOW : WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
  return frame | WS_CLIPCHILDREN;
}

DWORD FormPeer::exStyle(const Form& form) {
  return WS_EX_CONTROLPARENT | (form.style().toolWindow ? WS_EX_TOOLWINDOW : 0U);
}

void FormPeer::build() {
  windowClass();
  Writing writing(writing_);
  // The panels belong to the main window, which loads first: they never disappear behind it, and go with it.
  const Form* const first = form_.desktop().forms().front();
  const bool alone = first == &form_ || form_.style().standsAlone;
  HWND owner = alone ? nullptr : static_cast<FormPeer*>(first->peer())->window();
  window_ = OwnedWindow(CreateWindowExA(exStyle(form_), kWindowClass, form_.caption().c_str(), style(form_),
                                        CW_USEDEFAULT, CW_USEDEFAULT, 100, 100, owner, nullptr,
                                        GetModuleHandleA(nullptr), this));
  if (!window_) fatal("The window " + form_.name() + " could not be made. Is there a display?");
  dpi_ = dpiOf(window());
  SendMessageA(window(), WM_SETICON, ICON_BIG,
               reinterpret_cast<LPARAM>(icon(form_.style().iconName, toPixels(480, dpi_))));
  SendMessageA(window(), WM_SETICON, ICON_SMALL,
               reinterpret_cast<LPARAM>(icon(form_.style().iconName, toPixels(240, dpi_))));
  menu_.attach(window());
  place();
  makeControls();
  int id = 0;
  for (controls::Timer* timer : form_.timers())
    timer->attachPeer(std::make_unique<TimerPeer>(window(), *timer, ++id));
}

void FormPeer::makeControls() {
  for (Control* control : stackingOrder(form_)) {
    auto made = makePeer(*this, *control);
    controls::Peer* peer = made.get();
    control->attachPeer(std::move(made));
    if (auto* native = dynamic_cast<ControlPeer*>(peer)) native->pushAll();
  }
}

void FormPeer::sync(Aspect aspect) {
  switch (aspect) {
  case Aspect::Geometry:
    return place();
  case Aspect::State:
    return pushState();
  case Aspect::Visible:
    return pushVisible();
  case Aspect::Text:
    return setWindowText(window(), form_.caption());
  case Aspect::Menu:
    if (form_.changedItem()) menu_.changed(*form_.changedItem());
    return;
  default:
    return;
  }
}

// A minimised or maximised window keeps what it is; the place is its normal one.
void FormPeer::place() {
  const RECT r = toPixels(form_.rect(), dpi_);
  {
    Writing writing(writing_);
    if (IsIconic(window()) || IsZoomed(window())) {
      WINDOWPLACEMENT where{};
      where.length = sizeof(where);
      GetWindowPlacement(window(), &where);
      where.rcNormalPosition = r;
      SetWindowPlacement(window(), &where);
    } else {
      SetWindowPos(window(), nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    }
    placed_ = r;
  }
  report();
}

void FormPeer::pushState() {
  if (!IsWindowVisible(window())) return;
  const WindowState now = IsIconic(window())   ? WindowState::Minimised
                          : IsZoomed(window()) ? WindowState::Maximised
                                               : WindowState::Normal;
  if (now == form_.windowState()) return;
  const int command = form_.windowState() == WindowState::Minimised   ? SW_MINIMIZE
                      : form_.windowState() == WindowState::Maximised ? SW_MAXIMIZE
                                                                      : SW_RESTORE;
  stateTold_ = now; // the model has it already; the layout still has to hear of it
  ShowWindow(window(), command);
}

void FormPeer::pushVisible() {
  if (!form_.visible()) {
    system_.endModal(form_);
    Writing writing(writing_);
    ShowWindow(window(), SW_HIDE);
    return;
  }
  {
    Writing writing(writing_);
    const bool quietly = system_.telling(); // shown again by another window's layout: that one stays active
    const int command = form_.windowState() == WindowState::Maximised   ? SW_SHOWMAXIMIZED
                        : form_.windowState() == WindowState::Minimised ? SW_SHOWMINIMIZED
                        : quietly                                       ? SW_SHOWNA
                                                                        : SW_SHOW;
    ShowWindow(window(), command);
    if (!quietly && form_.windowState() != WindowState::Minimised) SetForegroundWindow(window());
  }
  if (!everShown_) innerTold_ = {-1, -1}; // the first show tells the size
  everShown_ = true;
  report();
}

void FormPeer::report() {
  if (writing_ > 0 || !everShown_ || form_.peer() != this) return;
  const WindowState state = IsIconic(window())   ? WindowState::Minimised
                            : IsZoomed(window()) ? WindowState::Maximised
                                                 : WindowState::Normal;
  RECT outer{}, client{};
  GetWindowRect(window(), &outer);
  GetClientRect(window(), &client);
  SIZE inner{client.right, client.bottom};
  if (state == WindowState::Minimised) inner = {0, 0};
  if (state != WindowState::Normal) outer = placed_;
  const bool sized = state != stateTold_ || inner.cx != innerTold_.cx || inner.cy != innerTold_.cy;
  const bool moved = !EqualRect(&outer, &placed_);
  if (!sized && !moved) return;
  placed_ = outer;
  innerTold_ = inner;
  stateTold_ = state;
  const controls::Rect rect = !moved ? form_.rect()
                                     : controls::Rect{toTwips(outer.left, dpi_), toTwips(outer.top, dpi_),
                                                      toTwips(outer.right - outer.left, dpi_),
                                                      toTwips(outer.bottom - outer.top, dpi_)};
  WinWindowSystem::Telling telling(system_);
  form_.userResized(rect, {toTwips(inner.cx, dpi_), toTwips(inner.cy, dpi_)}, state);
}

void FormPeer::densityChanged(int dpi, const RECT& suggested) {
  FontCache before = std::exchange(fonts_, FontCache()); // the controls still hold its fonts
  {
    Writing writing(writing_);
    dpi_ = dpi;
    SetWindowPos(window(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    std::vector<ControlPeer*> all;
    for (const auto& [child, peer] : peers_) all.push_back(peer);
    for (ControlPeer* peer : all) peer->densityChanged();
  }
  innerTold_ = {-1, -1};
  report();
}

void FormPeer::remove(HWND child) {
  if (lastFocus_ == child) lastFocus_ = nullptr;
  if (tips_) setTip(child, {});
  peers_.erase(child);
}

ControlPeer* FormPeer::peerOf(HWND child) const {
  for (HWND at = child; at && at != window(); at = GetParent(at))
    if (const auto found = peers_.find(at); found != peers_.end()) return found->second;
  return nullptr;
}

RECT FormPeer::pixelRect(const Control& control) const {
  if (control.kind() == Kind::StatusBar) { // docks itself
    RECT client{};
    GetClientRect(window(), &client);
    return {0, client.bottom - toPixels(control.height(), dpi_), client.right, client.bottom};
  }
  controls::Rect r = control.rect();
  for (const auto* frame = dynamic_cast<const controls::Frame*>(&control.parent()); frame;
       frame = dynamic_cast<const controls::Frame*>(&frame->parent())) {
    r.left += frame->left();
    r.top += frame->top();
  }
  RECT pixels = toPixels(r, dpi_);
  pixels.right = std::max(pixels.right, pixels.left);
  pixels.bottom = std::max(pixels.bottom, pixels.top);
  return pixels;
}

HWND FormPeer::parentWindow(const Control& control) const {
  for (const controls::Container* at = &control.parent(); at;) {
    if (const auto* picture = dynamic_cast<const controls::PictureBox*>(at))
      return static_cast<ControlPeer*>(picture->peer())->window();
    const auto* inner = dynamic_cast<const Control*>(at);
    at = inner ? &inner->parent() : nullptr;
  }
  return window();
}

Shown FormPeer::shown(const Control& control) const {
  Shown result{control.visible(), control.enabled()};
  for (const auto* frame = dynamic_cast<const controls::Frame*>(&control.parent()); frame;
       frame = dynamic_cast<const controls::Frame*>(&frame->parent())) {
    result.visible = result.visible && frame->visible();
    result.enabled = result.enabled && frame->enabled();
  }
  return result;
}

void FormPeer::showAndEnableInside(const Control& control) {
  const auto* frame = dynamic_cast<const controls::Frame*>(&control);
  if (!frame) return;
  for (const Control* child : frame->children()) {
    if (auto* peer = dynamic_cast<ControlPeer*>(child->peer())) peer->showAndEnable();
    showAndEnableInside(*child);
  }
}

void FormPeer::setTip(HWND child, const std::string& tip) {
  if (!tips_ && tip.empty()) return;
  if (!tips_)
    tips_ = OwnedWindow(CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_NOPREFIX, 0,
                                        0, 0, 0, window(), nullptr, GetModuleHandleA(nullptr), nullptr));
  SendMessageA(tips_.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font({})), FALSE);
  std::string text = tip;
  TOOLINFOA tool{};
  tool.cbSize = sizeof(tool);
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = window();
  tool.uId = reinterpret_cast<UINT_PTR>(child);
  tool.lpszText = text.data();
  SendMessageA(tips_.get(), TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  if (!tip.empty()) SendMessageA(tips_.get(), TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
}

void FormPeer::wantFocus(Control& control) { system_.wantFocus(control); }

void FormPeer::hook(std::function<void(std::uintptr_t)> procedure) {
  hook_ = std::move(procedure);
  if (!behindHook_)
    behindHook_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(hookProc)));
}

void FormPeer::unhook() {
  if (behindHook_) SetWindowLongPtrA(window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(behindHook_));
  behindHook_ = nullptr;
}

} // namespace win32
