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

// A dialog box, or a window that one has locked.
BOOL CALLBACK stopAtModal(HWND window, LPARAM found) {
  if (!IsWindowVisible(window)) return TRUE;
  char name[8] = {};
  GetClassNameA(window, name, sizeof name);
  if (IsWindowEnabled(window) && std::strcmp(name, "#32770") != 0) return TRUE;
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

bool Service::operatorIsAsked() {
  bool found = false;
  EnumThreadWindows(GetCurrentThreadId(), stopAtModal, reinterpret_cast<LPARAM>(&found));
  return found;
}

ITypeLib* Service::typeLibrary() {
  if (!library_ && FAILED(LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &library_))) library_ = nullptr;
  return library_;
}

} // namespace win32
