// Start-up, the idle loop, and the parameter record's way from and to the settings file.
#pragma once
#include <string>

class Program;

namespace vbLock_mod {

// Runs the whole program: start-up, then the idle loop until no window is left. A run-time error during
// start-up is shown and ends the program.
void Main(Program& program);

// Start-up without the loop. Pumps: handlers, ticks and client calls may run inside.
void startUp(Program& program);
// One pass of the idle loop; false when no window is left. Pumps.
bool idlePass(Program& program);
// True when a pass would change nothing until the next message.
bool idleMayWait(Program& program);

// Reads every key into the record. A number that does not fit raises overflow (6), NSets above 51 subscript
// (9), a bad UseDefaultTxRx type mismatch (13): the error names file, section, key and text, and the record
// keeps what was read.
void LoadLockSettings(Program& program);
// "C:\pelorin\config\LOCK.INI: [Hardware] TxPower=200": how an error names a setting.
std::string settingName(const Program& program, const std::string& section, const std::string& key,
                        const std::string& value);
// Writes the saved keys. Failures are told to the operator once, naming the file and the reason. Pumps then.
void SaveLockSettings(Program& program);

} // namespace vbLock_mod
