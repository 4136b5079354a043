#include "ui/main/LockLog.h"
#include "base/NumberText.h"
#include "core/Program.h"
#include "ui/main/frmLock.h"

namespace LockLog {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr std::size_t kZone = 14; // print zones start at columns 1, 15, 29, ...

void nextZone(std::string& line) { line.append(kZone - line.size() % kZone, ' '); }

std::string printed(std::int32_t value) { return base::signedText(value) + " "; }

std::string today(Program& program) {
  ports::Clock& clock = program.platform.clock();
  return clock.generalDateText(clock.now());
}

// False when it could not be written: told once, and logging ends so that the lock goes on undisturbed.
bool append(Program& program, const std::string& text) {
  const LockParameters& record = program.record;
  const std::string reason = program.platform.files().append(record.LogFileName, text);
  if (reason.empty()) return true;
  program.record.LogEnabled = kFalse;
  program.frmLock->mnuPrefs(10).setChecked(false);
  program.platform.dialogs().message("The lock log " + record.LogFileName + " cannot be written:\r\n" +
                                         reason + "\r\nLogging has been switched off.",
                                     program.platform.version().title, ports::Buttons::Ok,
                                     ports::Icon::Exclamation);
  return false;
}

} // namespace

std::string paddedValue(double value, int integerDigits, int decimals, std::size_t width) {
  std::string text = "     " + base::fixedText(value, integerDigits, decimals);
  if (text.size() > width) text.erase(0, text.size() - width);
  return text;
}

std::string dataLine(const std::string& date, std::int32_t dac, std::int32_t real, std::int32_t imag) {
  std::string line = date;
  for (std::int32_t value : {dac, real, imag}) {
    nextZone(line);
    line += printed(value);
  }
  return line + "\r\n";
}

void WriteLogHeader(Program& program) {
  const LockParameters& record = program.record;
  std::string text = "Lock - Logging started at " + today(program) + "\r\n";
  text += " Tx        Rx     Ph    Width     Freq         Solvent \r\n";
  text += paddedValue(record.TxPower, 1, 1, 5) + paddedValue(record.RxGain, 1, 0, 9) +
          paddedValue(record.LockPhase, 1, 0, 7) + paddedValue(record.SweepWidth, 1, 0, 9) +
          paddedValue(record.Frequency, 1, 6, 13) + "     " + record.LockSolvent + "\r\n";
  text += " \r\n";
  std::string titles = "Date/Time";
  nextZone(titles);
  nextZone(titles);
  for (const char* title : {"DAC", "Real", "Imag"}) {
    titles += title;
    if (*title != 'I') nextZone(titles);
  }
  text += titles + "\r\n" + dataLine(today(program), record.FieldCenter, 0, 0);
  append(program, text);
}

void WriteLogLine(Program& program, std::int32_t fieldDac, std::int32_t real, std::int32_t imag) {
  LockParameters& record = program.record;
  if (!(program.platform.clock().now() - record.LastLogTime > record.LogInterval / kSecondsPerDay)) return;
  if (append(program, dataLine(today(program), fieldDac, real, imag)))
    record.LastLogTime = program.platform.clock().now();
}

} // namespace LockLog
