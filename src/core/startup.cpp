#include "base/Text.h"
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "display/PlotScale.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmControls.h"
#include "ui/winutil/stay_on_top.h"

namespace vbLock_mod {

namespace {

void nameSettingsFile(Program& program) {
  LockParameters& record = program.record;
  record.HostDrive = program.platform.programFolder().substr(0, 1);
  record.IniPath = record.HostDrive + ":\\pelorin\\config\\LOCK.INI";
}

// Only now: a second copy has by then applied the file's parameters, as the first one did.
void refuseSecondCopy(Program& program) {
  if (!program.platform.anotherCopyRuns()) return;
  const std::string title = program.platform.version().title;
  program.platform.dialogs().message("Cannot run two copies of " + title, title, ports::Buttons::Ok,
                                     ports::Icon::None);
  program.platform.end();
}

void placeMainWindow(Program& program) {
  const LockParameters& record = program.record;
  frmLock& main = program.frmLock.get();
  if (record.FormWidth != 0) main.setWidth(record.FormWidth);
  if (record.FormHeight != 0) main.setHeight(record.FormHeight);
  main.place();
  if (record.FormMax != 0) main.setWindowState(controls::WindowState::Maximised);
}

void carryOutPending(Program& program) {
  LockParameters& record = program.record;
  if (std::exchange(record.PendingTxPower, kFalse))
    program.frmControls->vsTxPwrChange();
  else if (std::exchange(record.PendingRxGain, kFalse))
    program.frmControls->vsRxGainChange();
  else if (std::exchange(record.PendingPhase, kFalse))
    program.frmControls->vsPhaseChange();
  else if (std::exchange(record.PendingFieldCenter, kFalse))
    program.frmLock->hsCenterChange();
}

} // namespace

void startUp(Program& program) {
  LockParameters& record = program.record;
  record.Initializing = kTrue;
  record.ShowMainWindow = kTrue;
  if (base::containsIgnoringCase(program.platform.commandLine(), "nowindow")) record.ShowMainWindow = kFalse;
  nameSettingsFile(program);
  ActiveNMRAppInterface::ConnectHost(program);
  ActiveNMRAppInterface::takeRunningHost(program);
  LoadLockSettings(program);
  record.StartDeltaTxPwr = record.DeltaTxPwr;
  ActiveNMRAppInterface::ApplyLockParameters(program);
  refuseSecondCopy(program);
  if (record.ShowMainWindow) program.frmLock->show();
  placeMainWindow(program);
  program.frmLock->rememberLabelCaptions();
  program.doEvents();
  record.Initializing = kFalse;
  PlotScale::SetupPlot(program);
  program.doEvents();
  program.frmLock->buildInitialDisplay();
  program.frmLock->mnuPrefs(20).setChecked(record.StayOnTop != 0);
  stay_on_top::SetStayOnTop(program.frmLock.get(), record.StayOnTop);
}

bool idlePass(Program& program) {
  if (program.doEvents() == 0) return false;
  if (std::exchange(program.record.PendingControl, kFalse)) {
    program.desktop.gesture([&] { carryOutPending(program); });
  } else {
    program.frmLock->Timer1.setEnabled(program.record.LockMode != kModeOff);
  }
  return true;
}

bool idleMayWait(Program& program) {
  const ::frmLock* main = program.frmLock.ifLoaded();
  return !program.record.PendingControl && main &&
         main->Timer1.enabled() == (program.record.LockMode != kModeOff) &&
         program.desktop.focus().current() == program.desktop.focus().target();
}

void Main(Program& program) {
  try {
    startUp(program);
  } catch (const base::RuntimeError& error) {
    program.report(error);
    program.platform.end();
  }
  while (idlePass(program))
    if (idleMayWait(program)) program.platform.pump().waitForMessage();
}

} // namespace vbLock_mod
