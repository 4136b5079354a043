// The controls that hold a number or a choice: scroll bar, up-down, option button, combo box, toolbar.
#pragma once
#include "controls/Control.h"
#include <cstdint>

namespace controls {

enum class Direction { Horizontal, Vertical };

// A scroll bar from min (left or top end) to max (right or bottom end); min may be the larger one.
class ScrollBar : public Control {
 public:
  ScrollBar(Container& parent, std::string name, Direction direction)
      : Control(parent, Kind::ScrollBar, std::move(name)), direction_(direction) {}
  Direction direction() const { return direction_; }
  int minimum() const { return min_; }
  int maximum() const { return max_; }
  int smallChange() const { return small_; }
  int largeChange() const { return large_; }
  void setRange(int minimum, int maximum, int smallChange, int largeChange);

  int value() const { return value_; }
  void setValue(
      int value); // outside the range: invalid value (380), nothing stored. Raises Change when it changes.
  base::Event<> Change; // the value was changed
  base::Event<> Scroll; // the thumb is being dragged over a value

  void drag(int value);   // gesture: the thumb over a value, button still down (clamped to the range)
  void release();         // gesture: the thumb let go
  void stepTo(int value); // gesture: an arrow, the trough or a key (clamped to the range)
  bool dragging() const { return dragging_; }

 private:
  int clamped(int value) const;
  Direction direction_;
  int min_ = 0, max_ = 32767, small_ = 1, large_ = 1, value_ = 0;
  int reported_ = 0; // the value the last Change told
  bool dragging_ = false;
};

// An up-down from lower (its down end) to upper (its up end); lower may be the larger one.
class UpDown : public Control {
 public:
  UpDown(Container& parent, std::string name) : Control(parent, Kind::UpDown, std::move(name)) {}
  int lower() const { return lower_; }
  int upper() const { return upper_; }
  int increment() const { return increment_; }
  void setRange(int lower, int upper, int increment);
  int value() const { return value_; }
  void setValue(int value); // clamped; raises Change when it changes
  base::Event<> Change;
  void stepUp();   // gesture: one increment towards upper
  void stepDown(); // gesture: one increment towards lower
  Control* buddy = nullptr;

 private:
  void step(int towards);
  int lower_ = 0, upper_ = 100, increment_ = 1, value_ = 0;
};

// One of the option buttons of a container; choosing one clears its siblings.
class OptionButton : public Control {
 public:
  OptionButton(Container& parent, std::string name, int index)
      : Control(parent, Kind::OptionButton, std::move(name), index) {}
  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);
  bool value() const { return value_; }
  void setValue(bool value); // choosing raises Click, as the operator's choice does, when it changes
  base::Event<> Click;
  void choose(); // gesture

 private:
  std::string caption_;
  bool value_ = false;
};

enum class ComboStyle { List, Editable };

class ComboBox : public Control {
 public:
  ComboBox(Container& parent, std::string name, ComboStyle style)
      : Control(parent, Kind::ComboBox, std::move(name)), style_(style) {}
  ComboStyle style() const { return style_; }
  const std::vector<std::string>& items() const { return items_; }
  void clear(); // entries, text and choice
  void addItem(const std::string& item);
  int listIndex() const { return listIndex_; } // -1: none chosen
  void setListIndex(int index); // outside the list: invalid value (380). Raises Click when it changes.
  const std::string& text() const { return text_; }
  void
  setText(const std::string& text); // shows a text; chooses no entry, raises Change when the text changes
  base::Event<> Click, Change;
  void choose(int index);             // gesture: an entry of the list; raises Click even for the present one
  void type(const std::string& text); // gesture, Editable only
  bool pressEnter() { return userKeyPress(13); }

 private:
  ComboStyle style_;
  std::vector<std::string> items_;
  int listIndex_ = -1;
  std::string text_;
};

// Buttons of one group: exactly the last pressed one is down. Numbers count from 1.
class Toolbar : public Control {
 public:
  struct Item {
    std::string key, caption, tip;
  };
  Toolbar(Container& parent, std::string name, std::vector<Item> items)
      : Control(parent, Kind::Toolbar, std::move(name)), items_(std::move(items)) {}
  int count() const { return static_cast<int>(items_.size()); }
  const Item& item(int number) const { return items_.at(static_cast<std::size_t>(number - 1)); }
  int pressed() const { return pressed_; } // 0: none
  bool isPressed(int number) const { return pressed_ == number; }
  void press(int number);            // property: the pressed state only, never raises ButtonClick
  base::Event<int> ButtonClick;      // number
  base::Event<float> MouseMove;      // x in twips from the toolbar's left edge
  void click(int number);            // gesture: presses and raises ButtonClick
  void userMouseMove(float x);       // gesture
  float itemWidth(int number) const; // twips, as the peer last told it
  std::vector<float> itemWidths;

 private:
  std::vector<Item> items_;
  int pressed_ = 0;
};

} // namespace controls
