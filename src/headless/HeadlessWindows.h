// A window system that exists only as data: it keeps every window's place, size and state as a native one
// would, tells the models so, and offers what an operator can do to a window from outside.
#pragma once
#include "controls/Form.h"
#include "headless/HeadlessPump.h"
#include "headless/Transcript.h"
#include "ports/WindowSystem.h"
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace headless {

struct SystemItem {
  unsigned id;
  std::string text;
  bool checked = false;
};

// What a picture box draws on.
enum class Drawing { Recorded, Pixels, RecordedAndPixels, Nothing };

class HeadlessWindows : public ports::WindowSystem {
 public:
  HeadlessWindows(HeadlessPump& pump, Transcript& transcript) : pump_(pump), transcript_(transcript) {}
  ~HeadlessWindows() override;

  void realise(controls::Form& form) override;
  void unrealise(controls::Form& form) override;
  controls::Size screenSize() override;
  controls::Size outerSize(const controls::Form& form, controls::Size inner) override;
  controls::Size textSize(const controls::Font& font, std::string_view text) override;
  std::unique_ptr<controls::Canvas> makeCanvas() override;
  // Stuck when the window stays open and no gesture is left that could close it.
  void runModal(controls::Form& form) override;
  void popupMenu(controls::Form& form, controls::MenuItem& item) override;
  void setTopmost(controls::Form& form, bool topmost) override;
  void insertSystemItem(controls::Form& form, unsigned id, std::string_view text) override;
  void deleteSystemItem(controls::Form& form, unsigned id) override;
  void checkSystemItem(controls::Form& form, unsigned id, bool checked) override;
  void hook(controls::Form& form, std::function<void(std::uintptr_t)> procedure) override;
  void unhook(controls::Form& form) override;
  std::intptr_t nativeHandle(controls::Form& form) override;

  // What the operator does to a window from outside. Failure when the window cannot be acted on.
  void resize(controls::Form& form, float width, float height); // drags the border, outer size in twips
  void moveTo(controls::Form& form, float left, float top);
  void minimise(controls::Form& form);
  void maximise(controls::Form& form);
  void restore(controls::Form& form);
  void close(controls::Form& form); // the close box
  // An item of the system menu: its procedure first, then what the window itself does with it.
  void systemMenuChoose(controls::Form& form, unsigned id);
  // The next pop-up menu's choice, by caption with or without '&'; without one the menu is dismissed.
  void choosePopup(std::string caption) { popupChoices_.push_back(std::move(caption)); }

  // What can be seen of a window from outside.
  const std::vector<SystemItem>& systemMenu(controls::Form& form);
  bool hooked(controls::Form& form);
  bool topmost(controls::Form& form);
  controls::Form* modalForm() const { return modal_.empty() ? nullptr : modal_.back(); }

  // For leak tests: native windows, and peers of controls and timers, that exist now.
  int realisedForms() const;
  int livePeers() const { return controlPeers_ + pump_.timerPeers(); }

  void setDpi(int dpi) { dpi_ = dpi; } // for windows made from now on
  void setDrawing(Drawing drawing) { drawing_ = drawing; }
  // Asked while a modal window stays open and no gesture waits: true when something was done.
  std::function<bool()> whileModal;
  // Called after any control's shown state changed.
  std::function<void(controls::Control&, controls::Aspect)> watch;
  // Called when the program shows, hides, minimises or moves a window, before the window is told about it.
  std::function<void(controls::Form&, controls::Aspect)> watchForm;

 private:
  class FormPeer;
  class ControlPeer;
  FormPeer& peerOf(const controls::Form& form) const;
  void attachPeers(const controls::Container& container);
  void detachPeers(const controls::Container& container);

  HeadlessPump& pump_;
  Transcript& transcript_;
  std::vector<FormPeer*> peers_; // also of unloaded windows whose object still exists
  std::vector<controls::Form*> modal_;
  std::deque<std::string> popupChoices_;
  int dpi_ = 96, controlPeers_ = 0;
  std::intptr_t lastHandle_ = 0x10000;
  Drawing drawing_ = Drawing::Recorded;
};

} // namespace headless
