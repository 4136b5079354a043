// AutoLock from random starts on the simulated console, for every supplied solvent and three signal
// strengths: how many end locked and done, how long it takes, how well phase and level are set. Arguments:
// [starts per solvent] [solvent].
#include "support/AutoLockRun.h"
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

double percentile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5)];
}

struct Tally {
  int runs = 0, done = 0;
  std::vector<double> halfSweeps, seconds, phaseErrors, levels;

  void add(const support::AutoLockResult& result) {
    ++runs;
    if (!result.done) return;
    ++done;
    halfSweeps.push_back(result.halfSweeps);
    seconds.push_back(result.seconds);
    phaseErrors.push_back(std::abs(result.phaseError));
    levels.push_back(result.level);
  }
  void print(const char* name, double strength) const {
    std::printf("%-12s %4.2f  %5d  %6.2f %%  %4.0f %4.0f  %5.1f %5.1f  %4.1f %4.1f  %4.0f %4.0f %4.0f\n",
                name, strength, runs, 100.0 * done / runs, percentile(halfSweeps, 0.5),
                percentile(halfSweeps, 0.95), percentile(seconds, 0.5), percentile(seconds, 0.95),
                percentile(phaseErrors, 0.5), percentile(phaseErrors, 0.95), percentile(levels, 0.05),
                percentile(levels, 0.5), percentile(levels, 0.95));
    std::fflush(stdout);
  }
};

} // namespace

int main(int argc, char** argv) {
  const int starts = argc > 1 ? std::atoi(argv[1]) : 1000;
  const std::string only = argc > 2 ? argv[2] : "";
  const std::string settings = support::defaultSettings();
  std::printf("solvent    signal starts     done  half sweeps  seconds     phase error  level\n"
              "                                   med  95%%   med   95%%   med  95%%   5%%  med  95%%\n");
  for (const sim::Solvent& solvent : sim::solvents()) {
    const std::string name(solvent.name);
    if (!only.empty() && only != name) continue;
    for (const double strength : {1.0, 0.5, 0.2}) {
      Tally tally;
      for (int seed = 1; seed <= starts / 3; ++seed) {
        const support::AutoLockStart start =
            support::randomStart(static_cast<std::uint64_t>(seed), name, strength);
        const support::AutoLockResult result = support::AutoLockRun(settings, start).run(300);
        tally.add(result);
        if (!result.done)
          std::printf("  not done: seed %d line %.0f best phase %.0f drift %.0f: %s after %.0f s, phase "
                      "error %.0f %s\n",
                      seed, start.lineField, start.bestPhase, start.driftHzPerHour, result.status.c_str(),
                      result.seconds, result.phaseError, result.box.c_str());
      }
      tally.print(name.c_str(), strength);
    }
  }
}
