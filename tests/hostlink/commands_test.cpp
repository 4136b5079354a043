#include "base/RuntimeError.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "support/Panel.h"

namespace {

using namespace ActiveNMRAppInterface;
using support::Panel;

class Commands : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  void initializing() { p.record().Initializing = kTrue; }
  LockParameters& r() { return p.record(); }
  Program& program() { return p.program(); }
  Panel p;
};

TEST_F(Commands, plainRoutinesAreOneCallEach) {
  ResetLockHardware(program());
  p.expectCalls({host::resetHardware()});
  p.host().hardwareState = 3;
  EXPECT_EQ(GetLockHardwareState(program()), 3);
  p.expectCalls({host::hardwareState()});
  p.host().words[6] = 42;
  EXPECT_EQ(GetLockDataWord(program()), 42);
  p.expectCalls({host::dataWord(6)});
  LockModeOn(program());
  p.expectCalls({host::mode(1)});
  LockModeSweep(program());
  p.expectCalls({host::mode(2)});
  LockModeAuto(program());
  p.expectCalls({host::mode(5)});
  SetLockFrequency(program(), 46.5);
  p.expectCalls({host::frequency(46.5)});
  SetLockRxFilter(program(), 20);
  p.expectCalls({host::rxFilter(20)});
  SetLockTxPower(program(), 10.5);
  p.expectCalls({host::txPower(10.5)});
  SetLockRxGain(program(), 800);
  p.expectCalls({host::rxGain(800)});
}

TEST_F(Commands, theLoopConstantsGoOutInTheirOrder) {
  SetLockLoop(program(), 1.5F, 2.5F, 0.1F);
  p.expectCalls({host::loopParam(0, 1.5), host::loopParam(1, 2.5), host::loopParam(2, double(0.1F))});
  SendLoopConstants(program());
  p.expectCalls({host::loopConstants(8000, 60, 3)});
}

TEST_F(Commands, readingTakesNineWordsWithTheIndexByReference) {
  for (int i = 0; i < 9; ++i) p.host().words[static_cast<std::size_t>(i)] = 100 + i;
  LockSampleArray words{};
  words[9] = 5;
  ReadLockData(program(), words);
  p.expectCalls({host::readData()});
  for (int i = 0; i < 9; ++i) EXPECT_EQ(words[static_cast<std::size_t>(i)], 100 + i);
  EXPECT_EQ(words[9], 5);
}

TEST_F(Commands, readingPumpsOnceBeforeAndTwicePerWord) {
  const auto before = p.platform.pump().yields();
  LockSampleArray words{};
  ReadLockData(program(), words);
  EXPECT_EQ(p.platform.pump().yields() - before, 1U + 2 * 9);
}

TEST_F(Commands, aWordThatFailsKeepsItsValueAndTheRestIsRead) {
  LockSampleArray words{};
  words[4] = 77;
  for (int i = 0; i < 9; ++i) p.host().words[static_cast<std::size_t>(i)] = i + 1;
  p.host().answer = [](int id, std::span<const ports::HostArg> args) -> std::optional<double> {
    if (id == 201 && args[0].value == 4) throw base::RuntimeError(-2147467259, "Automation error");
    return std::nullopt;
  };
  ReadLockData(program(), words);
  p.expectCalls({host::readData()});
  EXPECT_EQ(words[3], 4);
  EXPECT_EQ(words[4], 77);
  EXPECT_EQ(words[5], 6);
}

TEST_F(Commands, aWordPastTheRangeKeepsItsValue) {
  LockSampleArray words{};
  words[0] = 3;
  p.host().words[0] = 1e12;
  ReadLockData(program(), words);
  EXPECT_EQ(words[0], 3);
}

TEST(CommandsWithoutWindows, readingReturnsAtOnce) {
  Panel p;
  ASSERT_TRUE(takeRunningHost(p.program()));
  LockSampleArray words{};
  ReadLockData(p.program(), words);
  p.expectCalls({});
}

TEST_F(Commands, theSweepBoundsAreFieldWidthAndTheSpeedTwice) {
  const std::int32_t lower = -1000, upper = 3000, speed = 555;
  SetSweepBounds(program(), lower, upper, speed);
  p.expectCalls({host::field(400), host::sweepWidth(4000), host::sweepSpeed(20000), host::sweepSpeed(555)});
  EXPECT_EQ(r().SweepSpeedNow, 20000);
}

TEST_F(Commands, theSpeedIsReadAfterTheOtherSends) {
  r().SweepSpeed = 12345;
  r().SweepSpeedNow = 1;
  SendSweepSettings(program()); // passes SweepSpeedNow, which the send of SweepSpeed has changed by then
  p.expectCalls({host::field(400), host::sweepWidth(8000), host::sweepSpeed(12345), host::sweepSpeed(12345)});
}

TEST_F(Commands, theSweepBoundsOfTheWholeRangeDoNotOverflow) {
  const std::int32_t lower = INT32_MIN, upper = INT32_MAX, speed = 1;
  SetSweepBounds(program(), lower, upper, speed);
  EXPECT_EQ(p.calls()[1], host::sweepWidth(4294967295.0));
}

TEST_F(Commands, whileInitializingTheSpeedGoesOutOnce) {
  initializing();
  SendSweepSettings(program());
  p.expectCalls({host::field(400), host::sweepWidth(8000), host::sweepSpeed(20000)});
}

TEST_F(Commands, aSampleIsTakenBesideTheLineAndLeavesTheFrequency) {
  SampleLockData(program());
  p.expectCalls(
      {host::frequency(46.04475 + 0.013245), host::mode(7), host::frequency(46.04475), host::readData()});
}

TEST_F(Commands, holdIsModeThenField) {
  HoldAtField(program(), -1234);
  p.expectCalls({host::mode(3), host::field(-1234)});
}

TEST_F(Commands, offHoldsAtThePresentFieldAndRunsOneTick) {
  r().FieldCenterNow = 444; // not FieldCenter
  p.host().words = {7, 8, 9, 0, 0, 0, 0, 0, 0};
  LockModeOff(program());
  p.expectCalls({host::mode(3), host::field(444), host::mode(0), host::readData()});
  EXPECT_EQ(p.main().StatusBar1.text(1), "DAC:7");
}

TEST_F(Commands, aNegativePhaseIsRaisedByOneTurnInTheCallersVariable) {
  double degrees = -90;
  SetLockPhase(program(), degrees);
  p.expectCalls({host::phase(270)});
  EXPECT_EQ(degrees, 270);
  EXPECT_EQ(r().PhaseMilliTurns, 750);
}

struct PhaseCase {
  double degrees, sent;
  std::int32_t milliTurns;
};
class Phases : public testing::TestWithParam<PhaseCase> {};
INSTANTIATE_TEST_SUITE_P(Commands, Phases,
                         testing::Values(PhaseCase{359.9, 359.9, 0}, PhaseCase{400, 400, 111},
                                         PhaseCase{-400, -40, -111}, PhaseCase{0, 0, 0},
                                         PhaseCase{360, 360, 0}, PhaseCase{180, 180, 500},
                                         PhaseCase{0.9, 0.9, 2}, PhaseCase{1.26, 1.26, 4}));

TEST_P(Phases, areCorrectedByOneTurnAtMost) {
  Panel p;
  p.started();
  double degrees = GetParam().degrees;
  SetLockPhase(p.program(), degrees);
  p.expectCalls({host::phase(GetParam().sent)});
  EXPECT_EQ(p.record().PhaseMilliTurns, GetParam().milliTurns);
}

TEST_F(Commands, theRecordsPhaseIsSentWithoutChangingIt) {
  r().LockPhase = -90;
  SendLockPhase(program());
  p.expectCalls({host::phase(270)});
  EXPECT_EQ(r().LockPhase, -90);
}

TEST_F(Commands, theSpeedIsStoredTwiceAndSent) {
  SetSweepSpeed(program(), 777);
  p.expectCalls({host::sweepSpeed(777)});
  EXPECT_EQ(r().SweepSpeed, 777);
  EXPECT_EQ(r().SweepSpeedNow, 777);
}

TEST_F(Commands, theWidthSetsTheLimitsAboutTheFieldLastSent) {
  r().FieldCenterNow = 0;
  SetSweepWidth(program(), 10000);
  p.expectCalls({host::field(400), host::sweepWidth(10000)});
  EXPECT_EQ(r().SweepWidth, 10000);
  EXPECT_EQ(r().SweepUpper, 5000);
  EXPECT_EQ(r().SweepLower, -5000);
  EXPECT_EQ(p.main().Picture1.scaleLeft(), -5000);
  EXPECT_EQ(p.main().Picture1.scaleWidth(), 10000);
}

TEST_F(Commands, halfWidthsRoundToEven) {
  r().FieldCenterNow = 0;
  SetSweepWidth(program(), 3);
  EXPECT_EQ(r().SweepUpper, 2);
  EXPECT_EQ(r().SweepLower, -2);
  r().FieldCenterNow = 1;
  SetSweepWidth(program(), 3);
  EXPECT_EQ(r().SweepUpper, 2) << "2.5";
  EXPECT_EQ(r().SweepLower, 0) << "-0.5";
}

TEST_F(Commands, whileInitializingSpeedWidthAndPhaseStayInTheRecord) {
  initializing();
  SetSweepSpeed(program(), 1);
  SetSweepWidth(program(), 2000);
  double degrees = 90;
  SetLockPhase(program(), degrees);
  p.expectCalls({});
  EXPECT_EQ(r().SweepSpeed, 1);
  EXPECT_EQ(r().SweepWidth, 2000);
  EXPECT_EQ(r().SweepUpper, 1400);
  EXPECT_EQ(r().PhaseMilliTurns, 250);
  EXPECT_EQ(p.main().Picture1.scaleWidth(), 2000);
}

TEST_F(Commands, whileInitializingFrequencyPowerAndGainAreSent) {
  initializing();
  SetLockFrequency(program(), 46);
  SetLockTxPower(program(), 1);
  SetLockRxGain(program(), 2);
  p.expectCalls({host::frequency(46), host::txPower(1), host::rxGain(2)});
}

TEST_F(Commands, aFailureStopsARoutineWhereItStands) {
  p.host().fail(204);
  EXPECT_THROW(SendSweepSettings(program()), base::RuntimeError);
  p.expectCalls({host::field(400), host::sweepWidth(8000)});
}

} // namespace
