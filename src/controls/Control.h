// What all controls have in common: a place in a container, visibility, focus, a native peer.
// Three doors, never mixed: properties (the program), gestures (a peer or a test, what the operator did), and
// the peer.
#pragma once
#include "base/Event.h"
#include "controls/Geometry.h"
#include "controls/Peer.h"
#include <memory>
#include <string>
#include <vector>

namespace controls {

class Control;
class Desktop;
class Form;

// Holds controls: a form, a frame or a picture box.
class Container {
 public:
  explicit Container(Form& form) : containerForm_(form) {}
  virtual ~Container() = default;
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;
  Form& containerForm() const { return containerForm_; }
  const std::vector<Control*>& children() const { return children_; }

 private:
  friend class Control;
  Form& containerForm_;
  std::vector<Control*> children_;
};

enum class Kind {
  Label,
  TextBox,
  ScrollBar,
  ComboBox,
  OptionButton,
  UpDown,
  PictureBox,
  Toolbar,
  StatusBar,
  Frame,
  Button,
};

class Control {
 public:
  // index: the element's number in a control array, -1 for a control of its own.
  Control(Container& parent, Kind kind, std::string name, int index = -1);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Kind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  int index() const { return index_; }
  Form& form() const { return parent_.containerForm(); }
  Container& parent() const { return parent_; }
  Desktop& desktop() const;

  const Rect& rect() const { return rect_; }
  void move(const Rect& rect);
  float left() const { return rect_.left; }
  float top() const { return rect_.top; }
  float width() const { return rect_.width; }
  float height() const { return rect_.height; }
  void setLeft(float v) { move({v, rect_.top, rect_.width, rect_.height}); }
  void setTop(float v) { move({rect_.left, v, rect_.width, rect_.height}); }
  void setWidth(float v) { move({rect_.left, rect_.top, v, rect_.height}); }
  void setHeight(float v) { move({rect_.left, rect_.top, rect_.width, v}); }

  bool visible() const { return visible_; }
  void setVisible(bool v);
  bool enabled() const { return enabled_; }
  void setEnabled(bool v);
  const Font& font() const { return font_; }
  void setFont(const Font& font);
  const std::string& tip() const { return tip_; }
  void setTip(const std::string& tip);
  // What a screen reader says when no label stands before the control.
  const std::string& accessibleName() const { return accessibleName_; }
  void setAccessibleName(std::string name) { accessibleName_ = std::move(name); }
  // -1: the keyboard does not stop here. Otherwise the order of the Tab key in the window.
  int tabIndex() const { return tabIndex_; }
  void setTabIndex(int v) { tabIndex_ = v; }

  // Asks for the focus; LostFocus and GotFocus follow from the pump. Ignored while the control cannot take
  // it.
  void setFocus();
  bool hasFocus() const;
  bool canTakeFocus() const; // visible and enabled, in a visible, not minimised window
  base::Event<> GotFocus, LostFocus;

  // Gestures.
  void userFocus();           // the operator clicked into or tabbed to the control
  bool userKeyPress(int key); // a character; true when the program swallowed it
  base::Event<int&> KeyPress; // the handler sets the character to 0 to swallow it

  void attachPeer(std::unique_ptr<Peer> peer) { peer_ = std::move(peer); }
  Peer* peer() const { return peer_.get(); }
  bool reachable() const; // an operator can act on it: visible and enabled, itself and its containers

 protected:
  void changed(Aspect aspect) {
    if (peer_) peer_->sync(aspect);
  }
  virtual void moved() {} // after the size or place changed

 private:
  Container& parent_;
  Kind kind_;
  std::string name_;
  int index_;
  Rect rect_;
  bool visible_ = true, enabled_ = true;
  Font font_;
  std::string tip_, accessibleName_;
  int tabIndex_ = -1;
  std::unique_ptr<Peer> peer_;
};

} // namespace controls
