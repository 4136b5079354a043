#include "e2e/support/Site.h"
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <tlhelp32.h>

namespace e2e {

namespace {

std::string ownFolder() {
  char path[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  return std::string(path).substr(0, std::string(path).find_last_of('\\'));
}

std::optional<std::string> fileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// Puts everything in place before the first test and back after the last one.
class Place : public testing::Environment {
 public:
  void SetUp() override {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    settingsBefore_ = fileText(kSettings);
    CreateDirectoryA("C:\\pelorin", nullptr);
    CreateDirectoryA("C:\\pelorin\\config", nullptr);
    CreateDirectoryA(kFolder, nullptr);
    for (const std::string& exe : {panelExe(), consoleExe()}) {
      const std::string name = exe.substr(exe.find_last_of('\\'));
      ASSERT_TRUE(CopyFileA((ownFolder() + name).c_str(), exe.c_str(), FALSE)) << exe << " cannot be copied";
    }
    ASSERT_EQ(runToEnd("\"" + consoleExe() + "\" /RegServer"), 0U);
    ASSERT_EQ(runToEnd("\"" + panelExe() + "\" /RegServer"), 0U);
  }
  void TearDown() override {
    EXPECT_EQ(runToEnd("\"" + panelExe() + "\" /UnregServer"), 0U);
    EXPECT_EQ(runToEnd("\"" + consoleExe() + "\" /UnregServer"), 0U);
    for (const std::string& exe : {panelExe(), consoleExe()}) DeleteFileA(exe.c_str());
    RemoveDirectoryA(kFolder);
    if (settingsBefore_)
      writeSettings(*settingsBefore_);
    else
      DeleteFileA(kSettings);
    CoUninitialize();
  }

 private:
  std::optional<std::string> settingsBefore_;
};

const testing::Environment* const place = testing::AddGlobalTestEnvironment(new Place);

struct DialogSearch {
  DWORD process;
  HWND found;
};

BOOL CALLBACK stopAtDialog(HWND window, LPARAM l) {
  auto* search = reinterpret_cast<DialogSearch*>(l);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char name[16] = {};
  GetClassNameA(window, name, sizeof name);
  if (process != search->process || !IsWindowVisible(window) || std::string(name) != "#32770") return TRUE;
  search->found = window;
  return FALSE;
}

} // namespace

std::string panelExe() { return std::string(kFolder) + "\\VantrelLock.exe"; }
std::string consoleExe() { return std::string(kFolder) + "\\PelorinSim.exe"; }

bool eventually(const std::function<bool()>& condition, DWORD longestMs) {
  const DWORD start = GetTickCount();
  while (!condition()) {
    if (GetTickCount() - start > longestMs) return false;
    Sleep(10);
  }
  return true;
}

Process::Process(const std::string& commandLine) {
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION info{};
  std::string line = commandLine;
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &info)) {
    ADD_FAILURE() << commandLine << " does not start, error " << GetLastError();
    return;
  }
  CloseHandle(info.hThread);
  handle_ = info.hProcess;
  id_ = info.dwProcessId;
}

Process::Process(DWORD id)
    : handle_(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION, FALSE, id)), id_(id) {}

Process::~Process() {
  end();
  if (handle_) CloseHandle(handle_);
}

bool Process::running() const { return handle_ && WaitForSingleObject(handle_, 0) == WAIT_TIMEOUT; }

bool Process::ends(DWORD longestMs) const {
  return !handle_ || WaitForSingleObject(handle_, longestMs) == WAIT_OBJECT_0;
}

DWORD Process::exitCode() const {
  DWORD code = 0;
  GetExitCodeProcess(handle_, &code);
  return code;
}

void Process::end() {
  if (!running()) return;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
    if (entry.th32OwnerProcessID == id_) PostThreadMessageA(entry.th32ThreadID, WM_QUIT, 0, 0);
  CloseHandle(snapshot);
  if (!ends(3000)) kill();
}

void Process::kill() {
  if (!running()) return;
  TerminateProcess(handle_, 99);
  ends();
}

DWORD runToEnd(const std::string& commandLine, DWORD longestMs) {
  Process process(commandLine);
  return process.ends(longestMs) ? process.exitCode() : 0xFFFFFFFF;
}

std::vector<DWORD> processes(const std::string& exeName) {
  std::vector<DWORD> ids;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32First(snapshot, &entry); more; more = Process32Next(snapshot, &entry))
    if (lstrcmpiA(entry.szExeFile, exeName.c_str()) == 0) ids.push_back(entry.th32ProcessID);
  CloseHandle(snapshot);
  return ids;
}

Panel::Panel(const std::string& arguments) : process("\"" + panelExe() + "\" " + arguments) {
  ready_ = eventually([&] { return win32::RemotePanel::find(process.id()).has_value(); }, 20000);
  EXPECT_TRUE(ready_) << "the panel did not come up";
  // The class is there as soon as the panel can answer; until then a client would start another copy.
  Sleep(500);
}

void endPanels() {
  for (DWORD id : processes("VantrelLock.exe")) Process(id).end();
}

win32::RemotePanel Panel::window() const {
  return win32::RemotePanel::find(process.id()).value_or(win32::RemotePanel(nullptr));
}

HWND dialogOf(DWORD process) {
  DialogSearch search{process, nullptr};
  EnumWindows(stopAtDialog, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

void writeSettings(const std::string& text) {
  std::ofstream(kSettings, std::ios::binary | std::ios::trunc) << text;
  WritePrivateProfileStringA(nullptr, nullptr, nullptr, kSettings); // nothing older is remembered
}

void copySettings(const std::string& path) {
  const auto text = fileText(path);
  ASSERT_TRUE(text) << path;
  writeSettings(*text);
}

std::string standardSettings() {
  return "[Hardware]\r\nPPMperDAC=.001\r\nSidebandFreq=+2000\r\nLockSolvent=CDCl3\r\nSolventPPM=7.24\r\n"
         "Frequency=46.04475\r\nFieldCenter=400\r\nSweepWidth=8000\r\nSweepSpeed=20000\r\nLockPhase=30\r\n"
         "TxPower=20\r\nRxGain=1200\r\nRxFilterIndex=1\r\nRxFilterBW0=20\r\nRxFilterBW1=100\r\nRxFilterBW2="
         "500\r\n"
         "Testing=false\r\nDeltaTxPwr=10\r\nLockHoldRxFilter=0\r\nSweepRxFilter=2\r\n"
         "[Loop]\r\nNSets=1\r\nP_0=9000\r\nI_0=40\r\nD_0=5\r\nActiveSet=0\r\nP=8000\r\nI=60\r\nD=3\r\n"
         "[Display]\r\nPlotMax=500\r\nNoiseFactor=4\r\n"
         "[Solvents]\r\nCDCl3=7.24\r\nD2O=4.8\r\nAcetone=2.05\r\n"
         "[Solvents_RxGain]\r\nCDCl3=1200\r\nD2O=800\r\nAcetone=600\r\n"
         "[Solvents_TxPwr]\r\nCDCl3=20\r\nD2O=30\r\nAcetone=25\r\n";
}

} // namespace e2e
