// The native window system: makes and unmakes the native side of forms, and what the window utilities ask.
#pragma once
#include "controls/Desktop.h"
#include "ports/WindowSystem.h"
#include "win32/Win.h"
#include <map>

namespace win32 {

class WinPump;

class WinWindowSystem : public ports::WindowSystem {
 public:
  WinWindowSystem();
  ~WinWindowSystem() override;
  void setPump(WinPump& pump) { pump_ = &pump; }

  void realise(controls::Form& form) override;
  void unrealise(controls::Form& form) override;
  controls::Size screenSize() override;
  controls::Size outerSize(const controls::Form& form, controls::Size inner) override;
  controls::Size textSize(const controls::Font& font, std::string_view text) override;
  std::unique_ptr<controls::Canvas> makeCanvas() override;
  void runModal(controls::Form& form) override;
  void popupMenu(controls::Form& form, controls::MenuItem& item) override;
  void setTopmost(controls::Form& form, bool topmost) override;
  void insertSystemItem(controls::Form& form, unsigned id, std::string_view text) override;
  void deleteSystemItem(controls::Form& form, unsigned id) override;
  void checkSystemItem(controls::Form& form, unsigned id, bool checked) override;
  void hook(controls::Form& form, std::function<void(std::uintptr_t wParam)> procedure) override;
  void unhook(controls::Form& form) override;
  std::intptr_t nativeHandle(controls::Form& form) override;

  controls::Desktop* desktop() const { return desktop_; } // null until the first form was realised
  void wantFocus(controls::Control& control) { wanted_ = &control; }
  // Carries out the focus moves the program asked for and tells it those the operator made. Called between
  // messages, never inside one.
  void settleFocus();
  bool moveWaits() const; // the program asked for a focus move that has not been carried out
  void endModal(const controls::Form& form); // before a modal window goes: the others can be used again
  HWND activeWindow() const;                 // who owns a dialog; null: none is visible

  // While a window tells its form a new size, windows it shows do not take the activation.
  class Telling {
   public:
    explicit Telling(WinWindowSystem& system) : system_(system) { ++system_.telling_; }
    ~Telling() { --system_.telling_; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;

   private:
    WinWindowSystem& system_;
  };
  bool telling() const { return telling_ > 0; }

 private:
  struct Modal {
    const controls::Form* form;
    bool over;
    std::vector<HWND> disabled;
  };
  HWND handle(const controls::Form& form) const;
  controls::Desktop* desktop_ = nullptr;
  WinPump* pump_ = nullptr;
  controls::Control* wanted_ = nullptr;
  HWND focusTold_ = nullptr;
  std::vector<Modal*> modals_;
  int telling_ = 0;
};

// All other visible windows of this thread refuse input while one is modal. Returns those it disabled.
std::vector<HWND> disableOthers(HWND modal);
void enableAgain(std::vector<HWND>& windows);

} // namespace win32
