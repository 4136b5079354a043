// The native side of one control or window: shows the model's state and decides nothing.
#pragma once

namespace controls {

enum class Aspect {
  Geometry, // left, top, width, height
  State,    // a window's normal, minimised or maximised state
  Visible,
  Enabled,
  Text,      // caption, text, panel texts
  Value,     // scroll position, option state, pressed buttons, check marks
  Range,     // limits and steps
  List,      // list entries
  Selection, // chosen list entry
  Font,
  Colours,
  Picture, // what is drawn
  Focus,   // the model gave this control the focus
  Tip,
  Menu, // a menu item's caption, check mark, visibility
};

class Peer {
 public:
  virtual ~Peer() = default;
  virtual void sync(Aspect aspect) = 0;
};

} // namespace controls
