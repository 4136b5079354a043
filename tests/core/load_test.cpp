#include "base/RuntimeError.h"
#include "support/Panel.h"
#include "support/RecordingSettings.h"

namespace {

using support::Panel;

enum class Rule { Float, Single, Whole32, Whole16, ContainsTrue, BooleanWord, Text };

struct Key {
  const char* section;
  const char* key;
  const char* fallback; // what the reader is asked for when the key is missing
  Rule rule;
  double (*field)(const LockParameters&); // not for texts
};

#define FIELD(name) [](const LockParameters& r) { return static_cast<double>(r.name); }
constexpr double (*kNone)(const LockParameters&) = nullptr;

// In the order in which the loader reads them; NSets is 2 here, as it is without a file.
const Key kKeys[] = {
    {"Hardware", "PPMperDAC", ".001", Rule::Float, FIELD(PPMperDAC)},
    {"Hardware", "SidebandFreq", "+2000", Rule::Float, FIELD(SidebandFreq)},
    {"Hardware", "LockSolvent", " ", Rule::Text, kNone},
    {"Hardware", "SolventPPM", "4.8", Rule::Single, FIELD(SolventPPM)},
    {"Hardware", "Frequency", "46.04", Rule::Float, FIELD(Frequency)},
    {"Hardware", "FieldCenter", "0", Rule::Whole32, FIELD(FieldCenter)},
    {"Hardware", "SweepWidth", "10000", Rule::Whole32, FIELD(SweepWidth)},
    {"Hardware", "SweepSpeed", "25000", Rule::Whole32, FIELD(SweepSpeed)},
    {"Hardware", "LockPhase", "0", Rule::Whole32, FIELD(LockPhase)},
    {"Hardware", "TxPower", "63.5", Rule::Float, FIELD(TxPower)},
    {"Hardware", "RxGain", "1000", Rule::Whole32, FIELD(RxGain)},
    {"Hardware", "RxFilterIndex", "0", Rule::Whole16, FIELD(RxFilterIndex)},
    {"Hardware", "RxFilterBW0", "100", Rule::Float, FIELD(RxFilterBW[0])},
    {"Hardware", "RxFilterBW1", "100", Rule::Float, FIELD(RxFilterBW[1])},
    {"Hardware", "RxFilterBW2", "100", Rule::Float, FIELD(RxFilterBW[2])},
    {"Hardware", "Testing", "false", Rule::ContainsTrue, FIELD(Testing)},
    {"Hardware", "DeltaTxPwr", "0", Rule::Float, FIELD(DeltaTxPwr)},
    {"Hardware", "LockHoldRxFilter", "0", Rule::Whole16, FIELD(LockHoldRxFilter)},
    {"Hardware", "SweepRxFilter", "0", Rule::Whole16, FIELD(SweepRxFilter)},
    {"Loop", "NSets", "2", Rule::Whole16, FIELD(NSets)},
    {"Loop", "P_0", "10000", Rule::Whole32, FIELD(LoopSetP[0])},
    {"Loop", "I_0", "50", Rule::Whole32, FIELD(LoopSetI[0])},
    {"Loop", "D_0", "0", Rule::Whole32, FIELD(LoopSetD[0])},
    {"Loop", "P_1", "10000", Rule::Whole32, FIELD(LoopSetP[1])},
    {"Loop", "I_1", "50", Rule::Whole32, FIELD(LoopSetI[1])},
    {"Loop", "D_1", "0", Rule::Whole32, FIELD(LoopSetD[1])},
    {"Loop", "ActiveSet", "0", Rule::Whole16, FIELD(ActiveSet)},
    {"Loop", "P", "10000", Rule::Single, FIELD(LoopP)},
    {"Loop", "I", "50", Rule::Single, FIELD(LoopI)},
    {"Loop", "D", "0", Rule::Single, FIELD(LoopD)},
    {"Display", "PlotMax", "500", Rule::Whole32, FIELD(PlotMax)},
    {"Display", "PlotOffset", "0", Rule::Whole16, FIELD(PlotOffset)},
    {"Display", "LogInterval", "60", Rule::Single, FIELD(LogInterval)},
    {"Display", "LogFileName", "Lock.Log", Rule::Text, kNone},
    {"Display", "DisplayFilter", "30", Rule::Single, FIELD(DisplayFilter)},
    {"Display", "FormTop", "0", Rule::Single, FIELD(FormTop)},
    {"Display", "FormLeft", "0", Rule::Single, FIELD(FormLeft)},
    {"Display", "FormWidth", "0", Rule::Single, FIELD(FormWidth)},
    {"Display", "FormHeight", "0", Rule::Single, FIELD(FormHeight)},
    {"Display", "FormMax", "0", Rule::Whole16, FIELD(FormMax)},
    {"Display", "ShowReal", "1", Rule::Whole16, FIELD(ShowReal)},
    {"Display", "ShowImag", "0", Rule::Whole16, FIELD(ShowImag)},
    {"Display", "ShowControls", "1", Rule::Whole16, FIELD(ShowControls)},
    {"Display", "StayOnTop", "true", Rule::ContainsTrue, FIELD(StayOnTop)},
    {"Display", "NoiseFactor", "4.0", Rule::Float, FIELD(NoiseFactor)},
    {"Amplitude", "Top", "-1", Rule::Single, FIELD(AmplitudeTop)},
    {"Amplitude", "Left", "-1", Rule::Single, FIELD(AmplitudeLeft)},
    {"NMRControls", "Top", "-1", Rule::Single, FIELD(NMRControlsTop)},
    {"NMRControls", "Left", "-1", Rule::Single, FIELD(NMRControlsLeft)},
    {"Sweep", "Top", "-1", Rule::Single, FIELD(SweepTop)},
    {"Sweep", "Left", "-1", Rule::Single, FIELD(SweepLeft)},
    {"Tuning", "Top", "-1", Rule::Single, FIELD(TuningTop)},
    {"Tuning", "Left", "-1", Rule::Single, FIELD(TuningLeft)},
    {"System", "ProtonFreq", "299.935", Rule::Float, FIELD(ProtonFreq)},
    {"System", "ProtonDelta", "4.8", Rule::Float, FIELD(ProtonDelta)},
    {"System", "GammaRatio", "6.514288", Rule::Float, FIELD(GammaRatio)},
    {"AutoLock", "UseDefaultTxRx", "true", Rule::BooleanWord, FIELD(UseDefaultTxRx)},
    {"AutoLock", "SweepSpeed", "32768", Rule::Whole32, FIELD(AutoLockSweepSpeed)},
    {"AutoLock", "SweepWidth", "16384", Rule::Whole32, FIELD(AutoLockSweepWidth)},
    {"AutoLock", "PeakThresholdFactor", "16", Rule::Single, FIELD(PeakThresholdFactor)},
    {"AutoLock", "SetPeakMagn", "2000", Rule::Float, FIELD(SetPeakMagn)},
    {"AutoLock", "SetLockLevel", "500", Rule::Whole32, FIELD(SetLockLevel)},
    {"AutoLock", "PhaseThresholdFactor", "0.05", Rule::Single, FIELD(PhaseThresholdFactor)},
    {"AutoLock", "PhaseRepeatTimes", "5", Rule::Whole16, FIELD(PhaseRepeatTimes)},
};
#undef FIELD

std::string keyName(const Key& key) { return std::string(key.section) + "_" + key.key; }

// The record as it is after loading a file of this text.
struct Loaded {
  explicit Loaded(const std::string& ini) : p(ini) {
    p.record().IniPath = Panel::kIniPath;
    vbLock_mod::LoadLockSettings(p.program());
  }
  const LockParameters& record() { return p.record(); }
  Panel p;
};

std::string oneKey(const std::string& section, const std::string& key, const std::string& value) {
  return "[" + section + "]\r\n" + key + "=" + value + "\r\n";
}

double loadedValue(const Key& key, const std::string& value) {
  Loaded loaded(oneKey(key.section, key.key, value));
  return key.field(loaded.record());
}

base::RuntimeError loadError(const std::string& ini) {
  Panel p(ini);
  p.record().IniPath = Panel::kIniPath;
  try {
    vbLock_mod::LoadLockSettings(p.program());
  } catch (const base::RuntimeError& error) {
    return error;
  }
  ADD_FAILURE() << "the settings were accepted";
  return {0, ""};
}

std::string errorFor(const std::string& section, const std::string& key, const std::string& value) {
  return loadError(oneKey(section, key, value)).message();
}

std::string expectedError(int number, const std::string& text, const std::string& setting) {
  return "Run-time error '" + std::to_string(number) + "':\r\n\r\n" + text + "\r\n\r\n" +
         std::string(Panel::kIniPath) + ": " + setting;
}

class EveryKey : public testing::TestWithParam<Key> {};
INSTANTIATE_TEST_SUITE_P(Load, EveryKey, testing::ValuesIn(kKeys),
                         [](const testing::TestParamInfo<Key>& i) { return keyName(i.param); });

TEST_P(EveryKey, missingGivesItsDefault) {
  const Key& key = GetParam();
  if (key.rule == Rule::Text) return; // texts have tests of their own
  Loaded loaded("");
  double expected = 0;
  switch (key.rule) {
  case Rule::ContainsTrue:
  case Rule::BooleanWord:
    expected = std::string(key.fallback) == "true" ? -1 : 0;
    break;
  case Rule::Single:
    expected = std::stof(key.fallback);
    break;
  default:
    expected = std::stod(key.fallback);
  }
  EXPECT_EQ(key.field(loaded.record()), expected);
}

TEST_P(EveryKey, followsItsRule) {
  const Key& key = GetParam();
  const bool largeCount = std::string(key.key) == "NSets"; // more than 51 is a case of its own
  switch (key.rule) {
  case Rule::Float:
    EXPECT_EQ(loadedValue(key, "4,8"), 4.8);
    EXPECT_EQ(loadedValue(key, " +1.25E1 dB"), 12.5);
    EXPECT_EQ(loadedValue(key, "12abc"), 12);
    EXPECT_EQ(loadedValue(key, "abc"), 0);
    EXPECT_EQ(loadedValue(key, "1 000"), 1000);
    break;
  case Rule::Single:
    EXPECT_EQ(loadedValue(key, "4,8"), static_cast<double>(4.8F));
    EXPECT_EQ(loadedValue(key, "0.1"), static_cast<double>(0.1F));
    EXPECT_EQ(loadedValue(key, "12abc"), 12);
    EXPECT_EQ(loadedValue(key, "abc"), 0);
    break;
  case Rule::Whole32:
    EXPECT_EQ(loadedValue(key, "4,8"), 4) << "a whole number knows no decimal comma";
    EXPECT_EQ(loadedValue(key, "2.5"), 2);
    EXPECT_EQ(loadedValue(key, "3.5"), 4);
    EXPECT_EQ(loadedValue(key, "-2.5"), -2);
    EXPECT_EQ(loadedValue(key, "12abc"), 12);
    EXPECT_EQ(loadedValue(key, "abc"), 0);
    EXPECT_EQ(loadedValue(key, "2147483647"), 2147483647);
    EXPECT_EQ(loadedValue(key, "-2147483647"), -2147483647);
    break;
  case Rule::Whole16:
    EXPECT_EQ(loadedValue(key, "4,8"), 4);
    EXPECT_EQ(loadedValue(key, "2.5"), 2);
    EXPECT_EQ(loadedValue(key, "-1"), -1);
    EXPECT_EQ(loadedValue(key, "abc"), 0);
    EXPECT_EQ(loadedValue(key, largeCount ? "51" : "32767"), largeCount ? 51 : 32767);
    EXPECT_EQ(loadedValue(key, "-32768"), -32768);
    break;
  case Rule::ContainsTrue:
    EXPECT_EQ(loadedValue(key, "TRUE"), -1);
    EXPECT_EQ(loadedValue(key, "untrue"), -1);
    EXPECT_EQ(loadedValue(key, "false"), 0);
    EXPECT_EQ(loadedValue(key, "1"), 0);
    EXPECT_EQ(loadedValue(key, ""), 0);
    break;
  case Rule::BooleanWord:
    EXPECT_EQ(loadedValue(key, "False"), 0);
    EXPECT_EQ(loadedValue(key, " tRUE "), -1);
    EXPECT_EQ(loadedValue(key, "0"), 0);
    EXPECT_EQ(loadedValue(key, "2"), -1);
    break;
  case Rule::Text:
    break;
  }
}

TEST_P(EveryKey, refusesWhatItsFieldCannotHold) {
  const Key& key = GetParam();
  std::string text;
  switch (key.rule) {
  case Rule::Float:
    text = "1E999";
    break;
  case Rule::Single:
    text = "3.5E38"; // with a 9 behind, a double that is too large as well
    break;
  case Rule::Whole32:
    text = "2147483648";
    break;
  case Rule::Whole16:
    text = "32768";
    break;
  default:
    return;
  }
  const std::string name = std::string("[") + key.section + "] " + key.key + "=";
  EXPECT_EQ(errorFor(key.section, key.key, text), expectedError(6, "Overflow", name + text));
  const std::string low = "-" + text + "9"; // for the whole numbers, far below the lowest
  EXPECT_EQ(errorFor(key.section, key.key, low), expectedError(6, "Overflow", name + low));
}

TEST(Load, readsTheKeysInTheirOrderWithTheirDefaults) {
  Panel p("");
  support::RecordingSettings store(p.platform.memorySettings());
  p.platform.useSettings(store);
  p.record().IniPath = Panel::kIniPath;
  vbLock_mod::LoadLockSettings(p.program());
  ASSERT_EQ(store.reads.size(), std::size(kKeys));
  for (std::size_t i = 0; i < std::size(kKeys); ++i) {
    EXPECT_EQ(store.reads[i].key, std::string("[") + kKeys[i].section + "] " + kKeys[i].key);
    EXPECT_EQ(store.reads[i].fallback, kKeys[i].fallback) << store.reads[i].key;
    EXPECT_EQ(store.reads[i].capacity, 255) << store.reads[i].key;
  }
  EXPECT_TRUE(store.writes.empty());
}

TEST(Load, aSectionThatIsMissingGivesItsDefaults) {
  Loaded loaded("[Display]\r\nPlotMax=250\r\n");
  EXPECT_EQ(loaded.record().PPMperDAC, 0.001);
  EXPECT_EQ(loaded.record().SidebandFreq, 2000);
  EXPECT_EQ(loaded.record().LockSolvent, "");
  EXPECT_EQ(loaded.record().SolventPPM, 4.8F);
  EXPECT_EQ(loaded.record().Frequency, 46.04);
  EXPECT_EQ(loaded.record().TxPower, 63.5);
  EXPECT_EQ(loaded.record().RxGain, 1000);
}

TEST(Load, textsLoseTheirOuterBlanksOnly) {
  Loaded loaded("[Hardware]\r\nLockSolvent=\"  Acetone d6 \"\r\n[Display]\r\nLogFileName= my log.txt \r\n");
  EXPECT_EQ(loaded.record().LockSolvent, "Acetone d6");
  EXPECT_EQ(loaded.record().LogFileName, "my log.txt");
  EXPECT_EQ(Loaded("").record().LogFileName, "Lock.Log");
}

TEST(Load, testingOverridesTheOffsetAndBothFilters) {
  Loaded loaded("[Hardware]\r\nTesting=TRUE\r\nDeltaTxPwr=5\r\nLockHoldRxFilter=1\r\nSweepRxFilter=2\r\n");
  EXPECT_EQ(loaded.record().Testing, -1);
  EXPECT_EQ(loaded.record().DeltaTxPwr, 0);
  EXPECT_EQ(loaded.record().LockHoldRxFilter, -1);
  EXPECT_EQ(loaded.record().SweepRxFilter, -1);
}

TEST(Load, withoutTestingTheFileDecides) {
  Loaded loaded("[Hardware]\r\nTesting=no\r\nDeltaTxPwr=5\r\nLockHoldRxFilter=1\r\nSweepRxFilter=2\r\n");
  EXPECT_EQ(loaded.record().DeltaTxPwr, 5);
  EXPECT_EQ(loaded.record().LockHoldRxFilter, 1);
  EXPECT_EQ(loaded.record().SweepRxFilter, 2);
}

TEST(Load, thePlotIsAsDeepAsItIsHigh) {
  EXPECT_EQ(Loaded("[Display]\r\nPlotMax=250\r\n").record().PlotMin, -250);
  EXPECT_EQ(Loaded("").record().PlotMin, -500);
}

TEST(Load, aPlotWithoutALowerEndIsRefusedByName) {
  EXPECT_EQ(errorFor("Display", "PlotMax", "-2147483648"),
            expectedError(6, "Overflow", "[Display] PlotMax=-2147483648"));
}

TEST(Load, sameNamesInDifferentSectionsStayApart) {
  Loaded loaded("[Hardware]\r\nSweepSpeed=1\r\nSweepWidth=2\r\n[AutoLock]\r\nSweepSpeed=3\r\nSweepWidth=4\r\n"
                "[Amplitude]\r\nTop=5\r\nLeft=6\r\n[NMRControls]\r\nTop=7\r\nLeft=8\r\n[Sweep]\r\nTop=9\r\n"
                "Left=10\r\n[Tuning]\r\nTop=11\r\nLeft=12\r\n");
  const LockParameters& r = loaded.record();
  EXPECT_EQ(r.SweepSpeed, 1);
  EXPECT_EQ(r.SweepWidth, 2);
  EXPECT_EQ(r.AutoLockSweepSpeed, 3);
  EXPECT_EQ(r.AutoLockSweepWidth, 4);
  EXPECT_EQ(r.AmplitudeTop, 5);
  EXPECT_EQ(r.AmplitudeLeft, 6);
  EXPECT_EQ(r.NMRControlsTop, 7);
  EXPECT_EQ(r.NMRControlsLeft, 8);
  EXPECT_EQ(r.SweepTop, 9);
  EXPECT_EQ(r.SweepLeft, 10);
  EXPECT_EQ(r.TuningTop, 11);
  EXPECT_EQ(r.TuningLeft, 12);
}

std::string presets(int sets) {
  std::string ini = "[Loop]\r\nNSets=" + std::to_string(sets) + "\r\n";
  for (int n = 0; n <= sets; ++n)
    ini += "P_" + std::to_string(n) + "=" + std::to_string(1000 + n) + "\r\nI_" + std::to_string(n) + "=" +
           std::to_string(2000 + n) + "\r\nD_" + std::to_string(n) + "=" + std::to_string(3000 + n) + "\r\n";
  return ini;
}

TEST(Load, takesAll51Presets) {
  Loaded loaded(presets(51));
  for (int n = 0; n <= 50; ++n) {
    const auto i = static_cast<std::size_t>(n);
    EXPECT_EQ(loaded.record().LoopSetP[i], 1000 + n);
    EXPECT_EQ(loaded.record().LoopSetI[i], 2000 + n);
    EXPECT_EQ(loaded.record().LoopSetD[i], 3000 + n);
  }
}

TEST(Load, a52ndPresetIsRefusedOnceItsFirstConstantIsRead) {
  Panel p(presets(52));
  support::RecordingSettings store(p.platform.memorySettings());
  p.platform.useSettings(store);
  p.record().IniPath = Panel::kIniPath;
  try {
    vbLock_mod::LoadLockSettings(p.program());
    FAIL() << "accepted";
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.message(), expectedError(9, "Subscript out of range", "[Loop] NSets=52"));
  }
  EXPECT_EQ(store.reads.back().key, "[Loop] P_51");
  EXPECT_EQ(p.record().LoopSetP[50], 1050);
}

TEST(Load, noPresetsForZeroOrLess) {
  for (const char* sets : {"0", "-3"}) {
    Panel p(oneKey("Loop", "NSets", sets));
    support::RecordingSettings store(p.platform.memorySettings());
    p.platform.useSettings(store);
    p.record().IniPath = Panel::kIniPath;
    vbLock_mod::LoadLockSettings(p.program());
    for (const auto& read : store.reads) EXPECT_EQ(read.key.find("_0"), std::string::npos) << read.key;
  }
}

TEST(Load, aBadPresetIsNamed) {
  EXPECT_EQ(errorFor("Loop", "I_1", "3e9"), expectedError(6, "Overflow", "[Loop] I_1=3e9"));
}

TEST(Load, useDefaultTxRxMustBeAWordOrANumber) {
  for (const char* text : {"maybe", "yes", ""})
    EXPECT_EQ(errorFor("AutoLock", "UseDefaultTxRx", text),
              expectedError(13, "Type mismatch", std::string("[AutoLock] UseDefaultTxRx=") + text));
}

TEST(Load, everythingReadBeforeAnErrorStays) {
  Panel p("[Hardware]\r\nFrequency=50\r\nFieldCenter=1e12\r\nRxGain=77\r\n");
  p.record().IniPath = Panel::kIniPath;
  EXPECT_THROW(vbLock_mod::LoadLockSettings(p.program()), base::RuntimeError);
  EXPECT_EQ(p.record().Frequency, 50);
  EXPECT_NE(p.record().RxGain, 77);
}

TEST(Load, aReloadForgetsUnsavedChanges) {
  Panel p;
  p.started();
  p.record().RxGain = 1;
  p.record().LockSolvent = "other";
  vbLock_mod::LoadLockSettings(p.program());
  EXPECT_EQ(p.record().RxGain, 1200);
  EXPECT_EQ(p.record().LockSolvent, "CDCl3");
}

TEST(Load, hexadecimalIsRead) { EXPECT_EQ(Loaded(oneKey("Hardware", "RxGain", "&H10")).record().RxGain, 16); }

} // namespace
