// Drives the running lock panel as an acquisition program does, through the automation class, or as an
// operator does, by clicks on the toolbar, and prints the panel's status line as it changes. Exit code 0 only
// when the goal was reached.
#include "win32/automation/Com.h"
#include "win32/automation/RemotePanel.h"
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using win32::RemotePanel;

constexpr char kUsage[] =
    "usage: demo lock|auto [--toolbar]\n"
    "  lock       shows the sweep, then locks\n"
    "  auto       finds the line, centres it and locks by itself\n"
    "  --toolbar  clicks the toolbar's buttons instead of calling VantrelLock.NMRLock\n";

// Who presses the buttons.
class Driver {
 public:
  virtual ~Driver() = default;
  virtual void press(int button) = 0;
};

class Mouse final : public Driver {
 public:
  explicit Mouse(const RemotePanel& panel) : panel_(panel) {}
  void press(int button) override {
    if (!panel_.clickMode(button)) throw std::runtime_error("the toolbar cannot be clicked");
  }

 private:
  const RemotePanel& panel_;
};

class Client final : public Driver {
 public:
  Client() {
    check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM");
    check(CoCreateInstance(CLSID_NMRLock, nullptr, CLSCTX_LOCAL_SERVER, IID_INMRLock,
                           reinterpret_cast<void**>(&lock_)),
          "VantrelLock.NMRLock (is it registered? VantrelLock.exe /RegServer)");
  }
  ~Client() override {
    lock_->Release();
    CoUninitialize();
  }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  void press(int button) override {
    using Member = HRESULT (STDMETHODCALLTYPE INMRLock::*)();
    static constexpr Member members[] = {&INMRLock::StopLock,      &INMRLock::StartLock,
                                         &INMRLock::StartSweep,    &INMRLock::StartHold,
                                         &INMRLock::StartAutoLock, &INMRLock::StartAutoPhase};
    const auto deadline = Clock::now() + 30s;
    HRESULT hr = S_OK;
    do {
      hr = (lock_->*members[button - 1])();
      if (!busy(hr)) break;
      std::this_thread::sleep_for(200ms);
    } while (Clock::now() < deadline);
    check(hr, "the call");
  }

 private:
  static bool busy(HRESULT hr) { return hr == RPC_E_SERVERCALL_RETRYLATER || hr == RPC_E_CALL_REJECTED; }
  static void check(HRESULT hr, const char* what) {
    if (SUCCEEDED(hr)) return;
    char text[160];
    std::snprintf(text, sizeof text, "%s failed: 0x%08lX", what, static_cast<unsigned long>(hr));
    throw std::runtime_error(text);
  }
  INMRLock* lock_ = nullptr;
};

// Prints each change of the status line until it holds what is waited for.
class Watch {
 public:
  explicit Watch(const RemotePanel& panel) : panel_(panel) {}
  void during(Clock::duration time) {
    const auto end = Clock::now() + time;
    while (Clock::now() < end) look();
  }
  bool until(const char* text, Clock::duration longest) {
    const auto end = Clock::now() + longest;
    do {
      look();
      if (shown_.find(text) != std::string::npos) return true;
    } while (Clock::now() < end);
    return false;
  }

 private:
  void look() {
    if (!panel_.exists()) throw std::runtime_error("the panel has gone");
    const std::string now = panel_.status();
    if (now != shown_) {
      shown_ = now;
      const std::chrono::duration<double> since = Clock::now() - start_;
      std::printf("%7.2f s  %s\n", since.count(), shown_.c_str());
      std::fflush(stdout);
    }
    std::this_thread::sleep_for(20ms);
  }
  const RemotePanel& panel_;
  const Clock::time_point start_ = Clock::now();
  std::string shown_;
};

RemotePanel waitForPanel() {
  const auto end = Clock::now() + 30s;
  while (Clock::now() < end) {
    // The window is there before start-up is done; it is shown when it is.
    if (const auto panel = RemotePanel::find(); panel && IsWindowVisible(panel->window())) return *panel;
    std::this_thread::sleep_for(50ms);
  }
  throw std::runtime_error("no lock panel came up within 30 s");
}

int lockSample(Driver& driver, Watch& watch) {
  driver.press(3);
  if (!watch.until("SWEEP", 10s)) throw std::runtime_error("the sweep did not start");
  watch.during(4s);
  driver.press(2);
  return watch.until("LOCKED", 60s) ? 0 : 1;
}

int lockByItself(Driver& driver, Watch& watch) {
  driver.press(5);
  // The last change of gain leaves the judged signal to settle.
  return watch.until(" : AutoLock Done", 300s) && watch.until("LOCKED : AutoLock Done", 30s) ? 0 : 1;
}

int run(const std::string& mode, bool toolbar) {
  const RemotePanel panel = waitForPanel();
  std::unique_ptr<Driver> driver;
  if (toolbar)
    driver = std::make_unique<Mouse>(panel);
  else
    driver = std::make_unique<Client>();
  Watch watch(panel);
  const int verdict = mode == "auto" ? lockByItself(*driver, watch) : lockSample(*driver, watch);
  std::puts(verdict == 0 ? "locked" : "not locked in time");
  return verdict;
}

} // namespace

int main(int count, char** arguments) {
  std::string mode;
  bool toolbar = false, understood = true;
  for (int i = 1; i < count; ++i) {
    const std::string word = arguments[i];
    if (word == "--toolbar")
      toolbar = true;
    else if (mode.empty() && (word == "lock" || word == "auto"))
      mode = word;
    else
      understood = false;
  }
  if (!understood || mode.empty()) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  try {
    return run(mode, toolbar);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "demo: %s\n", problem.what());
    return 1;
  }
}
