#include "win32/WinWindowSystem.h"
#include "controls/RasterCanvas.h"
#include "controls/Timer.h"
#include "win32/FormPeer.h"
#include "win32/MakePeer.h"
#include "win32/WinPump.h"
#include <algorithm>

namespace win32 {

using controls::Form;

WinWindowSystem::WinWindowSystem() {
  INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_BAR_CLASSES | ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
}

WinWindowSystem::~WinWindowSystem() = default;

HWND WinWindowSystem::handle(const Form& form) const {
  const auto* peer = dynamic_cast<const FormPeer*>(form.peer());
  return peer ? peer->window() : nullptr;
}

void WinWindowSystem::realise(Form& form) {
  desktop_ = &form.desktop();
  auto made = std::make_unique<FormPeer>(*this, form);
  FormPeer& peer = *made;
  form.attachPeer(std::move(made));
  peer.build();
}

void WinWindowSystem::unrealise(Form& form) {
  if (!form.peer()) return;
  endModal(form);
  ShowWindow(handle(form), SW_HIDE);
  auto all = stackingOrder(form);
  std::reverse(all.begin(), all.end()); // what lies inside goes before what holds it
  for (controls::Control* control : all) {
    if (wanted_ == control) wanted_ = nullptr;
    control->attachPeer(nullptr);
  }
  for (controls::Timer* timer : form.timers()) timer->attachPeer(nullptr);
  form.attachPeer(nullptr);
}

controls::Size WinWindowSystem::screenSize() {
  return {toTwips(GetSystemMetrics(SM_CXSCREEN), systemDpi()),
          toTwips(GetSystemMetrics(SM_CYSCREEN), systemDpi())};
}

controls::Size WinWindowSystem::outerSize(const Form& form, controls::Size inner) {
  const HWND window = handle(form);
  const int dpi = window ? dpiOf(window) : systemDpi();
  const bool menu =
      std::any_of(form.menuBar.begin(), form.menuBar.end(), [](const auto* i) { return i->visible(); });
  const SIZE pixels = outerPixels({toPixels(inner.width, dpi), toPixels(inner.height, dpi)},
                                  FormPeer::style(form), FormPeer::exStyle(form), menu, dpi);
  return {toTwips(static_cast<int>(pixels.cx), dpi), toTwips(static_cast<int>(pixels.cy), dpi)};
}

controls::Size WinWindowSystem::textSize(const controls::Font& font, std::string_view text) {
  FontCache fonts;
  const SIZE pixels = textPixels(fonts.get(font, systemDpi()), text);
  return {toTwips(static_cast<int>(pixels.cx), systemDpi()),
          toTwips(static_cast<int>(pixels.cy), systemDpi())};
}

std::unique_ptr<controls::Canvas> WinWindowSystem::makeCanvas() {
  return std::make_unique<controls::RasterCanvas>();
}

std::vector<HWND> disableOthers(HWND modal) {
  struct Search {
    HWND modal;
    std::vector<HWND> found;
  } search{modal, {}};
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM data) -> BOOL {
        auto& s = *reinterpret_cast<Search*>(data);
        if (window != s.modal && IsWindowEnabled(window) && FormPeer::of(window)) s.found.push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&search));
  for (HWND window : search.found) EnableWindow(window, FALSE);
  return search.found;
}

void enableAgain(std::vector<HWND>& windows) {
  for (HWND window : windows) EnableWindow(window, TRUE);
  windows.clear();
}

void WinWindowSystem::runModal(Form& form) {
  Modal modal{&form, false, disableOthers(handle(form))};
  modals_.push_back(&modal);
  form.desktop().gesture([&] { // so that the window outlives its own closing
    while (!modal.over && pump_->doEvents() > 0)
      if (!modal.over) pump_->waitForMessage();
  });
  enableAgain(modal.disabled);
  std::erase(modals_, &modal);
}

void WinWindowSystem::endModal(const Form& form) {
  for (Modal* modal : modals_)
    if (modal->form == &form) {
      modal->over = true;
      enableAgain(modal->disabled);
    }
}

void WinWindowSystem::popupMenu(Form& form, controls::MenuItem& item) {
  auto* peer = dynamic_cast<FormPeer*>(form.peer());
  if (!peer) return;
  FormMenu menu(form);
  if (controls::MenuItem* chosen = menu.choose(peer->window(), item)) chosen->click();
}

void WinWindowSystem::setTopmost(Form& form, bool topmost) {
  HWND window = handle(form), place = topmost ? HWND_TOPMOST : HWND_NOTOPMOST;
  SetWindowPos(window, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  const bool done = ((GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0) == topmost;
  if (done) return;
  // Wine puts a window next to its owner or its own windows, wherever these are: they let go for a moment.
  std::vector<std::pair<HWND, HWND>> owners;
  for (Form* const each : form.desktop().forms())
    if (HWND owner = GetWindow(handle(*each), GW_OWNER)) owners.emplace_back(handle(*each), owner);
  for (const auto& [owned, owner] : owners) SetWindowLongPtrA(owned, GWLP_HWNDPARENT, 0);
  SetWindowPos(window, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  for (const auto& [owned, owner] : owners)
    SetWindowLongPtrA(owned, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
}

void WinWindowSystem::insertSystemItem(Form& form, unsigned id, std::string_view text) {
  HMENU menu = GetSystemMenu(handle(form), FALSE);
  const UINT kind = text == "-" ? MF_SEPARATOR : MF_STRING;
  InsertMenuA(menu, SC_RESTORE, MF_BYCOMMAND | kind, id, std::string(text).c_str());
}

void WinWindowSystem::deleteSystemItem(Form& form, unsigned id) {
  DeleteMenu(GetSystemMenu(handle(form), FALSE), id, MF_BYCOMMAND);
}

void WinWindowSystem::checkSystemItem(Form& form, unsigned id, bool checked) {
  CheckMenuItem(GetSystemMenu(handle(form), FALSE), id, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void WinWindowSystem::hook(Form& form, std::function<void(std::uintptr_t)> procedure) {
  if (auto* peer = dynamic_cast<FormPeer*>(form.peer())) peer->hook(std::move(procedure));
}

void WinWindowSystem::unhook(Form& form) {
  if (auto* peer = dynamic_cast<FormPeer*>(form.peer())) peer->unhook();
}

std::intptr_t WinWindowSystem::nativeHandle(Form& form) {
  return reinterpret_cast<std::intptr_t>(handle(form));
}

HWND WinWindowSystem::activeWindow() const {
  HWND active = GetActiveWindow();
  if (active && FormPeer::of(active) && IsWindowVisible(active)) return active;
  if (!desktop_) return nullptr;
  for (const Form* form : desktop_->forms())
    if (form->visible()) return handle(*form);
  return nullptr;
}

bool WinWindowSystem::moveWaits() const {
  if (wanted_) return true;
  return desktop_ && desktop_->focus().target() && desktop_->focus().current() != desktop_->focus().target();
}

void WinWindowSystem::settleFocus() {
  if (!desktop_) return;
  HWND focus = GetFocus();
  if (focus != focusTold_) {
    focusTold_ = focus;
    FormPeer* form = FormPeer::of(focus);
    ControlPeer* peer = form ? form->peerOf(focus) : nullptr;
    if (peer) {
      form->rememberFocus(focus);
      peer->control().userFocus();
    }
  }
  desktop_->focus().deliver();
  if (!wanted_) return;
  controls::Control* control = std::exchange(wanted_, nullptr);
  auto* peer = dynamic_cast<ControlPeer*>(control->peer());
  if (!peer || !control->canTakeFocus()) return;
  HWND now = GetFocus();
  if (now == peer->window() || IsChild(peer->window(), now)) return;
  SetFocus(peer->window());
  focusTold_ = GetFocus();
  if (FormPeer* form = FormPeer::of(focusTold_)) form->rememberFocus(focusTold_);
}

} // namespace win32
