#include "win32/automation/RemotePanel.h"
#include <cstring>
#include <vector>

namespace win32 {

namespace {

constexpr char kTitle[] = "Lock Control";

struct Search {
  DWORD process;
  HWND found;
};

BOOL CALLBACK stopAtPanel(HWND window, LPARAM l) {
  auto* search = reinterpret_cast<Search*>(l);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (search->process && search->process != process) return TRUE;
  char title[256] = {};
  GetWindowTextA(window, title, sizeof title);
  if (!std::strstr(title, kTitle) || !FindWindowExA(window, nullptr, STATUSCLASSNAMEA, nullptr)) return TRUE;
  search->found = window;
  return FALSE;
}

// Memory in the window's process: messages that carry a pointer mean memory over there.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, std::size_t size) : size_(size) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    if (process_) memory_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  }
  ~RemoteMemory() {
    if (memory_) VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
    if (process_) CloseHandle(process_);
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;
  explicit operator bool() const { return memory_ != nullptr; }
  LPARAM address() const { return reinterpret_cast<LPARAM>(memory_); }
  bool read(void* to) const { return ReadProcessMemory(process_, memory_, to, size_, nullptr) != 0; }

 private:
  std::size_t size_;
  HANDLE process_ = nullptr;
  void* memory_ = nullptr;
};

} // namespace

std::optional<RemotePanel> RemotePanel::find(DWORD process) {
  Search search{process, nullptr};
  EnumWindows(stopAtPanel, reinterpret_cast<LPARAM>(&search));
  if (!search.found) return std::nullopt;
  return RemotePanel(search.found);
}

HWND RemotePanel::child(const char* windowClass) const {
  return FindWindowExA(window_, nullptr, windowClass, nullptr);
}

std::string RemotePanel::status(int panel) const {
  HWND bar = child(STATUSCLASSNAMEA);
  const auto index = static_cast<WPARAM>(panel - 1);
  const std::size_t length = LOWORD(SendMessageA(bar, SB_GETTEXTLENGTHA, index, 0));
  std::vector<char> text(length + 64); // it may have become longer since
  RemoteMemory memory(bar, text.size());
  if (!memory) return {};
  const std::size_t now = LOWORD(SendMessageA(bar, SB_GETTEXTLENGTHA, index, 0));
  if (now + 1 > text.size()) return status(panel);
  SendMessageA(bar, SB_GETTEXTA, index, memory.address());
  if (!memory.read(text.data())) return {};
  return std::string(text.data(), strnlen(text.data(), text.size()));
}

bool RemotePanel::clickMode(int button) const {
  HWND bar = child(TOOLBARCLASSNAMEA);
  RECT rect{};
  RemoteMemory memory(bar, sizeof rect);
  if (!memory || !SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(button - 1), memory.address()) ||
      !memory.read(&rect))
    return false;
  const LPARAM centre = MAKELPARAM((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
  return PostMessageA(bar, WM_LBUTTONDOWN, MK_LBUTTON, centre) && PostMessageA(bar, WM_LBUTTONUP, 0, centre);
}

bool RemotePanel::isPressed(int button) const {
  HWND bar = child(TOOLBARCLASSNAMEA);
  TBBUTTON item{};
  RemoteMemory memory(bar, sizeof item);
  return memory && SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(button - 1), memory.address()) &&
         memory.read(&item) && (item.fsState & TBSTATE_CHECKED) != 0;
}

} // namespace win32
