// One native window: made, laid out and destroyed for one form. Its window procedure reflects the children's
// notifications to their peers and turns the window's own messages into the form's gestures.
#pragma once
#include "controls/Form.h"
#include "controls/Picture.h"
#include "win32/ControlPeer.h"
#include "win32/FormMenu.h"
#include <functional>
#include <unordered_map>

namespace win32 {

class WinWindowSystem;

struct Shown {
  bool visible, enabled;
};

class FormPeer : public controls::Peer {
 public:
  FormPeer(WinWindowSystem& system, controls::Form& form);
  ~FormPeer() override;
  FormPeer(const FormPeer&) = delete;
  FormPeer& operator=(const FormPeer&) = delete;

  static FormPeer* of(HWND window); // of the form's window or any window inside; null: none of ours
  static ATOM windowClass();
  static DWORD style(const controls::Form& form);
  static DWORD exStyle(const controls::Form& form);

  void build(); // the native window, hidden, and everything in it
  void sync(controls::Aspect aspect) override;

  controls::Form& form() const { return form_; }
  HWND window() const { return window_.get(); }
  int dpi() const { return dpi_; }
  HFONT font(const controls::Font& font) { return fonts_.get(font, dpi_); }
  HBRUSH background() const { return GetSysColorBrush(COLOR_BTNFACE); }

  // For the peers inside.
  void add(HWND child, ControlPeer& peer) { peers_[child] = &peer; }
  void remove(HWND child);
  ControlPeer* peerOf(HWND child) const; // also of a window inside a control, such as a combo box's edit
  RECT pixelRect(const controls::Control& control) const;
  HWND parentWindow(const controls::Control& control) const;
  HMENU nextChildId() { return reinterpret_cast<HMENU>(static_cast<std::intptr_t>(++lastId_)); }
  Shown shown(const controls::Control& control) const;
  void showAndEnableInside(const controls::Control& control);
  void setTip(HWND child, const std::string& tip);
  void wantFocus(controls::Control& control);
  LRESULT reflect(UINT message, WPARAM wParam, LPARAM lParam, bool& done); // notifications of children

  void rememberFocus(HWND child) { lastFocus_ = child; }
  void hook(std::function<void(std::uintptr_t)> procedure);
  void unhook();

 private:
  static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK hookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
  void makeControls();
  void place();
  void pushState();
  void pushVisible();
  void report(); // a new place, size or state, to the form
  void densityChanged(int dpi, const RECT& suggested);
  void restoreFocus();
  void placeDocked();

  WinWindowSystem& system_;
  controls::Form& form_;
  FontCache fonts_;
  OwnedWindow window_;
  FormMenu menu_;
  OwnedWindow tips_;
  std::unordered_map<HWND, ControlPeer*> peers_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  int dpi_, lastId_ = 100, writing_ = 0;
  RECT placed_{};    // the outer pixels last written or told
  SIZE innerTold_{}; // the inner pixels last told
  controls::WindowState stateTold_ = controls::WindowState::Normal;
  bool everShown_ = false; // a window that was never shown tells no sizes
  HWND lastFocus_ = nullptr;
  std::function<void(std::uintptr_t)> hook_;
  WNDPROC behindHook_ = nullptr;
};

} // namespace win32
