// The menus of the main window: the tree, and what each item does. Items with a check mark toggle it
// themselves and keep a word of the record equal to it.
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "display/PlotScale.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include "ui/panels/panel_window.h"
#include "ui/winutil/stay_on_top.h"
#include <iterator>

using controls::MenuArray;
using controls::MenuItem;

namespace {

enum FileItem { Open = 1, Save, SaveAs, Quit = 5, Exit };
enum PrefsItem {
  ShowRealItem = 1,
  ShowImagItem,
  ShowMagnItem,
  LockLevelItem = 5,
  UnitsItem = 8,
  LogItem = 10,
  UseTimerItem = 15,
  OnTopItem = 20,
  HideGraphItem = 22
};
enum CommandsItem { PauseItem = 5, ResetSystemItem = 9, ResetHardwareItem, ReloadItem };

enum class Shown { Yes, Hidden };
struct Entry {
  int index;
  const char* caption;
  const char* shortcut = "";
  Shown shown = Shown::Yes;
};

template <std::size_t N> void addEntries(MenuArray& array, MenuItem& under, const Entry (&entries)[N]) {
  for (const Entry& entry : entries)
    array.add(entry.index, entry.caption, &under, entry.shortcut).setVisible(entry.shown == Shown::Yes);
}

constexpr Entry kFile[] = {{Open, "&Open Settings..."},      {Save, "&Save Settings"},
                           {SaveAs, "Save Settings &As..."}, {4, "-"},
                           {Quit, "&Quit (no save)"},        {Exit, "E&xit (save)"}};
constexpr Entry kEdit[] = {{0, "&Solvent List"}};
constexpr Entry kPrefs[] = {{ShowRealItem, "Show &Real Data", "Ctrl+R"},
                            {ShowImagItem, "Show &Imag Data", "Ctrl+I"},
                            {ShowMagnItem, "Show &Magn Data", "Ctrl+M"},
                            {LockLevelItem, "&Show Lock Level"},
                            {UnitsItem, "Display &Units"},
                            {LogItem, "&Log Enabled"},
                            {11, "-"},
                            {UseTimerItem, "Use Timer", "", Shown::Hidden},
                            {OnTopItem, "Always On &Top"},
                            {HideGraphItem, "Hide &Graph", "", Shown::Hidden}};
constexpr Entry kUnits[] = {{0, "&DAC Units"}, {1, "&Hz"}, {2, "&ppm"}};
constexpr Entry kControls[] = {{3, "&Display (Amplitude/Offset)"},
                               {5, "&Sweep (Width/Speed)"},
                               {7, "Loop &Tuning Parameters"},
                               {21, "&NMR Controls"}};
constexpr Entry kCommands[] = {{PauseItem, "&Pause Display", "Ctrl+P"},
                               {ResetSystemItem, "Reset &Entire Talvane System"},
                               {ResetHardwareItem, "&Reset Lock Hardware", "", Shown::Hidden},
                               {ReloadItem, "Reload &Lock Params", "Ctrl+L"}};
constexpr Entry kHelp[] = {{5, "&About"}};
constexpr Entry kPicturePopup[] = {{0, "&Redraw"},
                                   {1, "&Set Center Here"},
                                   {2, "&Enter New Center Value"},
                                   {3, "Set Center to &Zero"},
                                   {10, "-", "", Shown::Hidden},
                                   {15, "Change Peak Threshold", "", Shown::Hidden}};

ports::FileDialog settingsDialog(bool mustExist) {
  return {"Select Lock File", "lock.ini", "*.ini", mustExist};
}

void tell(Program& program, const std::string& text) {
  ports::Platform& platform = program.platform;
  platform.dialogs().message(text, platform.version().title, ports::Buttons::Ok, ports::Icon::Exclamation);
}

void showFileName(Program& program) {
  program.frmLock->setCaption("Talvane Lock Control - " + program.record.IniPath);
}

// The file is the one in use, whatever the hardware says to its values.
template <class F> void thenShowFileName(Program& program, F&& act) {
  try {
    act();
  } catch (const base::RuntimeError&) {
    showFileName(program);
    throw;
  }
  showFileName(program);
}

// Windows that are not loaded take the setting when they load.
void applyStayOnTop(Program& program) {
  controls::Form* const windows[] = {program.frmLock.ifLoaded(),  program.frmLevel.ifLoaded(),
                                     program.frmAmpl.ifLoaded(),  program.frmControls.ifLoaded(),
                                     program.frmSweep.ifLoaded(), program.frmTuning.ifLoaded()};
  for (controls::Form* const window : windows)
    if (window != nullptr) stay_on_top::SetStayOnTop(*window, program.record.StayOnTop);
}

void openSettings(Program& program) {
  const auto chosen = program.platform.dialogs().openFile(settingsDialog(false));
  if (!chosen) return;
  const LockParameters before = program.record;
  program.record.IniPath = *chosen;
  try {
    vbLock_mod::LoadLockSettings(program);
  } catch (const base::RuntimeError& error) {
    // A file that cannot be read whole is not taken in part: record and file name stay those of the last good
    // file.
    program.record = before;
    tell(program, error.message());
    return;
  }
  program.frmLock->mnuPrefs(OnTopItem).setChecked(program.record.StayOnTop != 0);
  applyStayOnTop(program);
  thenShowFileName(program, [&] { ActiveNMRAppInterface::ApplyLockParameters(program); });
}

void saveSettings(Program& program) {
  vbLock_mod::SaveLockSettings(program);
  if (frmControls* const panel = program.frmControls.ifLoaded()) panel->SetupSolventList();
}

// The present file is copied first, so that what the program never writes goes along.
void saveSettingsAs(Program& program) {
  const auto chosen = program.platform.dialogs().saveFile(settingsDialog(true));
  if (!chosen) return;
  ports::SettingsStore& settings = program.platform.settings();
  if (*chosen != program.record.IniPath && !settings.copyFile(program.record.IniPath, *chosen)) {
    // Nothing is saved and the settings stay with their old file.
    tell(program, "The settings could not be copied to " + *chosen + ".\r\n" + settings.error());
    return;
  }
  program.record.IniPath = *chosen;
  thenShowFileName(program, [&] { saveSettings(program); });
}

void resend(Program& program) {
  ActiveNMRAppInterface::SendLockPhase(program);
  ActiveNMRAppInterface::SetLockFrequency(program, program.record.Frequency);
  ActiveNMRAppInterface::SetLockTxPower(program, program.record.TxPower);
  ActiveNMRAppInterface::SetLockRxGain(program, program.record.RxGain);
}

void resetEntireSystem(Program& program) {
  ActiveNMRAppInterface::ConnectHost(program);
  const std::int32_t value = ActiveNMRAppInterface::HostGetSystemValue(program);
  ActiveNMRAppInterface::HostResetSystem(program);
  ActiveNMRAppInterface::HostSetSystemValue(program, value);
  resend(program);
}

void showLockLevel(Program& program, bool show) {
  program.record.ShowLockLevel = flag(show);
  if (show)
    program.frmLevel->show();
  else if (frmLevel* const meter = program.frmLevel.ifLoaded())
    meter->hide();
}

template <class Slot> void showPanel(Slot& slot, bool show) {
  if (show)
    slot->show();
  else
    slot.unload();
}

void showPanel(Program& program, const PanelWindow& panel, bool show) {
  switch (panel.menuItem) {
  case kDisplayPanel.menuItem:
    return showPanel(program.frmAmpl, show);
  case kSweepPanel.menuItem:
    return showPanel(program.frmSweep, show);
  case kTuningPanel.menuItem:
    return showPanel(program.frmTuning, show);
  case kControlsPanel.menuItem:
    return showPanel(program.frmControls, show);
  }
}

} // namespace

void frmLock::designMenus() {
  struct TopLevel {
    const char* caption;
    Shown shown;
  };
  const TopLevel titles[] = {{"&File", Shown::Yes},          {"&Edit", Shown::Yes},
                             {"&Preferences", Shown::Yes},   {"Con&trols", Shown::Yes},
                             {"&Commands", Shown::Yes},      {"&Help", Shown::Yes},
                             {"PicturePopup", Shown::Hidden}};
  for (int i = 0; i < static_cast<int>(std::size(titles)); ++i)
    mnuMenuBar.add(i, titles[i].caption, nullptr).setVisible(titles[i].shown == Shown::Yes);
  addEntries(mnuFile, mnuMenuBar(0), kFile);
  addEntries(mnuEdit, mnuMenuBar(1), kEdit);
  addEntries(mnuPrefs, mnuMenuBar(2), kPrefs);
  addEntries(mnuUnits, mnuPrefs(UnitsItem), kUnits);
  addEntries(mnuControls, mnuMenuBar(3), kControls);
  addEntries(mnuCommands, mnuMenuBar(4), kCommands);
  addEntries(mnuHelp, mnuMenuBar(5), kHelp);
  addEntries(mnuPicture1Popup, mnuMenuBar(6), kPicturePopup);
  mnuPrefs(ShowRealItem).setChecked(true);
}

void frmLock::bindMenus() {
  mnuMenuBar.Click = [this](int) { mnuMenuBar_Click(); };
  mnuFile.Click = [this](int index) { mnuFile_Click(index); };
  mnuEdit.Click = [this](int) { mnuEdit_Click(); };
  mnuPrefs.Click = [this](int index) { mnuPrefs_Click(index); };
  mnuUnits.Click = [this](int index) { mnuUnits_Click(index); };
  mnuControls.Click = [this](int index) { mnuControls_Click(index); };
  mnuCommands.Click = [this](int index) { mnuCommands_Click(index); };
  mnuHelp.Click = [this](int) { mnuHelp_Click(); };
  mnuPicture1Popup.Click = [this](int index) { mnuPicture1Popup_Click(index); };
}

// A menu is being opened: no tick runs while it is open. The idle loop starts the timer again once it is
// closed.
void frmLock::mnuMenuBar_Click() { Timer1.setEnabled(false); }

void frmLock::mnuFile_Click(int index) {
  switch (index) {
  case Open:
    return openSettings(program_);
  case Save:
    return saveSettings(program_);
  case SaveAs:
    return saveSettingsAs(program_);
  case Quit:
  case Exit:
    exitFromMenu_ = true;
    saveOnExit_ = index == Exit;
    unload();
  }
}

void frmLock::mnuEdit_Click() {
  program_.platform.dialogs().message("This Function Not Yet Implemented", "Vantrel Lock System",
                                      ports::Buttons::Ok, ports::Icon::None);
}

void frmLock::mnuPrefs_Click(int index) {
  MenuItem& item = mnuPrefs(index);
  if (!item.children.empty()) return; // only opened
  item.setChecked(!item.checked());
  const bool checked = item.checked();
  LockParameters& record = program_.record;
  switch (index) {
  case ShowRealItem:
    record.ShowReal = flag(checked);
    break;
  case ShowImagItem:
    record.ShowImag = flag(checked);
    break;
  case ShowMagnItem:
    record.ShowMagnitude = flag(checked);
    break;
  case LockLevelItem:
    showLockLevel(program_, checked);
    break;
  case LogItem:
    record.LogEnabled = flag(checked);
    break;
  case UseTimerItem:
    record.UseTimer = flag(checked);
    break;
  case OnTopItem:
    record.StayOnTop = flag(checked);
    applyStayOnTop(program_);
    break;
  case HideGraphItem:
    Picture1.setVisible(!checked);
    layOut();
  }
}

void frmLock::mnuUnits_Click(int index) {
  for (int i = 0; i <= 2; ++i) mnuUnits(i).setChecked(false);
  mnuUnits(index).setChecked(true);
  program_.record.DisplayUnits = static_cast<float>(index);
  PlotScale::SetupPlot(program_);
}

void frmLock::mnuControls_Click(int index) {
  MenuItem& item = mnuControls(index);
  item.setChecked(!item.checked());
  const bool show = item.checked();
  for (const PanelWindow& panel : {kDisplayPanel, kSweepPanel, kTuningPanel, kControlsPanel}) {
    if (panel.menuItem != index) continue;
    program_.panels.*panel.shown = flag(show);
    try {
      showPanel(program_, panel, show);
    } catch (const base::RuntimeError&) {
      item.setChecked(program_.panels.*panel.open != 0); // a panel that could not be loaded is not open
      program_.panels.*panel.shown = flag(item.checked());
      throw;
    }
  }
}

void frmLock::mnuCommands_Click(int index) {
  switch (index) {
  case PauseItem: {
    // Only until the idle loop next runs: it sets the timer from LockMode.
    MenuItem& item = mnuCommands(PauseItem);
    item.setChecked(!item.checked());
    Timer1.setEnabled(item.checked());
    return;
  }
  case ResetSystemItem:
    return resetEntireSystem(program_);
  case ResetHardwareItem:
    ActiveNMRAppInterface::ResetLockHardware(program_);
    return resend(program_);
  case ReloadItem:
    return resend(program_);
  }
}

void frmLock::mnuHelp_Click() { program_.frmAbout->show(controls::Modality::Modal); }
