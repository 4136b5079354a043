// The about box: title, version, description and legal notice from the program's own version information, and
// a button that starts the operating system's system information tool.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include <cstdint>
#include <string>

class Program;

class frmAbout : public controls::Form {
 public:
  explicit frmAbout(Program& program);

  controls::Label lblTitle{*this, "lblTitle"}, lblVersion{*this, "lblVersion"},
      lblDescription{*this, "lblDescription"}, lblDisclaimer{*this, "lblDisclaimer"};
  controls::Button cmdSysInfo{*this, "cmdSysInfo"}, cmdOK{*this, "cmdOK"};

  enum class KeyRoot : std::uint32_t { LocalMachine = 0x80000002U };

  void StartSysInfo(); // starts the tool, or says that it is unavailable. Pumps then.
  // One registry value as text, a number as "&h" and eight hexadecimal digits. False, and keyVal untouched,
  // when it cannot be read.
  bool GetKeyValue(const KeyRoot& keyRoot, const std::string& keyName, const std::string& subKeyRef,
                   std::string& keyVal);

  void Form_Load() override;

 private:
  void design();
  void bindEvents();
  std::string sysInfoPath(); // empty when the tool is not installed

  Program& program_;
};
