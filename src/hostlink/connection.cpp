#include "core/Program.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/main/frmLock.h"

namespace ActiveNMRAppInterface {

bool takeRunningHost(Program& program) {
  std::unique_ptr<ports::HostDispatch> host = program.platform.hostFinder().findRunningHost();
  if (!host) return false;
  program.HostApp = std::move(host);
  return true;
}

void ConnectHost(Program& program) {
  while (!program.platform.hostFinder().findRunningHost() || !takeRunningHost(program)) {
    program.frmLock->Toolbar1.press(frmLock::ButtonOff);
    const ports::Answer answer = program.platform.dialogs().message(
        "There was an error attempting to open the Automation object!\r\n"
        "Start the Pelorin application; then Retry to continue the Lock session.\r\n"
        "Cancel to terminate the Lock session.",
        "Warning!", ports::Buttons::RetryCancel, ports::Icon::None);
    if (answer != ports::Answer::Retry) program.platform.end();
  }
  frmLock& main = program.frmLock.get();
  if (!main.Toolbar1.isPressed(frmLock::ButtonOff)) return;
  ++program.cycle.modeChanges;
  program.record.LockMode = kModeOff;
  main.Timer1.setEnabled(false);
  main.hsCenter.setEnabled(true);
  program.record.LockStatus = "OFF";
  main.showStatus();
}

} // namespace ActiveNMRAppInterface
