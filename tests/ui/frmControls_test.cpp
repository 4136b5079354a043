#include "support/Panel.h"

namespace {

using headless::keys::Enter;
using support::Panel;

class Controls : public testing::Test {
 protected:
  void SetUp() override {
    p.set("Display", "ShowControls", "1").started();
    p.clear();
  }
  frmControls& panel() { return p.controls(); }
  LockParameters& r() { return p.record(); }
  void typeInto(controls::TextBox& box, const std::string& text) {
    p.typeInto(box, text);
    p.pass();
  }
  Panel p;
};

TEST_F(Controls, isLaidOutWithItsCaptionsAndRanges) {
  EXPECT_EQ(panel().caption(), "Vantrel Lock - NMR Controls");
  EXPECT_EQ(panel().vsTxPwr.minimum(), 127);
  EXPECT_EQ(panel().vsTxPwr.maximum(), 0);
  EXPECT_EQ(panel().vsTxPwr.smallChange(), 1);
  EXPECT_EQ(panel().vsTxPwr.largeChange(), 6);
  EXPECT_EQ(panel().vsRxGain.minimum(), 10000);
  EXPECT_EQ(panel().vsRxGain.maximum(), 0);
  EXPECT_EQ(panel().vsRxGain.smallChange(), 10);
  EXPECT_EQ(panel().vsRxGain.largeChange(), 100);
  EXPECT_EQ(panel().vsPhase.minimum(), 180);
  EXPECT_EQ(panel().vsPhase.maximum(), -180);
  EXPECT_EQ(panel().vsPhase.smallChange(), 1);
  EXPECT_EQ(panel().vsPhase.largeChange(), 18);
  EXPECT_EQ(panel().mnuMain(0).caption(), "&Undo");
  EXPECT_EQ(panel().mnuMain(20).caption(), "&Save");
  EXPECT_FALSE(panel().optBW[3].visible());
  EXPECT_FALSE(panel().Text1.visible());
  EXPECT_EQ(panel().Text1.text(), "500");
}

TEST(ControlsLoad, showsTheRecord) {
  Panel p;
  p.set("Hardware", "LockPhase", "270").set("Hardware", "RxFilterIndex", "2");
  p.set("Display", "ShowControls", "1").startUp();
  frmControls& panel = p.controls();
  EXPECT_EQ(panel.vsTxPwr.value(), 40);
  EXPECT_EQ(panel.txtTxPwr.text(), "20.0");
  EXPECT_EQ(panel.vsRxGain.value(), 1200);
  EXPECT_EQ(panel.txtRxGain.text(), "1200");
  EXPECT_EQ(panel.vsPhase.value(), -90);
  EXPECT_EQ(panel.txtPhase.text(), "-90");
  EXPECT_EQ(p.record().LockPhase, 270);
  EXPECT_TRUE(panel.optBW[2].value());
  EXPECT_EQ(panel.cmbSolvents.text(), "CDCl3");
  EXPECT_EQ(panel.txtSolventPPM.text(), "7.24");
}

TEST(ControlsLoad, sendsTheSolventsFrequencyAndNothingElse) {
  Panel p;
  p.started();
  p.menu("Controls/NMR Controls");
  p.expectCalls({host::frequency(p.record().Frequency)});
  EXPECT_EQ(p.record().PendingControl, 0);
  EXPECT_TRUE(p.main().mnuControls(21).checked());
}

TEST(ControlsLoad, halfStepsRoundToEven) {
  Panel p; // no table, so that the bar shows the record's power
  p.settingsText() = "[Hardware]\r\nTxPower=20.25\r\n[Solvents]\r\nA=1\r\n";
  p.startUp();
  EXPECT_EQ(p.controls().vsTxPwr.value(), 40);
  EXPECT_EQ(p.record().TxPower, 20);
}

TEST(ControlsLoad, aPowerThatMovesNoBarIsShownInGeneralForm) {
  Panel p;
  p.settingsText() = "[Hardware]\r\nTxPower=0.1\r\n[Solvents]\r\nA=1\r\n";
  p.startUp();
  EXPECT_EQ(p.controls().vsTxPwr.value(), 0);
  EXPECT_EQ(p.controls().txtTxPwr.text(), "0.1");
  EXPECT_EQ(p.record().TxPower, 0.1);
}

TEST(ControlsLoad, standsInTheMiddleTheFirstTimeAndWhereItWasLater) {
  Panel p;
  p.started();
  p.menu("Controls/NMR Controls");
  const auto screen = p.platform.windows().screenSize();
  EXPECT_EQ(p.controls().left(), (screen.width - p.controls().width()) / 2);
  EXPECT_EQ(p.controls().top(), (screen.height - p.controls().height()) / 2);
  p.platform.windows().moveTo(p.controls(), 1200, 900);
  p.platform.windows().close(p.controls());
  EXPECT_EQ(p.record().NMRControlsLeft, 1200);
  EXPECT_EQ(p.record().NMRControlsTop, 900);
  EXPECT_FALSE(p.main().mnuControls(21).checked());
  EXPECT_EQ(p.program().panels.ControlsOpen, 0);
  EXPECT_EQ(p.program().panels.ControlsShown, 0);
  p.pass();
  p.menu("Controls/NMR Controls");
  EXPECT_EQ(p.controls().left(), 1200);
  EXPECT_EQ(p.program().panels.ControlsOpen, -1);
}

TEST(ControlsLoad, aPanelThatCannotLoadIsNotOpen) {
  Panel p;
  p.set("Hardware", "RxGain", "10001").started();
  p.expectBox(std::string("Run-time error '380':\r\n\r\nInvalid property value\r\n\r\n") + Panel::kIniPath +
                  ": [Hardware] RxGain=10001",
              ports::Answer::Ok);
  p.menu("Controls/NMR Controls");
  EXPECT_FALSE(p.program().frmControls.loaded());
  EXPECT_EQ(p.program().panels.ControlsOpen, 0);
  EXPECT_EQ(p.program().panels.ControlsShown, 0);
  EXPECT_FALSE(p.main().mnuControls(21).checked());
}

TEST(ControlsLoad, takesTheStayOnTopSetting) {
  Panel p;
  p.set("Display", "StayOnTop", "true").set("Display", "ShowControls", "1").startUp();
  EXPECT_TRUE(p.platform.windows().topmost(p.controls()));
}

TEST_F(Controls, aReleasedThumbIsStoredAtOnceAndSentLater) {
  p.press("Hold");
  p.pass();
  p.clear();
  p.scroll(panel().vsTxPwr, 5);
  EXPECT_EQ(panel().txtTxPwr.text(), "2.5");
  EXPECT_EQ(r().TxPower, 2.5);
  EXPECT_EQ(r().PendingTxPower, -1);
  EXPECT_EQ(r().PendingControl, -1);
  EXPECT_FALSE(p.main().Timer1.enabled());
  p.expectCalls({});
  p.pass();
  p.expectCalls({host::txPower(2.5)});
  p.pass();
  EXPECT_TRUE(p.main().Timer1.enabled());
}

TEST_F(Controls, whileDraggingOnlyTheTextsFollow) {
  p.op().drag(panel().vsTxPwr, 127);
  EXPECT_EQ(panel().txtTxPwr.text(), "63.5");
  EXPECT_EQ(r().TxPower, 63.5) << "the power is stored with its text";
  p.op().drag(panel().vsRxGain, 55);
  EXPECT_EQ(panel().txtRxGain.text(), "55");
  EXPECT_EQ(r().RxGain, 1200);
  p.op().drag(panel().vsPhase, -7);
  EXPECT_EQ(panel().txtPhase.text(), "-7");
  EXPECT_EQ(r().LockPhase, 30);
  EXPECT_EQ(r().PendingControl, 0);
}

TEST_F(Controls, gainAndPhaseAreStoredAndSent) {
  p.scroll(panel().vsRxGain, 4321);
  EXPECT_EQ(panel().txtRxGain.text(), "4321");
  EXPECT_EQ(r().RxGain, 4321);
  EXPECT_EQ(r().PendingRxGain, -1);
  p.pass();
  p.expectCalls({host::rxGain(4321)});
  p.scroll(panel().vsPhase, -90);
  EXPECT_EQ(panel().txtPhase.text(), "-90");
  EXPECT_EQ(r().LockPhase, 270);
  EXPECT_EQ(r().PendingPhase, -1);
  p.pass();
  p.expectCalls({host::phase(270)});
}

TEST_F(Controls, arrowsAndTroughCountAsChanges) {
  p.op().step(panel().vsTxPwr, 41);
  p.pass();
  p.expectCalls({host::txPower(20.5)});
}

TEST_F(Controls, twoQuickChangesShareOneRequestAndTheSecondWaits) {
  p.scroll(panel().vsRxGain, 10);
  p.scroll(panel().vsTxPwr, 10);
  p.pass(3);
  p.expectCalls({host::txPower(5)});
  EXPECT_EQ(r().PendingRxGain, -1);
  p.scroll(panel().vsPhase, 10);
  p.pass(3);
  p.expectCalls({host::rxGain(10)});
}

TEST_F(Controls, inSweepEachChangeRearmsTheSweep) {
  p.press("Sweep");
  p.pass();
  p.main().Timer1.setInterval(0); // no ticks in the list
  p.clear();
  p.scroll(panel().vsTxPwr, 50);
  p.pass();
  p.expectCalls({host::txPower(25), host::sample(r().Frequency), host::mode(2)});
  p.scroll(panel().vsRxGain, 50);
  p.pass();
  p.expectCalls({host::rxGain(50), host::sample(r().Frequency), host::mode(2)});
  p.scroll(panel().vsPhase, 50);
  p.pass();
  p.expectCalls({host::phase(50), host::sample(r().Frequency), host::mode(2)});
}

TEST_F(Controls, outsideSweepNothingIsRearmed) {
  for (const char* button : {"Lock", "Hold", "Auto", "Phase", "Off"}) {
    if (std::string(button) == "Lock") p.host().words[6] = 9;
    p.press(button);
    p.pass();
    p.main().Timer1.setInterval(0);
    p.clear();
    p.program().frmControls->vsPhaseChange();
    EXPECT_EQ(p.calls().size(), 1U) << button;
  }
}

TEST_F(Controls, aModeChosenDuringTheSampleIsNotOverwritten) {
  p.press("Sweep");
  p.pass();
  p.main().Timer1.setInterval(0);
  p.clear();
  p.platform.pump().atYield(2, [&] { p.press("Off"); });
  p.program().frmControls->vsRxGainChange();
  EXPECT_EQ(r().LockMode, kModeOff);
  const host::Lines calls = p.calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), host::mode(2)), 0);
}

TEST_F(Controls, theOffsetIsLoweredWhenThePowerLeavesNoRoom) {
  p.scroll(panel().vsTxPwr, 120);
  p.pass();
  EXPECT_EQ(r().DeltaTxPwr, 3.5);
  p.scroll(panel().vsTxPwr, 40);
  p.pass();
  EXPECT_EQ(r().DeltaTxPwr, 3.5) << "only a reload brings it back";
  EXPECT_EQ(r().StartDeltaTxPwr, 10);
}

TEST_F(Controls, whileSweepingTheOffsetCannotBeMoreThanThePower) {
  p.press("Sweep");
  p.pass();
  p.scroll(panel().vsTxPwr, 8);
  p.pass();
  EXPECT_EQ(r().DeltaTxPwr, 4);
  p.scroll(panel().vsTxPwr, 127);
  p.pass();
  EXPECT_EQ(r().DeltaTxPwr, 4);
}

TEST_F(Controls, typedPowerGoesThroughTheBar) {
  typeInto(panel().txtTxPwr, "63.5");
  EXPECT_EQ(panel().vsTxPwr.value(), 127);
  EXPECT_EQ(r().DeltaTxPwr, 0) << "by typing as well";
  p.expectCalls({host::txPower(63.5)});
  typeInto(panel().txtTxPwr, "10,5");
  EXPECT_EQ(panel().vsTxPwr.value(), 21);
  p.expectCalls({host::txPower(10.5)});
}

TEST_F(Controls, powerOutOfRangeBeepsAndShowsTheStoredOne) {
  for (const char* text : {"63.6", "-0.1", "1e9"}) {
    p.clear();
    typeInto(panel().txtTxPwr, text);
    EXPECT_EQ(p.beeps(), 1) << text;
    EXPECT_EQ(panel().txtTxPwr.text(), "20") << "in general form";
    EXPECT_EQ(r().TxPower, 20);
    EXPECT_TRUE(panel().txtTxPwr.hasFocus());
    p.expectCalls({});
  }
}

TEST_F(Controls, textThatIsNoNumberStaysInItsBox) {
  for (controls::TextBox* box :
       {&panel().txtTxPwr, &panel().txtRxGain, &panel().txtPhase, &panel().txtSolventPPM}) {
    const std::string before = box->text();
    p.clear();
    typeInto(*box, "abc");
    EXPECT_EQ(p.beeps(), 1) << box->name();
    EXPECT_EQ(box->text(), "abc");
    EXPECT_TRUE(box->hasFocus());
    p.expectCalls({});
    typeInto(*box, before);
  }
  EXPECT_EQ(r().TxPower, 20);
  EXPECT_EQ(r().RxGain, 1200);
}

TEST_F(Controls, leavingABoxIsTakingIt) {
  p.type(panel().txtRxGain, "300");
  EXPECT_EQ(r().RxGain, 1200);
  p.leaveTo(panel().txtPhase);
  EXPECT_EQ(r().RxGain, 300);
  p.type(panel().txtPhase, "x");
  p.leaveTo(panel().txtRxGain);
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_TRUE(panel().txtPhase.hasFocus()) << "an invalid box keeps the focus";
}

TEST_F(Controls, enterIsSwallowedInEveryBox) {
  for (controls::TextBox* box : {&panel().txtTxPwr, &panel().txtRxGain, &panel().txtPhase,
                                 &panel().txtSolventPPM, &panel().txtLockFreq}) {
    p.op().focus(*box);
    EXPECT_TRUE(p.op().key(panel(), Enter)) << box->name();
  }
}

TEST_F(Controls, gainsOutOfRangeBeepAndStay) {
  for (const char* text : {"10001", "-1", "10000.5"}) {
    p.clear();
    typeInto(panel().txtRxGain, text);
    EXPECT_EQ(p.beeps(), 1) << text;
    EXPECT_EQ(panel().txtRxGain.text(), text);
    EXPECT_EQ(r().RxGain, 1200);
  }
  typeInto(panel().txtRxGain, "10000");
  EXPECT_EQ(r().RxGain, 10000);
  typeInto(panel().txtRxGain, "0");
  EXPECT_EQ(r().RxGain, 0);
  typeInto(panel().txtRxGain, "2,5");
  EXPECT_EQ(r().RxGain, 2);
}

struct PhaseCase {
  const char* typed;
  int bar, stored;
};
class TypedPhase : public testing::TestWithParam<PhaseCase> {};
INSTANTIATE_TEST_SUITE_P(Controls, TypedPhase,
                         testing::Values(PhaseCase{"200", -160, 200}, PhaseCase{"-200", 160, 160},
                                         PhaseCase{"180", 180, 180}, PhaseCase{"-180", -180, 180},
                                         PhaseCase{"-90", -90, 270}, PhaseCase{"360", 0, 0},
                                         PhaseCase{"2.5", 2, 2}, PhaseCase{"3,5", 4, 4},
                                         PhaseCase{"180.5", -180, 180}));

TEST_P(TypedPhase, isFoldedOnce) {
  Panel p;
  p.set("Display", "ShowControls", "1").started();
  p.typeInto(p.controls().txtPhase, GetParam().typed);
  EXPECT_EQ(p.controls().vsPhase.value(), GetParam().bar);
  EXPECT_EQ(p.record().LockPhase, GetParam().stored);
  EXPECT_EQ(p.beeps(), 0);
}

TEST_F(Controls, aPhaseMoreThanATurnAwayIsRefused) {
  typeInto(panel().txtPhase, "600");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(r().LockPhase, 30);
}

TEST_F(Controls, anyFrequencyIsTakenAndSent) {
  typeInto(panel().txtLockFreq, "46,5");
  EXPECT_EQ(r().Frequency, 46.5);
  p.expectCalls({host::frequency(46.5)});
  typeInto(panel().txtLockFreq, "none");
  EXPECT_EQ(r().Frequency, 0);
  p.expectCalls({host::frequency(0)});
}

TEST_F(Controls, numbersThatNothingCanHoldAreNotSent) {
  const double before = r().Frequency;
  p.expectBox("Run-time error '6':\r\n\r\nOverflow\r\n\r\nLock frequency in MHz", ports::Answer::Ok);
  typeInto(panel().txtLockFreq, "1e999");
  p.expectBox("Run-time error '6':\r\n\r\nOverflow\r\n\r\nSolvent shift in ppm", ports::Answer::Ok);
  panel().txtLockFreq.setText("46");
  p.type(panel().txtSolventPPM, "1e39");
  p.clear();
  p.op().enter(panel().txtSolventPPM);
  EXPECT_EQ(p.calls(), host::Lines{});
  EXPECT_NE(r().Frequency, before) << "46, taken when its box was left";
  panel().txtSolventPPM.setText("4.8");
}

TEST_F(Controls, aFilterChoiceIsStoredAndSent) {
  p.option(panel().optBW[2]);
  EXPECT_EQ(r().RxFilterIndex, 2);
  p.expectCalls({host::rxFilter(500)});
  p.option(panel().optBW[0]);
  EXPECT_EQ(r().RxFilterIndex, 0);
  p.expectCalls({host::rxFilter(20)});
  p.option(panel().optBW[0]);
  p.expectCalls({});
}

TEST_F(Controls, theHiddenFilterHasItsOwnBandwidth) {
  panel().Text1.setText("750");
  EXPECT_EQ(r().RxFilterBW[3], 750);
  panel().Text1.setText("wide");
  EXPECT_EQ(r().RxFilterBW[3], 750);
  panel().optBW[3].setValue(true);
  p.expectCalls({host::rxFilter(750)});
  EXPECT_EQ(r().RxFilterIndex, 3);
}

TEST_F(Controls, undoRestoresPanelAndRecordAndSendsNothing) {
  const double frequency = r().Frequency;
  p.scroll(panel().vsTxPwr, 100);
  p.scroll(panel().vsRxGain, 5);
  p.scroll(panel().vsPhase, -100);
  p.option(panel().optBW[2]);
  p.choose(panel().cmbSolvents, "D2O");
  p.pass(5);
  r().PendingControl = r().PendingTxPower = r().PendingRxGain = r().PendingPhase = kFalse;
  p.clear();
  panel().mnuMain(0).click();
  p.pass(3);
  p.expectCalls({});
  EXPECT_EQ(r().PendingTxPower, 0);
  EXPECT_EQ(r().TxPower, 20);
  EXPECT_EQ(r().RxGain, 1200);
  EXPECT_EQ(r().LockPhase, 30);
  EXPECT_EQ(r().Frequency, 46.04475) << "as it was before the load chose the solvent";
  EXPECT_NE(frequency, r().Frequency);
  EXPECT_EQ(r().SolventPPM, 7.24F);
  EXPECT_EQ(r().LockSolvent, "CDCl3");
  EXPECT_EQ(r().RxFilterIndex, 1);
  EXPECT_EQ(panel().txtSolventPPM.text(), "7.24");
  EXPECT_EQ(panel().txtLockFreq.text(), "46.04475");
  EXPECT_EQ(panel().vsTxPwr.value(), 40);
  EXPECT_EQ(panel().vsRxGain.value(), 1200);
  EXPECT_EQ(panel().vsPhase.value(), 30);
  EXPECT_EQ(panel().cmbSolvents.text(), "CDCl3");
  EXPECT_TRUE(panel().optBW[1].value());
  p.scroll(panel().vsTxPwr, 50);
  p.pass();
  p.expectCalls({host::txPower(25)});
}

TEST_F(Controls, undoFoldsThePhaseAsTheLoadDoes) {
  p.platform.windows().close(panel());
  p.pass();
  r().LockPhase = 270;
  p.menu("Controls/NMR Controls");
  p.scroll(panel().vsPhase, 5);
  panel().mnuMain(0).click();
  EXPECT_EQ(panel().vsPhase.value(), -90);
  EXPECT_EQ(r().LockPhase, 270);
}

TEST_F(Controls, saveWritesTheFileAndReadsTheTablesAgain) {
  p.scroll(panel().vsRxGain, 999);
  p.pass();
  panel().mnuMain(20).click();
  EXPECT_EQ(p.setting("Hardware", "RxGain"), "999");
  EXPECT_EQ(p.setting("Solvents_RxGain", "CDCl3"), "999");
  EXPECT_EQ(p.program().solvents.RxGain[0], 999);
  EXPECT_EQ(panel().vsRxGain.value(), 999);
}

TEST_F(Controls, theHostFailingUnderAFilterChoiceIsTold) {
  p.host().failAll();
  p.expectBox("Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error", ports::Answer::Ok);
  p.option(panel().optBW[2]);
  EXPECT_EQ(r().RxFilterIndex, 2);
}

} // namespace
