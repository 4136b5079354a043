// A started panel whose lock cycle is run by hand: the host answers the words that the test sets.
#pragma once
#include "engine/AutoLock.h"
#include "engine/LockCycle.h"
#include "support/Panel.h"
#include <cmath>

namespace support {

class CycleBench : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  Program& program() { return p.program(); }
  LockParameters& record() { return p.record(); }
  CycleState& cycle() { return program().cycle; }
  AutoLockState& automatic() { return program().autoLock; }
  PlotCursor& cursor() { return program().cursor; }
  controls::PictureBox& picture() { return p.main().Picture1; }
  void word(std::size_t index, double value) { p.host().words[index] = value; }
  void words(double dac, double level, double error) {
    word(0, dac);
    word(1, level);
    word(2, error);
  }
  void tick(int n = 1) {
    while (n-- > 0) vbLock_mod::LockCycle(program());
  }
  // A plot from 0 to 1000 with an empty picture.
  void plainPlot() {
    picture().setScale(0, 500, 1000, -500);
    picture().cls();
  }
  const std::vector<headless::RecordingCanvas::Line>& lines() { return p.canvas().lines; }
  void forgetLines() { p.canvas().lines.clear(); }
  // The field as the host reports it turns: down, or up.
  void turnTo(int rising) {
    cycle().SweepRising = rising == 1 ? 0 : 1;
    cursor().lastDac = rising == 1 ? -1000 : 1000;
  }
  Panel p;
};

} // namespace support
