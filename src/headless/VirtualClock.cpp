#include "headless/VirtualClock.h"
#include "base/DateText.h"

namespace headless {

std::string VirtualClock::generalDateText(double at) { return base::generalDateText(base::dateFields(at)); }

} // namespace headless
