// The default settings file and the simulated console's solvents are one table in two places: keep them
// equal, so that the demonstration and the operator start from values that fit.
#include "headless/HeadlessSettings.h"
#include "sim/Sample.h"
#include "sim/Settings.h"
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

class DefaultSettings : public testing::Test {
 protected:
  std::string text(const char* section, const std::string& key) {
    return store_.read(kPath, section, key, "(missing)", 255);
  }
  double number(const char* section, const std::string& key) { return std::stod(text(section, key)); }
  std::vector<std::string> keys(const char* section) {
    std::vector<std::string> names;
    const std::string list = store_.keyList(kPath, section, 255);
    for (std::size_t at = 0; at < list.size() && list[at] != '\0';) {
      names.push_back(list.c_str() + at);
      at += names.back().size() + 1;
    }
    return names;
  }

 private:
  static constexpr const char* kPath = LOCK_SOURCE_DIR "/packaging/LOCK.INI";
  headless::FileSettings store_;
};

} // namespace

TEST_F(DefaultSettings, knowTheSolventsOfTheConsole) {
  std::vector<std::string> names;
  for (const sim::Solvent& solvent : sim::solvents()) {
    const std::string name(solvent.name);
    names.push_back(name);
    EXPECT_EQ(number("Solvents", name), solvent.line.shift) << name;
    EXPECT_EQ(number("Solvents_RxGain", name), solvent.rxGain) << name;
    EXPECT_EQ(number("Solvents_TxPwr", name), solvent.txPower) << name;
  }
  EXPECT_GE(names.size(), 8u);
  EXPECT_EQ(keys("Solvents"), names);
  EXPECT_EQ(keys("Solvents_RxGain"), names);
  EXPECT_EQ(keys("Solvents_TxPwr"), names);
}

TEST_F(DefaultSettings, startWithTheConsolesSampleAtItsOwnGainPowerAndFrequency) {
  const sim::Settings console;
  const std::string solvent = text("Hardware", "LockSolvent");
  EXPECT_EQ(solvent, console.sample.name);
  const double shift = number("Solvents", solvent);
  EXPECT_EQ(number("Hardware", "SolventPPM"), shift);
  EXPECT_EQ(number("Hardware", "RxGain"), number("Solvents_RxGain", solvent));
  EXPECT_EQ(number("Hardware", "TxPower"), number("Solvents_TxPwr", solvent));
  const double resonance =
      ((shift - console.protonDelta) * 1e-6 + 1) * console.protonFreq / console.gammaRatio;
  EXPECT_NEAR(number("Hardware", "Frequency"), resonance + console.sidebandFreq * 1e-6, 1e-7);
}

TEST_F(DefaultSettings, describeTheConsolesMagnet) {
  const sim::Settings console;
  EXPECT_EQ(number("Hardware", "PPMperDAC"), console.ppmPerDac);
  EXPECT_EQ(number("Hardware", "SidebandFreq"), console.sidebandFreq);
  EXPECT_EQ(number("System", "ProtonFreq"), console.protonFreq);
  EXPECT_EQ(number("System", "ProtonDelta"), console.protonDelta);
  EXPECT_EQ(number("System", "GammaRatio"), console.gammaRatio);
  EXPECT_LT(std::abs(console.lineField), number("Hardware", "SweepWidth") / 2)
      << "the line is not in the sweep";
}

TEST_F(DefaultSettings, stayWithinTheLimitsOfPowerAndPresets) {
  for (const std::string& solvent : keys("Solvents"))
    EXPECT_LE(number("Solvents_TxPwr", solvent) + number("Hardware", "DeltaTxPwr"), 63.5) << solvent;
  const int presets = static_cast<int>(number("Loop", "NSets"));
  EXPECT_LE(presets, 51);
  for (int n = 0; n < presets; ++n)
    for (const char* constant : {"P_", "I_", "D_"})
      EXPECT_NE(text("Loop", constant + std::to_string(n)), "(missing)") << constant << n;
  EXPECT_LT(number("Loop", "ActiveSet"), presets);
}
