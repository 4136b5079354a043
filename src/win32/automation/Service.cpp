#include "win32/automation/Service.h"
#include "core/Program.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmAbout.h"
#include "ui/panels/frmAmpl.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/frmLevel.h"
#include "ui/panels/frmSweep.h"
#include "ui/panels/frmTuning.h"
#include "win32/automation/Module.h"
#include <cstring>

namespace win32 {

namespace {

BOOL CALLBACK stopAtDialog(HWND window, LPARAM found) {
  char name[8] = {};
  GetClassNameA(window, name, sizeof name);
  if (!IsWindowVisible(window) || std::strcmp(name, "#32770") != 0) return TRUE;
  *reinterpret_cast<bool*>(found) = true;
  return FALSE;
}

} // namespace

Service::~Service() {
  if (library_) library_->Release();
}

bool Service::started() {
  if (!started_) started_ = program_.HostApp && !program_.record.Initializing;
  return started_;
}

bool Service::mainWindowIsLocked() {
  frmLock* main = program_.frmLock.ifLoaded();
  if (!main) return false;
  const auto window = reinterpret_cast<HWND>(program_.platform.windows().nativeHandle(*main));
  return window && !IsWindowEnabled(window);
}

bool Service::dialogIsOpen() {
  bool found = false;
  EnumThreadWindows(GetCurrentThreadId(), stopAtDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

ITypeLib* Service::typeLibrary() {
  if (!library_ && FAILED(LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library_))) library_ = nullptr;
  return library_;
}

} // namespace win32
