#include "headless/Operator.h"
#include "base/Text.h"
#include <algorithm>
#include <cctype>

namespace headless {

using controls::Control;
using controls::Form;
using controls::MenuItem;

namespace {

std::string plain(const std::string& caption) {
  std::string text = base::replaceAll(caption, "&", "");
  while (!text.empty() && text.back() == '.') text.pop_back();
  return base::trimBlanks(text);
}

std::vector<std::string> split(const std::string& path) {
  // "Display (Amplitude/Offset)" is one caption: a slash inside brackets does not part.
  std::vector<std::string> parts(1);
  int depth = 0;
  for (const char c : path) {
    depth += c == '(' ? 1 : c == ')' ? -1 : 0;
    if (c == '/' && depth == 0)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

MenuItem* among(const std::vector<MenuItem*>& items, const std::string& caption) {
  for (MenuItem* item : items)
    if (item->visible() && !item->separator() && plain(item->caption()) == plain(caption)) return item;
  return nullptr;
}

void collectAll(const controls::Container& container, std::vector<Control*>& all) {
  for (Control* child : container.children()) {
    all.push_back(child);
    if (const auto* inner = dynamic_cast<const controls::Container*>(child)) collectAll(*inner, all);
  }
}

bool shown(const Form& form) {
  return form.visible() && form.windowState() != controls::WindowState::Minimised;
}

} // namespace

int keyCode(const std::string& name) {
  static constexpr struct {
    const char* name;
    int code;
  } kKeys[] = {{"Tab", keys::Tab},
               {"Enter", keys::Enter},
               {"Alt", keys::Alt},
               {"Escape", keys::Escape},
               {"PageUp", keys::PageUp},
               {"PageDown", keys::PageDown},
               {"End", keys::End},
               {"Home", keys::Home},
               {"Left", keys::Left},
               {"Up", keys::Up},
               {"Right", keys::Right},
               {"Down", keys::Down},
               {"Space", 32},
               {"Delete", 46},
               {"Backspace", 8}};
  for (const auto& key : kKeys)
    if (base::equalIgnoringCase(name, key.name)) return key.code;
  if (name.size() == 1 && std::isalpha(static_cast<unsigned char>(name[0])))
    return std::toupper(static_cast<unsigned char>(name[0]));
  const bool function = name.size() > 1 && (name[0] == 'F' || name[0] == 'f');
  const std::string digits = function ? name.substr(1) : name;
  if (digits.empty() || digits.size() > 3 || digits.find_first_not_of("0123456789") != std::string::npos)
    return 0;
  const int number = std::stoi(digits);
  if (!function) return number <= 255 ? number : 0;
  return number >= 1 && number <= 12 ? 111 + number : 0;
}

Form& Operator::form(const std::string& name) {
  for (Form* form : desktop_.forms())
    if (base::equalIgnoringCase(form->name(), name)) return *form;
  throw Failure("the window " + name + " is not open");
}

Control& Operator::control(const std::string& name) {
  std::string bare = name, window;
  if (const auto dot = name.find('.'); dot != std::string::npos) {
    window = name.substr(0, dot);
    bare = name.substr(dot + 1);
  }
  int index = -1;
  if (const auto bracket = bare.find('('); bracket != std::string::npos) {
    index = std::atoi(bare.c_str() + bracket + 1);
    bare.resize(bracket);
  }
  if (!window.empty()) {
    if (Control* found = form(window).control(bare, index)) return *found;
    throw Failure("the window " + window + " has no control " + bare);
  }
  for (const bool wantShown : {true, false})
    for (const Form* form : desktop_.forms())
      if (shown(*form) == wantShown)
        if (Control* found = form->control(bare, index)) return *found;
  throw Failure("no open window has a control " + name);
}

void Operator::mustReach(const Control& control) const {
  const std::string name = control.form().name() + "." + control.name();
  if (windows_.modalForm() && windows_.modalForm() != &control.form())
    throw Failure(name + " cannot be used while " + windows_.modalForm()->name() + " is open");
  if (!shown(control.form())) throw Failure(name + " cannot be used: its window is not shown");
  if (!control.reachable()) throw Failure(name + " cannot be used: it is hidden or disabled");
}

void Operator::press(controls::Toolbar& toolbar, int number) {
  mustReach(toolbar);
  toolbar.click(number);
  settle();
}

void Operator::press(const std::string& button) {
  for (const Form* form : desktop_.forms()) {
    std::vector<Control*> all;
    collectAll(*form, all);
    for (Control* control : all) {
      if (auto* toolbar = dynamic_cast<controls::Toolbar*>(control)) {
        for (int n = 1; n <= toolbar->count(); ++n)
          if (toolbar->item(n).key == button || plain(toolbar->item(n).caption) == button)
            return press(*toolbar, n);
      } else if (auto* push = dynamic_cast<controls::Button*>(control)) {
        if (push->name() != button && plain(push->caption()) != plain(button)) continue;
        mustReach(*push);
        desktop_.gesture([&] {
          push->userFocus();
          settle();
          push->click();
        });
        return settle();
      }
    }
  }
  throw Failure("there is no button " + button);
}

void Operator::focus(Control& control) {
  mustReach(control);
  control.userFocus();
  settle();
}

void Operator::type(controls::TextBox& box, const std::string& text) {
  focus(box);
  box.type(text);
  settle();
}

void Operator::typeInto(controls::TextBox& box, const std::string& text) {
  type(box, text);
  enter(box);
}

void Operator::enter(Control& box) {
  mustReach(box);
  key(box.form(), keys::Enter);
}

void Operator::scroll(controls::ScrollBar& bar, int value) {
  drag(bar, value);
  release(bar);
}

void Operator::drag(controls::ScrollBar& bar, int value) {
  focus(bar);
  bar.drag(value);
  settle();
}

void Operator::release(controls::ScrollBar& bar) {
  bar.release();
  settle();
}

void Operator::step(controls::ScrollBar& bar, int value) {
  focus(bar);
  bar.stepTo(value);
  settle();
}

void Operator::choose(controls::ComboBox& box, const std::string& entry) {
  const auto found = std::find(box.items().begin(), box.items().end(), entry);
  if (found == box.items().end()) throw Failure(box.name() + " has no entry \"" + entry + "\"");
  focus(box);
  box.choose(static_cast<int>(found - box.items().begin()));
  settle();
}

void Operator::option(controls::OptionButton& button) {
  focus(button);
  button.choose();
  settle();
}

MenuItem& Operator::menuItem(const std::string& path) {
  const std::vector<std::string> parts = split(path);
  for (const Form* form : desktop_.forms()) {
    const std::vector<MenuItem*>* level = &form->menuBar;
    MenuItem* item = nullptr;
    for (const std::string& part : parts) {
      item = among(*level, part);
      if (!item) break;
      level = &item->children;
    }
    if (item) return *item;
  }
  throw Failure("there is no menu item " + path);
}

void Operator::menu(const std::string& path) {
  MenuItem& wanted = menuItem(path);
  Form& window = wanted.array().form();
  if (windows_.modalForm() && windows_.modalForm() != &window)
    throw Failure("the menu of " + window.name() + " cannot be used while " + windows_.modalForm()->name() +
                  " is open");
  if (!shown(window)) throw Failure("the menu of " + window.name() + " is not on the screen");
  const std::vector<std::string> parts = split(path);
  if (!wanted.enabled()) throw Failure("the menu item " + path + " is disabled");
  const std::vector<MenuItem*>* level = &window.menuBar;
  for (const std::string& part : parts) {
    MenuItem* item = among(*level, part);
    level = &item->children;
    item->click();
  }
  settle();
}

Form& Operator::keyWindow() {
  if (windows_.modalForm()) return *windows_.modalForm();
  if (const Control* current = desktop_.focus().current(); current && shown(current->form()))
    return current->form();
  for (Form* form : desktop_.forms())
    if (shown(*form)) return *form;
  throw Failure("no window is shown that could take a key");
}

bool Operator::key(Form& form, int code, int shift) {
  if (!shown(form)) throw Failure("the window " + form.name() + " cannot take a key: it is not shown");
  const bool letter = code >= 'A' && code <= 'Z';
  if ((shift & keys::Ctrl) != 0 && letter &&
      form.userAccelerator("Ctrl+" + std::string(1, static_cast<char>(code)))) {
    settle();
    return true;
  }
  bool swallowed = form.userKeyDown(code, shift);
  Control* const target = desktop_.focus().current();
  const bool character = code == keys::Enter || code == keys::Escape || code == 8 || code == 32;
  if (!swallowed && character && form.loaded() && target && &target->form() == &form)
    swallowed = target->userKeyPress(code);
  if (form.loaded()) form.userKeyUp(code, shift);
  settle();
  return swallowed;
}

} // namespace headless
