#include "controls/Form.h"
#include "controls/Timer.h"
#include "ports/WindowSystem.h"
#include <algorithm>

namespace controls {

Form::Form(Desktop& desktop, std::string name, FormStyle style)
    : Container(static_cast<Form&>(*this)), desktop_(desktop), name_(std::move(name)), style_(style) {}

Form::~Form() {
  if (life_ != Life::Loaded && life_ != Life::Unloading) return;
  desktop_.remove(*this);
  desktop_.windows().unrealise(*this);
}

void Form::setCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  changed(Aspect::Text);
}

void Form::move(const Rect& rect) {
  if (rect_ == rect) return;
  rect_ = rect;
  changed(Aspect::Geometry);
}

void Form::setInnerSize(Size inner) {
  inner_ = inner;
  const Size outer = desktop_.windows().outerSize(*this, inner);
  move({rect_.left, rect_.top, outer.width, outer.height});
}

void Form::centreOnScreen() {
  const Size screen = desktop_.windows().screenSize();
  move({(screen.width - rect_.width) / 2, (screen.height - rect_.height) / 2, rect_.width, rect_.height});
}

void Form::setWindowState(WindowState state) {
  if (state_ == state) return;
  state_ = state;
  changed(Aspect::State);
}

void Form::show(Modality modality) {
  if (!visible_) {
    visible_ = true;
    changed(Aspect::Visible);
  }
  if (modality == Modality::Modeless) return;
  modal_ = true;
  desktop_.keepingWindows([this] {
    desktop_.windows().runModal(*this);
    modal_ = false;
  });
}

void Form::hide() {
  if (!visible_) return;
  visible_ = false;
  changed(Aspect::Visible);
}

void Form::load() {
  life_ = Life::Loaded;
  desktop_.add(*this);
  desktop_.windows().realise(*this);
  try {
    Form_Load();
  } catch (const base::RuntimeError&) {
    life_ = Life::Gone;
    desktop_.remove(*this);
    desktop_.windows().unrealise(*this);
    if (auto owner = std::move(onUnloaded)) owner();
    throw;
  }
}

void Form::unload() {
  if (life_ != Life::Loaded) return;
  life_ = Life::Unloading;
  try {
    Form_QueryUnload();
    Form_Unload();
  } catch (...) {
    life_ = Life::Loaded;
    throw;
  }
  life_ = Life::Gone;
  visible_ = false;
  desktop_.remove(*this);
  desktop_.windows().unrealise(*this);
  if (auto owner = std::move(onUnloaded)) owner();
}

MenuItem* Form::menuByCommand(int commandId) const {
  const auto i = static_cast<std::size_t>(commandId - 1001);
  return commandId > 1000 && i < commands_.size() ? commands_[i] : nullptr;
}

namespace {
void collect(const Container& container, std::vector<Control*>& all) {
  for (Control* child : container.children()) {
    all.push_back(child);
    if (const auto* inner = dynamic_cast<const Container*>(child)) collect(*inner, all);
  }
}
} // namespace

Control* Form::control(const std::string& name, int index) const {
  std::vector<Control*> all;
  collect(*this, all);
  for (Control* c : all)
    if (c->name() == name && (index == c->index() || index < 0)) return c;
  return nullptr;
}

std::vector<Control*> Form::tabOrder() const {
  std::vector<Control*> all;
  collect(*this, all);
  std::erase_if(all, [](const Control* c) { return c->tabIndex() < 0; });
  std::stable_sort(all.begin(), all.end(),
                   [](const Control* a, const Control* b) { return a->tabIndex() < b->tabIndex(); });
  return all;
}

void Form::userResized(const Rect& outer, Size inner, WindowState state) {
  const bool resized =
      !sized_ || state != toldState_ || inner.width != inner_.width || inner.height != inner_.height;
  if (state == WindowState::Normal) rect_ = outer;
  if (state != WindowState::Minimised) inner_ = inner;
  state_ = toldState_ = state;
  sized_ = true;
  if (resized) desktop_.gesture([&] { Form_Resize(); });
}

void Form::userClose() {
  desktop_.gesture([&] { unload(); });
}

bool Form::userKeyDown(int keyCode, int shift) {
  auto code = static_cast<std::int16_t>(keyCode);
  desktop_.gesture([&] { Form_KeyDown(code, static_cast<std::int16_t>(shift)); });
  return code == 0;
}

void Form::userKeyUp(int keyCode, int shift) {
  desktop_.gesture([&] { Form_KeyUp(static_cast<std::int16_t>(keyCode), static_cast<std::int16_t>(shift)); });
}

bool Form::userAccelerator(const std::string& shortcut) {
  for (MenuItem* item : commands_)
    if (item->shortcut() == shortcut && item->visible() && item->enabled()) {
      item->click();
      return true;
    }
  return false;
}

void Form::menuChanged(MenuItem& item) {
  changedItem_ = &item;
  changed(Aspect::Menu);
}

} // namespace controls
