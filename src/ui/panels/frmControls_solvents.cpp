// The solvent table: three sections of the settings file, aligned by position, and what choosing a solvent
// does.
#include "base/NumberText.h"
#include "base/Rounding.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "core/vbLock_mod.h"
#include "display/PlotScale.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "ui/panels/frmControls.h"
#include "ui/panels/panel_window.h"

namespace {

constexpr int kBuffer = 255; // characters the settings reader may fill

// The names of a section's keys in file order; a name cut at the end of the buffer stays as the reader gave
// it.
std::vector<std::string> keysOf(Program& program, const std::string& section) {
  const std::string list = program.platform.settings().keyList(program.record.IniPath, section, kBuffer);
  std::vector<std::string> keys;
  for (std::size_t start = 0; start < list.size();) {
    std::size_t end = list.find('\0', start);
    if (end == std::string::npos) end = list.size();
    if (end == start) break;
    keys.push_back(list.substr(start, end - start));
    start = end + 1;
  }
  return keys;
}

// Stores one value per key of a section at the key's own position. False when the section is missing or
// empty.
template <class Store>
bool readTable(Program& program, const std::string& section, const char* fallback, Store store) {
  const std::vector<std::string> keys = keysOf(program, section);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const std::string text =
        program.platform.settings().read(program.record.IniPath, section, keys[i], fallback, kBuffer);
    const std::string where = vbLock_mod::settingName(program, section, keys[i], text);
    if (i >= program.solvents.Shift.size()) base::raiseSubscript(where);
    try {
      store(i, keys[i], text);
    } catch (const base::RuntimeError& error) {
      throw error.within(where);
    }
  }
  return !keys.empty();
}

// Uses entry i of a section's table; a value that does not fit is named as the settings file has it.
template <class Use> void useEntry(Program& program, const std::string& section, std::size_t i, Use use) {
  try {
    use();
  } catch (const base::RuntimeError& error) {
    const std::vector<std::string> keys = keysOf(program, section);
    if (i >= keys.size()) throw; // the file changed since the table was read
    const std::string text =
        program.platform.settings().read(program.record.IniPath, section, keys[i], "", kBuffer);
    throw base::RuntimeError(error.number, error.text,
                             vbLock_mod::settingName(program, section, keys[i], text));
  }
}

} // namespace

void frmControls::SetupSolventList() {
  SolventTables& tables = program_.solvents;
  const std::string stored = program_.record.LockSolvent;
  cmbSolvents.clear();
  int selection = 0;
  const bool any = readTable(program_, "Solvents", "4.0",
                             [&](std::size_t i, const std::string& name, const std::string& text) {
                               cmbSolvents.addItem(name);
                               if (name == stored) selection = static_cast<int>(i);
                               tables.Shift[i] = StrToFloatVal(text);
                             });
  cmbSolvents.setText(stored);
  tables.RxGainPresent = flag(readTable(program_, "Solvents_RxGain", "5000",
                                        [&](std::size_t i, const std::string&, const std::string& text) {
                                          tables.RxGain[i] = base::toInt32(base::leadingNumber(text));
                                        }));
  tables.TxPowerPresent = flag(readTable(program_, "Solvents_TxPwr", "50",
                                         [&](std::size_t i, const std::string&, const std::string& text) {
                                           tables.TxPower[i] = StrToFloatVal(text);
                                         }));
  if (!any) base::raiseInvalidValue(program_.record.IniPath + ": [Solvents] lists no solvent");
  cmbSolvents.setListIndex(selection);
}

void frmControls::cmbSolvents_Click() {
  if (cmbSolvents.listIndex() < 0) return;
  const auto i = static_cast<std::size_t>(cmbSolvents.listIndex());
  LockParameters& record = program_.record;
  const SolventTables& tables = program_.solvents;
  txtSolventPPM.setText(base::numberText(tables.Shift[i]));
  useEntry(program_, "Solvents", i, [&] { record.SolventPPM = base::toSingle(txtSolventPPM.text()); });
  record.LockSolvent = cmbSolvents.text();
  record.Frequency = PlotScale::SolventLockFrequency(program_, record.SolventPPM);
  txtLockFreq.setText(base::numberText(record.Frequency));
  ActiveNMRAppInterface::SetLockFrequency(program_, record.Frequency);
  if (tables.RxGainPresent)
    useEntry(program_, "Solvents_RxGain", i, [&] { vsRxGain.setValue(tables.RxGain[i]); });
  if (tables.TxPowerPresent)
    useEntry(program_, "Solvents_TxPwr", i, [&] { vsTxPwr.setValue(base::toInt32(2 * tables.TxPower[i])); });
}

void frmControls::txtSolventPPM_LostFocus() {
  if (!base::isNumeric(txtSolventPPM.text())) return refuse(txtSolventPPM);
  // The stored shift stays: a typed one only retunes the lock.
  const float ppm =
      typedNumber(txtSolventPPM, [&] { return base::toSingle(StrToFloatVal(txtSolventPPM.text())); });
  program_.record.Frequency = PlotScale::SolventLockFrequency(program_, ppm);
  txtLockFreq.setText(base::numberText(program_.record.Frequency));
  ActiveNMRAppInterface::SetLockFrequency(program_, program_.record.Frequency);
}
