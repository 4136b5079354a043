#include "support/Panel.h"
#include <gtest/gtest.h>

namespace {

using namespace host;
using ports::Answer;
using support::Panel;

constexpr const char* kOverflow = "Input New Field Center overflow! Retry.";
constexpr const char* kPrompt = "New Field Center (DAC Units)";

class FieldCentre : public testing::Test {
 protected:
  void SetUp() override {
    p.host().words[6] = 100;
    p.started();
  }
  frmLock& main() { return p.main(); }
  LockParameters& record() { return p.record(); }
  int typed(const std::string& text) {
    p.typeInto(main().txtCenter, text);
    return record().FieldCenter;
  }
  Panel p;
};

TEST_F(FieldCentre, typedValuesGoDownToAMultipleOfFour) {
  EXPECT_EQ(typed("10"), 8);
  EXPECT_EQ(main().txtCenter.text(), "8");
  EXPECT_EQ(typed("-10"), -12);
  EXPECT_EQ(typed("3.99"), 0);
  EXPECT_EQ(typed("-0.1"), -4);
  EXPECT_EQ(typed("1e3"), 1000);
  EXPECT_EQ(typed("400"), 400);
}

TEST_F(FieldCentre, theEndsOfTheRangeAreAccepted) {
  EXPECT_EQ(typed("131068"), 131068);
  EXPECT_EQ(typed("-131068"), -131068);
  EXPECT_TRUE(p.boxes().empty());
}

TEST_F(FieldCentre, pastTheEndsTheOperatorIsAskedAgain) {
  for (const char* text : {"131069", "-131069", "1e300"}) {
    p.clear();
    p.expectBox(kOverflow, Answer::Ok);
    p.platform.dialogs().expectInput(kPrompt, "");
    EXPECT_EQ(typed(text), 400) << "unchanged";
    EXPECT_EQ(p.boxes(),
              (Lines{std::string("box [Fatal Error] ") + kOverflow + " (Ok) -> Ok",
                     std::string("input [Vantrel Lock] ") + kPrompt + " \"" + text + "\" -> \"\""}));
    main().txtCenter.setText("400");
  }
}

TEST_F(FieldCentre, theAnswerIsTakenAsTyped) {
  p.expectBox(kOverflow, Answer::Ok);
  p.platform.dialogs().expectInput(kPrompt, "no number");
  p.platform.dialogs().expectInput(kPrompt, "200000");
  p.expectBox(kOverflow, Answer::Ok);
  p.platform.dialogs().expectInput(kPrompt, "813");
  EXPECT_EQ(typed("131070"), 812);
}

TEST_F(FieldCentre, textThatIsNoNumberBeepsAndKeepsTheFocus) {
  for (const char* text : {"abc", "", "1e", "12x"}) {
    p.clear();
    p.type(main().txtCenter, text);
    p.op().focus(main().Toolbar1);
    EXPECT_EQ(p.beeps(), 1) << text;
    EXPECT_TRUE(main().txtCenter.hasFocus());
    EXPECT_EQ(main().txtCenter.text(), text);
    EXPECT_EQ(record().FieldCenter, 400);
    EXPECT_TRUE(p.boxes().empty());
  }
}

TEST_F(FieldCentre, enterIsSwallowedAndOtherKeysAreNot) {
  p.type(main().txtCenter, "44");
  EXPECT_TRUE(main().txtCenter.userKeyPress(13));
  EXPECT_EQ(record().FieldCenter, 44);
  EXPECT_FALSE(main().txtCenter.userKeyPress('5'));
}

TEST_F(FieldCentre, leavingTheBoxTakesTheValueToo) {
  p.type(main().txtCenter, "48");
  EXPECT_EQ(record().FieldCenter, 400);
  p.leaveTo(main().hsCenter);
  EXPECT_EQ(record().FieldCenter, 48);
}

TEST_F(FieldCentre, aChangeSetsTheSweepLimitsAndWaitsForTheIdleLoop) {
  record().SweepWidth = 8001;
  main().Timer1.setEnabled(true);
  main().hsCenter.setValue(25);
  EXPECT_EQ(record().FieldCenter, 100);
  EXPECT_EQ(record().FieldCenterNow, 100);
  EXPECT_EQ(record().SweepUpper, 4100) << "4100.5 to even";
  EXPECT_EQ(record().SweepLower, -3900) << "-3900.5 to even";
  EXPECT_EQ(main().txtCenter.text(), "100");
  EXPECT_EQ(main().Label2[2].caption(), "100");
  EXPECT_FALSE(main().Timer1.enabled());
  EXPECT_TRUE(record().PendingFieldCenter);
  EXPECT_TRUE(record().PendingControl);
  p.expectCalls({});
  p.pass();
  p.expectCalls({sweepSettings(100, 8000, 20000)});
}

TEST_F(FieldCentre, inEveryModeButHoldTheSweepSettingsAreSentAndTheAxisFollows) {
  for (const char* button : {"Off", "Sweep", "Phase"}) {
    p.press(button);
    p.pass(5);
    p.clear();
    p.scroll(main().hsCenter, main().hsCenter.value() + 10);
    p.expectCalls({});
    p.pass();
    p.expectCalls({sweepSettings(record().FieldCenter, 8000, 20000)});
    EXPECT_EQ(main().Picture1.scaleLeft(), static_cast<float>(record().SweepLower));
  }
}

TEST_F(FieldCentre, inHoldTheNewFieldIsHeld) {
  p.press("Hold");
  p.pass(5);
  p.clear();
  p.scroll(main().hsCenter, 50);
  p.pass();
  p.expectCalls({holdAt(200)});
  EXPECT_FALSE(main().Timer1.enabled());
  p.pass();
  EXPECT_TRUE(main().Timer1.enabled()) << "once nothing is left to do";
}

TEST_F(FieldCentre, draggingOnlyShowsTheValue) {
  p.op().drag(main().hsCenter, -30);
  EXPECT_EQ(main().txtCenter.text(), "-120");
  EXPECT_EQ(main().Label2[2].caption(), "-120");
  EXPECT_EQ(record().FieldCenter, 400);
  EXPECT_EQ(record().FieldCenterNow, 400);
  EXPECT_FALSE(record().PendingControl);
  p.op().release(main().hsCenter);
  EXPECT_EQ(record().FieldCenter, -120);
  EXPECT_TRUE(record().PendingControl);
}

TEST_F(FieldCentre, theBarRunsOverTheWholeField) {
  EXPECT_EQ(main().hsCenter.minimum(), -32767);
  EXPECT_EQ(main().hsCenter.maximum(), 32767);
  main().hsCenter.setValue(-32767);
  EXPECT_EQ(record().FieldCenter, -131068);
}

TEST_F(FieldCentre, duringStartUpNothingIsQueued) {
  record().Initializing = kTrue;
  main().Timer1.setEnabled(true);
  main().hsCenter.setValue(7);
  EXPECT_EQ(record().FieldCenter, 28);
  EXPECT_EQ(record().SweepLower, 28 - 4000);
  EXPECT_FALSE(record().PendingControl);
  EXPECT_FALSE(record().PendingFieldCenter);
  EXPECT_TRUE(main().Timer1.enabled());
}

TEST_F(FieldCentre, theReadoutIsLargeWhileTheBarHasTheFocus) {
  controls::Label& readout = main().Label2[2];
  const float points = readout.font().points;
  readout.setVisible(false);
  p.op().focus(main().hsCenter);
  EXPECT_EQ(readout.font().points, 4 * points);
  EXPECT_TRUE(readout.opaque());
  EXPECT_TRUE(readout.visible());
  p.op().focus(main().txtCenter);
  EXPECT_EQ(readout.font().points, points);
  EXPECT_FALSE(readout.opaque());
  EXPECT_TRUE(readout.visible()) << "left as it is";
  EXPECT_EQ(readout.left(), main().Picture1.toTwipsX(400));
}

TEST_F(FieldCentre, theFontSizeIsRememberedAsAWholeNumber) {
  controls::Label& readout = main().Label2[2];
  readout.setFont({8.5F, false});
  p.op().focus(main().hsCenter);
  EXPECT_EQ(readout.font().points, 32);
  p.op().focus(main().txtCenter);
  EXPECT_EQ(readout.font().points, 8);
}

class PlotMenu : public FieldCentre {
 protected:
  void SetUp() override {
    FieldCentre::SetUp();
    main().Picture1.setScale(-4000, 500, 4000, -500);
  }
  void rightClickAt(float x) {
    main().Picture1.mouseDown(controls::MouseButton::Right, 0, main().Picture1.toTwipsX(x), 100);
  }
};

TEST_F(PlotMenu, aRightClickOffersItsPositionAsTheCentre) {
  p.platform.windows().choosePopup("Reset &Center to 1500");
  rightClickAt(1500.75F);
  EXPECT_EQ(record().FieldCenter, 1500);
  p.platform.windows().choosePopup("Reset &Center to -1502");
  rightClickAt(-1502.75F);
  EXPECT_EQ(record().FieldCenter, -1504) << "cut, then down to a multiple of four";
}

TEST_F(PlotMenu, aLeftClickIsRememberedWithoutAMenu) {
  main().Picture1.mouseDown(controls::MouseButton::Left, 0, main().Picture1.toTwipsX(-800), 100);
  EXPECT_EQ(main().mnuPicture1Popup(1).caption(), "&Set Center Here");
  main().mnuPicture1Popup(1).click();
  EXPECT_EQ(record().FieldCenter, -800);
}

TEST_F(PlotMenu, dismissedItChangesNothing) {
  rightClickAt(1000);
  EXPECT_EQ(record().FieldCenter, 400);
}

TEST_F(PlotMenu, redrawClearsThePlot) {
  main().Picture1.line(0, 0, 1, 1, 5);
  const int clears = p.canvas().clears;
  p.platform.windows().choosePopup("Redraw");
  rightClickAt(0);
  EXPECT_EQ(p.canvas().clears, clears + 1);
  EXPECT_EQ(p.canvas().lines.size(), 18U);
}

TEST_F(PlotMenu, zeroIsTakenAsTyped) {
  p.platform.windows().choosePopup("Set Center to Zero");
  rightClickAt(100);
  EXPECT_EQ(record().FieldCenter, 0);
  EXPECT_TRUE(record().PendingFieldCenter);
}

TEST_F(PlotMenu, askingRepeatsUntilANumberOrNothing) {
  p.platform.windows().choosePopup("Enter New Center Value");
  p.platform.dialogs().expectInput(kPrompt, "x");
  p.platform.dialogs().expectInput(kPrompt, "1 2");
  p.platform.dialogs().expectInput(kPrompt, "2001");
  rightClickAt(0);
  EXPECT_EQ(record().FieldCenter, 2000);
  EXPECT_EQ(p.boxes()[0], std::string("input [Vantrel Lock] ") + kPrompt + " \"400\" -> \"x\"");
  p.platform.windows().choosePopup("Enter New Center Value");
  p.platform.dialogs().expectInput(kPrompt, "");
  rightClickAt(0);
  EXPECT_EQ(record().FieldCenter, 2000);
}

TEST_F(PlotMenu, theHiddenItemsStayHidden) {
  EXPECT_FALSE(main().mnuMenuBar(6).visible());
  EXPECT_FALSE(main().mnuPicture1Popup(10).visible());
  EXPECT_FALSE(main().mnuPicture1Popup(15).visible());
  EXPECT_EQ(main().mnuPicture1Popup(15).caption(), "Change Peak Threshold");
}

} // namespace
