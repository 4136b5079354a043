#include "core/modConvertStrToFloatVal.h"
#include "display/LockKeys.h"
#include "support/Panel.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"

namespace {

using support::Panel;
namespace keys = headless::keys;

class Keys : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  LockParameters& r() { return p.record(); }
  AutoLockState& autoLock() { return p.program().autoLock; }
  bool key(int code, int shift = 0) { return p.op().key(p.main(), code, shift); }
  // The handler alone, as on key-down: the key-up has effects of its own.
  std::int16_t down(int code, int shift = 0) {
    auto keyCode = static_cast<std::int16_t>(code);
    HandleLockKey(p.program(), keyCode, static_cast<std::int16_t>(shift));
    return keyCode;
  }
  void showThreshold(double value) {
    autoLock().ThresholdShown = true;
    autoLock().NoiseThreshold = value;
    r().PeakThresholdFactor = 16;
  }
  Panel p;
};

TEST_F(Keys, downDoublesTheScaleAndIsSwallowed) {
  EXPECT_TRUE(key(keys::Down));
  EXPECT_EQ(r().AmplitudeExponent, 10);
  EXPECT_EQ(r().PlotMax, 1024);
  EXPECT_EQ(p.main().Picture1.scaleTop(), 1024);
}

TEST_F(Keys, upHalvesTheScaleAndIsSwallowed) {
  EXPECT_TRUE(key(keys::Up));
  EXPECT_EQ(r().AmplitudeExponent, 8);
  EXPECT_EQ(r().PlotMax, 256);
}

TEST_F(Keys, theScaleStopsAtItsEnds) {
  r().AmplitudeExponent = 1;
  key(keys::Up);
  EXPECT_EQ(r().AmplitudeExponent, 1);
  r().AmplitudeExponent = 16;
  key(keys::Down);
  EXPECT_EQ(r().AmplitudeExponent, 16);
}

TEST_F(Keys, withShiftTheArrowsMoveTheZeroLineByAQuarter) {
  EXPECT_EQ(down(keys::Up, keys::Shift), 0);
  EXPECT_EQ(r().PlotOffset, 25);
  EXPECT_EQ(down(keys::Down, keys::Shift), 0);
  EXPECT_EQ(down(keys::Down, keys::Shift), 0);
  EXPECT_EQ(r().PlotOffset, -25);
  EXPECT_EQ(r().AmplitudeExponent, 9);
}

TEST_F(Keys, theOffsetIsClamped) {
  r().PlotOffset = 90;
  down(keys::Up, keys::Shift);
  EXPECT_EQ(r().PlotOffset, 100);
  r().PlotOffset = -90;
  down(keys::Down, keys::Shift);
  EXPECT_EQ(r().PlotOffset, -100);
}

TEST_F(Keys, shiftCountsAmongOtherShiftKeys) {
  down(keys::Up, keys::Shift | keys::Ctrl);
  EXPECT_EQ(r().PlotOffset, 25);
  down(keys::Up, keys::Ctrl);
  EXPECT_EQ(r().AmplitudeExponent, 8);
}

TEST_F(Keys, theDisplayPanelShowsTheNewAmplitude) {
  p.menu("Controls/Display (Amplitude/Offset)");
  down(keys::Down);
  EXPECT_EQ(StrToFloatVal(p.program().frmAmpl->txtDispAmpl.text()), 10);
}

TEST_F(Keys, key6TogglesTheMarkOfTheControlsPanelAlone) {
  EXPECT_EQ(down(6), 6);
  EXPECT_TRUE(p.main().mnuControls(21).checked());
  EXPECT_FALSE(p.program().frmControls.loaded());
  down(6);
  EXPECT_FALSE(p.main().mnuControls(21).checked());
}

TEST_F(Keys, tabTogglesTheImaginaryTrace) {
  EXPECT_EQ(down(keys::Tab), keys::Tab) << "Tab still moves the focus";
  EXPECT_TRUE(p.main().mnuPrefs(2).checked());
  EXPECT_EQ(r().ShowImag, -1);
  down(keys::Tab);
  EXPECT_FALSE(p.main().mnuPrefs(2).checked());
  EXPECT_EQ(r().ShowImag, 0);
}

TEST_F(Keys, altTogglesTheRealTrace) {
  EXPECT_EQ(down(keys::Alt), keys::Alt);
  EXPECT_FALSE(p.main().mnuPrefs(1).checked());
  EXPECT_EQ(r().ShowReal, 0);
  down(keys::Alt);
  EXPECT_EQ(r().ShowReal, -1);
}

TEST_F(Keys, escapeGivesThePlotTheFocus) {
  p.op().focus(p.main().txtCenter);
  key(keys::Escape);
  p.pass();
  EXPECT_TRUE(p.main().Picture1.hasFocus());
}

TEST_F(Keys, otherKeysDoNothing) {
  const LockParameters before = r();
  for (int code = 1; code <= 255; ++code) {
    switch (code) {
    case 6:
    case keys::Tab:
    case keys::Alt:
    case keys::Escape:
    case keys::Up:
    case keys::Down:
      continue;
    default:
      EXPECT_EQ(down(code), code);
    }
  }
  EXPECT_EQ(r().AmplitudeExponent, before.AmplitudeExponent);
  EXPECT_EQ(r().PlotOffset, before.PlotOffset);
  EXPECT_EQ(r().ShowReal, before.ShowReal);
  EXPECT_EQ(r().ShowImag, before.ShowImag);
  EXPECT_EQ(r().PeakThresholdFactor, before.PeakThresholdFactor);
  EXPECT_EQ(p.main().Timer1.interval(), 10);
  EXPECT_FALSE(autoLock().SearchRestart);
}

TEST_F(Keys, pageUpRaisesTheThresholdFasterBelowTen) {
  showThreshold(9.5);
  EXPECT_EQ(down(keys::PageUp), keys::PageUp);
  EXPECT_DOUBLE_EQ(autoLock().NoiseThreshold, 10.45);
  EXPECT_FLOAT_EQ(r().PeakThresholdFactor, 17.6F);
  down(keys::PageUp);
  EXPECT_DOUBLE_EQ(autoLock().NoiseThreshold, 10.9725);
  EXPECT_FLOAT_EQ(r().PeakThresholdFactor, 17.6F * 1.05F);
}

TEST_F(Keys, pageDownLowersIt) {
  showThreshold(10);
  down(keys::PageDown);
  EXPECT_DOUBLE_EQ(autoLock().NoiseThreshold, 9.5) << "ten itself moves by the small step";
  EXPECT_FLOAT_EQ(r().PeakThresholdFactor, 16 * 0.95F);
  down(keys::PageDown);
  EXPECT_DOUBLE_EQ(autoLock().NoiseThreshold, 9.5 * 0.9);
}

TEST_F(Keys, theThresholdKeysStopTheTimerAndRestartTheSearch) {
  showThreshold(100);
  p.record().LockMode = kModeAuto;
  p.main().Timer1.setEnabled(true);
  p.canvas().lines.clear();
  down(keys::PageUp);
  EXPECT_EQ(p.main().Timer1.interval(), 0);
  EXPECT_TRUE(autoLock().SearchRestart);
  ASSERT_EQ(p.canvas().lines.size(), 2U);
  EXPECT_EQ(p.canvas().lines[0].y1, 100) << "the old line is erased";
  EXPECT_EQ(p.canvas().lines[0].colour, p.main().Picture1.backColour());
  EXPECT_EQ(p.canvas().lines[1].y1, 105) << "the new one drawn";
  p.main().userKeyUp(keys::PageUp, 0);
  EXPECT_EQ(p.main().Timer1.interval(), 10);
}

TEST_F(Keys, aKeyUpWithTheLockOffLeavesTheTimer) {
  showThreshold(100);
  down(keys::PageUp);
  p.main().userKeyUp(keys::PageUp, 0);
  EXPECT_EQ(p.main().Timer1.interval(), 0);
}

TEST_F(Keys, withoutAMarkerPageKeysDoNothing) {
  autoLock().NoiseThreshold = 100;
  for (const int code : {keys::PageUp, keys::PageDown}) {
    down(code);
    EXPECT_EQ(autoLock().NoiseThreshold, 100);
    EXPECT_EQ(p.main().Timer1.interval(), 10);
    EXPECT_FALSE(autoLock().SearchRestart);
  }
}

TEST_F(Keys, homePutsTheThresholdAtTheTop) {
  autoLock().PeakSearchActive = true;
  autoLock().NoiseThreshold = 128;
  r().PeakThresholdFactor = 16;
  EXPECT_EQ(down(keys::Home), keys::Home);
  EXPECT_EQ(autoLock().NoiseThreshold, 512);
  EXPECT_EQ(r().PeakThresholdFactor, 64);
  EXPECT_TRUE(autoLock().ThresholdShown);
  EXPECT_TRUE(autoLock().SearchRestart);
  EXPECT_EQ(p.main().Timer1.interval(), 0);
}

TEST_F(Keys, homeNeedsARunningSearch) {
  showThreshold(100);
  down(keys::Home);
  EXPECT_EQ(autoLock().NoiseThreshold, 100);
  EXPECT_EQ(p.main().Timer1.interval(), 10);
}

TEST_F(Keys, aFactorPastItsRangeIsRefusedAndNeverSaved) {
  showThreshold(100);
  r().PeakThresholdFactor = 3.4e38F;
  p.expectBox("Run-time error '6':\r\n\r\nOverflow", ports::Answer::Ok);
  key(keys::PageUp);
  EXPECT_EQ(r().PeakThresholdFactor, 3.4e38F);
  EXPECT_EQ(autoLock().NoiseThreshold, 100);
}

TEST_F(Keys, homeWithoutAThresholdIsRefused) {
  autoLock().PeakSearchActive = true;
  p.expectBox("Run-time error '6':\r\n\r\nOverflow", ports::Answer::Ok);
  key(keys::Home);
  EXPECT_EQ(r().PeakThresholdFactor, 16);
  EXPECT_EQ(autoLock().NoiseThreshold, 0);
}

TEST_F(Keys, everyPanelHandsItsKeysOn) {
  p.menu("Controls/NMR Controls");
  p.menu("Controls/Sweep (Width/Speed)");
  p.menu("Controls/Loop Tuning Parameters");
  p.menu("Controls/Display (Amplitude/Offset)");
  Program& program = p.program();
  for (controls::Form* form : {static_cast<controls::Form*>(&program.frmControls.get()),
                               static_cast<controls::Form*>(&program.frmSweep.get()),
                               static_cast<controls::Form*>(&program.frmTuning.get()),
                               static_cast<controls::Form*>(&program.frmAmpl.get())}) {
    const std::int16_t before = r().ShowReal;
    form->userKeyDown(keys::Alt, 0);
    EXPECT_NE(r().ShowReal != 0, before != 0) << form->name();
  }
}

} // namespace
