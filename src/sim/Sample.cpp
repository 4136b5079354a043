#include "sim/Sample.h"

#include <array>
#include <numbers>
#include <stdexcept>

namespace sim {
namespace {

// Amplitudes follow the deuterium concentration (CDCl3 12.4 mol/l), relaxation times are those of the neat
// liquids at room temperature. Powers keep the saturation parameter near 0.1 in the lock; gains put the peak
// of the automatic sweep (10 units of power more) near 2000.
constexpr std::array kSolvents{
    Solvent{"CDCl3", {7.26, 1.50, 1.30, 1.0}, 36, 850},
    Solvent{"D2O", {4.80, 0.43, 0.42, 8.9}, 38, 80},
    Solvent{"DMSO-d6", {2.50, 0.40, 0.36, 6.8}, 38, 110},
    Solvent{"C6D6", {7.16, 1.50, 1.40, 5.4}, 36, 160},
    Solvent{"Acetone-d6", {2.05, 1.20, 1.10, 6.6}, 36, 130},
    Solvent{"CD3OD", {3.31, 0.95, 0.90, 6.0}, 36, 140},
    Solvent{"CD3CN", {1.94, 1.30, 1.20, 4.6}, 36, 190},
    Solvent{"CD2Cl2", {5.32, 1.00, 0.90, 2.5}, 36, 350},
    Solvent{"THF-d8", {1.73, 1.10, 1.00, 4.0}, 36, 210},
    Solvent{"Toluene-d8", {2.09, 1.40, 1.20, 2.3}, 36, 370},
};

} // namespace

double Sample::effectiveT2(const Line& line) const {
  return 1 / (1 / line.t2 + std::numbers::pi * inhomogeneity);
}

std::span<const Solvent> solvents() { return kSolvents; }

Sample sampleOf(std::string_view solvent) {
  for (const Solvent& s : kSolvents)
    if (s.name == solvent) return {std::string(s.name), {s.line}};
  throw std::out_of_range("no such solvent: " + std::string(solvent));
}

} // namespace sim
