#include "win32/WinSystem.h"
#include "base/DateText.h"
#include "win32/SystemText.h"
#include <shellapi.h>

namespace win32 {

namespace {
WORD word(int v) { return static_cast<WORD>(v); }

class File {
 public:
  explicit File(const std::string& path)
      : handle_(CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~File() {
    if (isOpen()) CloseHandle(handle_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool write(const std::string& text) {
    DWORD written = 0;
    return WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
           written == text.size();
  }

 private:
  HANDLE handle_;
};
} // namespace

double WinClock::now() {
  SYSTEMTIME t{};
  GetLocalTime(&t);
  return base::dateSerial({t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond}) +
         t.wMilliseconds / 86400000.0;
}

std::string WinClock::generalDateText(double at) {
  const base::DateFields f = base::dateFields(at);
  const SYSTEMTIME t{word(f.year),   word(f.month),  0, word(f.day), word(f.hour),
                     word(f.minute), word(f.second), 0};
  const bool midnight = f.hour == 0 && f.minute == 0 && f.second == 0;
  const bool noDate = f.year == 1899 && f.month == 12 && f.day == 30;
  char date[128]{}, time[128]{};
  GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &t, nullptr, date, sizeof(date));
  GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &t, nullptr, time, sizeof(time));
  if (noDate) return time;
  return midnight ? std::string(date) : std::string(date) + " " + time;
}

std::string WinFiles::append(const std::string& path, const std::string& text) {
  File file(path);
  if (file.isOpen() && file.write(text)) return {};
  return systemText(GetLastError());
}

bool WinFiles::exists(const std::string& path) {
  const DWORD kind = GetFileAttributesA(path.c_str());
  return kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::optional<ports::RegistryValue> WinShell::registryValue(const std::string& key, const std::string& name) {
  constexpr REGSAM kAllAccess = 0x2003F;
  constexpr DWORD kRoom = 1024;
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, kAllAccess, &opened) != ERROR_SUCCESS)
    return std::nullopt;
  std::string buffer(kRoom, '\0');
  DWORD kind = 0, length = kRoom;
  const LONG result =
      RegQueryValueExA(opened, name.c_str(), nullptr, &kind, reinterpret_cast<BYTE*>(buffer.data()), &length);
  RegCloseKey(opened);
  if (result != ERROR_SUCCESS) return std::nullopt;
  ports::RegistryValue value;
  value.isNumber = kind == REG_DWORD;
  if (value.isNumber)
    value.number = *reinterpret_cast<const std::uint32_t*>(buffer.data());
  else
    value.text = buffer.substr(0, length);
  return value;
}

bool WinShell::start(const std::string& program) {
  std::string line = WinFiles().exists(program) ? "\"" + program + "\"" : program;
  STARTUPINFOA how{};
  how.cb = sizeof(how);
  how.dwFlags = STARTF_USESHOWWINDOW;
  how.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION made{};
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &made)) {
    CloseHandle(made.hThread);
    CloseHandle(made.hProcess);
    return true;
  }
  // A program that asks for more rights is started by the shell.
  return reinterpret_cast<std::intptr_t>(
             ShellExecuteA(nullptr, nullptr, program.c_str(), nullptr, nullptr, SW_SHOWNORMAL)) > 32;
}

} // namespace win32
