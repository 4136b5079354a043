#include "support/Panel.h"
#include "ui/panels/frmLevel.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

class Level : public testing::Test {
 protected:
  void SetUp() override {
    p.started();
    p.menu("Preferences/Show Lock Level");
  }
  frmLevel& meter() { return p.program().frmLevel.get(); }
  float covered() { return meter().picBkgnd.height() / meter().picRed.height(); }
  Panel p;
};

TEST_F(Level, opensAtFullScale100WithTheBarEmpty) {
  EXPECT_EQ(meter().fullScale(), 100.0F);
  EXPECT_EQ(covered(), 1.0F);
  EXPECT_TRUE(meter().visible());
  EXPECT_EQ(p.program().panels.LevelOpen, kTrue);
}

TEST_F(Level, aLevelEqualToTheFullScaleFillsTheBarAndKeepsTheScale) {
  meter().txtLockLevel.setText("100");
  EXPECT_EQ(meter().fullScale(), 100.0F);
  EXPECT_EQ(covered(), 0.0F);
}

TEST_F(Level, aLevelAboveTheFullScaleWidensIt) {
  meter().txtLockLevel.setText("101");
  EXPECT_EQ(meter().fullScale(), 140.0F);
  EXPECT_NEAR(covered(), 1 - 101.0 / 140, 1e-6);
  meter().txtLockLevel.setText("140");
  EXPECT_EQ(meter().fullScale(), 140.0F);
  meter().txtLockLevel.setText("300");
  EXPECT_EQ(meter().fullScale(), 384.16F);
}

TEST_F(Level, theScaleNeverShrinksWhileTheMeterIsLoaded) {
  meter().txtLockLevel.setText("300");
  meter().txtLockLevel.setText("50");
  EXPECT_EQ(meter().fullScale(), 384.16F);
  EXPECT_NEAR(covered(), 1 - 50 / 384.16, 1e-6);
}

TEST_F(Level, theScaleStandsBesideTheBar) {
  meter().txtLockLevel.setText("300");
  EXPECT_EQ(meter().lblScale[0].caption(), "384");
  EXPECT_EQ(meter().lblScale[1].caption(), "192");
  EXPECT_EQ(meter().lblScale[2].caption(), "0");
}

TEST_F(Level, levelZeroHidesTheWholeBar) {
  meter().txtLockLevel.setText("100");
  meter().txtLockLevel.setText("0");
  EXPECT_EQ(covered(), 1.0F);
}

TEST_F(Level, aNegativeLevelCoversMoreThanTheBar) {
  meter().txtLockLevel.setText("-50");
  EXPECT_EQ(covered(), 1.5F);
}

TEST_F(Level, aTextThatIsNoNumberIsAnError) {
  EXPECT_THROW(meter().txtLockLevel.setText("strong"), base::RuntimeError);
}

TEST_F(Level, theLargestLevelOfTheHardwareFits) {
  meter().txtLockLevel.setText("2147483647");
  EXPECT_GE(meter().fullScale(), 2147483647.0F);
}

TEST_F(Level, theOperatorCannotEditIt) {
  p.op().focus(meter().txtLockLevel);
  p.pass();
  EXPECT_FALSE(meter().txtLockLevel.hasFocus());
  EXPECT_TRUE(p.main().Picture1.hasFocus());
}

TEST_F(Level, closingClearsTheMenuMarkThePreferenceAndTheOpenFlag) {
  EXPECT_EQ(p.record().ShowLockLevel, kTrue);
  p.platform.windows().close(meter());
  EXPECT_FALSE(p.program().frmLevel.loaded());
  EXPECT_FALSE(p.main().mnuPrefs(5).checked());
  EXPECT_EQ(p.record().ShowLockLevel, kFalse);
  EXPECT_EQ(p.program().panels.LevelOpen, kFalse);
}

TEST_F(Level, reopeningStartsTheScaleAgain) {
  meter().txtLockLevel.setText("300");
  p.platform.windows().close(meter());
  p.pass();
  p.menu("Preferences/Show Lock Level");
  EXPECT_EQ(meter().fullScale(), 100.0F);
}

TEST_F(Level, uncheckingHidesItAndKeepsItsScale) {
  meter().txtLockLevel.setText("300");
  p.menu("Preferences/Show Lock Level");
  EXPECT_TRUE(p.program().frmLevel.loaded());
  EXPECT_FALSE(meter().visible());
  EXPECT_EQ(p.record().ShowLockLevel, kFalse);
  p.menu("Preferences/Show Lock Level");
  EXPECT_TRUE(meter().visible());
  EXPECT_EQ(meter().fullScale(), 384.16F);
}

TEST_F(Level, loadsOnTopWhenTheSettingSaysSo) {
  p.platform.windows().close(meter());
  p.record().StayOnTop = kTrue;
  p.menu("Preferences/Show Lock Level");
  EXPECT_TRUE(p.platform.windows().topmost(meter()));
}

} // namespace
