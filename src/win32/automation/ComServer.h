// The automation class offered to other programs for as long as this object lives. Calls arrive on the
// user-interface thread, from its message processing. COM must be initialised for that thread
// (single-threaded).
#pragma once
#include "win32/automation/Com.h"
#include "win32/automation/Registration.h"
#include <memory>
#include <string_view>

class Program;

namespace win32 {

class MessageFilter;
class Service;

// Which process serves the clients of this user session: the first that asks, until it ends.
class ServingTurn {
 public:
  ServingTurn();
  ~ServingTurn();
  ServingTurn(const ServingTurn&) = delete;
  ServingTurn& operator=(const ServingTurn&) = delete;
  // For a copy that COM started ("-Embedding") although a panel runs already, as happens when two clients
  // come at the same moment: true when this copy is not needed and should end. Waits a few seconds, in case
  // the other is ending.
  bool isSpare(std::wstring_view commandLine);

 private:
  HANDLE mutex_;
  bool ours_;
};

class ComServer {
 public:
  explicit ComServer(Program& program);
  ~ComServer();
  ComServer(const ComServer&) = delete;
  ComServer& operator=(const ComServer&) = delete;
  // Makes no new objects from here on. A process that ends without it may leave its registration behind:
  // clients would be sent to a server that is gone.
  void withdraw();

 private:
  void offer();
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);

  std::shared_ptr<Service> service_;
  MessageFilter* filter_;
  IClassFactory* factory_;
  HWND window_ = nullptr;
  DWORD registered_ = 0;
};

} // namespace win32
