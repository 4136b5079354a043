#include "win32/WinSettings.h"
#include "win32/SystemText.h"
#include <optional>

namespace win32 {

namespace {

struct Identity {
  DWORD volume, high, low;
  bool operator==(const Identity&) const = default;
};

std::optional<Identity> identity(const std::string& path) {
  HANDLE file = CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  BY_HANDLE_FILE_INFORMATION about{};
  const bool known = GetFileInformationByHandle(file, &about) != FALSE;
  CloseHandle(file);
  if (!known) return std::nullopt;
  return Identity{about.dwVolumeSerialNumber, about.nFileIndexHigh, about.nFileIndexLow};
}

} // namespace

std::string WinSettings::read(const std::string& path, const std::string& section, const std::string& key,
                              const std::string& fallback, int capacity) {
  std::string buffer(static_cast<std::size_t>(capacity), '\0');
  const DWORD length = GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(), buffer.data(),
                                                static_cast<DWORD>(capacity), path.c_str());
  buffer.resize(length);
  return buffer;
}

// Some systems write only one NUL behind a list that was cut: the buffer holds zeros beforehand.
std::string WinSettings::keyList(const std::string& path, const std::string& section, int capacity) {
  std::string buffer(static_cast<std::size_t>(capacity), '\0');
  const DWORD length = GetPrivateProfileStringA(section.c_str(), nullptr, "", buffer.data(),
                                                static_cast<DWORD>(capacity), path.c_str());
  if (length == 0) return {};
  buffer.resize(length);
  if (buffer.back() != '\0') buffer.push_back('\0');
  return buffer;
}

bool WinSettings::write(const std::string& path, const std::string& section, const std::string& key,
                        const std::string& value) {
  if (error_ = ports::keyNameProblem(key); !error_.empty()) return false;
  return done(WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), path.c_str()) != FALSE);
}

bool WinSettings::copyFile(const std::string& from, const std::string& to) {
  // The system refuses to copy a file onto itself, which is what another spelling of its name comes to.
  if (const auto source = identity(from); source && source == identity(to)) return done(true);
  return done(CopyFileA(from.c_str(), to.c_str(), FALSE) != FALSE);
}

bool WinSettings::done(bool ok) {
  error_ = ok ? std::string() : systemText(GetLastError());
  return ok;
}

} // namespace win32
