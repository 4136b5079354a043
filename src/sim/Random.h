// A small seeded generator (xoshiro256++) with normal deviates: the same seed gives the same run on every
// build.
#pragma once
#include <array>
#include <cmath>
#include <cstdint>

namespace sim {

class Random {
 public:
  explicit Random(std::uint64_t seed) {
    for (auto& word : state_) { // splitmix64, so that neighbouring seeds share nothing
      seed += 0x9E3779B97F4A7C15u;
      std::uint64_t z = seed;
      z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
      z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
      word = z ^ (z >> 31);
    }
  }

  std::uint64_t bits() {
    const auto rotate = [](std::uint64_t v, int k) { return (v << k) | (v >> (64 - k)); };
    auto& s = state_;
    const std::uint64_t result = rotate(s[0] + s[3], 23) + s[0];
    const std::uint64_t t = s[1] << 17;
    s[2] ^= s[0];
    s[3] ^= s[1];
    s[1] ^= s[2];
    s[0] ^= s[3];
    s[2] ^= t;
    s[3] = rotate(s[3], 45);
    return result;
  }

  double uniform() { return static_cast<double>(bits() >> 11) * 0x1p-53; } // 0 <= u < 1

  // Mean 0, variance 1; made in pairs by the polar method.
  double normal() {
    if (spare_) {
      spare_ = false;
      return second_;
    }
    double x, y, r;
    do {
      x = 2 * uniform() - 1;
      y = 2 * uniform() - 1;
      r = x * x + y * y;
    } while (r >= 1 || r == 0);
    const double f = std::sqrt(-2 * std::log(r) / r);
    second_ = y * f;
    spare_ = true;
    return x * f;
  }

 private:
  std::array<std::uint64_t, 4> state_{};
  double second_ = 0;
  bool spare_ = false;
};

} // namespace sim
