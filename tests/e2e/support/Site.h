// The real programs side by side: copies of the exes on drive C:, a settings file of the test's own, the
// class registered, and processes that are ended again whatever happens.
#pragma once
#include "e2e/support/Client.h"
#include "win32/automation/RemotePanel.h"
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace e2e {

// The folder of the copies; the settings file lies where the panel looks for it, at the root of the same
// drive.
inline constexpr char kFolder[] = "C:\\pelorin-e2e";
inline constexpr char kSettings[] = "C:\\pelorin\\config\\LOCK.INI";
std::string panelExe();
std::string consoleExe();

// Polls until the condition holds; false when it does not within the time.
bool eventually(const std::function<bool()>& condition, DWORD longestMs = 10000);

class Process {
 public:
  explicit Process(const std::string& commandLine);
  explicit Process(DWORD id); // one that runs already
  ~Process();                 // ends it if it still runs
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  DWORD id() const { return id_; }
  bool running() const;
  bool ends(DWORD longestMs = 10000) const;
  DWORD exitCode() const;
  void end();  // asks it to end its message loop, and kills it when it does not
  void kill(); // a server or host killed so may leave its registration behind

 private:
  HANDLE handle_ = nullptr;
  DWORD id_ = 0;
};

DWORD runToEnd(const std::string& commandLine,
               DWORD longestMs = 30000);                  // its exit code; 0xFFFFFFFF: it did not end
std::vector<DWORD> processes(const std::string& exeName); // identifiers of all that run

// The panel, started by hand and ready for clients.
class Panel {
 public:
  explicit Panel(const std::string& arguments = {});
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  Process process;
  win32::RemotePanel window() const; // the main window
  bool ready() const { return ready_; }

 private:
  bool ready_ = false;
};

void endPanels(); // every one, whoever started it

HWND dialogOf(DWORD process); // the dialog box it shows; null: none
void writeSettings(const std::string& text);
void copySettings(const std::string& path);
std::string standardSettings();

} // namespace e2e
