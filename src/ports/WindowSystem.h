// What the control models and the window utilities ask of the native window system.
#pragma once
#include "controls/Geometry.h"
#include "controls/Picture.h"
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace controls {
class Form;
class MenuItem;
} // namespace controls

namespace ports {

class WindowSystem {
 public:
  virtual ~WindowSystem() = default;

  // Makes the native window, hidden, with a peer for it (Form::attachPeer), for every control and every
  // timer, each showing its model's present state.
  virtual void realise(controls::Form& form) = 0;
  virtual void unrealise(controls::Form& form) = 0; // the native window and all its peers go
  virtual controls::Size screenSize() = 0;          // twips
  virtual controls::Size outerSize(const controls::Form& form, controls::Size inner) = 0;
  virtual controls::Size textSize(const controls::Font& font, std::string_view text) = 0;
  virtual std::unique_ptr<controls::Canvas> makeCanvas() = 0;
  virtual void runModal(controls::Form& form) = 0; // Pumps until the window is hidden or unloaded.
  // Shows an item's submenu at the pointer; the choice runs before it returns. Pumps.
  virtual void popupMenu(controls::Form& form, controls::MenuItem& item) = 0;

  virtual void setTopmost(controls::Form& form, bool topmost) = 0;
  // The window's system menu. Items are inserted before Restore; the text "-" is a separator.
  virtual void insertSystemItem(controls::Form& form, unsigned id, std::string_view text) = 0;
  virtual void deleteSystemItem(controls::Form& form, unsigned id) = 0;
  virtual void checkSystemItem(controls::Form& form, unsigned id, bool checked) = 0;
  // Puts a procedure in front of the window's own: it sees wParam of every message, which then goes on
  // unchanged.
  virtual void hook(controls::Form& form, std::function<void(std::uintptr_t wParam)> procedure) = 0;
  virtual void unhook(controls::Form& form) = 0; // harmless when not hooked
  virtual std::intptr_t nativeHandle(controls::Form& form) = 0;
};

inline constexpr std::uintptr_t kSystemClose = 0xF060; // the wParam of the system menu's Close

} // namespace ports
