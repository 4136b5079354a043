// What stands in the magnet: the deuterium lines of the lock solvent, and how good the field is over the
// sample.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct Line {
  double shift;     // ppm
  double t1;        // s
  double t2;        // s, of the spins themselves; the field's spread over the sample shortens it
  double amplitude; // equilibrium magnetisation, CDCl3 = 1
};

struct Sample {
  std::string name;
  std::vector<Line> lines;
  double inhomogeneity = 2.5; // Hz, what the field's spread adds to every line's full width at half height

  // The decay time that is seen: 1 / (1/T2 + pi * inhomogeneity).
  double effectiveT2(const Line& line) const;
};

// A supplied solvent, with the transmitter power and receiver gain that suit it in the lock.
struct Solvent {
  std::string_view name;
  Line line;
  double txPower;
  int rxGain;
};

std::span<const Solvent> solvents();

// The sample made of one supplied solvent; the name must be one of solvents(), else std::out_of_range.
Sample sampleOf(std::string_view solvent);

} // namespace sim
