#include "base/NumberText.h"
#include "base/Rounding.h"
#include "base/Text.h"
#include "core/Program.h"
#include "core/modConvertStrToFloatVal.h"
#include "core/vbLock_mod.h"
#include <cmath>

namespace vbLock_mod {

namespace {

constexpr int kBuffer = 255;

// Reads keys of one section after the other; an error names file, section, key and text.
class Reader {
 public:
  std::string where(const std::string& key, const std::string& text) const {
    return settingName(program_, section_, key, text);
  }

 private:
  std::string read(const std::string& key, const char* fallback) {
    return program_.platform.settings().read(program_.record.IniPath, section_, key, fallback, kBuffer);
  }
  template <class Convert> auto named(const std::string& key, const std::string& text, Convert convert) {
    try {
      return convert();
    } catch (const base::RuntimeError& error) {
      throw error.within(where(key, text));
    }
  }
  template <class Round> auto whole(const std::string& key, const char* fallback, Round round) {
    const std::string text = read(key, fallback);
    return named(key, text, [&] { return round(base::leadingNumber(text)); });
  }

 public:
  explicit Reader(Program& program) : program_(program) {}

  void section(const char* name) { section_ = name; }

  double real(const std::string& key, const char* fallback) {
    const std::string text = read(key, fallback);
    const double value = StrToFloatVal(text);
    if (!std::isfinite(value)) base::raiseOverflow(where(key, text));
    return value;
  }
  float single(const std::string& key, const char* fallback) {
    const std::string text = read(key, fallback);
    return named(key, text, [&] { return base::toSingle(StrToFloatVal(text)); });
  }
  std::int32_t whole32(const std::string& key, const char* fallback) {
    return whole(key, fallback, base::toInt32);
  }
  std::int16_t whole16(const std::string& key, const char* fallback) {
    return whole(key, fallback, base::toInt16);
  }
  std::string text(const std::string& key, const char* fallback) {
    return base::trimBlanks(read(key, fallback));
  }
  std::int16_t containsTrue(const std::string& key, const char* fallback) {
    return flag(base::containsIgnoringCase(read(key, fallback), "true"));
  }
  std::int16_t booleanWord(const std::string& key, const char* fallback) {
    const std::string word = text(key, fallback);
    return named(key, word, [&] { return flag(base::toBoolean(word)); });
  }

 private:
  Program& program_;
  std::string section_;
};

void loadHardware(Reader& file, LockParameters& record) {
  file.section("Hardware");
  record.PPMperDAC = file.real("PPMperDAC", ".001");
  record.SidebandFreq = file.real("SidebandFreq", "+2000");
  record.LockSolvent = file.text("LockSolvent", " ");
  record.SolventPPM = file.single("SolventPPM", "4.8");
  record.Frequency = file.real("Frequency", "46.04");
  record.FieldCenter = file.whole32("FieldCenter", "0");
  record.SweepWidth = file.whole32("SweepWidth", "10000");
  record.SweepSpeed = file.whole32("SweepSpeed", "25000");
  record.LockPhase = file.whole32("LockPhase", "0");
  record.TxPower = file.real("TxPower", "63.5");
  record.RxGain = file.whole32("RxGain", "1000");
  record.RxFilterIndex = file.whole16("RxFilterIndex", "0");
  for (int i = 0; i <= 2; ++i)
    record.RxFilterBW[static_cast<std::size_t>(i)] = file.real("RxFilterBW" + base::numberText(i), "100");
  record.Testing = file.containsTrue("Testing", "false");
  record.DeltaTxPwr = file.real("DeltaTxPwr", "0");
  record.LockHoldRxFilter = file.whole16("LockHoldRxFilter", "0");
  record.SweepRxFilter = file.whole16("SweepRxFilter", "0");
  if (!record.Testing) return;
  record.DeltaTxPwr = 0;
  record.LockHoldRxFilter = record.SweepRxFilter = kTrue;
}

void loadLoop(Reader& file, LockParameters& record) {
  file.section("Loop");
  record.NSets = file.whole16("NSets", "2");
  for (int n = 0; n < record.NSets; ++n) {
    const std::string number = base::numberText(n);
    const std::int32_t p = file.whole32("P_" + number, "10000");
    const auto i = static_cast<std::size_t>(n);
    if (i >= record.LoopSetP.size())
      base::raiseSubscript(file.where("NSets", base::numberText(record.NSets)));
    record.LoopSetP[i] = p;
    record.LoopSetI[i] = file.whole32("I_" + number, "50");
    record.LoopSetD[i] = file.whole32("D_" + number, "0");
  }
  record.ActiveSet = file.whole16("ActiveSet", "0");
  record.LoopP = file.single("P", "10000");
  record.LoopI = file.single("I", "50");
  record.LoopD = file.single("D", "0");
}

void loadDisplay(Reader& file, LockParameters& record) {
  file.section("Display");
  record.PlotMax = file.whole32("PlotMax", "500");
  if (record.PlotMax == INT32_MIN)
    base::raiseOverflow(file.where("PlotMax", base::numberText(record.PlotMax)));
  record.PlotMin = -record.PlotMax;
  record.PlotOffset = file.whole16("PlotOffset", "0");
  record.LogInterval = file.single("LogInterval", "60");
  record.LogFileName = file.text("LogFileName", "Lock.Log");
  record.DisplayFilter = file.single("DisplayFilter", "30");
  record.FormTop = file.single("FormTop", "0");
  record.FormLeft = file.single("FormLeft", "0");
  record.FormWidth = file.single("FormWidth", "0");
  record.FormHeight = file.single("FormHeight", "0");
  record.FormMax = file.whole16("FormMax", "0");
  record.ShowReal = file.whole16("ShowReal", "1");
  record.ShowImag = file.whole16("ShowImag", "0");
  record.ShowControls = file.whole16("ShowControls", "1");
  record.StayOnTop = file.containsTrue("StayOnTop", "true");
  record.NoiseFactor = file.real("NoiseFactor", "4.0");
}

void loadPlace(Reader& file, const char* section, float& top, float& left) {
  file.section(section);
  top = file.single("Top", "-1");
  left = file.single("Left", "-1");
}

void loadSystem(Reader& file, LockParameters& record) {
  file.section("System");
  record.ProtonFreq = file.real("ProtonFreq", "299.935");
  record.ProtonDelta = file.real("ProtonDelta", "4.8");
  record.GammaRatio = file.real("GammaRatio", "6.514288");
}

void loadAutoLock(Reader& file, LockParameters& record) {
  file.section("AutoLock");
  record.UseDefaultTxRx = file.booleanWord("UseDefaultTxRx", "true");
  record.AutoLockSweepSpeed = file.whole32("SweepSpeed", "32768");
  record.AutoLockSweepWidth = file.whole32("SweepWidth", "16384");
  record.PeakThresholdFactor = file.single("PeakThresholdFactor", "16");
  record.SetPeakMagn = file.real("SetPeakMagn", "2000");
  record.SetLockLevel = file.whole32("SetLockLevel", "500");
  record.PhaseThresholdFactor = file.single("PhaseThresholdFactor", "0.05");
  record.PhaseRepeatTimes = file.whole16("PhaseRepeatTimes", "5");
}

} // namespace

std::string settingName(const Program& program, const std::string& section, const std::string& key,
                        const std::string& value) {
  return program.record.IniPath + ": [" + section + "] " + key + "=" + value;
}

void LoadLockSettings(Program& program) {
  LockParameters& record = program.record;
  Reader file(program);
  loadHardware(file, record);
  loadLoop(file, record);
  loadDisplay(file, record);
  loadPlace(file, "Amplitude", record.AmplitudeTop, record.AmplitudeLeft);
  loadPlace(file, "NMRControls", record.NMRControlsTop, record.NMRControlsLeft);
  loadPlace(file, "Sweep", record.SweepTop, record.SweepLeft);
  loadPlace(file, "Tuning", record.TuningTop, record.TuningLeft);
  loadSystem(file, record);
  loadAutoLock(file, record);
}

} // namespace vbLock_mod
