#include "ui/panels/frmAbout.h"
#include "core/Program.h"
#include "ui/winutil/stay_on_top.h"

namespace {

std::string versionText(const ports::VersionInfo& version) {
  return "Version " + std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
         std::to_string(version.revision);
}

// From the highest byte down.
std::string hexText(std::uint32_t number) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "&h";
  for (int shift = 24; shift >= 0; shift -= 8) {
    const std::uint32_t byte = number >> shift & 0xFF;
    text += digits[byte >> 4];
    text += digits[byte & 15];
  }
  return text;
}

std::string storedText(const std::string& raw) {
  const std::size_t end = raw.find('\0');
  if (end != std::string::npos) return raw.substr(0, end);
  return raw.substr(0, raw.empty() ? 0 : raw.size() - 1);
}

} // namespace

frmAbout::frmAbout(Program& program) : Form(program.desktop, "frmAbout"), program_(program) {
  design();
  bindEvents();
}

void frmAbout::bindEvents() {
  cmdOK.Click = [this] { unload(); };
  cmdSysInfo.Click = [this] { StartSysInfo(); };
}

void frmAbout::Form_Load() {
  const ports::VersionInfo version = program_.platform.version();
  setCaption("About " + version.title);
  lblVersion.setCaption(versionText(version));
  lblTitle.setCaption(version.title);
  lblDescription.setCaption(version.description);
  lblDisclaimer.setCaption(version.legalNotice);
  centreOnScreen();
  stay_on_top::SetStayOnTop(*this,
                            program_.record.StayOnTop); // else it would open behind a main window on top
}

std::string frmAbout::sysInfoPath() {
  std::string value;
  if (GetKeyValue(KeyRoot::LocalMachine, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", value))
    return value;
  if (!GetKeyValue(KeyRoot::LocalMachine, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", value))
    return {};
  const std::string path = value + "\\MSINFO32.EXE";
  return program_.platform.files().exists(path) ? path : std::string();
}

void frmAbout::StartSysInfo() {
  ports::Platform& platform = program_.platform;
  const std::string path = sysInfoPath();
  if (!path.empty() && platform.shell().start(path)) return;
  platform.dialogs().message("System Information Is Unavailable At This Time", platform.version().title,
                             ports::Buttons::Ok, ports::Icon::None);
}

bool frmAbout::GetKeyValue(const KeyRoot& keyRoot, const std::string& keyName, const std::string& subKeyRef,
                           std::string& keyVal) {
  if (keyRoot != KeyRoot::LocalMachine) return false;
  const auto value = program_.platform.shell().registryValue(keyName, subKeyRef);
  if (!value) return false;
  keyVal = value->isNumber ? hexText(value->number) : storedText(value->text);
  return true;
}
