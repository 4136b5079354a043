#include "core/Program.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"

Program::Program(ports::Platform& world)
    : platform(world), desktop(world.windows(), [this](const base::RuntimeError& error) { report(error); }) {}

Program::~Program() = default;

void Program::report(const base::RuntimeError& error) {
  platform.dialogs().message(error.message(), platform.version().title, ports::Buttons::Ok,
                             ports::Icon::Critical);
}
