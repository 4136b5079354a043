#include "win32/AccessibleName.h"
#include "win32/WideText.h"
#include <initguid.h>
// after initguid.h
#include <oleacc.h>

namespace win32 {

namespace {
// Present only in a thread that has initialised COM; without it a control keeps its native name.
IAccPropServices* services() {
  static IAccPropServices* const found = [] {
    IAccPropServices* made = nullptr;
    CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                     reinterpret_cast<void**>(&made));
    return made;
  }();
  return found;
}
} // namespace

bool setAccessibleName(HWND window, const std::string& name) {
  IAccPropServices* service = services();
  return service && SUCCEEDED(service->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                                                      PROPID_ACC_NAME, wideText(name).c_str()));
}

void clearAccessibleName(HWND window) {
  if (IAccPropServices* service = services()) {
    const MSAAPROPID name = PROPID_ACC_NAME;
    service->ClearHwndProps(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, &name, 1);
  }
}

} // namespace win32
