// What all native controls have in common. A derived peer pushes its model's state and turns notifications
// into one gesture each; it never calls the program.
//   While a peer writes natively it ignores native notifications. While a gesture of its own runs, the
//   model's value is not echoed (else typing "10" gives "01"); afterwards the peer compares and writes what
//   differs.
#pragma once
#include "controls/Control.h"
#include "win32/Dpi.h"
#include <memory>
#include <string>

namespace win32 {

class FormPeer;

std::string windowText(HWND window);
void setWindowText(HWND window, const std::string& text); // writes only what differs

class ControlPeer : public controls::Peer {
 public:
  ControlPeer(FormPeer& form, controls::Control& control);
  ~ControlPeer() override;
  ControlPeer(const ControlPeer&) = delete;
  ControlPeer& operator=(const ControlPeer&) = delete;

  void sync(controls::Aspect aspect) final;
  HWND window() const { return window_.get(); }
  controls::Control& control() const { return control_; }

  void pushAll();               // the whole model, after creation
  virtual void place();         // at the model's place, in pixels of the window's monitor
  virtual void densityChanged() // new DPI: fonts and images too
  {
    pushFont();
    place();
  }
  void showAndEnable(); // as the model and the frames around it say
  virtual void onCommand(WPARAM /*wParam*/) {}
  virtual LRESULT onNotify(NMHDR& /*header*/) { return 0; }
  virtual void onScroll(int /*code*/, int /*position*/) {}
  virtual HBRUSH colours(HDC /*dc*/) { return nullptr; } // null: the window's own

 protected:
  virtual void push(controls::Aspect aspect) = 0; // the control's own aspects
  virtual void pushTip();
  // Whether values wait for the end of the peer's own gesture. Not where writing them again cannot disturb
  // the operator.
  virtual bool valuesWait() const { return true; }
  virtual void compare() {} // writes values that differ from the model
  void create(const char* windowClass, const char* text, DWORD style, DWORD exStyle = 0);
  void pushFont();
  bool writing() const { return writing_ > 0; }
  FormPeer& form() const { return form_; }
  int dpi() const;

  // Runs one gesture on the model. The control may be gone when it returns.
  template <class F> void gesture(F&& f) {
    if (writing_ > 0) return;
    std::weak_ptr<char> alive = alive_;
    ++gestures_;
    f();
    if (alive.expired()) return;
    if (--gestures_ == 0) writeWith([this] { compare(); });
  }
  template <class F> void writeWith(F&& f) {
    std::weak_ptr<char> alive = alive_;
    ++writing_;
    f();
    if (!alive.expired()) --writing_;
  }

 private:
  void name(); // for a screen reader
  FormPeer& form_;
  controls::Control& control_;
  OwnedWindow window_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
  int writing_ = 0, gestures_ = 0;
  bool named_ = false;
};

} // namespace win32
