// Tells COM when a client's call cannot be carried out and should be made again: during start-up and while a
// modal box waits for the operator. A call is never lost: the client gets an answer.
#pragma once
#include "win32/automation/Service.h"
#include <memory>

namespace win32 {

class MessageFilter final : public IMessageFilter {
 public:
  explicit MessageFilter(std::shared_ptr<Service> service) : service_(std::move(service)) {}
  MessageFilter(const MessageFilter&) = delete;
  MessageFilter& operator=(const MessageFilter&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP_(DWORD)
  HandleInComingCall(DWORD kind, HTASK caller, DWORD elapsed, LPINTERFACEINFO call) override;
  // A host that turns our call away: the call fails.
  STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK, DWORD, DWORD) override { return static_cast<DWORD>(-1); }
  // While a call to the host is under way, what the operator types or clicks stays waiting and is not thrown
  // away.
  STDMETHODIMP_(DWORD) MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITNOPROCESS; }

 private:
  ~MessageFilter() = default;
  std::shared_ptr<Service> service_;
  ULONG references_ = 1;
};

} // namespace win32
