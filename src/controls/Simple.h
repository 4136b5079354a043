// The controls that need little more than a text: label, frame, button, text box, status bar.
#pragma once
#include "controls/Control.h"

namespace controls {

class Label : public Control {
 public:
  Label(Container& parent, std::string name, int index = -1)
      : Control(parent, Kind::Label, std::move(name), index) {}
  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);
  bool opaque() const { return opaque_; }
  void setOpaque(bool v);
  Colour foreColour() const { return foreColour_; }
  void setForeColour(Colour c);
  bool themed() const { return themed_; } // system colours instead of foreColour
  Size textSize() const;                  // of the caption in the label's font, twips
  void fitText();                         // width and height become textSize()

 private:
  std::string caption_;
  bool opaque_ = false, themed_ = true;
  Colour foreColour_ = 0;
};

class Frame : public Control, public Container {
 public:
  Frame(Container& parent, std::string name)
      : Control(parent, Kind::Frame, std::move(name)), Container(parent.containerForm()) {}
  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);

 private:
  std::string caption_;
};

class Button : public Control {
 public:
  Button(Container& parent, std::string name) : Control(parent, Kind::Button, std::move(name)) {}
  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption);
  bool isDefault = false, isCancel = false; // Enter and Escape press it
  base::Event<> Click;
  void click(); // gesture

 private:
  std::string caption_;
};

class TextBox : public Control {
 public:
  TextBox(Container& parent, std::string name) : Control(parent, Kind::TextBox, std::move(name)) {}
  const std::string& text() const { return text_; }
  void setText(const std::string& text); // raises Change when the text changes
  base::Event<> Change;
  void type(const std::string& text); // gesture: the whole text as the operator left it
  bool pressEnter() { return userKeyPress(13); }

 private:
  std::string text_;
};

class StatusBar : public Control {
 public:
  StatusBar(Container& parent, std::string name, std::vector<std::string> texts)
      : Control(parent, Kind::StatusBar, std::move(name)), texts_(std::move(texts)) {}
  int panels() const { return static_cast<int>(texts_.size()); }
  const std::string& text(int panel) const {
    return texts_.at(static_cast<std::size_t>(panel - 1));
  } // from 1
  void setText(int panel, const std::string& text);
  std::vector<float> panelWidths; // twips; the last panel takes the rest
  int changedPanel() const { return changedPanel_; }

 private:
  std::vector<std::string> texts_;
  int changedPanel_ = 0;
};

} // namespace controls
