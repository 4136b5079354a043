#include "support/Panel.h"
#include "ui/panels/frmTuning.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

class Tuning : public testing::Test {
 protected:
  void open(std::initializer_list<std::array<const char*, 2>> loopKeys = {}) {
    for (const auto& [key, value] : loopKeys) p.set("Loop", key, value);
    p.started();
    p.menu("Controls/Loop Tuning Parameters");
  }
  frmTuning& panel() { return p.program().frmTuning.get(); }
  std::string boxes() {
    return panel().txtLoop_P.text() + " " + panel().txtLoop_I.text() + " " + panel().txtLoop_D.text();
  }
  Panel p;
};

TEST_F(Tuning, defaultsGiveTwoEqualLines) {
  Panel fresh("");
  fresh.set("Solvents", "CDCl3", "7.24").set("Display", "ShowControls", "0").started();
  fresh.menu("Controls/Loop Tuning Parameters");
  const auto& lines = fresh.program().frmTuning->lstLockChar.items();
  EXPECT_EQ(lines, (std::vector<std::string>{"0  {10000/50/0}", "1  {10000/50/0}"}));
}

TEST_F(Tuning, openingSendsNothingAndShowsTheValuesInUse) {
  open();
  p.expectCalls({});
  EXPECT_EQ(panel().lstLockChar.listIndex(), 0);
  EXPECT_EQ(panel().lstLockChar.text(), "0  {9000/40/5}");
  EXPECT_EQ(boxes(), "8000 60 3"); // not the preset's
}

TEST_F(Tuning, choosingAPresetStoresAndSendsIt) {
  open({{"NSets", "2"}, {"P_1", "500"}, {"I_1", "7"}, {"D_1", "2"}});
  p.choose(panel().lstLockChar, "1  {500/7/2}");
  p.expectCalls({host::loopConstants(500, 7, 2)});
  EXPECT_EQ(boxes(), "500 7 2");
  EXPECT_EQ(p.record().ActiveSet, 1);
  EXPECT_EQ(p.record().LoopP, 500.0F);
  EXPECT_EQ(p.record().LoopI, 7.0F);
  EXPECT_EQ(p.record().LoopD, 2.0F);
}

TEST_F(Tuning, enterSendsAllThreeBoxesAndIsSwallowed) {
  open();
  p.type(panel().txtLoop_I, "12,5");
  EXPECT_TRUE(p.op().key(panel(), headless::keys::Enter));
  p.expectCalls({host::loopConstants(8000, 12.5, 3)});
  EXPECT_EQ(p.record().LoopI, 12.5F);
}

TEST_F(Tuning, leavingABoxSendsAllThree) {
  open();
  p.type(panel().txtLoop_D, "4");
  p.leaveTo(panel().txtLoop_P);
  p.expectCalls({host::loopConstants(8000, 60, 4)});
}

TEST_F(Tuning, aTextThatIsNoNumberBeepsKeepsTheFocusAndSendsNothing) {
  open();
  p.type(panel().txtLoop_I, "fast");
  p.leaveTo(panel().txtLoop_P);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_TRUE(panel().txtLoop_I.hasFocus());
  EXPECT_EQ(p.record().LoopI, 60.0F);
  EXPECT_EQ(p.calls(), host::Lines{});
}

TEST_F(Tuning, enterOnATextThatIsNoNumberBeepsAndSendsNothing) {
  open();
  p.type(panel().txtLoop_P, "");
  p.clear();
  p.op().enter(panel().txtLoop_P);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_EQ(p.record().LoopP, 8000.0F);
}

TEST_F(Tuning, everyBoxSendsAllThreeAndAnotherBoxesTextCountsAsItsLeadingNumber) {
  open();
  for (controls::TextBox* box : {&panel().txtLoop_P, &panel().txtLoop_I, &panel().txtLoop_D}) {
    p.op().focus(*box);
    panel().txtLoop_P.setText("1");
    panel().txtLoop_I.setText(box == &panel().txtLoop_I ? "2" : "2x");
    panel().txtLoop_D.setText("-3.5");
    p.clear();
    p.op().enter(*box);
    panel().txtLoop_I.setText("2");
    p.expectCalls({host::loopConstants(1, 2, -3.5)});
  }
}

TEST_F(Tuning, moreThan51PresetsAreOutOfRange) {
  p.started();
  p.record().NSets = 51;
  p.menu("Controls/Loop Tuning Parameters");
  EXPECT_EQ(panel().lstLockChar.items().size(), 51U);
  p.menu("Controls/Loop Tuning Parameters");
  p.record().NSets = 52;
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("Controls/Loop Tuning Parameters");
  ASSERT_FALSE(p.boxes().empty());
  EXPECT_NE(p.boxes().back().find("Subscript out of range"), std::string::npos) << p.boxes().back();
  EXPECT_FALSE(p.program().frmTuning.loaded());
}

TEST_F(Tuning, aNumberNoSingleHoldsIsReportedAndNothingIsStored) {
  open();
  panel().txtLoop_P.setText("7");
  p.type(panel().txtLoop_D, "1e300");
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.op().enter(panel().txtLoop_D);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_EQ(p.record().LoopP, 8000.0F);
}

TEST_F(Tuning, undoSendsTheValuesOfTheTimeOfOpeningOnce) {
  open({{"NSets", "2"}, {"P_1", "500"}, {"I_1", "7"}, {"D_1", "2"}});
  p.choose(panel().lstLockChar, "1  {500/7/2}");
  p.clear();
  p.menu("Undo");
  p.expectCalls({host::loopConstants(8000, 60, 3)});
  EXPECT_EQ(boxes(), "8000 60 3");
  EXPECT_EQ(p.record().ActiveSet, 0);
  EXPECT_EQ(panel().lstLockChar.listIndex(), 0);
}

TEST_F(Tuning, afterAnUndoAPresetIsSentAgain) {
  open({{"NSets", "2"}, {"P_1", "500"}, {"I_1", "7"}, {"D_1", "2"}});
  p.menu("Undo");
  p.clear();
  p.choose(panel().lstLockChar, "1  {500/7/2}");
  p.expectCalls({host::loopConstants(500, 7, 2)});
}

TEST_F(Tuning, anActiveSetOutsideTheListIsReportedAndThePanelStaysClosed) {
  p.set("Loop", "ActiveSet", "5").started();
  p.expectBox(headless::kAnyText, ports::Answer::Ok);
  p.menu("Controls/Loop Tuning Parameters");
  EXPECT_FALSE(p.program().frmTuning.loaded());
  EXPECT_FALSE(p.main().mnuControls(7).checked());
  EXPECT_EQ(p.program().panels.TuningShown, kFalse);
  EXPECT_EQ(p.program().panels.TuningOpen, kFalse);
}

TEST_F(Tuning, theFirstTimeItStandsInTheMiddleAndThenWhereItWasClosed) {
  open();
  const auto screen = p.platform.windows().screenSize();
  EXPECT_EQ(panel().left(), (screen.width - panel().width()) / 2);
  EXPECT_EQ(panel().top(), (screen.height - panel().height()) / 2);
  p.platform.windows().moveTo(panel(), 1500, 900);
  p.platform.windows().close(panel());
  EXPECT_EQ(p.record().TuningLeft, 1500.0F);
  EXPECT_EQ(p.record().TuningTop, 900.0F);
  p.menu("Controls/Loop Tuning Parameters");
  EXPECT_EQ(panel().left(), 1500.0F);
  EXPECT_EQ(panel().top(), 900.0F);
}

TEST_F(Tuning, closingClearsTheMenuMarkAndTheFlags) {
  open();
  EXPECT_EQ(p.program().panels.TuningOpen, kTrue);
  p.platform.windows().close(panel());
  EXPECT_FALSE(p.program().frmTuning.loaded());
  EXPECT_FALSE(p.main().mnuControls(7).checked());
  EXPECT_EQ(p.program().panels.TuningShown, kFalse);
  EXPECT_EQ(p.program().panels.TuningOpen, kFalse);
}

TEST_F(Tuning, loadsOnTopWhenTheSettingSaysSo) {
  p.set("Display", "StayOnTop", "true").started();
  p.menu("Controls/Loop Tuning Parameters");
  EXPECT_TRUE(p.platform.windows().topmost(panel()));
}

TEST_F(Tuning, itsKeysReachTheSharedHandler) {
  open();
  const int before = p.record().AmplitudeExponent;
  EXPECT_TRUE(p.op().key(panel(), headless::keys::Down));
  EXPECT_EQ(p.record().AmplitudeExponent, before + 1);
}

} // namespace
