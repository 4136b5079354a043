#include "ui/main/frmLock.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "display/LockKeys.h"
#include "display/PlotScale.h"
#include "engine/LockCycle.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include "ui/winutil/SystemMenu.h"
#include <algorithm>

using controls::WindowState;

namespace {

constexpr float kMinWidth = 5200;   // twips: the six mode buttons and the centre box
constexpr float kMinPlot = 100;     // twips: below, the window grows by as much
constexpr float kVisiblePlot = 200; // twips: below, nothing could be read in the plot

template <class Visit> void forShownPanels(Program& program, Visit visit) {
  const auto each = [&](std::int16_t shown, controls::Form* panel) {
    if (shown && panel) visit(*panel);
  };
  each(program.panels.AmplShown, program.frmAmpl.ifLoaded());
  each(program.panels.SweepShown, program.frmSweep.ifLoaded());
  each(program.panels.TuningShown, program.frmTuning.ifLoaded());
  each(program.panels.ControlsShown, program.frmControls.ifLoaded());
}

} // namespace

frmLock::frmLock(Program& program)
    : Form(program.desktop, "frmLock", {.resizable = true, .toolWindow = false, .iconName = "LOCK"}),
      Toolbar1(*this, "Toolbar1",
               {{"Off", "Off", "Lock RF and Loop OFF"},
                {"Lock", "Lock", "Lock RF and Loop ON "},
                {"Sweep", "Sweep", "Field Sweep Display"},
                {"Hold", "Hold", "Lock RF ON, Loop OFF"},
                {"Auto", "Auto", "Auto Lock"},
                {"Phase", "Phase", "Auto Phase (Sweep Mode)"}}),
      program_(program) {
  designMenus();
  design();
  bindEvents();
  bindMenus();
}

void frmLock::bindEvents() {
  Toolbar1.ButtonClick = [this](int button) { Toolbar1_ButtonClick(button); };
  Toolbar1.MouseMove = [this](float x) { Toolbar1_MouseMove(x); };
  Picture1.Resize = [this] { Picture1_Resize(); };
  Picture1.MouseDown = [this](controls::MouseButton button, int shift, float x, float y) {
    Picture1_MouseDown(button, shift, x, y);
  };
  Timer1.Tick = [this] { Timer1_Timer(); };
  hsCenter.Scroll = [this] { hsCenter_Scroll(); };
  hsCenter.Change = [this] { hsCenter_Change(); };
  hsCenter.GotFocus = [this] { hsCenter_GotFocus(); };
  hsCenter.LostFocus = [this] { hsCenter_LostFocus(); };
  txtCenter.KeyPress = [this](int& key) { txtCenter_KeyPress(key); };
  txtCenter.LostFocus = [this] { txtCenter_LostFocus(); };
}

void frmLock::Form_Load() { place(); }

void frmLock::place() {
  const LockParameters& record = program_.record;
  if (record.FormLeft == -1.0F)
    centreOnScreen();
  else
    move({record.FormLeft, record.FormTop, width(), height()});
}

void frmLock::rememberLabelCaptions() {
  peakLevelCaption_ = lblPkPwr.caption();
  peakThresholdCaption_ = lblSigThreshold.caption();
}

void frmLock::buildInitialDisplay() { PlotScale::ApplyDisplaySettings(program_); }

void frmLock::showStatus() { StatusBar1.setText(4, program_.record.LockStatus); }

void frmLock::Form_Resize() {
  Timer1.setEnabled(false);
  if (windowState() == WindowState::Minimised) {
    forShownPanels(program_, [](Form& panel) { panel.hide(); });
    SystemMenu::AddLockSystemMenu(program_);
    SystemMenu::HookMainWindow(program_);
    return;
  }
  SystemMenu::RemoveLockSystemMenu(program_);
  SystemMenu::UnhookMainWindow(program_);
  forShownPanels(program_, [](Form& panel) { panel.show(); });
  const bool sizable = windowState() == WindowState::Normal;
  if (sizable && width() < kMinWidth) {
    setWidth(kMinWidth);
    return;
  }
  const float plot = innerHeight() - StatusBar1.height() - Toolbar1.height() - hsCenter.height();
  if (sizable && plot < kMinPlot) {
    setHeight(height() + kMinPlot);
    return;
  }
  layOutCentreRow();
  hsCenter.move({hsCenter.left(), Picture1.top() + plot, innerWidth(), hsCenter.height()});
  Picture1.move({Picture1.left(), Picture1.top(), innerWidth(), std::max(plot, kMinPlot)});
  // "Hide Graph" keeps the plot away whatever its height.
  Picture1.setVisible(Picture1.height() >= kVisiblePlot && !mnuPrefs(22).checked());
  if (windowState() != WindowState::Minimised && program_.record.LockMode != kModeOff)
    Timer1.setEnabled(true);
}

void frmLock::Form_QueryUnload() { SystemMenu::UnhookMainWindow(program_); }

void frmLock::Form_Unload() {
  if (exitFromMenu_) {
    if (saveOnExit_) vbLock_mod::SaveLockSettings(program_);
    exitFromMenu_ = false;
  } else if (program_.platform.dialogs().message("Save the changes?", "Save On Exit", ports::Buttons::YesNo,
                                                 ports::Icon::None) == ports::Answer::Yes) {
    vbLock_mod::SaveLockSettings(program_);
  }
  SystemMenu::UnhookMainWindow(program_);
  program_.platform.end();
}

void frmLock::Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) {
  HandleLockKey(program_, keyCode, shift);
}

void frmLock::Form_KeyUp(std::int16_t, std::int16_t) {
  if (program_.record.LockMode != kModeOff) Timer1.setInterval(kTimerMs);
}

void frmLock::Picture1_Resize() { PlotScale::SetupPlot(program_); }

void frmLock::Timer1_Timer() {
  if (changingMode_ > 0) return;
  program_.doEvents();
  vbLock_mod::LockCycle(program_);
  program_.doEvents();
}

void frmLock::Toolbar1_MouseMove(float x) {
  float right = 0;
  for (int button = 1; button <= Toolbar1.count(); ++button) {
    right += Toolbar1.itemWidth(button);
    if (x >= 0 && x < right) {
      Toolbar1.setTip(Toolbar1.item(button).tip);
      return;
    }
  }
  Toolbar1.setTip("");
}
