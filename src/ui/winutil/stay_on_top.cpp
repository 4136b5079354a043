#include "ui/winutil/stay_on_top.h"
#include "controls/Form.h"
#include "ports/WindowSystem.h"

namespace stay_on_top {

void SetStayOnTop(controls::Form& form, std::int16_t flag) {
  form.desktop().windows().setTopmost(form, flag != 0);
}

} // namespace stay_on_top
