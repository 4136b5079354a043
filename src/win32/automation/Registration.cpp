#include "win32/automation/Registration.h"
#include "automation/Members.h"
#include "win32/WideText.h"
#include "win32/automation/Com.h"
#include "win32/automation/Module.h"
#include <algorithm>
#include <string>
#include <vector>

namespace win32 {

namespace {

const std::wstring kClasses = L"Software\\Classes\\";
const std::wstring kTitle = L"Vantrel Lock";
const wchar_t kVersion[] = L"1.0";
const wchar_t kOleAutomationProxy[] = L"{00020424-0000-0000-C000-000000000046}";
// 32-bit programs see a registry of their own; both kinds may be clients.
constexpr REGSAM kViews[] = {KEY_WOW64_64KEY, KEY_WOW64_32KEY};

struct Entry {
  std::wstring key, name, value; // the empty name is a key's own value
};

std::wstring guidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

std::wstring progId() { return wideText(automation::kClassName); }
std::wstring versionedProgId() { return progId() + L".1"; }
std::wstring classKey() { return L"CLSID\\" + guidText(CLSID_NMRLock); }
std::wstring interfaceKey() { return L"Interface\\" + guidText(IID_INMRLock); }
std::wstring libraryKey() { return L"TypeLib\\" + guidText(LIBID_VantrelLock); }
// All that registration ever makes lies below these.
std::vector<std::wstring> ownKeys() {
  return {progId(), versionedProgId(), classKey(), interfaceKey(), libraryKey()};
}

std::vector<Entry> entries() {
  const std::wstring path = modulePath(), folder = path.substr(0, path.rfind(L'\\'));
  const std::wstring clsid = guidText(CLSID_NMRLock), library = guidText(LIBID_VantrelLock);
  const std::wstring version = libraryKey() + L"\\" + kVersion;
  return {
      {progId(), L"", kTitle},
      {progId() + L"\\CLSID", L"", clsid},
      {progId() + L"\\CurVer", L"", versionedProgId()},
      {versionedProgId(), L"", kTitle},
      {versionedProgId() + L"\\CLSID", L"", clsid},
      {classKey(), L"", kTitle},
      {classKey() + L"\\LocalServer32", L"", L"\"" + path + L"\""},
      {classKey() + L"\\ProgID", L"", versionedProgId()},
      {classKey() + L"\\VersionIndependentProgID", L"", progId()},
      {classKey() + L"\\TypeLib", L"", library},
      {classKey() + L"\\Version", L"", kVersion},
      {classKey() + L"\\Programmable", L"", L""},
      {interfaceKey(), L"", L"INMRLock"},
      {interfaceKey() + L"\\ProxyStubClsid32", L"", kOleAutomationProxy},
      {interfaceKey() + L"\\TypeLib", L"", library},
      {interfaceKey() + L"\\TypeLib", L"Version", kVersion},
      {version, L"", kTitle},
      {version + L"\\0\\win64", L"", path},
      {version + L"\\0\\win32", L"", path},
      {version + L"\\FLAGS", L"", L"0"},
      {version + L"\\HELPDIR", L"", folder},
  };
}

LSTATUS write(HKEY root, REGSAM view, const Entry& entry) {
  HKEY key = nullptr;
  LSTATUS status = RegCreateKeyExW(root, (kClasses + entry.key).c_str(), 0, nullptr, 0, KEY_SET_VALUE | view,
                                   nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return status;
  const auto* bytes = reinterpret_cast<const BYTE*>(entry.value.c_str());
  const auto size = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
  status = RegSetValueExW(key, entry.name.empty() ? nullptr : entry.name.c_str(), 0, REG_SZ, bytes, size);
  RegCloseKey(key);
  return status;
}

LSTATUS removeKey(HKEY root, REGSAM view, const std::wstring& name) {
  HKEY classes = nullptr;
  LSTATUS status = RegOpenKeyExW(root, kClasses.c_str(), 0, KEY_ALL_ACCESS | view, &classes);
  if (status == ERROR_SUCCESS) {
    status = RegDeleteTreeW(classes, name.c_str());
    RegCloseKey(classes);
  }
  return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status; // not there is as good
}

LSTATUS unregisterClass(HKEY root) {
  LSTATUS first = ERROR_SUCCESS;
  for (REGSAM view : kViews)
    for (const std::wstring& key : ownKeys())
      if (const LSTATUS status = removeKey(root, view, key); first == ERROR_SUCCESS) first = status;
  return first;
}

LSTATUS registerClass(HKEY root) {
  for (REGSAM view : kViews)
    for (const Entry& entry : entries())
      if (const LSTATUS status = write(root, view, entry); status != ERROR_SUCCESS) {
        unregisterClass(root); // nothing half done
        return status;
      }
  return ERROR_SUCCESS;
}

HKEY reachableRoot() {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kClasses.c_str(), 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS)
    return HKEY_CURRENT_USER;
  RegCloseKey(key);
  return HKEY_LOCAL_MACHINE;
}

bool sameWord(std::wstring_view a, std::wstring_view b) {
  return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                              TRUE) == CSTR_EQUAL;
}

} // namespace

bool hasSwitch(std::wstring_view commandLine, std::wstring_view name) {
  constexpr std::wstring_view blanks = L" \t\"";
  for (std::size_t start = 0;
       (start = commandLine.find_first_not_of(blanks, start)) != std::wstring_view::npos;) {
    const std::size_t end = std::min(commandLine.find_first_of(blanks, start), commandLine.size());
    const std::wstring_view word = commandLine.substr(start, end - start);
    if ((word.front() == L'-' || word.front() == L'/') && sameWord(word.substr(1), name)) return true;
    start = end;
  }
  return false;
}

std::optional<int> registrationSwitch(std::wstring_view commandLine) {
  if (hasSwitch(commandLine, L"RegServer")) return registerClass(reachableRoot());
  if (hasSwitch(commandLine, L"RegServerPerUser")) return registerClass(HKEY_CURRENT_USER);
  if (hasSwitch(commandLine, L"UnregServer")) return unregisterClass(reachableRoot());
  if (hasSwitch(commandLine, L"UnregServerPerUser")) return unregisterClass(HKEY_CURRENT_USER);
  return std::nullopt;
}

} // namespace win32
