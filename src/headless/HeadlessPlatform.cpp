#include "headless/HeadlessPlatform.h"
#include "headless/Errors.h"

namespace headless {

HeadlessPlatform::HeadlessPlatform() : finder_([this] { return host_.reference(); }, transcript_) {}

void HeadlessPlatform::end() {
  ended_ = true;
  transcript_.add(Transcript::Kind::Note, "end");
  throw Ended();
}

} // namespace headless
