// An operator at the panel's real windows: what stands on the screen, what is asked, and hands that click and
// type. Everything that is waited for has a deadline.
#pragma once
#include "e2e/support/RecordingHost.h"
#include "e2e/support/Site.h"
#include "win32/remote/RemoteWindow.h"
#include <map>
#include <memory>

namespace e2e {

// Keys that stand for a person's own control settings, so that windows come up in known places.
std::string operatorSettings();

// A message or a question on the screen.
struct Box {
  win32::RemoteWindow window;
  std::string caption, text;
  void answer(int button) const; // IDOK, IDYES, IDRETRY ...; returns when the box has gone
};

class Hands {
 public:
  explicit Hands(const Process& panel) : process_(panel.id()) {}

  win32::RemoteWindow main() const;
  // The visible window with exactly this title, waited for; an invalid one with a failure when it does not
  // come.
  win32::RemoteWindow window(const std::string& title) const;
  bool shows(const std::string& title) const;
  bool shown(const std::string& title) const {
    return eventually([&] { return shows(title); });
  }
  bool gone(const std::string& title) const {
    return eventually([&] { return !shows(title); });
  }
  Box box(DWORD longestMs = 10000) const; // the box that is asked next
  bool asks() const;                      // some box is open

  void menu(const std::string& letters) const; // of the main window
  void mode(int button) const;                 // a click on the toolbar
  std::string status(int panel = 4) const;
  bool statusBecomes(const std::string& text, DWORD longestMs = 10000) const;
  bool hasFocus(HWND control) const;
  void click(HWND control) const;
  void click(HWND control, int x, int y) const;
  // All keys and clicks so far have been dealt with.
  void sync() const;
  // Types into a box and presses Enter, or leaves it with Tab.
  void enter(HWND control, const std::string& text) const;
  void leave(HWND control, const std::string& text) const;
  // Keys with Shift, Ctrl and Alt as the keyboard sends them, to the window in front.
  void keys(const win32::RemoteWindow& window, std::initializer_list<WORD> chord) const;
  void chooseByMouse(HWND combo, int entry) const;

  static constexpr char kMain[] = "Lock Control";
  static constexpr char kControls[] = "Vantrel Lock - NMR Controls";
  static constexpr char kSweep[] = "Vantrel Lock - Sweep Controls";
  static constexpr char kTuning[] = "Vantrel Lock - Control Loop Tuning";
  static constexpr char kDisplay[] = "Vantrel Lock - Display Controls";
  static constexpr char kLevel[] = "Lock";

 private:
  DWORD process_;
};

// The panel with a host that takes notes, all windows at rest.
struct Desk {
  explicit Desk(const std::string& settings = operatorSettings());
  RecordingHost host;
  Panel panel;
  Hands hands;
  // No call is under way any more and none is put off; what came so far is forgotten.
  void settle();
  // What the host is told by a gesture, up to the given number of calls; later ones are left aside.
  Lines told(std::size_t count);
};

// "[section] key" to value, as the file has it; comments and blank lines left out.
using Settings = std::map<std::string, std::string>;
Settings readSettings(const std::string& path = kSettings);
std::string fileContent(const std::string& path);
std::string number(double value); // as RecordingHost writes it

} // namespace e2e
