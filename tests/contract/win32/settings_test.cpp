// The settings' contract on the system's own private-profile functions.
#include "contract/settings_contract.h"
#include "win32/WinSettings.h"
#include <windows.h>

namespace {

class NativeRig {
 public:
  NativeRig() {
    char temp[MAX_PATH]{};
    GetTempPathA(sizeof(temp), temp);
    folder_ = std::string(temp) + "lock-settings-" + std::to_string(GetCurrentProcessId());
    CreateDirectoryA(folder_.c_str(), nullptr);
  }
  ~NativeRig() {
    DeleteFileA(path().c_str());
    DeleteFileA(otherPath().c_str());
    RemoveDirectoryA(folder_.c_str());
  }
  NativeRig(const NativeRig&) = delete;
  NativeRig& operator=(const NativeRig&) = delete;
  ports::SettingsStore& store() { return store_; }
  std::string path() { return folder_ + "\\LOCK.INI"; }
  std::string otherPath() { return folder_ + "\\OTHER.INI"; }
  void put(const std::string& bytes) {
    HANDLE file =
        CreateFileA(path().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    ASSERT_EQ(written, bytes.size());
  }
  std::string makeUnwritable() { return folder_ + "\\vanished\\LOCK.INI"; }
  std::string makeWritable() { return path(); }

 private:
  std::string folder_;
  win32::WinSettings store_;
};

} // namespace

namespace contract {

INSTANTIATE_TYPED_TEST_SUITE_P(Native, SettingsContract, NativeRig);

} // namespace contract
