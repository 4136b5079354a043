#include "headless/HeadlessPlatform.h"
#include "controls/Simple.h"
#include "headless/Errors.h"

namespace headless {

HeadlessPlatform::HeadlessPlatform() : finder_([this] { return host_.reference(); }, transcript_) {}

void HeadlessPlatform::end() {
  ended_ = true;
  transcript_.add(Transcript::Kind::Note, "end");
  throw Ended();
}

void HeadlessPlatform::recordStatus() {
  transcript_.want(Transcript::Kind::Status, true);
  windows_.watch = [this](controls::Control& control, controls::Aspect aspect) {
    if (control.kind() != controls::Kind::StatusBar || aspect != controls::Aspect::Text) return;
    const auto& bar = static_cast<const controls::StatusBar&>(control);
    if (bar.changedPanel() == 4) transcript_.add(Transcript::Kind::Status, "status " + bar.text(4));
  };
}

} // namespace headless
