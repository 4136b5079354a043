// An operator without aim: thousands of random gestures over every window, against the simulated console.
// Whatever is done, the panel stays in a legal state, agrees with the hardware, and leaves nothing behind.
#include "support/AutoLockRun.h"
#include "support/Panel.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include <gtest/gtest.h>

namespace {

using controls::Control;
using controls::Kind;
using headless::HeadlessPlatform;

const char* const kTexts[] = {"10",          "-10",     "abc",   "",      "1e3",    "4,8",  "131069",
                              "99999999999", "&H10",    "63.6",  "  7  ", "1.5e40", "nan",  "-0.01",
                              "1e400",       "0.50001", "179.6", "3000",  "é",      "1 000"};

class RandomOperator {
 public:
  explicit RandomOperator(std::uint64_t seed) : random_(seed), console_(sim::Settings{.seed = seed}) {
    platform_.memorySettings().text(HeadlessPlatform::kIniPath) = support::defaultSettings();
    platform_.transcript().want(headless::Transcript::Kind::Call, false);
    headless::connectConsole(platform_.host(), platform_.clock(), console_);
    platform_.dialogs().otherwise = [this](const std::string& text, ports::Buttons buttons) {
      EXPECT_EQ(text.find("Automation"), std::string::npos) << text;
      lastBox_ = text;
      const bool first = pick(2) == 0;
      if (buttons == ports::Buttons::YesNo)
        return std::optional(first ? ports::Answer::Yes : ports::Answer::No);
      return std::optional(ports::Answer::Ok);
    };
    platform_.windows().whileModal = [this] { return program_.frmAbout->cmdOK.click(), true; };
    vbLock_mod::startUp(program_);
  }

  // False when the operator ended the program.
  bool gesture() {
    platform_.dialogs().expectInput(headless::kAnyText, pick(2) ? "8000" : ""); // whenever one may come
    try {
      act();
      wait(pick(3) == 0 ? 0.3 : 0.02);
    } catch (const headless::Ended&) {
      return false;
    }
    check();
    return true;
  }
  const std::string& done() const { return done_; }
  const std::string& lastBox() const { return lastBox_; }

  // All panels closed again: only the main window's native side is left.
  void closePanels() {
    wait(0.1); // a change still to be sent would load its panel again
    for (controls::Form* form : std::vector<controls::Form*>(program_.desktop.forms()))
      if (form != &program_.frmLock.get()) form->userClose();
    program_.doEvents();
    EXPECT_EQ(platform_.windows().realisedForms(), 1);
  }
  int livePeers() { return platform_.windows().livePeers(); }

 private:
  int pick(int n) { return static_cast<int>(random_.uniform() * n); }
  std::string text() { return kTexts[pick(static_cast<int>(std::size(kTexts)))]; }

  void wait(double seconds) {
    const headless::Micros end =
        platform_.clock().micros() + static_cast<headless::Micros>(seconds * headless::kSecond);
    while (vbLock_mod::idlePass(program_)) {
      if (!vbLock_mod::idleMayWait(program_) || !platform_.pump().nothingWaits()) continue;
      if (platform_.clock().micros() >= end) return;
      platform_.clock().advance(std::min(platform_.pump().nextDue(), end) - platform_.clock().micros());
    }
  }

  void act() {
    const int what = pick(20);
    frmLock& main = program_.frmLock.get();
    headless::HeadlessWindows& windows = platform_.windows();
    if (what < 4) return note("mode"), main.Toolbar1.click(1 + pick(6));
    if (what < 7) return chooseMenu();
    if (what == 7) return key();
    if (what == 8) return windowState();
    if (what == 9) return note("resize"), resize();
    if (what == 10) return note("popup"), popup();
    if (what == 11 && pick(40) == 0) return note("close"), windows.close(main);
    if (what == 12 && !anyPanel()) return chooseMenu();
    if (what == 12 && pick(3) == 0) return note("close panel"), anyPanel()->userClose();
    useControl();
  }

  controls::Form* anyPanel() {
    std::vector<controls::Form*> shown;
    for (controls::Form* form : program_.desktop.forms())
      if (form->visible() && form != &program_.frmLock.get()) shown.push_back(form);
    return shown.empty() ? nullptr : shown[static_cast<std::size_t>(pick(static_cast<int>(shown.size())))];
  }

  void useControl() {
    controls::Form* form = pick(3) == 0 ? nullptr : anyPanel();
    if (!form) form = &program_.frmLock.get();
    if (!form->visible() || form->windowState() == controls::WindowState::Minimised) return;
    const std::vector<Control*> stops = form->tabOrder();
    if (stops.empty()) return;
    Control& control = *stops[static_cast<std::size_t>(pick(static_cast<int>(stops.size())))];
    if (!control.reachable()) return;
    note(form->name() + "." + control.name());
    control.userFocus();
    program_.doEvents();
    switch (control.kind()) {
    case Kind::TextBox:
      return type(static_cast<controls::TextBox&>(control));
    case Kind::ScrollBar:
      return scroll(static_cast<controls::ScrollBar&>(control));
    case Kind::ComboBox:
      return combo(static_cast<controls::ComboBox&>(control));
    case Kind::OptionButton:
      return static_cast<controls::OptionButton&>(control).choose();
    case Kind::UpDown:
      return pick(2) ? static_cast<controls::UpDown&>(control).stepUp()
                     : static_cast<controls::UpDown&>(control).stepDown();
    default:
      return;
    }
  }

  void type(controls::TextBox& box) {
    // Frequency and shift go to the hardware as typed; it refuses what it cannot make, which other tests look
    // at.
    const bool asTyped = box.name() == "txtLockFreq" || box.name() == "txtSolventPPM";
    box.type(asTyped && pick(2) ? "46.0447" : asTyped ? "4.8" : text());
    if (pick(2)) box.pressEnter();
  }

  void scroll(controls::ScrollBar& bar) {
    const int low = std::min(bar.minimum(), bar.maximum()), high = std::max(bar.minimum(), bar.maximum());
    if (pick(2)) return bar.stepTo(low + pick(high - low + 1));
    for (int i = 0; i < 3; ++i) bar.drag(low + pick(high - low + 1));
    bar.release();
  }

  void combo(controls::ComboBox& box) {
    if (box.style() == controls::ComboStyle::Editable && pick(2)) {
      box.type(text());
      box.pressEnter();
    } else if (!box.items().empty()) {
      box.choose(pick(static_cast<int>(box.items().size())));
    }
  }

  void chooseMenu() {
    controls::Form* form = pick(4) ? nullptr : anyPanel();
    if (!form) form = &program_.frmLock.get();
    if (!form->visible() || form->menuBar.empty()) return;
    controls::MenuItem* item =
        form->menuBar[static_cast<std::size_t>(pick(static_cast<int>(form->menuBar.size())))];
    item->click();
    while (!item->children.empty()) {
      item = item->children[static_cast<std::size_t>(pick(static_cast<int>(item->children.size())))];
    }
    note("menu " + item->caption());
    const bool ends = item->caption() == "&Quit (no save)" || item->caption() == "E&xit (save)";
    if (ends && pick(10) != 0) return;
    platform_.dialogs().expectOpenFile(pick(2) ? std::optional<std::string>(HeadlessPlatform::kIniPath)
                                               : std::nullopt);
    platform_.dialogs().expectSaveFile(pick(2) ? std::optional<std::string>(HeadlessPlatform::kIniPath)
                                               : std::nullopt);
    item->click();
    // A console that was reset is off until the operator chooses a mode again.
    if (item->caption().find("Reset") != std::string::npos) program_.frmLock->Toolbar1.click(1 + pick(6));
  }

  void key() {
    static constexpr int kKeys[] = {6, 9, 18, 27, 33, 34, 36, 38, 40, 65};
    controls::Form* form = pick(2) ? nullptr : anyPanel();
    if (!form) form = &program_.frmLock.get();
    const int code = kKeys[pick(10)];
    note("key " + std::to_string(code));
    form->userKeyDown(code, pick(2));
    if (pick(4)) form->userKeyUp(code, 0);
  }

  void windowState() {
    headless::HeadlessWindows& windows = platform_.windows();
    frmLock& main = program_.frmLock.get();
    note("window state");
    if (main.windowState() == controls::WindowState::Minimised) {
      if (pick(2)) return windows.restore(main);
      return windows.systemMenuChoose(main, 60001 + static_cast<unsigned>(pick(3)));
    }
    if (main.windowState() == controls::WindowState::Maximised) return windows.restore(main);
    return pick(2) ? windows.minimise(main) : windows.maximise(main);
  }

  void resize() {
    frmLock& main = program_.frmLock.get();
    if (main.windowState() != controls::WindowState::Normal || !main.visible()) return;
    platform_.windows().resize(main, static_cast<float>(1000 + pick(20000)),
                               static_cast<float>(500 + pick(15000)));
  }

  void popup() {
    static const char* const kChoices[] = {"&Redraw", "&Set Center Here", "&Enter New Center Value",
                                           "Set Center to &Zero"};
    frmLock& main = program_.frmLock.get();
    const int choice = pick(4);
    if (choice != 1) platform_.windows().choosePopup(kChoices[choice]);
    main.Picture1.mouseDown(controls::MouseButton::Right, 0, static_cast<float>(pick(9000)), 100);
  }

  void check() {
    const LockParameters& record = program_.record;
    EXPECT_EQ(platform_.windows().modalForm(), nullptr);
    static constexpr sim::Mode kHardware[] = {sim::Mode::Off,  sim::Mode::Lock,      sim::Mode::Sweep,
                                              sim::Mode::Hold, sim::Mode::AutoSweep, sim::Mode::AutoSweep};
    ASSERT_GE(record.LockMode, 0);
    ASSERT_LE(record.LockMode, 5);
    // An automatic sweep that a newly opened settings file finds running is a sweep like any other.
    const bool adopted = record.LockMode == kModeSweep && console_.mode() == sim::Mode::AutoSweep;
    EXPECT_TRUE(adopted || console_.mode() == kHardware[record.LockMode])
        << "LockMode " << record.LockMode << ", hardware " << static_cast<int>(console_.mode());
    EXPECT_EQ(program_.frmLock->Timer1.enabled(), record.LockMode != kModeOff);
    EXPECT_EQ(record.LockState == kNotInLock, record.LockMode != kModeLock);
    EXPECT_TRUE(record.TxPower >= 0 && record.TxPower <= 63.5) << record.TxPower;
    EXPECT_TRUE(record.RxGain >= 0 && record.RxGain <= 10000) << record.RxGain;
    EXPECT_TRUE(record.LockPhase >= -180 && record.LockPhase <= 360) << record.LockPhase;
    EXPECT_LE(std::abs(record.FieldCenter), 131068);
    EXPECT_EQ(record.PendingControl, kFalse);
    EXPECT_EQ(program_.frmLock->mnuPrefs(10).checked(), record.LogEnabled != 0);
    EXPECT_EQ(program_.frmLock->mnuPrefs(5).checked(), record.ShowLockLevel != 0);
    EXPECT_EQ(program_.frmLock->mnuPrefs(20).checked(), record.StayOnTop != 0);
  }

  void note(const std::string& what) { done_ = what; }

  sim::Random random_;
  HeadlessPlatform platform_;
  sim::Console console_;
  Program program_{platform_};
  std::string lastBox_, done_;
};

TEST(RandomOperator, tenThousandGesturesKeepThePanelLegal) {
  int gestures = 0;
  for (std::uint64_t seed = 1; gestures < 10000; ++seed) {
    RandomOperator panel(seed);
    int peers = 0;
    for (int i = 1; i <= 1000 && gestures < 10000; ++i, ++gestures) {
      const bool running = panel.gesture();
      if (testing::Test::HasFailure()) {
        FAIL() << "seed " << seed << ", gesture " << i << ": " << panel.done()
               << "\nlast box: " << panel.lastBox();
      }
      if (!running) break;
      if (i % 250 != 0) continue;
      panel.closePanels();
      if (peers == 0) peers = panel.livePeers();
      EXPECT_EQ(panel.livePeers(), peers) << "native sides left behind";
    }
  }
}

} // namespace
