#include "win32/console/ConsoleRegistration.h"
#include "win32/console/ConsoleObject.h"
#include <string>
#include <vector>

namespace win32 {

namespace {

const std::wstring kClasses = L"Software\\Classes\\";
const wchar_t kDispatchProxy[] = L"{00020420-0000-0000-C000-000000000046}";
// 32-bit programs see a registry of their own; both kinds may be clients.
constexpr REGSAM kViews[] = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};

std::wstring guidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

std::wstring modulePath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::wstring classKey() { return L"CLSID\\" + guidText(kConsoleClass); }
std::wstring interfaceKey() { return L"Interface\\" + guidText(kLockHardware); }
std::wstring libraryKey() { return L"TypeLib\\" + guidText(kConsoleLibrary); }

struct Entry {
  std::wstring key, value;
};

std::vector<Entry> entries() {
  const std::wstring path = modulePath(), title = L"Simulated spectrometer console";
  return {{kConsoleProgId, title},
          {std::wstring(kConsoleProgId) + L"\\CLSID", guidText(kConsoleClass)},
          {classKey(), title},
          {classKey() + L"\\ProgID", kConsoleProgId},
          {classKey() + L"\\LocalServer32", L"\"" + path + L"\""},
          {classKey() + L"\\TypeLib", guidText(kConsoleLibrary)},
          {interfaceKey(), L"ILockHardware"},
          {interfaceKey() + L"\\ProxyStubClsid32", kDispatchProxy},
          {interfaceKey() + L"\\TypeLib", guidText(kConsoleLibrary)},
          {libraryKey() + L"\\1.0", title},
          {libraryKey() + L"\\1.0\\0\\win64", path},
          {libraryKey() + L"\\1.0\\0\\win32", path},
          {libraryKey() + L"\\1.0\\FLAGS", L"0"}};
}

LSTATUS writeText(HKEY root, REGSAM view, const std::wstring& name, const wchar_t* value,
                  const std::wstring& text) {
  HKEY key = nullptr;
  LSTATUS status = RegCreateKeyExW(root, (kClasses + name).c_str(), 0, nullptr, 0, KEY_SET_VALUE | view,
                                   nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return status;
  status = RegSetValueExW(key, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(key);
  return status;
}

LSTATUS registerIn(HKEY root) {
  for (REGSAM view : kViews) {
    for (const Entry& e : entries())
      if (const LSTATUS status = writeText(root, view, e.key, nullptr, e.value); status != ERROR_SUCCESS)
        return status;
    writeText(root, view, interfaceKey() + L"\\TypeLib", L"Version", L"1.0");
  }
  return ERROR_SUCCESS;
}

void unregisterIn(HKEY root) {
  for (REGSAM view : kViews) {
    HKEY classes = nullptr;
    if (RegOpenKeyExW(root, kClasses.c_str(), 0, KEY_ALL_ACCESS | view, &classes) != ERROR_SUCCESS) continue;
    for (const std::wstring& key : {std::wstring(kConsoleProgId), classKey(), interfaceKey(), libraryKey()})
      RegDeleteTreeW(classes, key.c_str());
    RegCloseKey(classes);
  }
}

} // namespace

LSTATUS registerConsole() {
  if (registerIn(HKEY_LOCAL_MACHINE) == ERROR_SUCCESS) return ERROR_SUCCESS;
  return registerIn(HKEY_CURRENT_USER);
}

LSTATUS unregisterConsole() {
  unregisterIn(HKEY_LOCAL_MACHINE);
  unregisterIn(HKEY_CURRENT_USER);
  return ERROR_SUCCESS;
}

bool consoleIsRegistered() {
  wchar_t path[1024]{};
  DWORD size = sizeof(path) - sizeof(wchar_t);
  const std::wstring key = libraryKey() + L"\\1.0\\0\\win64";
  return RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path, &size) ==
             ERROR_SUCCESS &&
         path == modulePath();
}

} // namespace win32
