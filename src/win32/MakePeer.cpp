#include "win32/MakePeer.h"
#include "win32/Peers.h"
#include <algorithm>
#include <climits>

namespace win32 {

using controls::Container;
using controls::Control;
using controls::Kind;

std::unique_ptr<controls::Peer> makePeer(FormPeer& form, Control& control) {
  switch (control.kind()) {
  case Kind::Label: {
    auto& label = static_cast<controls::Label&>(control);
    const bool drawn = dynamic_cast<controls::PictureBox*>(&control.parent()) != nullptr;
    return drawn ? makePictureLabelPeer(label) : makeLabelPeer(form, label);
  }
  case Kind::Frame:
    return makeFramePeer(form, static_cast<controls::Frame&>(control));
  case Kind::Button:
    return makeButtonPeer(form, static_cast<controls::Button&>(control));
  case Kind::TextBox:
    return makeTextPeer(form, static_cast<controls::TextBox&>(control));
  case Kind::ScrollBar:
    return makeScrollPeer(form, static_cast<controls::ScrollBar&>(control));
  case Kind::ComboBox:
    return makeComboPeer(form, static_cast<controls::ComboBox&>(control));
  case Kind::OptionButton:
    return makeOptionPeer(form, static_cast<controls::OptionButton&>(control));
  case Kind::UpDown:
    return makeUpDownPeer(form, static_cast<controls::UpDown&>(control));
  case Kind::PictureBox:
    return makePicturePeer(form, static_cast<controls::PictureBox&>(control));
  case Kind::Toolbar:
    return makeToolbarPeer(form, static_cast<controls::Toolbar&>(control));
  case Kind::StatusBar:
    return makeStatusPeer(form, static_cast<controls::StatusBar&>(control));
  }
  return nullptr;
}

namespace {
// Labels wait for the control that follows them; a control without a tab stop stays behind the one before it.
struct Group {
  int key;
  std::vector<Control*> controls;
};

int firstTabStop(const Control& control) {
  int first = control.tabIndex() < 0 ? INT_MAX : control.tabIndex();
  if (const auto* inner = dynamic_cast<const Container*>(&control))
    for (const Control* child : inner->children()) first = std::min(first, firstTabStop(*child));
  return first;
}

void collect(const Container& container, std::vector<Control*>& all) {
  std::vector<Group> groups;
  std::vector<Control*> labels;
  int key = -1;
  for (Control* child : container.children()) {
    labels.push_back(child);
    if (child->kind() == Kind::Label) continue;
    if (const int first = firstTabStop(*child); first != INT_MAX) key = first;
    groups.push_back({key, std::exchange(labels, {})});
  }
  std::stable_sort(groups.begin(), groups.end(),
                   [](const Group& a, const Group& b) { return a.key < b.key; });
  if (!labels.empty()) groups.push_back({INT_MAX, labels});
  for (const Group& group : groups)
    for (Control* control : group.controls) {
      all.push_back(control);
      if (const auto* inner = dynamic_cast<const Container*>(control)) collect(*inner, all);
    }
}
} // namespace

std::vector<Control*> stackingOrder(const controls::Form& form) {
  std::vector<Control*> all;
  collect(form, all);
  return all;
}

} // namespace win32
