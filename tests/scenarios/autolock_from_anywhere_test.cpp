// AutoLock and AutoPhase of the whole panel on the simulated console, from starts an operator meets.
#include "support/AutoLockRun.h"
#include "support/Panel.h"
#include "ui/panels/frmControls.h"
#include <gtest/gtest.h>

namespace {

using support::AutoLockRun;
using support::AutoLockStart;

class AutoLockFromAnywhere : public testing::TestWithParam<std::string> {};

TEST_P(AutoLockFromAnywhere, endsLockedCentredPhasedAndAtItsLevel) {
  const std::string settings = support::defaultSettings();
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    const double strength = seed % 3 == 0 ? 0.2 : 1.0;
    const AutoLockStart start = support::randomStart(seed, GetParam(), strength);
    SCOPED_TRACE("seed " + std::to_string(seed) + ", line at " + std::to_string(start.lineField));
    AutoLockRun run(settings, start);
    const support::AutoLockResult result = run.run(300);
    EXPECT_TRUE(result.done) << result.status << " " << result.box;
    EXPECT_EQ(result.status, "LOCKED : AutoLock Done");
    EXPECT_LT(std::abs(result.phaseError), 10) << "phase";
    EXPECT_NEAR(result.level, 500, 75);
    EXPECT_NEAR(run.console().field(), run.console().lineField(), 60) << "the lock holds beside the line";
    EXPECT_EQ(run.console().mode(), sim::Mode::Lock);
  }
}

std::vector<std::string> solventNames() {
  std::vector<std::string> names;
  for (const sim::Solvent& solvent : sim::solvents()) names.emplace_back(solvent.name);
  return names;
}

std::string plainName(const testing::TestParamInfo<std::string>& solvent) {
  std::string name = solvent.param;
  std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
  return name;
}

INSTANTIATE_TEST_SUITE_P(Solvents, AutoLockFromAnywhere, testing::ValuesIn(solventNames()), plainName);

TEST(AutoLockStatuses, followEachOtherInTheOperatorsOrder) {
  support::Panel panel(support::defaultSettings());
  panel.useConsole();
  panel.startUp();
  panel.clear();
  panel.press("Auto");
  std::vector<std::string> seen;
  for (int tick = 0; tick < 20000; ++tick) {
    panel.tick();
    std::string status = panel.status();
    // Which of the two the lock judges first is the signal's affair.
    if (const auto suffix = status.find(" : "); suffix != std::string::npos) status.erase(0, suffix);
    if (seen.empty() || seen.back() != status) seen.push_back(status);
    if (status == " : AutoLock Done") break;
  }
  const std::vector<std::string> expected{"Auto Locking...",
                                          "Acquiring noise power",
                                          "Locating a peak",
                                          "Found a peak; Centering it",
                                          "Adjusting Rx gain to set peak magn (2000)",
                                          "Auto Phasing",
                                          "Centering the peak again",
                                          "Found a peak; Centering it",
                                          "Auto Locking...",
                                          "HOLD",
                                          " : Adjusting Rx gain to set lock level (500)",
                                          " : AutoLock Done"};
  EXPECT_EQ(headless::compareLines(expected, seen), "");
}

TEST(AutoPhaseFromAnywhere, everyTenDegreesEndsWithinFiveOfTheBestPhaseBackInSweep) {
  for (int error = -180; error < 180; error += 10) {
    SCOPED_TRACE(std::to_string(error) + " degrees off");
    support::Panel panel(support::defaultSettings());
    sim::Settings settings;
    settings.seed = static_cast<std::uint64_t>(error + 1000);
    settings.bestPhase = 20;
    panel.useConsole(settings);
    panel.startUp();
    panel.press("Sweep");
    panel.waitSeconds(2);
    panel.type(panel.controls().txtPhase, std::to_string(static_cast<int>(std::remainder(20 + error, 360))));
    panel.controls().txtPhase.pressEnter();
    panel.waitSeconds(1);
    panel.platform.dialogs().otherwise = [](const std::string& text, ports::Buttons) {
      EXPECT_EQ(text, "It seems in phase, Continue anyway?");
      return std::optional(ports::Answer::Yes);
    };
    panel.press("Phase");
    for (int tick = 0; tick < 30000 && panel.record().LockMode == kModePhase; ++tick) panel.tick();
    EXPECT_EQ(panel.record().LockMode, kModeSweep);
    EXPECT_LE(std::abs(std::remainder(panel.record().LockPhase - settings.bestPhase, 360)), 5);
  }
}

} // namespace
