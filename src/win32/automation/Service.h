// What all objects of the automation server share: the lock they act on, while there is one, and whether the
// panel can answer at the moment.
#pragma once
#include "automation/NMRLock.h"
#include "win32/automation/Com.h"

namespace win32 {

class Service {
 public:
  explicit Service(Program& program) : program_(program), lock_(program) {}
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  NMRLock* lock() { return closed_ ? nullptr : &lock_; } // null: the program is going away
  void close() { closed_ = true; }
  bool started();             // start-up is over
  static bool dialogIsOpen(); // also before there is a main window; slower than busy()
  // A call that arrives now cannot be carried out and should be made again later: start-up is not over, or a
  // box waits for the operator, which locks the main window.
  bool busy() { return !started() || mainWindowIsLocked(); }
  ITypeLib* typeLibrary(); // the program's own; null when it cannot be loaded

 private:
  bool mainWindowIsLocked();

  Program& program_;
  NMRLock lock_;
  bool closed_ = false, started_ = false;
  ITypeLib* library_ = nullptr;
};

} // namespace win32
