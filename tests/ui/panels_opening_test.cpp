// What opening and closing have in common for all panels of the Controls menu: the place, the remembered
// position, staying on top.
#include "support/Panel.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/panel_window.h"
#include <gtest/gtest.h>

namespace {

using support::Panel;

struct Window {
  const char* name;
  const char* path; // in the menus
  const PanelWindow& panel;
};

class OpeningPanel : public testing::TestWithParam<Window> {
 protected:
  controls::Form& open() {
    p.menu(GetParam().path);
    return p.op().form(GetParam().name);
  }
  float& left() { return p.record().*GetParam().panel.left; }
  float& top() { return p.record().*GetParam().panel.top; }
  Panel p;
};

TEST_P(OpeningPanel, thatWasNeverPlacedStandsInTheMiddleOfTheScreen) {
  p.started();
  ASSERT_EQ(left(), -1.0F);
  top() = 450; // means nothing without the left edge
  const controls::Form& window = open();
  const auto screen = p.platform.windows().screenSize();
  EXPECT_EQ(window.left(), (screen.width - window.width()) / 2);
  EXPECT_EQ(window.top(), (screen.height - window.height()) / 2);
}

TEST_P(OpeningPanel, standsWhereItWasLastClosed) {
  p.started();
  left() = -300; // partly off the screen, taken as it stands
  top() = 450;
  controls::Form& window = open();
  EXPECT_EQ(window.left(), -300.0F);
  EXPECT_EQ(window.top(), 450.0F);
  p.platform.windows().moveTo(window, 1650, 0);
  p.menu(GetParam().path);
  EXPECT_EQ(left(), 1650.0F);
  EXPECT_EQ(top(), 0.0F);
}

TEST_P(OpeningPanel, keepsOnlyItsOwnPosition) {
  p.started();
  p.platform.windows().moveTo(open(), 1650, 750);
  p.menu(GetParam().path);
  for (const PanelWindow& other : {kDisplayPanel, kSweepPanel, kTuningPanel, kControlsPanel})
    if (other.menuItem != GetParam().panel.menuItem) {
      EXPECT_EQ(p.record().*other.left, -1.0F);
    }
}

TEST_P(OpeningPanel, staysOnTopAsThePreferenceSays) {
  for (const std::int16_t preference : {kTrue, kFalse}) {
    Panel fresh;
    fresh.started();
    fresh.record().StayOnTop = preference;
    fresh.menu(GetParam().path);
    EXPECT_EQ(fresh.platform.windows().topmost(fresh.op().form(GetParam().name)), preference == kTrue);
  }
}

INSTANTIATE_TEST_SUITE_P(Panels, OpeningPanel,
                         testing::Values(Window{"frmAmpl", "Controls/Display (Amplitude/Offset)",
                                                kDisplayPanel},
                                         Window{"frmSweep", "Controls/Sweep (Width/Speed)", kSweepPanel},
                                         Window{"frmTuning", "Controls/Loop Tuning Parameters", kTuningPanel},
                                         Window{"frmControls", "Controls/NMR Controls", kControlsPanel}),
                         [](const auto& window) { return std::string(window.param.name); });

TEST(OpeningAbout, staysOnTopAsThePreferenceSays) {
  for (const std::int16_t preference : {kTrue, kFalse}) {
    Panel p;
    p.started();
    p.record().StayOnTop = preference;
    EXPECT_EQ(p.platform.windows().topmost(p.program().frmAbout.get()), preference == kTrue);
  }
}

} // namespace
