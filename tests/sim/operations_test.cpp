// Every host operation, what it does and what it refuses; and power-up.
#include "console_rig.h"

#include <limits>

namespace {

using rig::HostArg;
using rig::Rig;

constexpr std::uint32_t kMemberNotFound = 0x80020003, kTypeMismatch = 0x80020005, kOverflow = 0x8002000A,
                        kBadIndex = 0x8002000B, kBadParamCount = 0x8002000E;

TEST(Operations, EachReachesItsPartOfTheConsole) {
  Rig r(rig::quiet());
  r.call(22, {HostArg::i4(-1)});
  EXPECT_TRUE(r.console.lockedFlag());
  r.call(22, {HostArg::i4(0)});
  EXPECT_FALSE(r.console.lockedFlag());
  r.call(26, {HostArg::r8(321)});
  EXPECT_EQ(r.console.receiver().gain(), 321);
  r.call(27, {HostArg::refR8(270)});
  EXPECT_EQ(r.console.receiver().phase(), -90);
  r.call(28, {HostArg::refR8(41.5)});
  EXPECT_EQ(r.console.txPower(), 41.5);
  r.call(30, {HostArg::r8(-1234)});
  EXPECT_EQ(r.word(0), -1234);
  r.call(198, {HostArg::refR8(46.05)});
  EXPECT_EQ(r.console.frequency(), 46.05);
  r.call(199, {HostArg::refR8(250)});
  EXPECT_EQ(r.console.receiver().bandwidth(), 250);
  r.call(204, {HostArg::r8(8192)});
  EXPECT_EQ(r.console.sweep().width(), 8192);
  r.call(206, {HostArg::r8(65536)});
  EXPECT_EQ(r.console.sweep().speed(), 65536);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(r.refusal(202, {HostArg::i4(i), HostArg::r8(1)}), 0u);
}

TEST(Operations, HardwareStateFollowsTheModeCode) {
  Rig r(rig::quiet());
  const int expected[][2] = {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {5, 2}, {7, 2}, {0, 0}};
  for (const auto& [code, state] : expected) {
    r.mode(code);
    EXPECT_EQ(r.call(197), state) << code;
  }
}

TEST(Operations, TransmitterPowerIsHalfADecibelPerHalfUnitUpTo63Point5) {
  Rig r(rig::quiet());
  r.power(63.5);
  const double most = r.console.b1();
  EXPECT_NEAR(most, 6 * std::numbers::pi, 1e-9);
  r.power(57.5);
  EXPECT_NEAR(r.console.b1() / most, std::pow(10, -0.3), 1e-9);
  r.power(99);
  EXPECT_EQ(r.console.txPower(), 63.5);
  r.power(-1);
  EXPECT_EQ(r.console.txPower(), 0);
}

TEST(Operations, SystemValueSurvivesALockResetButNotASystemReset) {
  Rig r(rig::quiet());
  const double kept = r.call(52);
  EXPECT_EQ(kept, 17);
  r.call(200);
  EXPECT_EQ(r.call(52), kept);
  r.call(45);
  EXPECT_EQ(r.call(52), 0);
  r.call(51, {HostArg::refI4(17)});
  EXPECT_EQ(r.call(52), 17);
}

TEST(Operations, EitherResetPutsTheLockHardwareToPowerUp) {
  for (const int reset : {45, 200}) {
    Rig r(rig::quiet());
    r.width(5000);
    r.field(1000);
    r.call(22, {HostArg::i4(-1)});
    r.mode(1);
    r.wait(1);
    r.call(reset);
    EXPECT_EQ(r.call(197), 0);
    EXPECT_EQ(r.word(0), 0);
    EXPECT_EQ(r.console.txPower(), 0);
    EXPECT_EQ(r.console.receiver().gain(), 0);
    EXPECT_EQ(r.console.receiver().phase(), 0);
    EXPECT_EQ(r.console.sweep().width(), 10000);
    EXPECT_FALSE(r.console.lockedFlag());
  }
}

TEST(Operations, WordsHaveARangeAndTheSpareIsZero) {
  Rig r(rig::quiet());
  for (int i = 0; i <= 8; ++i) {
    EXPECT_EQ(r.refusal(201, {HostArg::refI4(i)}), 0u);
    EXPECT_EQ(r.refusal(201, {HostArg::i4(i)}), 0u);
  }
  EXPECT_EQ(r.word(8), 0);
  EXPECT_EQ(r.refusal(201, {HostArg::i4(9)}), kBadIndex);
  EXPECT_EQ(r.refusal(201, {HostArg::i4(-1)}), kBadIndex);
}

TEST(Operations, UnknownOnesAndWrongArgumentsAreRefused) {
  Rig r(rig::quiet());
  EXPECT_EQ(r.refusal(0), kMemberNotFound);
  EXPECT_EQ(r.refusal(203, {HostArg::r8(1)}), kMemberNotFound);
  EXPECT_EQ(r.refusal(26), kBadParamCount);
  EXPECT_EQ(r.refusal(26, {HostArg::r8(1), HostArg::r8(1)}), kBadParamCount);
  EXPECT_EQ(r.refusal(45, {HostArg::i4(1)}), kBadParamCount);
  EXPECT_EQ(r.refusal(202, {HostArg::i4(0)}), kBadParamCount);
  EXPECT_EQ(r.refusal(26, {HostArg::refR8(1)}), kTypeMismatch);
  EXPECT_EQ(r.refusal(26, {HostArg::i4(1)}), kTypeMismatch);
  EXPECT_EQ(r.refusal(27, {HostArg::r8(1)}), kTypeMismatch);
  EXPECT_EQ(r.refusal(51, {HostArg::i4(1)}), kTypeMismatch);
  EXPECT_EQ(r.refusal(201, {HostArg::r8(1)}), kTypeMismatch);
  EXPECT_EQ(r.refusal(202, {HostArg::i4(3), HostArg::r8(1)}), kBadIndex);
  EXPECT_EQ(r.refusal(31, {HostArg::i4(4)}), kOverflow);
  EXPECT_EQ(r.refusal(31, {HostArg::i4(-1)}), kOverflow);
  EXPECT_EQ(r.refusal(30, {HostArg::r8(std::numeric_limits<double>::quiet_NaN())}), kOverflow);
  EXPECT_EQ(r.refusal(206, {HostArg::r8(std::numeric_limits<double>::infinity())}), kOverflow);
}

TEST(Operations, ARefusedModeLeavesTheOldOne) {
  Rig r(rig::quiet());
  r.mode(3);
  r.refusal(31, {HostArg::i4(6)});
  EXPECT_EQ(r.call(197), 3);
}

TEST(Operations, ExtremeNumbersDoNoHarm) {
  Rig r(rig::quiet());
  for (const double v : {-1e300, -1e12, 0.0, 1e-300, 1e12, 1e300}) {
    for (const int dispid : {26, 30, 204, 206}) r.call(dispid, {HostArg::r8(v)});
    for (const int dispid : {27, 28, 198, 199}) r.call(dispid, {HostArg::refR8(v)});
    for (int i = 0; i < 3; ++i) r.call(202, {HostArg::i4(i), HostArg::r8(v)});
    for (const int code : {1, 2, 5, 7, 3, 0}) {
      r.mode(code);
      r.wait(0.05);
      for (int i = 0; i <= 8; ++i) {
        const double word = r.call(201, {HostArg::i4(i)});
        EXPECT_LE(std::abs(word), 131071) << v << " " << code << " " << i; // and not NaN
      }
    }
  }
}

} // namespace
