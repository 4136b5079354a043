#include "win32/automation/ComServer.h"
#include "win32/automation/LockObject.h"
#include "win32/automation/MessageFilter.h"

namespace win32 {

namespace {

constexpr char kWindowClass[] = "VantrelLockServer";
constexpr UINT kOffer = WM_APP;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kLookAgainMs = 50;
constexpr DWORD kOtherCopyEndsMs = 5000;

// One object for each client; they share everything. Lives as long as the server, whoever refers to it.
class Factory final : public IClassFactory {
 public:
  explicit Factory(std::shared_ptr<Service> service) : service_(std::move(service)) {}
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    auto* lock = new LockObject(service_);
    const HRESULT hr = lock->QueryInterface(iid, object);
    lock->Release();
    return hr;
  }
  STDMETHODIMP LockServer(BOOL) override {
    return S_OK;
  } // the panel lives by its windows, not by its clients

 private:
  ~Factory() = default;
  std::shared_ptr<Service> service_;
  ULONG references_ = 1;
};

} // namespace

ServingTurn::ServingTurn()
    : mutex_(CreateMutexA(nullptr, FALSE, "Local\\VantrelLock.Serving")),
      ours_(mutex_ && WaitForSingleObject(mutex_, 0) != WAIT_TIMEOUT) {}

ServingTurn::~ServingTurn() {
  if (ours_) ReleaseMutex(mutex_);
  if (mutex_) CloseHandle(mutex_);
}

bool ServingTurn::isSpare(std::wstring_view commandLine) {
  if (ours_ || !mutex_ || !hasSwitch(commandLine, L"Embedding")) return false;
  ours_ = WaitForSingleObject(mutex_, kOtherCopyEndsMs) != WAIT_TIMEOUT;
  return !ours_;
}

ComServer::ComServer(Program& program)
    : service_(std::make_shared<Service>(program)), filter_(new MessageFilter(service_)),
      factory_(new Factory(service_)) {
  CoRegisterMessageFilter(filter_, nullptr);
  WNDCLASSA type = {};
  type.lpfnWndProc = procedure;
  type.hInstance = GetModuleHandleA(nullptr);
  type.lpszClassName = kWindowClass;
  RegisterClassA(&type);
  window_ =
      CreateWindowExA(0, kWindowClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, type.hInstance, this);
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  PostMessageA(window_, kOffer, 0, 0);
}

ComServer::~ComServer() {
  withdraw();
  service_->close(); // clients may still hold objects; their next call fails
  DestroyWindow(window_);
  CoRegisterMessageFilter(nullptr, nullptr);
  filter_->Release();
  factory_->Release();
}

void ComServer::withdraw() {
  KillTimer(window_, kTimer);
  if (registered_) CoRevokeClassObject(registered_);
  registered_ = 0;
}

// As soon as a client's first call can be carried out; or, when start-up stops to ask the operator something,
// at once: a client that waits for the class would otherwise run into its time limit while nobody answers,
// and one whose call is turned away as busy can try again.
void ComServer::offer() {
  if (registered_ || (!service_->started() && !Service::dialogIsOpen())) {
    if (!registered_) SetTimer(window_, kTimer, kLookAgainMs, nullptr);
    return;
  }
  KillTimer(window_, kTimer);
  CoRegisterClassObject(CLSID_NMRLock, factory_, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &registered_);
}

LRESULT CALLBACK ComServer::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* server = reinterpret_cast<ComServer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (server && (message == kOffer || message == WM_TIMER)) {
    server->offer();
    return 0;
  }
  return DefWindowProcA(window, message, w, l);
}

} // namespace win32
