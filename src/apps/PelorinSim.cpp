// The simulated spectrometer console behind real automation: found by its ProgID among the running objects.
#include "win32/Fatal.h"
#include "win32/WinPump.h"
#include "win32/automation/Registration.h"
#include "win32/console/ConsoleObject.h"
#include "win32/console/ConsoleOptions.h"
#include "win32/console/ConsoleRegistration.h"
#include "win32/console/ConsoleWindow.h"
#include <algorithm>
#include <cstdio>

namespace {

// Wall time since the last look, times the speed, becomes the console's time.
class WallClock {
 public:
  WallClock(sim::Console& console, double speed) : console_(console), speed_(speed) {
    QueryPerformanceFrequency(&frequency_);
    QueryPerformanceCounter(&last_);
  }
  void advance() {
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    const double seconds =
        static_cast<double>(now.QuadPart - last_.QuadPart) / static_cast<double>(frequency_.QuadPart);
    last_ = now;
    // A machine that slept does not make the console catch up for hours.
    console_.advance(std::min(seconds * speed_, 60.0));
  }

 private:
  sim::Console& console_;
  double speed_;
  LARGE_INTEGER frequency_{}, last_{};
};

// Found by others from here to the end.
class RunningObject {
 public:
  explicit RunningObject(win32::ConsoleObject& object) : object_(object), factory_(object) {
    CoRegisterClassObject(win32::kConsoleClass, &factory_, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                          &classCookie_);
    result_ = RegisterActiveObject(&object, win32::kConsoleClass, ACTIVEOBJECT_STRONG, &cookie_);
  }
  ~RunningObject() {
    if (SUCCEEDED(result_)) RevokeActiveObject(cookie_, nullptr);
    CoRevokeClassObject(classCookie_);
    CoDisconnectObject(&object_, 0);
  }
  RunningObject(const RunningObject&) = delete;
  RunningObject& operator=(const RunningObject&) = delete;
  HRESULT result() const { return result_; }

 private:
  win32::ConsoleObject& object_;
  win32::ConsoleFactory factory_;
  HRESULT result_;
  DWORD cookie_ = 0, classCookie_ = 0;
};

void report(const std::string& text, UINT icon) {
  MessageBoxA(nullptr, text.c_str(), "PelorinSim", MB_OK | icon | MB_SETFOREGROUND);
}

int serve(const win32::ConsoleOptions& options) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (!win32::consoleIsRegistered()) win32::registerConsole();
  auto spectrometer = std::make_shared<sim::Spectrometer>(options.settings);
  win32::applyFaults(*spectrometer, options.noData, options.refuse, options.slowMs, options.dieAfter);
  WallClock clock(spectrometer->console, options.speed);
  win32::ConsoleObject object(spectrometer, [&clock] { clock.advance(); });
  RunningObject running(object);
  if (FAILED(running.result())) {
    report("The console could not be made known to other programs.", MB_ICONSTOP);
    return 1;
  }
  win32::WinWindowSystem windows;
  win32::WinPump pump(windows);
  controls::Desktop desktop(windows,
                            [](const base::RuntimeError& e) { report(e.message(), MB_ICONEXCLAMATION); });
  win32::ConsoleWindow window(
      desktop, spectrometer, [&clock] { clock.advance(); }, options.slowMs);
  window.load();
  if (!options.quiet) window.show();
  // For scripts that start clients after it; nobody reads it when it was started from the desktop.
  std::puts("ready");
  std::fflush(stdout);
  while (pump.doEvents() > 0) pump.waitForMessage();
  return 0;
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
  return win32::guarded([commandLine] {
    const wchar_t* wide = GetCommandLineW();
    if (win32::hasSwitch(wide, L"RegServer")) return static_cast<int>(win32::registerConsole());
    if (win32::hasSwitch(wide, L"UnregServer")) return static_cast<int>(win32::unregisterConsole());
    const win32::ConsoleOptions options = win32::consoleOptions(commandLine);
    if (options.help || !options.problem.empty()) {
      report(options.problem.empty() ? win32::consoleUsage()
                                     : options.problem + "\n\n" + win32::consoleUsage(),
             options.problem.empty() ? MB_ICONINFORMATION : MB_ICONEXCLAMATION);
      return options.problem.empty() ? 0 : 2;
    }
    return serve(options);
  });
}
