#include "win32/WinPlatform.h"
#include <vector>
// after windows.h
#include <objbase.h>

namespace win32 {

WinPlatform::Com::Com() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
WinPlatform::Com::~Com() { CoUninitialize(); }

// The name is per session: each user at the console may run one panel.
WinPlatform::WinPlatform()
    : mutex_(CreateMutexA(nullptr, FALSE, "VantrelLock.Panel")),
      anotherCopy_(GetLastError() == ERROR_ALREADY_EXISTS) {}

WinPlatform::~WinPlatform() {
  if (mutex_) CloseHandle(mutex_);
}

std::string WinPlatform::commandLine() {
  const char* at = GetCommandLineA();
  bool quoted = false;
  for (; *at && (quoted || static_cast<unsigned char>(*at) > ' '); ++at)
    if (*at == '"') quoted = !quoted;
  while (*at == ' ' || *at == '\t') ++at;
  return at;
}

std::string programPath() {
  std::string path(32768, '\0');
  path.resize(GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::string WinPlatform::programFolder() {
  const std::string path = programPath();
  return path.substr(0, path.find_last_of('\\'));
}

void WinPlatform::end() {
  if (beforeEnd) beforeEnd();
  ExitProcess(0);
}

ports::VersionInfo WinPlatform::version() { return ownVersion(); }

namespace {
std::string versionText(const std::vector<char>& block, const char* name, const std::string& otherwise) {
  const std::string path = std::string("\\StringFileInfo\\040904E4\\") + name;
  void* text = nullptr;
  UINT length = 0;
  if (!VerQueryValueA(block.data(), path.c_str(), &text, &length) || length == 0) return otherwise;
  return static_cast<const char*>(text);
}
} // namespace

ports::VersionInfo ownVersion() {
  ports::VersionInfo info;
  info.title = "Vantrel Lock";
  const std::string path = programPath();
  DWORD unused = 0;
  std::vector<char> block(GetFileVersionInfoSizeA(path.c_str(), &unused));
  if (block.empty() || !GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
    return info;
  info.title = versionText(block, "ProductName", info.title);
  info.description = versionText(block, "FileDescription", {});
  info.legalNotice = versionText(block, "LegalCopyright", {});
  void* fixed = nullptr;
  UINT length = 0;
  if (VerQueryValueA(block.data(), "\\", &fixed, &length) && length >= sizeof(VS_FIXEDFILEINFO)) {
    const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(fixed);
    info.major = HIWORD(numbers.dwProductVersionMS);
    info.minor = LOWORD(numbers.dwProductVersionMS);
    info.revision = LOWORD(numbers.dwProductVersionLS);
  }
  return info;
}

} // namespace win32
