#include "base/RuntimeError.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "support/Panel.h"
#include "ui/panels/frmLevel.h"

namespace {

using ActiveNMRAppInterface::ApplyLockParameters;
using support::Panel;

struct Case {
  int state;
  bool initializing, testing;
};

struct Expected {
  int button;
  std::int16_t mode;
  const char* status;
};

Expected expectedFor(int state) {
  switch (state) {
  case 1:
    return {frmLock::ButtonLock, kModeLock, "HOLD"};
  case 2:
    return {frmLock::ButtonSweep, kModeSweep, "SWEEP"};
  case 3:
    return {frmLock::ButtonHold, kModeHold, "HOLD"};
  default:
    return {frmLock::ButtonOff, kModeOff, "OFF"};
  }
}

// A program that has loaded its settings and is about to apply them.
void load(Panel& p, int state, bool initializing) {
  p.host().hardwareState = state;
  p.record().IniPath = Panel::kIniPath;
  ASSERT_TRUE(ActiveNMRAppInterface::takeRunningHost(p.program()));
  p.record().Initializing = kTrue;
  p.main();
  vbLock_mod::LoadLockSettings(p.program());
  p.record().Initializing = flag(initializing);
  p.clear();
}

class Apply : public testing::TestWithParam<Case> {};
std::vector<Case> allCases() {
  std::vector<Case> cases;
  for (const int state : {0, 1, 2, 3, 7, -1, 4})
    for (const bool initializing : {true, false})
      for (const bool testing : {true, false}) cases.push_back({state, initializing, testing});
  return cases;
}
INSTANTIATE_TEST_SUITE_P(States, Apply, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<Case>& i) {
                           const Case& c = i.param;
                           return std::string("state") + (c.state < 0 ? "Minus1" : std::to_string(c.state)) +
                                  (c.initializing ? "_initializing" : "_running") +
                                  (c.testing ? "_testing" : "");
                         });

TEST_P(Apply, bringsProgramAndHardwareIntoAgreement) {
  const Case c = GetParam();
  Panel p;
  p.set("Hardware", "Testing", c.testing ? "true" : "false");
  load(p, c.state, c.initializing);
  LockParameters& r = p.record();
  r.ModeButtonDown = {5, 5, 5, 5, 5, 5, 5};
  r.LockState = kLocked;
  r.LockMode = kModePhase;
  p.main().Timer1.setEnabled(c.state == 0);
  ApplyLockParameters(p.program());

  const Expected want = expectedFor(c.state);
  host::Lines calls{host::hardwareState()};
  if (!c.initializing) host::append(calls, {host::field(400), host::sweepWidth(8000)});
  if (want.mode == kModeOff) {
    host::append(calls, {host::txPower(20), host::frequency(46.04475)});
    if (!c.initializing) host::append(calls, {host::phase(30)});
    host::append(calls, {host::rxGain(1200)});
    EXPECT_EQ(r.PhaseMilliTurns, 83);
  }
  p.expectTranscript({calls});

  EXPECT_EQ(r.LockMode, want.mode);
  EXPECT_EQ(r.LockStatus, want.status);
  EXPECT_EQ(p.status(), want.status);
  EXPECT_EQ(p.main().Toolbar1.pressed(), want.button);
  EXPECT_EQ(p.main().Timer1.enabled(), want.mode != kModeOff);
  for (const std::size_t i : {0U, 1U, 2U}) EXPECT_EQ(p.main().Label2[i].visible(), c.state == 2);
  const std::array<std::int16_t, 7> down{
      want.mode == 0, want.mode == 1, want.mode == 2, want.mode == 3, 5, 5, 5};
  EXPECT_EQ(r.ModeButtonDown, down);
  EXPECT_EQ(r.LockState, c.state == 1 ? kJustEntered : kLocked);
  EXPECT_EQ(r.TxPower, c.state == 2 && !c.testing ? 30 : 20);
  EXPECT_EQ(r.DeltaTxPwr, c.testing ? 0 : 10);
  EXPECT_EQ(r.SweepSpeedNow, 20000);
  EXPECT_EQ(r.FieldCenterNow, 400);
  EXPECT_EQ(r.SweepUpper, 4400);
  EXPECT_EQ(r.SweepLower, -3600);
  EXPECT_EQ(p.main().hsCenter.value(), 100);
  EXPECT_EQ(r.AmplitudeExponent, 9);
  // The scroll bar's move is a change like any other once the program runs.
  EXPECT_EQ(r.PendingFieldCenter, flag(!c.initializing));
  EXPECT_EQ(r.PendingControl, flag(!c.initializing));
}

void applyWith(Panel& p, int state, const char* power, const char* offset) {
  p.set("Hardware", "TxPower", power).set("Hardware", "DeltaTxPwr", offset);
  load(p, state, true);
  ApplyLockParameters(p.program());
}

TEST(ApplyPower, aSweepThatWouldPassTheLimitBeepsAndIsClamped) {
  Panel p;
  applyWith(p, 2, "60", "10");
  EXPECT_EQ(p.beeps(), 1);
  EXPECT_EQ(p.record().TxPower, 63.5);
  EXPECT_EQ(p.record().DeltaTxPwr, 3.5);
}

TEST(ApplyPower, aSweepAtTheLimitDoesNotBeep) {
  Panel p;
  applyWith(p, 2, "60", "3.5");
  EXPECT_EQ(p.beeps(), 0);
  EXPECT_EQ(p.record().TxPower, 63.5);
  EXPECT_EQ(p.record().DeltaTxPwr, 3.5);
}

TEST(ApplyPower, otherStatesClampTheOffsetAlone) {
  for (const int state : {0, 1, 3, 7}) {
    Panel p;
    applyWith(p, state, "63.5", "2");
    EXPECT_EQ(p.beeps(), 0);
    EXPECT_EQ(p.record().DeltaTxPwr, 0);
    EXPECT_EQ(p.record().TxPower, 63.5);
  }
}

struct Position {
  const char* centre;
  int scroll;
};
class ApplyCentre : public testing::TestWithParam<Position> {};
INSTANTIATE_TEST_SUITE_P(Centre, ApplyCentre,
                         testing::Values(Position{"10", 2}, Position{"14", 4}, Position{"-10", -2},
                                         Position{"131068", 32767}, Position{"-131068", -32767},
                                         Position{"131069", 32767}));

TEST_P(ApplyCentre, scrollsToAQuarterWithHalvesToEven) {
  Panel p;
  p.set("Hardware", "FieldCenter", GetParam().centre);
  load(p, 0, true);
  ApplyLockParameters(p.program());
  EXPECT_EQ(p.main().hsCenter.value(), GetParam().scroll);
}

TEST(ApplyCentreRefused, aHalfPastTheBarsEndIsRefused) {
  Panel p;
  p.set("Hardware", "FieldCenter", "131070"); // 32767.5 rounds to 32768
  load(p, 0, true);
  EXPECT_THROW(ApplyLockParameters(p.program()), base::RuntimeError);
}

TEST(ApplyCentreRefused, nothingIsSentNorStored) {
  Panel p;
  p.started();
  p.set("Hardware", "FieldCenter", "200000");
  vbLock_mod::LoadLockSettings(p.program());
  EXPECT_THROW(ApplyLockParameters(p.program()), base::RuntimeError);
  p.expectCalls({host::hardwareState()});
  EXPECT_EQ(p.record().FieldCenterNow, 400);
}

TEST(ApplyPreferences, theAmplitudeIsTheNearestPowerOfTwo) {
  for (const auto& [plotMax, exponent] :
       {std::pair{"500", 9}, {"512", 9}, {"1", 0}, {"700", 9}, {"800", 10}}) {
    Panel p;
    p.set("Display", "PlotMax", plotMax);
    load(p, 0, true);
    ApplyLockParameters(p.program());
    EXPECT_EQ(p.record().AmplitudeExponent, exponent) << plotMax;
  }
}

TEST(ApplyPreferences, theUnitsMenuShowsThePresentUnit) {
  Panel p;
  load(p, 0, true);
  p.record().DisplayUnits = 2;
  p.main().mnuUnits(0).setChecked(true);
  ApplyLockParameters(p.program());
  for (int i = 0; i <= 2; ++i) EXPECT_EQ(p.main().mnuUnits(i).checked(), i == 2);
}

TEST(ApplyPreferences, theTraceMarksHaveOppositeSenses) {
  for (const int real : {0, 1})
    for (const int imag : {0, 1}) {
      Panel p;
      p.set("Display", "ShowReal", std::to_string(real)).set("Display", "ShowImag", std::to_string(imag));
      load(p, 0, true);
      p.main().mnuPrefs(1).setChecked(false);
      p.main().mnuPrefs(2).setChecked(false);
      ApplyLockParameters(p.program());
      EXPECT_EQ(p.main().mnuPrefs(1).checked(), real == 0);
      EXPECT_EQ(p.main().mnuPrefs(2).checked(), imag == 1);
    }
}

TEST(ApplyPreferences, marksThatNeedNoChangeAreLeftAlone) {
  Panel p; // ShowReal 1, ShowImag 0
  load(p, 0, true);
  p.main().mnuPrefs(1).setChecked(true);
  p.main().mnuPrefs(2).setChecked(true);
  ApplyLockParameters(p.program());
  EXPECT_TRUE(p.main().mnuPrefs(1).checked());
  EXPECT_TRUE(p.main().mnuPrefs(2).checked());
}

TEST(ApplyPreferences, levelMeterLogAndTimerPreferencesGoOff) {
  Panel p;
  p.started();
  p.menu("Preferences/Show Lock Level");
  p.menu("Preferences/Log Enabled");
  ASSERT_TRUE(p.program().frmLevel->visible());
  ApplyLockParameters(p.program());
  EXPECT_EQ(p.record().ShowLockLevel, 0);
  EXPECT_EQ(p.record().LogEnabled, 0);
  EXPECT_EQ(p.record().UseTimer, 0);
  for (const int item : {5, 10, 15}) EXPECT_FALSE(p.main().mnuPrefs(item).checked());
  EXPECT_FALSE(p.program().frmLevel->visible());
}

TEST(ApplyFailures, aStateThatCannotBeReadStopsBeforeAnythingElse) {
  Panel p;
  load(p, 0, true);
  p.host().fail(197);
  EXPECT_THROW(ApplyLockParameters(p.program()), base::RuntimeError);
  EXPECT_EQ(p.record().SweepUpper, 0);
  p.expectCalls({host::hardwareState()});
}

TEST(ApplyFailures, aFailedSendStopsTheRest) {
  Panel p;
  load(p, 0, true);
  p.host().fail(198);
  EXPECT_THROW(ApplyLockParameters(p.program()), base::RuntimeError);
  p.expectCalls({host::hardwareState(), host::txPower(20), host::frequency(46.04475)});
}

TEST(ApplyFailures, aPlotWithoutHeightIsAnInvalidCall) {
  Panel p;
  load(p, 0, true);
  p.record().PlotMax = 0;
  try {
    ApplyLockParameters(p.program());
    FAIL() << "accepted";
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.number, 5);
  }
}

TEST(ApplyReload, theMenuAppliesTheOpenedFile) {
  Panel p;
  p.started();
  p.platform.memorySettings().text("D:\\b.ini") = support::standardIni();
  p.platform.memorySettings().write("D:\\b.ini", "Hardware", "FieldCenter", "800");
  p.platform.dialogs().expectOpenFile("D:\\b.ini");
  p.menu("File/Open Settings");
  p.expectCalls({host::hardwareState(), host::field(800), host::sweepWidth(8000), host::txPower(20),
                 host::frequency(46.04475), host::phase(30), host::rxGain(1200)});
  p.pass();
  p.expectCalls({host::sweepSettings(800, 8000, 20000)});
}

} // namespace
