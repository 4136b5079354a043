#include "support/Panel.h"
#include "support/RecordingSettings.h"
#include "ui/panels/frmSweep.h"

namespace {

using ports::Answer;
using support::Panel;
using Kind = support::Kind;

const char* const kHostMissing = "There was an error attempting to open the Automation object!\r\n"
                                 "Start the Pelorin application; then Retry to continue the Lock session.\r\n"
                                 "Cancel to terminate the Lock session.";

TEST(StartUp, findsTheHostLoadsAppliesAndShowsTheWindow) {
  Panel p;
  p.startUp();
  EXPECT_EQ(p.texts({Kind::Find}).size(), 3U);
  p.expectCalls({host::hardwareState(), host::txPower(20), host::frequency(46.04475), host::rxGain(1200)});
  EXPECT_TRUE(p.main().visible());
  EXPECT_EQ(p.record().Initializing, 0);
  EXPECT_EQ(p.record().ShowMainWindow, -1);
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.record().LockState, kNotInLock);
  EXPECT_EQ(p.status(), "OFF");
  EXPECT_FALSE(p.main().Timer1.enabled());
}

TEST(StartUp, keepsTheOffsetAsLoaded) {
  Panel p;
  p.set("Hardware", "TxPower", "60").startUp();
  EXPECT_EQ(p.record().StartDeltaTxPwr, 10);
  EXPECT_EQ(p.record().DeltaTxPwr, 3.5) << "the clamp comes after the copy";
}

TEST(StartUp, holdsOneReferenceToTheHost) {
  Panel p;
  p.startUp();
  EXPECT_EQ(p.host().references(), 1);
}

TEST(StartUp, nothingIsSentThatBelongsToTheField) {
  Panel p;
  p.startUp();
  for (const std::string& call : p.calls())
    for (const char* id : {"27 ", "30 ", "204 ", "206 ", "31 "}) EXPECT_NE(call.rfind(id, 0), 0U) << call;
  EXPECT_EQ(p.record().PhaseMilliTurns, 83) << "30 degrees, in the record all the same";
  EXPECT_EQ(p.record().PendingControl, 0) << "the scroll bar queued nothing";
  EXPECT_EQ(p.main().hsCenter.value(), 100);
}

class CommandLine : public testing::TestWithParam<std::pair<const char*, bool>> {};
INSTANTIATE_TEST_SUITE_P(StartUp, CommandLine,
                         testing::Values(std::pair{"/NoWindow", false}, std::pair{"NOWINDOW", false},
                                         std::pair{"-x nowindows", false}, std::pair{"nowin", true},
                                         std::pair{"no window", true}, std::pair{"", true}));

TEST_P(CommandLine, onlyNowindowHidesTheMainWindow) {
  Panel p;
  p.platform.command = GetParam().first;
  p.startUp();
  EXPECT_EQ(p.main().visible(), GetParam().second);
  EXPECT_EQ(p.record().ShowMainWindow, GetParam().second ? -1 : 0);
  p.pass(3);
  EXPECT_TRUE(p.main().loaded()) << "hidden, it lives on";
}

TEST(StartUp, theSettingsLieOnTheProgramsDrive) {
  Panel p;
  p.platform.folder = "E:\\tools\\lock";
  p.platform.memorySettings().text("E:\\pelorin\\config\\LOCK.INI") =
      "[Hardware]\r\nRxGain=4321\r\n[Display]\r\nShowControls=0\r\n";
  p.startUp();
  EXPECT_EQ(p.record().HostDrive, "E");
  EXPECT_EQ(p.record().IniPath, "E:\\pelorin\\config\\LOCK.INI");
  EXPECT_EQ(p.record().RxGain, 4321);
}

TEST(StartUp, waitsForTheHostUntilRetryFindsIt) {
  Panel p;
  p.platform.hostFinder().hostRuns = false;
  p.expectBox(kHostMissing, Answer::Retry);
  p.expectBox(kHostMissing, Answer::Retry, [&] { p.platform.hostFinder().hostRuns = true; });
  p.startUp();
  EXPECT_EQ(p.boxes().front().rfind("box [Warning!] ", 0), 0U) << p.boxes().front();
  EXPECT_NE(p.boxes().front().find("(RetryCancel)"), std::string::npos);
  EXPECT_TRUE(p.main().Toolbar1.isPressed(frmLock::ButtonOff));
  EXPECT_EQ(p.status(), "OFF");
  EXPECT_FALSE(p.main().Timer1.enabled());
  EXPECT_EQ(p.host().references(), 1);
}

TEST(StartUp, cancelWithoutAHostEndsBeforeAnythingIsReadOrSaved) {
  Panel p;
  support::RecordingSettings store(p.platform.memorySettings());
  p.platform.useSettings(store);
  p.platform.hostFinder().hostRuns = false;
  p.expectBox(kHostMissing, Answer::Cancel);
  EXPECT_TRUE(p.ends([&] { vbLock_mod::Main(p.program()); }));
  EXPECT_TRUE(store.reads.empty());
  EXPECT_TRUE(store.writes.empty());
  p.expectCalls({});
}

TEST(StartUp, aSecondCopyRefusesAfterItHasAppliedTheFile) {
  Panel p;
  p.platform.otherCopyRuns = true;
  p.expectBox("Cannot run two copies of Vantrel Lock", Answer::Ok);
  EXPECT_TRUE(p.ends([&] { vbLock_mod::Main(p.program()); }));
  EXPECT_FALSE(p.main().visible());
  p.expectTranscript({host::hardwareState(), host::txPower(20), host::frequency(46.04475), host::rxGain(1200),
                      "box [Vantrel Lock] Cannot run two copies of Vantrel Lock (Ok) -> Ok", "end"});
}

TEST(StartUp, theWindowStandsWhereTheFileSays) {
  Panel p;
  p.startUp();
  EXPECT_EQ(p.main().rect(), (controls::Rect{600, 300, 9000, 7500}));
}

TEST(StartUp, aFreshFileKeepsTheDesignedSize) {
  Panel fresh("[Display]\r\nShowControls=0\r\n");
  const float width = fresh.main().width(), height = fresh.main().height();
  fresh.startUp();
  EXPECT_EQ(fresh.main().width(), width);
  EXPECT_EQ(fresh.main().height(), height);
  EXPECT_EQ(fresh.main().left(), 0);
  EXPECT_EQ(fresh.main().top(), 0);
}

TEST(StartUp, oneSizeMayBeMissing) {
  Panel p;
  p.set("Display", "FormWidth", "0").startUp();
  EXPECT_EQ(p.main().height(), 7500);
  EXPECT_GT(p.main().width(), 0);
}

TEST(StartUp, minusOneCentresTheWindow) {
  Panel p;
  p.set("Display", "FormLeft", "-1").startUp();
  const auto screen = p.platform.windows().screenSize();
  EXPECT_EQ(p.main().left(), (screen.width - 9000) / 2);
  EXPECT_EQ(p.main().top(), (screen.height - 7500) / 2);
}

TEST(StartUp, aPositionOffTheScreenIsUsedAsItStands) {
  Panel p;
  p.set("Display", "FormLeft", "-50000").startUp();
  EXPECT_EQ(p.main().left(), -50000);
}

TEST(StartUp, formMaxOpensTheWindowMaximised) {
  Panel p;
  p.set("Display", "FormMax", "2").startUp();
  EXPECT_EQ(p.main().windowState(), controls::WindowState::Maximised);
  EXPECT_EQ(p.main().rect(), (controls::Rect{600, 300, 9000, 7500}))
      << "the normal place is kept for restore";
}

TEST(StartUp, stayOnTopIsMarkedAndDone) {
  for (const bool onTop : {true, false}) {
    Panel p;
    p.set("Display", "StayOnTop", onTop ? "true" : "false").startUp();
    EXPECT_EQ(p.main().mnuPrefs(20).checked(), onTop);
    EXPECT_EQ(p.platform.windows().topmost(p.main()), onTop);
  }
}

TEST(StartUp, thePlotIsReadyInPowersOfTwo) {
  Panel p;
  p.startUp();
  EXPECT_EQ(p.record().AmplitudeExponent, 9);
  EXPECT_EQ(p.record().PlotMax, 512);
  EXPECT_EQ(p.main().Picture1.scaleTop(), 512);
  EXPECT_EQ(p.main().peakThresholdCaption(), "Peak Threshold =");
  EXPECT_FALSE(p.canvas().lines.empty());
}

TEST(StartUp, opensTheControlsPanelWhenItWasOpen) {
  Panel p;
  p.set("Display", "ShowControls", "1").startUp();
  EXPECT_TRUE(p.program().frmControls.loaded());
  EXPECT_TRUE(p.controls().visible());
  EXPECT_TRUE(p.main().mnuControls(21).checked());
  EXPECT_EQ(p.program().panels.ControlsShown, -1);
  EXPECT_EQ(p.program().panels.ControlsOpen, -1);
  EXPECT_EQ(p.record().PendingControl, 0) << "filling the panel queues nothing";
  // The panel's load chooses the stored solvent, which tunes the host.
  const double tuned = p.record().Frequency;
  p.expectCalls({host::hardwareState(), host::txPower(20), host::frequency(46.04475), host::rxGain(1200),
                 host::frequency(tuned)});
}

TEST(StartUp, aRunningLockIsLeftAlone) {
  for (const int state : {1, 2, 3}) {
    Panel p;
    p.host().hardwareState = state;
    p.startUp();
    p.expectCalls({host::hardwareState()});
    EXPECT_EQ(p.record().LockMode, state);
    p.pass();
    EXPECT_TRUE(p.main().Timer1.enabled());
  }
}

TEST(StartUp, aHostThatRefusesACallEndsTheProgramWithItsError) {
  for (const int dispid : {197, 28, 198, 26}) {
    Panel p;
    p.host().fail(dispid);
    p.expectBox("Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error", Answer::Ok);
    EXPECT_TRUE(p.ends([&] { vbLock_mod::Main(p.program()); })) << dispid;
    EXPECT_FALSE(p.main().visible());
  }
}

TEST(StartUp, endsWhenTheWindowIsClosed) {
  Panel p;
  p.expectBox("Save the changes?", Answer::No);
  p.platform.pump().postAfter(headless::kSecond, [&] { p.close(); });
  EXPECT_TRUE(p.ends([&] { vbLock_mod::Main(p.program()); }));
}

} // namespace
