#include "controls/Desktop.h"
#include "controls/Form.h"
#include <algorithm>

namespace controls {

void Focus::moveTo(Control& control) { target_ = &control; }

void Focus::forget(const Control& control) {
  if (current_ == &control) current_ = nullptr;
  if (target_ == &control) target_ = current_; // no move is left to tell
}

void Focus::deliver() {
  if (delivering_ || current_ == target_) return;
  delivering_ = true;
  struct Done {
    bool& flag;
    ~Done() { flag = false; }
  } done{delivering_};
  while (current_ != target_ && target_) {
    Control* const old = current_;
    if (old) old->desktop().gesture([&] { old->LostFocus(); });
    if (old && target_ == old) return; // refused: the other control never had the focus
    if (!target_) {
      current_ = nullptr;
      return;
    }
    current_ = target_;
    Control* const now = current_;
    now->desktop().gesture([&] { now->GotFocus(); });
  }
}

Desktop::Desktop(ports::WindowSystem& windows, Report report)
    : windows_(windows), report_(std::move(report)) {}
Desktop::~Desktop() = default;

void Desktop::add(Form& form) { forms_.push_back(&form); }
void Desktop::remove(Form& form) { std::erase(forms_, &form); }

void Desktop::bury(std::unique_ptr<Form> form) { graveyard_.push_back(std::move(form)); }

void Desktop::emptyGraveyard() {
  if (depth_ == 0 && !graveyard_.empty()) graveyard_.clear();
}

} // namespace controls
