// All loaded windows of one program, the keyboard focus among them, and the boundary where an operator's
// gesture ends.
#pragma once
#include "base/RuntimeError.h"
#include "controls/Geometry.h"
#include <functional>
#include <memory>
#include <vector>

namespace ports {
class WindowSystem;
}

namespace controls {

class Control;
class Form;

// Which control has the focus. A move is told by the pump: LostFocus to the old control, then GotFocus to the
// new one. A LostFocus handler refuses the move by setting the focus to its own control; the new one never
// hears of it.
class Focus {
 public:
  Control* current() const { return current_; } // as the program has been told
  Control* target() const { return target_; }   // where the focus is going
  void moveTo(Control& control);
  void forget(const Control& control); // a control that goes away, without events
  void deliver();                      // Pumps nothing itself; handlers run inside.

 private:
  Control* current_ = nullptr;
  Control* target_ = nullptr;
  bool delivering_ = false;
};

class Desktop {
 public:
  using Report = std::function<void(const base::RuntimeError&)>;
  Desktop(ports::WindowSystem& windows, Report report);
  ~Desktop();
  ports::WindowSystem& windows() const { return windows_; }
  Focus& focus() { return focus_; }
  const std::vector<Form*>& forms() const { return forms_; } // loaded ones, oldest first
  int loadedForms() const { return static_cast<int>(forms_.size()); }

  // Runs what a gesture, a timer or a focus move causes. A run-time error ends the gesture and is reported.
  template <class F> void gesture(F&& f) {
    Depth depth(depth_);
    try {
      f();
    } catch (const base::RuntimeError& error) {
      report_(error);
    }
  }

  // Runs f; windows unloaded meanwhile are not destroyed before it ends. Errors pass through.
  template <class F> void keepingWindows(F&& f) {
    Depth depth(depth_);
    f();
  }

  void add(Form& form);
  void remove(Form& form);
  void bury(std::unique_ptr<Form> form); // destroyed once no gesture is running
  void emptyGraveyard();                 // the pump calls it between messages
  bool graveyardEmpty() const { return graveyard_.empty(); }

 private:
  struct Depth {
    explicit Depth(int& d) : depth(d) { ++depth; }
    ~Depth() { --depth; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
    int& depth;
  };
  ports::WindowSystem& windows_;
  Report report_;
  Focus focus_;
  std::vector<Form*> forms_;
  std::vector<std::unique_ptr<Form>> graveyard_;
  int depth_ = 0;
};

} // namespace controls
