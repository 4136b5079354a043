// Each real panel opened and closed a hundred times: no window, menu, font, pen, brush, bitmap, device
// context or image list may be left over. Wine itself reports none of them, so our own counts are compared.
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include "win32/FormPeer.h"
#include "win32/GdiCounts.h"
#include "win32/WinPlatform.h"
#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>

namespace win32 {

static void PrintTo(const GdiCounts& c, std::ostream* to) {
  *to << c.windows << " windows, " << c.menus << " menus, " << c.fonts << " fonts, " << c.pens << " pens, "
      << c.brushes << " brushes, " << c.bitmaps << " bitmaps, " << c.dcs << " DCs, " << c.imageLists
      << " image lists";
}

namespace {

constexpr int kRounds = 100;

class SilentHost : public ports::HostDispatch, public ports::HostFinder {
 public:
  using HostDispatch::call;
  double call(int, std::span<const ports::HostArg>) override { return 0; }
  std::unique_ptr<ports::HostDispatch> findRunningHost() override { return std::make_unique<SilentHost>(); }
};

// Defaults everywhere, but one solvent.
class PlainSettings : public ports::SettingsStore {
 public:
  std::string read(const std::string&, const std::string&, const std::string&, const std::string& fallback,
                   int) override {
    return fallback;
  }
  std::string keyList(const std::string&, const std::string& section, int) override {
    return section == "Solvents" ? std::string("CDCl3\0", 6) : std::string();
  }
  bool write(const std::string&, const std::string&, const std::string&, const std::string&) override {
    return true;
  }
  std::string error() const override { return {}; }
  bool copyFile(const std::string&, const std::string&) override { return true; }
};

// The real windows and pump; a host and a settings file that are not there.
class Bench : public WinPlatform {
 public:
  std::string commandLine() override { return {}; }
  bool anotherCopyRuns() override { return false; }
  [[noreturn]] void end() override { throw std::logic_error("the program ended"); }
  ports::HostFinder& hostFinder() override { return host_; }
  ports::SettingsStore& settings() override { return settings_; }

 private:
  SilentHost host_;
  PlainSettings settings_;
};

class PanelLeaks : public testing::Test {
 protected:
  PanelLeaks() { vbLock_mod::startUp(program); }
  void turn() {
    for (int i = 0; i < 3; ++i) vbLock_mod::idlePass(program);
  }
  template <class Open, class Close> void openAndClose(Open&& open, Close&& close) {
    const auto round = [&] {
      open();
      turn();
      close();
      turn();
    };
    round(); // what is made once and kept
    const GdiCounts before = gdiCounts();
    for (int i = 0; i < kRounds; ++i) round();
    EXPECT_EQ(gdiCounts(), before);
    EXPECT_GE(before.windows, 1);
  }
  template <class Slot> void throughControlsMenu(Slot& slot, int item) {
    if (slot.ifLoaded()) slot->userClose();
    turn();
    openAndClose([&] { program.frmLock->mnuControls(item).click(); },
                 [&] {
                   ASSERT_TRUE(slot.ifLoaded());
                   slot->userClose();
                 });
    EXPECT_FALSE(slot.ifLoaded());
  }
  Bench bench;
  Program program{bench};
};

} // namespace

TEST_F(PanelLeaks, displayPanel) { throughControlsMenu(program.frmAmpl, 3); }
TEST_F(PanelLeaks, sweepPanel) { throughControlsMenu(program.frmSweep, 5); }
TEST_F(PanelLeaks, tuningPanel) { throughControlsMenu(program.frmTuning, 7); }
TEST_F(PanelLeaks, controlsPanel) { throughControlsMenu(program.frmControls, 21); }

TEST_F(PanelLeaks, levelMeter) {
  openAndClose([&] { program.frmLock->mnuPrefs(5).click(); }, [&] { program.frmLevel->userClose(); });
  EXPECT_FALSE(program.frmLevel.ifLoaded());
}

TEST_F(PanelLeaks, aboutBox) {
  static Program* running = nullptr;
  running = &program;
  openAndClose(
      [&] {
        SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
          KillTimer(nullptr, id);
          running->frmAbout->userClose();
        });
        program.frmLock->mnuHelp(5).click();
      },
      [] {});
  EXPECT_FALSE(program.frmAbout.ifLoaded());
}

TEST_F(PanelLeaks, mainWindowMinimisedAndRestored) {
  HWND window = dynamic_cast<const FormPeer&>(*program.frmLock->peer()).window();
  openAndClose([&] { ShowWindow(window, SW_MINIMIZE); }, [&] { ShowWindow(window, SW_RESTORE); });
  EXPECT_FALSE(IsIconic(window));
}

TEST_F(PanelLeaks, plotDrawnAgainAtManySizes) {
  HWND window = dynamic_cast<const FormPeer&>(*program.frmLock->peer()).window();
  const auto size = [&](int width, int height) {
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    UpdateWindow(window);
  };
  openAndClose([&] { size(700, 500); }, [&] { size(900, 700); });
}

} // namespace win32
