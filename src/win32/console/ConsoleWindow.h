// The simulated console's own window: what the hardware and the spins do at this moment, and faults to order.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Timer.h"
#include "sim/SimHost.h"
#include <array>

namespace win32 {

class ConsoleWindow : public controls::Form {
 public:
  // advance brings the console's clock up to date.
  ConsoleWindow(controls::Desktop& desktop, std::shared_ptr<sim::Spectrometer> spectrometer,
                std::function<void()> advance, int slowMs);
  void refresh();

 private:
  enum Row { Mode, Field, LineAt, Offset, Signal, Power, Phase, Sweep, Told, Calls, Time, kRows };
  void design();
  void fault(int index);
  void checkFaults();
  void put(Row row, const std::string& text) { values_[row]->setCaption(text); }
  std::shared_ptr<sim::Spectrometer> spectrometer_;
  std::function<void()> advance_;
  int slowMs_;
  std::array<std::unique_ptr<controls::Label>, kRows> names_, values_;
  controls::MenuArray bar_{*this, "mnuBar"}, faults_{*this, "mnuFaults"}, sample_{*this, "mnuSample"};
  controls::Timer timer_{*this, 200};
};

// Every call takes so long, refusals and missing data as asked for.
void applyFaults(sim::Spectrometer& spectrometer, bool noData, bool refuse, int slowMs, long long dieAfter);

} // namespace win32
