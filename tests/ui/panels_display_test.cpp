#include "support/Panel.h"
#include "ui/panels/frmAmpl.h"
#include <gtest/gtest.h>

namespace {

using namespace headless::keys;
using support::Panel;

class Display : public testing::Test {
 protected:
  void SetUp() override {
    p.started();
    p.menu("Controls/Display (Amplitude/Offset)");
  }
  frmAmpl& panel() { return p.program().frmAmpl.get(); }
  std::int16_t& amplitude() { return p.record().AmplitudeExponent; }
  std::int16_t& offset() { return p.record().PlotOffset; }
  Panel p;
};

TEST_F(Display, theBoxesPutABlankBeforeANumberThatIsNotNegative) {
  EXPECT_EQ(panel().txtDispAmpl.text(), " 9"); // 500 is nearest to 2 to the 9th
  EXPECT_EQ(panel().txtDispOffset.text(), " 0");
  offset() = -25;
  panel().Refresh();
  EXPECT_EQ(panel().txtDispOffset.text(), "-25");
}

TEST_F(Display, openingDrawsThePlotAtItsFullScaleAndSendsNothing) {
  EXPECT_EQ(p.record().PlotMax, 512);
  EXPECT_EQ(p.calls(), host::Lines{});
}

TEST_F(Display, theArrowKeysStepTheAmplitudeOnceAndAreSwallowed) {
  EXPECT_TRUE(p.op().key(panel(), Up));
  EXPECT_EQ(amplitude(), 8);
  EXPECT_EQ(panel().txtDispAmpl.text(), " 8");
  EXPECT_EQ(panel().updDispAmpl.value(), 8);
  EXPECT_EQ(p.record().PlotMax, 256);
  EXPECT_TRUE(p.op().key(panel(), Down));
  EXPECT_TRUE(p.op().key(panel(), Down));
  EXPECT_EQ(amplitude(), 10);
  EXPECT_EQ(p.record().PlotMax, 1024);
}

TEST_F(Display, withShiftTheyStepTheOffsetBy25Percent) {
  EXPECT_TRUE(p.op().key(panel(), Up, Shift));
  EXPECT_EQ(offset(), 25);
  EXPECT_EQ(panel().txtDispOffset.text(), " 25");
  EXPECT_EQ(panel().updDispOffset.value(), 25);
  p.op().key(panel(), Down, Shift);
  p.op().key(panel(), Down, Shift);
  EXPECT_EQ(offset(), -25);
  EXPECT_EQ(amplitude(), 9);
}

TEST_F(Display, upAtAmplitude1StaysAt1) {
  amplitude() = 1;
  p.op().key(panel(), Up);
  EXPECT_EQ(amplitude(), 1);
  EXPECT_EQ(panel().txtDispAmpl.text(), " 1");
}

TEST_F(Display, downAtAmplitude16StaysAt16) {
  amplitude() = 16;
  p.op().key(panel(), Down);
  EXPECT_EQ(amplitude(), 16);
}

TEST_F(Display, shiftDownAtOffsetMinus100StaysThere) {
  offset() = -100;
  p.op().key(panel(), Down, Shift);
  EXPECT_EQ(offset(), -100);
}

TEST_F(Display, anyOtherKeyGoesToTheSharedHandler) {
  const bool shown = p.main().mnuPrefs(2).checked();
  EXPECT_FALSE(p.op().key(panel(), Tab));
  EXPECT_NE(p.main().mnuPrefs(2).checked(), shown);
}

TEST_F(Display, theUpArrowOfTheAmplitudeLowersTheNumber) {
  panel().updDispAmpl.stepUp();
  EXPECT_EQ(amplitude(), 8);
  EXPECT_EQ(panel().txtDispAmpl.text(), " 8");
  EXPECT_EQ(p.record().PlotMax, 256);
  panel().updDispAmpl.stepDown();
  EXPECT_EQ(amplitude(), 9);
}

TEST_F(Display, theOffsetsArrowsStepBy25AndStopAtTheEnds) {
  for (int i = 0; i < 6; ++i) panel().updDispOffset.stepUp();
  EXPECT_EQ(offset(), 100);
  panel().updDispOffset.stepDown();
  EXPECT_EQ(offset(), 75);
  EXPECT_EQ(panel().txtDispOffset.text(), " 75");
}

TEST_F(Display, aTypedOffsetIsBroughtDownToAMultipleOf25) {
  const std::pair<const char*, int> cases[] = {{"99", 75},     {"60", 50},  {"-10", -25}, {"0", 0},
                                               {"25", 25},     {"24,9", 0}, {"400", 100}, {"-1e9", -100},
                                               {"-100", -100}, {"100", 100}};
  for (const auto& [typed, stored] : cases) {
    p.typeInto(panel().txtDispOffset, typed);
    EXPECT_EQ(offset(), stored) << typed;
    EXPECT_EQ(panel().txtDispOffset.text(), typed);
  }
}

TEST_F(Display, aTypedAmplitudeAboveTheEndIsShownUntilTheNextRefreshAndDrawnAt16) {
  p.typeInto(panel().txtDispAmpl, "20");
  EXPECT_EQ(panel().txtDispAmpl.text(), "20");
  EXPECT_EQ(p.record().PlotMax, 65536);
  panel().Refresh();
  EXPECT_EQ(panel().txtDispAmpl.text(), " 16");
  EXPECT_EQ(amplitude(), 16);
}

TEST_F(Display, leavingTheBoxTakesTheNumberToo) {
  p.type(panel().txtDispAmpl, "4");
  p.leaveTo(panel().txtDispOffset);
  EXPECT_EQ(amplitude(), 4);
  EXPECT_EQ(p.record().PlotMax, 16);
}

TEST_F(Display, enterIsSwallowed) {
  p.op().focus(panel().txtDispAmpl);
  EXPECT_TRUE(p.op().key(panel(), Enter));
}

TEST_F(Display, aTextThatIsNoNumberBeepsAndKeepsTheFocus) {
  p.type(panel().txtDispAmpl, "big");
  p.leaveTo(panel().txtDispOffset);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_TRUE(panel().txtDispAmpl.hasFocus());
  EXPECT_EQ(amplitude(), 9);
  panel().txtDispAmpl.setText("9");
  p.type(panel().txtDispOffset, "");
  p.leaveTo(panel().txtDispAmpl);
  EXPECT_EQ(p.beeps(), 2);
  EXPECT_TRUE(panel().txtDispOffset.hasFocus());
  EXPECT_EQ(offset(), 0);
}

TEST_F(Display, anAmplitudeBeyond16BitsIsReportedAndNotStored) {
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.typeInto(panel().txtDispAmpl, "40000");
  EXPECT_EQ(amplitude(), 9);
}

TEST_F(Display, enterOnATextThatIsNoNumberBeepsAndChangesNothing) {
  p.typeInto(panel().txtDispAmpl, "big");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(amplitude(), 9);
  panel().txtDispAmpl.setText("9");
  p.typeInto(panel().txtDispOffset, "low");
  EXPECT_EQ(p.beeps(), 2);
  EXPECT_EQ(offset(), 0);
}

TEST_F(Display, refreshLimitsBothAndStoresThem) {
  amplitude() = 0;
  offset() = 300;
  panel().Refresh();
  EXPECT_EQ(amplitude(), 1);
  EXPECT_EQ(offset(), 100);
  amplitude() = 17;
  offset() = -101;
  panel().Refresh();
  EXPECT_EQ(amplitude(), 16);
  EXPECT_EQ(offset(), -100);
  EXPECT_EQ(panel().updDispAmpl.value(), 16);
  EXPECT_EQ(panel().updDispOffset.value(), -100);
}

TEST_F(Display, aTypedOffsetMovesThePlot) {
  p.typeInto(panel().txtDispOffset, "50");
  EXPECT_EQ(p.main().Picture1.scaleTop(), 256.0F);
  p.op().key(panel(), Down, Shift);
  EXPECT_EQ(p.main().Picture1.scaleTop(), 384.0F);
}

TEST_F(Display, undoRestoresBothAndDraws) {
  p.op().key(panel(), Down);
  p.op().key(panel(), Up, Shift);
  p.menu("Undo");
  EXPECT_EQ(amplitude(), 9);
  EXPECT_EQ(offset(), 0);
  EXPECT_EQ(panel().txtDispAmpl.text(), " 9");
  EXPECT_EQ(panel().txtDispOffset.text(), " 0");
  EXPECT_EQ(p.record().PlotMax, 512);
}

TEST_F(Display, closingKeepsThePositionAndClearsMarkAndFlags) {
  EXPECT_EQ(p.program().panels.AmplOpen, kTrue);
  p.platform.windows().moveTo(panel(), 450, 600);
  p.platform.windows().close(panel());
  EXPECT_EQ(p.record().AmplitudeLeft, 450.0F);
  EXPECT_EQ(p.record().AmplitudeTop, 600.0F);
  EXPECT_FALSE(p.main().mnuControls(3).checked());
  EXPECT_EQ(p.program().panels.AmplOpen, kFalse);
  EXPECT_EQ(p.program().panels.AmplShown, kFalse);
}

} // namespace
