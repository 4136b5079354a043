#include "hostlink/ActiveNMRAppInterface.h"
#include "support/Panel.h"

namespace {

using ActiveNMRAppInterface::ConnectHost;
using ports::Answer;
using support::kAnyText;
using support::Panel;
using Kind = support::Kind;

TEST(ConnectHost, aRunningHostIsTakenWithoutAWord) {
  Panel p;
  ConnectHost(p.program());
  EXPECT_EQ(p.texts({}), (host::Lines{"find host: running", "find host: running"}));
  EXPECT_EQ(p.host().references(), 1);
}

TEST(ConnectHost, theModeStaysUnlessOffIsPressed) {
  Panel p;
  p.record().LockMode = kModeHold;
  p.record().LockStatus = "HOLD";
  p.main().Toolbar1.press(frmLock::ButtonHold);
  p.main().hsCenter.setEnabled(false);
  ConnectHost(p.program());
  EXPECT_EQ(p.record().LockMode, kModeHold);
  EXPECT_EQ(p.record().LockStatus, "HOLD");
  EXPECT_FALSE(p.main().hsCenter.enabled());
}

TEST(ConnectHost, withOffPressedTheLockIsOff) {
  Panel p;
  p.record().LockMode = kModeHold;
  p.main().Timer1.setEnabled(true);
  p.main().hsCenter.setEnabled(false);
  p.main().Toolbar1.press(frmLock::ButtonOff);
  ConnectHost(p.program());
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.record().LockStatus, "OFF");
  EXPECT_FALSE(p.main().Timer1.enabled());
  EXPECT_TRUE(p.main().hsCenter.enabled());
  p.expectCalls({});
}

TEST(ConnectHost, everyRetryAsksAgainAndPressesOff) {
  Panel p;
  p.started();
  p.press("Hold");
  p.clear();
  p.platform.hostFinder().thenFinds({false, false, false});
  for (int i = 0; i < 3; ++i)
    p.expectBox(kAnyText, Answer::Retry,
                [&] { EXPECT_TRUE(p.main().Toolbar1.isPressed(frmLock::ButtonOff)); });
  ConnectHost(p.program());
  EXPECT_EQ(p.boxes().size(), 3U);
  EXPECT_EQ(p.boxes()[0],
            "box [Warning!] There was an error attempting to open the Automation object! / Start "
            "the Pelorin application; then Retry to continue the Lock session. / Cancel to "
            "terminate the Lock session. (RetryCancel) -> Retry");
  EXPECT_EQ(p.record().LockMode, kModeOff);
  EXPECT_EQ(p.status(), "OFF");
  EXPECT_EQ(p.calls(), host::Lines{}) << "pressed only: the button's own commands are not sent";
}

TEST(ConnectHost, aThousandRetriesNeedNoMoreStack) {
  Panel p;
  int asked = 0;
  p.platform.hostFinder().hostRuns = false;
  p.platform.dialogs().otherwise = [&](const std::string&, ports::Buttons) {
    p.platform.hostFinder().hostRuns = ++asked == 1000;
    return Answer::Retry;
  };
  ConnectHost(p.program());
  EXPECT_EQ(asked, 1000);
}

TEST(ConnectHost, aHostThatGoesBetweenTheTwoSearchesIsAskedFor) {
  Panel p;
  p.platform.hostFinder().thenFinds({true, false});
  p.expectBox(kAnyText, Answer::Retry);
  ConnectHost(p.program());
  EXPECT_EQ(p.host().references(), 1);
}

TEST(ConnectHost, cancelEndsTheProgramAtOnce) {
  Panel p;
  p.started();
  const std::string before = p.settingsText();
  p.platform.hostFinder().hostRuns = false;
  p.expectBox(kAnyText, Answer::Cancel);
  EXPECT_TRUE(p.ends([&] { ConnectHost(p.program()); }));
  EXPECT_EQ(p.settingsText(), before);
  EXPECT_EQ(p.calls(), host::Lines{});
}

TEST(ConnectHost, reconnectingReleasesTheOldObject) {
  Panel p;
  p.started();
  ConnectHost(p.program());
  ConnectHost(p.program());
  EXPECT_EQ(p.host().references(), 1);
}

} // namespace
