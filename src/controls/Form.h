// A window: its controls, menu and timers, its life from load to unload, and the events of the window itself.
#pragma once
#include "controls/Control.h"
#include "controls/Menu.h"
#include <cstdint>
#include <functional>

namespace controls {

class Timer;

enum class WindowState : std::int16_t { Normal = 0, Minimised = 1, Maximised = 2 };
enum class Modality { Modeless, Modal };

struct FormStyle {
  bool resizable = false;    // sizing border, minimise and maximise box
  bool toolWindow = false;   // small caption, not in the task bar
  const char* iconName = ""; // resource name of its icon
  bool standsAlone = false;  // stays on the screen when the main window is minimised
};

class Form : public Container {
 public:
  Form(Desktop& desktop, std::string name, FormStyle style = {});
  ~Form() override;
  Desktop& desktop() const { return desktop_; }
  const std::string& name() const { return name_; }
  const FormStyle& style() const { return style_; }

  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);
  // The outer rectangle, twips on the screen, of the normal state.
  const Rect& rect() const { return rect_; }
  float left() const { return rect_.left; }
  float top() const { return rect_.top; }
  float width() const { return rect_.width; }
  float height() const { return rect_.height; }
  void move(const Rect& rect);
  void setLeft(float v) { move({v, rect_.top, rect_.width, rect_.height}); }
  void setTop(float v) { move({rect_.left, v, rect_.width, rect_.height}); }
  void setWidth(float v) { move({rect_.left, rect_.top, v, rect_.height}); }
  void setHeight(float v) { move({rect_.left, rect_.top, rect_.width, v}); }
  float innerWidth() const { return inner_.width; } // inside border, caption and menu bar
  float innerHeight() const { return inner_.height; }
  void setInnerSize(Size inner); // design time: sizes the window so that the inside has this size
  void centreOnScreen();
  WindowState windowState() const { return state_; }
  void setWindowState(WindowState state);

  bool visible() const { return visible_; }
  void show(Modality modality = Modality::Modeless); // Modal pumps until the window is unloaded or hidden
  void hide();
  bool isModal() const { return modal_; }
  bool loaded() const { return life_ == Life::Loaded; }
  void load();   // realises the native window and runs Form_Load; a failing Form_Load unloads it again
  void unload(); // Form_QueryUnload, Form_Unload, then the native window goes; the object lives until the
                 // pump is idle

  std::vector<MenuItem*> menuBar;
  const std::vector<Timer*>& timers() const { return timers_; }
  MenuItem* menuByCommand(int commandId) const;
  Control* control(const std::string& name, int index = -1) const; // null: none of that name
  std::vector<Control*> tabOrder() const; // reachable or not, in the order of the Tab key

  // Gestures.
  void userResized(const Rect& outer, Size inner,
                   WindowState state);      // the window has a new place, size or state
  void userClose();                         // the close box
  bool userKeyDown(int keyCode, int shift); // true: the program swallowed the key
  void userKeyUp(int keyCode, int shift);
  bool userAccelerator(const std::string& shortcut); // "Ctrl+R"; true when a menu item has it

  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  virtual void Form_QueryUnload() {}
  virtual void Form_Unload() {}
  virtual void Form_KeyDown(std::int16_t& /*keyCode*/, std::int16_t /*shift*/) {}
  virtual void Form_KeyUp(std::int16_t /*keyCode*/, std::int16_t /*shift*/) {}

  void attachPeer(std::unique_ptr<Peer> peer) { peer_ = std::move(peer); }
  Peer* peer() const { return peer_.get(); }
  void menuChanged(MenuItem& item);
  MenuItem* changedItem() const { return changedItem_; } // which item the last Aspect::Menu was about
  std::function<void()> onUnloaded;                      // the owner lets go

 protected:
  void changed(Aspect aspect) {
    if (peer_) peer_->sync(aspect);
  }

 private:
  friend class Timer;
  friend class MenuArray;
  enum class Life { Created, Loaded, Unloading, Gone };
  Desktop& desktop_;
  std::string name_;
  FormStyle style_;
  std::string caption_;
  Rect rect_;
  Size inner_;
  WindowState state_ = WindowState::Normal,
              toldState_ = WindowState::Normal; // as set, as the window last told
  bool visible_ = false, modal_ = false, sized_ = false;
  Life life_ = Life::Created;
  std::vector<Timer*> timers_;
  std::vector<MenuItem*> commands_;
  MenuItem* changedItem_ = nullptr;
  std::unique_ptr<Peer> peer_;
};

// Holds one window of the program: loads it on first touch, keeps nothing once it is unloaded.
template <class F, class Owner> class FormSlot {
 public:
  explicit FormSlot(Owner& owner) : owner_(owner) {}
  F* operator->() { return &get(); }
  F& get() {
    if (!form_) load();
    return static_cast<F&>(*form_);
  }
  F* ifLoaded() { return static_cast<F*>(form_.get()); }
  bool loaded() const { return form_ != nullptr; }
  void unload() {
    if (form_) form_->unload();
  }

 private:
  void load();
  Owner& owner_;
  std::unique_ptr<Form> form_; // an F, which need not be known where the slot is declared
};

} // namespace controls

#include "controls/Desktop.h"

namespace controls {

template <class F, class Owner> void FormSlot<F, Owner>::load() {
  form_ = std::make_unique<F>(owner_);
  form_->onUnloaded = [this] { form_->desktop().bury(std::move(form_)); };
  form_->load();
}

} // namespace controls
