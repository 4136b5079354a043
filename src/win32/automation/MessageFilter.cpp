#include "win32/automation/MessageFilter.h"

namespace win32 {

namespace {

// Whether a call runs a member. Creating an object, asking it for interfaces and names always works.
bool runsMember(const INTERFACEINFO& call) {
  constexpr WORD invoke = 6; // after IUnknown's three, and two for type information and one for names
  return (call.iid == IID_IDispatch && call.wMethod == invoke) ||
         (call.iid == IID_INMRLock && call.wMethod >= invoke);
}

} // namespace

STDMETHODIMP MessageFilter::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = iid == IID_IUnknown || iid == IID_IMessageFilter ? this : nullptr;
  if (!*object) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) MessageFilter::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP_(DWORD) MessageFilter::HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO call) {
  return call && runsMember(*call) && service_->busy() ? SERVERCALL_RETRYLATER : SERVERCALL_ISHANDLED;
}

} // namespace win32
