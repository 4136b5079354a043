#include "support/Panel.h"
#include "ui/panels/frmSweep.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

class Sweep : public testing::Test {
 protected:
  void SetUp() override {
    p.started();
    p.menu("Controls/Sweep (Width/Speed)");
  }
  frmSweep& panel() { return p.program().frmSweep.get(); }
  void type(controls::ComboBox& box, const std::string& text) {
    p.op().focus(box);
    box.type(text);
  }
  void typeWithEnter(controls::ComboBox& box, const std::string& text) {
    type(box, text);
    p.clear();
    p.op().enter(box);
  }
  // The field and width are sent, then the speed, which follows the width.
  static host::Lines width(double value) {
    return {host::field(400), host::sweepWidth(value), host::sweepSpeed(value)};
  }
  Panel p;
};

TEST_F(Sweep, openingSendsNothingAndShowsTheValues) {
  p.expectCalls({});
  EXPECT_EQ(panel().cmbSweepWidth.text(), "8000");
  EXPECT_EQ(panel().cmbSweepSpeed.text(), "20000");
}

TEST_F(Sweep, bothListsOfferTheSamePowersOfTwo) {
  const std::vector<std::string> expected{"128",   "256",   "512",   "1024",   "2048",   "4096",  "8192",
                                          "16384", "32768", "65536", "131072", "262144", "524288"};
  EXPECT_EQ(panel().cmbSweepWidth.items(), expected);
  EXPECT_EQ(panel().cmbSweepSpeed.items(), expected);
}

TEST_F(Sweep, aChosenWidthBecomesTheSpeedToo) {
  p.choose(panel().cmbSweepWidth, "4096");
  p.expectCalls({width(4096)});
  EXPECT_EQ(p.record().SweepWidth, 4096);
  EXPECT_EQ(p.record().SweepSpeed, 4096);
  EXPECT_EQ(p.record().SweepSpeedNow, 4096);
  EXPECT_EQ(p.record().SweepUpper, 400 + 2048);
  EXPECT_EQ(p.record().SweepLower, 400 - 2048);
  EXPECT_EQ(panel().cmbSweepSpeed.text(), "4096");
}

TEST_F(Sweep, aSpeedChosenAfterwardsLeavesTheWidth) {
  p.choose(panel().cmbSweepWidth, "4096");
  p.op().focus(panel().cmbSweepSpeed);
  p.clear();
  p.choose(panel().cmbSweepSpeed, "1024");
  p.expectCalls({host::sweepSpeed(1024)});
  EXPECT_EQ(p.record().SweepWidth, 4096);
  EXPECT_EQ(p.record().SweepSpeed, 1024);
}

TEST_F(Sweep, anyWholeNumberMayBeTyped) {
  typeWithEnter(panel().cmbSweepWidth, "3000");
  p.expectCalls({width(3000)});
  EXPECT_EQ(p.record().SweepWidth, 3000);
}

TEST_F(Sweep, halvesRoundToEven) {
  typeWithEnter(panel().cmbSweepSpeed, "2,5");
  p.expectCalls({host::sweepSpeed(2)});
}

TEST_F(Sweep, enterIsSwallowed) {
  p.op().focus(panel().cmbSweepSpeed);
  EXPECT_TRUE(p.op().key(panel(), headless::keys::Enter));
}

TEST_F(Sweep, leavingTheSpeedBoxSendsIt) {
  type(panel().cmbSweepSpeed, "700");
  p.clear();
  p.leaveTo(panel().cmbSweepWidth);
  p.expectCalls({host::sweepSpeed(700)});
  EXPECT_EQ(p.record().SweepSpeed, 700);
}

TEST_F(Sweep, leavingTheWidthBoxSendsItAndTheSpeed) {
  type(panel().cmbSweepWidth, "700");
  p.clear();
  p.leaveTo(panel().cmbSweepSpeed);
  p.expectCalls({width(700)});
}

TEST_F(Sweep, aSpeedThatIsNoNumberBeepsAndKeepsTheFocus) {
  type(panel().cmbSweepSpeed, "quick");
  p.clear();
  p.leaveTo(panel().cmbSweepWidth);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_TRUE(panel().cmbSweepSpeed.hasFocus());
  EXPECT_EQ(p.record().SweepSpeed, 20000);
}

TEST_F(Sweep, aWidthThatIsNoNumberBeepsAndChangesNeither) {
  type(panel().cmbSweepWidth, "");
  p.clear();
  p.leaveTo(panel().cmbSweepSpeed);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_TRUE(panel().cmbSweepWidth.hasFocus());
  EXPECT_EQ(p.record().SweepWidth, 8000);
  EXPECT_EQ(panel().cmbSweepSpeed.text(), "20000");
}

TEST_F(Sweep, aNumberBeyond32BitsIsReportedAndNothingIsStored) {
  type(panel().cmbSweepWidth, "3000000000");
  p.clear();
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.op().enter(panel().cmbSweepWidth);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_EQ(p.record().SweepWidth, 8000);
}

TEST_F(Sweep, undoSendsSpeedThenWidthAsTheyWereAtOpening) {
  p.choose(panel().cmbSweepWidth, "4096");
  p.clear();
  p.menu("Undo");
  p.expectCalls({host::sweepSpeed(20000), host::field(400), host::sweepWidth(8000)});
  EXPECT_EQ(p.record().SweepWidth, 8000);
  EXPECT_EQ(p.record().SweepSpeed, 20000); // no coupling here
  EXPECT_EQ(panel().cmbSweepWidth.text(), "8000");
  EXPECT_EQ(panel().cmbSweepSpeed.text(), "20000");
}

TEST_F(Sweep, undoKeepsSevenDigitsOfTheValues) {
  p.platform.windows().close(panel());
  p.record().SweepWidth = 16777217;
  p.record().SweepSpeed = 12345678;
  p.menu("Controls/Sweep (Width/Speed)");
  EXPECT_EQ(panel().cmbSweepWidth.text(), "16777217");
  p.menu("Undo");
  EXPECT_EQ(p.record().SweepWidth, 16777220);
  EXPECT_EQ(p.record().SweepSpeed, 12345680);
}

TEST_F(Sweep, enterOnATextThatIsNoNumberBeepsAndSendsNothing) {
  for (controls::ComboBox* box : {&panel().cmbSweepWidth, &panel().cmbSweepSpeed}) {
    const std::string before = box->text();
    typeWithEnter(*box, "wide");
    EXPECT_EQ(p.beeps(), 1);
    EXPECT_EQ(p.calls(), host::Lines{});
    box->type(before);
  }
}

TEST_F(Sweep, applyBothStopsAtABoxThatIsNoNumber) {
  panel().cmbSweepSpeed.setText("700");
  panel().cmbSweepWidth.setText("wide");
  EXPECT_THROW(panel().ApplyBoth(), base::RuntimeError);
  p.expectCalls({host::sweepSpeed(700)});
  EXPECT_EQ(p.record().SweepWidth, 8000);
}

TEST_F(Sweep, applyBothSetsEachForItself) {
  panel().cmbSweepSpeed.setText("65536");
  panel().cmbSweepWidth.setText("8192");
  p.expectCalls({});
  panel().ApplyBoth();
  p.expectCalls({host::sweepSpeed(65536), host::field(400), host::sweepWidth(8192)});
  EXPECT_EQ(p.record().SweepSpeedNow, 65536);
  EXPECT_EQ(p.record().SweepUpper, 400 + 4096);
}

TEST_F(Sweep, whileStartingUpOnlyTheRecordChanges) {
  p.record().Initializing = kTrue;
  p.choose(panel().cmbSweepWidth, "4096");
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_EQ(p.record().SweepWidth, 4096);
  EXPECT_EQ(p.record().SweepSpeed, 4096);
}

TEST_F(Sweep, closingKeepsThePositionAndClearsMarkAndFlags) {
  EXPECT_EQ(p.program().panels.SweepOpen, kTrue);
  EXPECT_TRUE(p.main().mnuControls(5).checked());
  p.platform.windows().moveTo(panel(), 150, 300);
  p.platform.windows().close(panel());
  EXPECT_EQ(p.record().SweepLeft, 150.0F);
  EXPECT_EQ(p.record().SweepTop, 300.0F);
  EXPECT_FALSE(p.main().mnuControls(5).checked());
  EXPECT_EQ(p.program().panels.SweepOpen, kFalse);
  EXPECT_EQ(p.program().panels.SweepShown, kFalse);
  p.menu("Controls/Sweep (Width/Speed)");
  EXPECT_EQ(panel().left(), 150.0F);
}

TEST_F(Sweep, itsKeysReachTheSharedHandler) {
  const int before = p.record().AmplitudeExponent;
  EXPECT_TRUE(p.op().key(panel(), headless::keys::Up));
  EXPECT_EQ(p.record().AmplitudeExponent, before - 1);
}

} // namespace
