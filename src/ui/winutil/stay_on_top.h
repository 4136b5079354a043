// Keeps a window above all others, or lets it fall back.
#pragma once
#include <cstdint>

namespace controls {
class Form;
}

namespace stay_on_top {

void SetStayOnTop(controls::Form& form, std::int16_t flag);

} // namespace stay_on_top
