// The controls' contract without a window system.
#include "contract/controls_contract.h"
#include "headless/HeadlessPump.h"
#include "headless/HeadlessWindows.h"

namespace contract {
namespace {

class Headless : public BackEnd {
 public:
  ports::WindowSystem& windows() override { return windows_; }
  int turn() override { return pump_.doEvents(); }
  void wait(int milliseconds) override {
    const headless::Micros end = clock_.micros() + milliseconds * headless::kMillisecond;
    for (;;) {
      pump_.doEvents();
      if (clock_.micros() >= end) return;
      clock_.advance(std::max<headless::Micros>(std::min(pump_.nextDue(), end) - clock_.micros(), 0));
    }
  }
  void whenModal(std::function<void()> gesture) override {
    pump_.postAfter(headless::kMillisecond, std::move(gesture));
  }
  int nativeWindows() override { return windows_.realisedForms(); }

 private:
  headless::VirtualClock clock_;
  headless::Transcript transcript_;
  headless::HeadlessPump pump_{clock_};
  headless::HeadlessWindows windows_{pump_, transcript_};
};

} // namespace

std::unique_ptr<BackEnd> makeBackEnd() { return std::make_unique<Headless>(); }

} // namespace contract
