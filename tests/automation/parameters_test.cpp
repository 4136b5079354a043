// The members that read and write lock parameters.
#include "automation/Members.h"
#include "support/Panel.h"
#include "ui/panels/frmLevel.h"
#include <limits>

using base::RuntimeError;
using support::Panel;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class F> long errorOf(F&& f) {
  try {
    f();
  } catch (const RuntimeError& error) {
    return error.number;
  }
  return 0;
}

struct AutomationParameters : testing::Test {
  Panel panel;
  NMRLock lock{panel.program()};
  LockParameters& record = panel.record();
  AutomationParameters() { panel.started(); }
};

using SweepSpeed = AutomationParameters;
using SweepWidth = AutomationParameters;
using FieldCenter = AutomationParameters;
using SolventPPM = AutomationParameters;
using SolventText = AutomationParameters;
using TxPower = AutomationParameters;
using RxGain = AutomationParameters;
using Phase = AutomationParameters;
using State = AutomationParameters;
using Level = AutomationParameters;
using LoopChar = AutomationParameters;
using EveryMember = AutomationParameters;

} // namespace

TEST_F(SweepSpeed, isStoredTwiceAndSent) {
  lock.putLockSweepSpeed(12345);
  EXPECT_EQ(record.SweepSpeed, 12345);
  EXPECT_EQ(record.SweepSpeedNow, 12345);
  EXPECT_EQ(lock.LockSweepSpeed(), 12345);
  panel.expectCalls({host::sweepSpeed(12345)});
}

TEST_F(SweepSpeed, duringStartUpIsStoredOnly) {
  record.Initializing = kTrue;
  lock.putLockSweepSpeed(-7);
  EXPECT_EQ(lock.LockSweepSpeed(), -7);
  EXPECT_EQ(record.SweepSpeedNow, -7);
  panel.expectCalls({});
}

TEST_F(SweepWidth, sendsTheFieldBeforeTheWidth) {
  lock.putLockSweepWidth(6000);
  EXPECT_EQ(lock.LockSweepWidth(), 6000);
  EXPECT_EQ(record.SweepUpper, record.FieldCenterNow + 3000);
  EXPECT_EQ(record.SweepLower, record.FieldCenterNow - 3000);
  panel.expectCalls({host::field(record.FieldCenter), host::sweepWidth(6000)});
}

TEST_F(SweepWidth, halvesRoundToEven) {
  record.FieldCenterNow = 0;
  lock.putLockSweepWidth(1001);
  EXPECT_EQ(record.SweepUpper, 500);
  EXPECT_EQ(record.SweepLower, -500);
  lock.putLockSweepWidth(1003);
  EXPECT_EQ(record.SweepUpper, 502);
  EXPECT_EQ(record.SweepLower, -502);
}

TEST_F(SweepWidth, movesTheFieldAxis) {
  record.FieldCenterNow = 0;
  lock.putLockSweepWidth(2000);
  EXPECT_EQ(panel.main().Picture1.scaleLeft(), -1000.0f);
  EXPECT_EQ(panel.main().Picture1.scaleWidth(), 2000.0f);
}

TEST_F(SweepWidth, duringStartUpChangesTheRecordOnly) {
  record.Initializing = kTrue;
  record.FieldCenterNow = 100;
  lock.putLockSweepWidth(200);
  EXPECT_EQ(record.SweepUpper, 200);
  EXPECT_EQ(record.SweepLower, 0);
  panel.expectCalls({});
}

TEST_F(SweepWidth, isStoredAlthoughTheHostRefuses) {
  record.FieldCenterNow = 0;
  panel.host().fail(30, static_cast<std::int32_t>(0x80004005));
  EXPECT_EQ(errorOf([&] { lock.putLockSweepWidth(400); }), static_cast<std::int32_t>(0x80004005));
  EXPECT_EQ(record.SweepWidth, 400);
  EXPECT_EQ(record.SweepUpper, 200);
  EXPECT_EQ(record.SweepLower, -200);
  panel.expectCalls({host::field(record.FieldCenter)});
}

TEST_F(SweepWidth, beyondTheFieldOverflowsAfterTheWidthIsStored) {
  record.FieldCenterNow = 131068;
  const std::int32_t lower = record.SweepLower, upper = record.SweepUpper;
  record.FieldCenterNow = 2000000000;
  EXPECT_EQ(errorOf([&] { lock.putLockSweepWidth(2000000000); }), base::kOverflow);
  EXPECT_EQ(record.SweepWidth, 2000000000);
  EXPECT_EQ(record.SweepUpper, upper);
  EXPECT_EQ(record.SweepLower, lower);
  panel.expectCalls({});
}

TEST_F(FieldCenter, movesTheScrollBarWithHalvesToEven) {
  lock.putLockFieldCenter(1000);
  EXPECT_EQ(panel.main().hsCenter.value(), 250);
  lock.putLockFieldCenter(1002);
  EXPECT_EQ(panel.main().hsCenter.value(), 250);
  lock.putLockFieldCenter(1006);
  EXPECT_EQ(panel.main().hsCenter.value(), 252);
  EXPECT_EQ(lock.LockFieldCenter(), 1008.0f);
}

TEST_F(FieldCenter, reachesTheHostFromTheIdleLoop) {
  lock.putLockFieldCenter(1000);
  EXPECT_EQ(record.FieldCenter, 1000);
  EXPECT_EQ(record.FieldCenterNow, 1000);
  panel.expectCalls({});
  panel.pass();
  panel.expectCalls({host::sweepSettings(1000, record.SweepWidth, record.SweepSpeed)});
}

TEST_F(FieldCenter, equalToTheBarsPresentValueDoesNothing) {
  lock.putLockFieldCenter(static_cast<float>(4 * panel.main().hsCenter.value() + 1));
  EXPECT_FALSE(record.PendingControl);
  EXPECT_FALSE(record.PendingFieldCenter);
}

TEST_F(FieldCenter, worksWhileTheOperatorsBarIsLocked) {
  panel.main().hsCenter.setEnabled(false);
  lock.putLockFieldCenter(-131068);
  EXPECT_EQ(lock.LockFieldCenter(), -131068.0f);
}

TEST_F(FieldCenter, beyondTheBarIsAnInvalidValue) {
  const std::int32_t before = record.FieldCenter;
  EXPECT_EQ(errorOf([&] { lock.putLockFieldCenter(-131072); }), base::kInvalidValue);
  EXPECT_EQ(record.FieldCenter, before);
  EXPECT_FALSE(record.PendingControl);
}

TEST_F(FieldCenter, beyondSixteenBitsOverflows) {
  const std::int32_t before = record.FieldCenter;
  for (float value : {131072.0f, -131076.0f, 1e9f, kNaN, kInfinity, -kInfinity})
    EXPECT_EQ(errorOf([&] { lock.putLockFieldCenter(value); }), base::kOverflow) << value;
  EXPECT_EQ(record.FieldCenter, before);
}

TEST_F(SolventPPM, retunesTheFrequencyAndKeepsTheShift) {
  lock.putLockSolventPPM(4.8f);
  EXPECT_DOUBLE_EQ(record.Frequency, 46.0446373);
  EXPECT_EQ(lock.LockSolventPPM(), 7.24f);
  panel.expectCalls({host::frequency(record.Frequency)});
}

TEST_F(SolventPPM, leavesTheControlsPanelAsItIs) {
  const std::string shown = panel.controls().txtSolventPPM.text();
  panel.clear();
  lock.putLockSolventPPM(1.5f);
  EXPECT_EQ(panel.controls().txtSolventPPM.text(), shown);
}

TEST_F(SolventText, choosesTheSolventOfThatName) {
  lock.putLockSolventText("D2O");
  EXPECT_EQ(lock.LockSolventText(), "D2O");
  EXPECT_EQ(lock.LockSolventPPM(), 4.8f);
  EXPECT_DOUBLE_EQ(record.Frequency, 46.0446373);
  EXPECT_EQ(record.RxGain, 800);
  EXPECT_EQ(record.TxPower, 30.0);
}

TEST_F(SolventText, loadsTheControlsPanelWithoutShowingIt) {
  panel.program().frmControls.unload();
  lock.putLockSolventText("Acetone");
  ASSERT_TRUE(panel.program().frmControls.loaded());
  EXPECT_FALSE(panel.controls().visible());
  EXPECT_EQ(lock.LockSolventPPM(), 2.05f);
}

TEST_F(SolventText, readsTheSettingsFileAnew) {
  panel.set("Solvents", "Benzene", "7.16");
  panel.set("Solvents_RxGain", "Benzene", "700");
  panel.set("Solvents_TxPwr", "Benzene", "22");
  lock.putLockSolventText("Benzene");
  EXPECT_EQ(lock.LockSolventPPM(), 7.16f);
  EXPECT_EQ(record.RxGain, 700);
}

TEST_F(SolventText, whoseNameIsNotListedChoosesTheFirstEntry) {
  lock.putLockSolventText("D2O");
  lock.putLockSolventText("cdcl3");
  EXPECT_EQ(lock.LockSolventPPM(), 7.24f);
  lock.putLockSolventText("D2O");
  lock.putLockSolventText("");
  EXPECT_EQ(lock.LockSolventPPM(), 7.24f);
  lock.putLockSolventText("D2O");
  lock.putLockSolventText(std::string(10000, 'x'));
  EXPECT_EQ(lock.LockSolventPPM(), 7.24f);
}

TEST_F(SolventText, withoutAnySolventIsAnInvalidValueAndTheNameStaysStored) {
  panel.settingsText() = "[Hardware]\r\nTxPower=20\r\n";
  EXPECT_EQ(errorOf([&] { lock.putLockSolventText("D2O"); }), base::kInvalidValue);
  EXPECT_EQ(lock.LockSolventText(), "D2O");
}

TEST_F(TxPower, sendsThePowerAsGivenAndReadsBackTwice) {
  lock.putLockTxPower(10);
  EXPECT_EQ(record.TxPower, 20.0);
  EXPECT_EQ(lock.LockTxPower(), 20.0f);
  panel.expectCalls({host::txPower(10)});
}

TEST_F(TxPower, isStoredAlthoughTheHostRefuses) {
  panel.host().fail(28);
  EXPECT_EQ(errorOf([&] { lock.putLockTxPower(12.5f); }), headless::FakeHost::kServerGone);
  EXPECT_EQ(lock.LockTxPower(), 25.0f);
}

TEST_F(TxPower, thatIsNoNumberOverflowsAndChangesNothing) {
  for (float value : {kNaN, kInfinity, -kInfinity})
    EXPECT_EQ(errorOf([&] { lock.putLockTxPower(value); }), base::kOverflow);
  EXPECT_EQ(record.TxPower, 20.0);
  panel.expectCalls({});
}

TEST_F(TxPower, tooLargeForAFloatCannotBeReadBack) {
  lock.putLockTxPower(3e38f);
  EXPECT_EQ(errorOf([&] { lock.LockTxPower(); }), base::kOverflow);
}

TEST_F(RxGain, isRoundedWithHalvesToEvenStoredAndSent) {
  lock.putLockRxGain(2.5f);
  EXPECT_EQ(record.RxGain, 2);
  EXPECT_EQ(lock.LockRxGain(), 2.0f);
  lock.putLockRxGain(3.5f);
  EXPECT_EQ(lock.LockRxGain(), 4.0f);
  panel.expectCalls({host::rxGain(2), host::rxGain(4)});
}

TEST_F(RxGain, beyondThirtyTwoBitsOverflowsAndChangesNothing) {
  for (float value : {2147483648.0f, -3e9f, kNaN, kInfinity})
    EXPECT_EQ(errorOf([&] { lock.putLockRxGain(value); }), base::kOverflow) << value;
  EXPECT_EQ(record.RxGain, 1200);
  panel.expectCalls({});
}

TEST_F(Phase, isFoldedOnceEachWay) {
  const std::pair<float, std::int32_t> cases[] = {{-190, 170},  {190, -170},    {180, 180},   {-180, -180},
                                                  {600, 240},   {12.5f, 12},    {-600, -240}, {540, 180},
                                                  {-540, -180}, {-180.5f, 180}, {13.5f, 14},  {0, 0}};
  for (const auto& [given, stored] : cases) {
    lock.putLockNMRPhase(given);
    EXPECT_EQ(record.LockPhase, stored) << given;
    EXPECT_EQ(lock.LockNMRPhase(), static_cast<float>(stored)) << given;
  }
  panel.expectCalls({}); // the hardware hears of it with the next application of the parameters
}

TEST_F(Phase, beyondThirtyTwoBitsOverflowsAndChangesNothing) {
  for (float value : {3e9f, -3e9f, kNaN, kInfinity, -kInfinity})
    EXPECT_EQ(errorOf([&] { lock.putLockNMRPhase(value); }), base::kOverflow) << value;
  EXPECT_EQ(record.LockPhase, 30);
}

TEST_F(State, joinsStatusAndMode) {
  const struct {
    std::int16_t status, mode, word;
  } cases[] = {{-1, 0, -256}, {-1, 2, -254}, {-1, 3, -253}, {-1, 4, -252},
               {-1, 5, -251}, {0, 1, 1},     {1, 1, 257},   {2, 1, 513}};
  for (const auto& c : cases) {
    record.LockState = c.status;
    record.LockMode = c.mode;
    EXPECT_EQ(lock.GetLockState(), c.word);
  }
}

TEST_F(State, thatFitsNoSixteenBitsOverflows) {
  record.LockState = 128;
  EXPECT_EQ(errorOf([&] { lock.GetLockState(); }), base::kOverflow);
}

TEST_F(Level, isWhatTheMeterShows) {
  panel.program().frmLevel->txtLockLevel.setText("437");
  EXPECT_EQ(lock.LockLevel(), 437.0f);
}

TEST_F(Level, loadsTheMeterWithoutShowingIt) {
  panel.program().frmLevel.unload();
  lock.LockLevel();
  ASSERT_TRUE(panel.program().frmLevel.loaded());
  EXPECT_FALSE(panel.program().frmLevel->visible());
}

TEST_F(LoopChar, isAcceptedAndChangesNothing) {
  const float p = record.LoopP;
  for (int value : {INT16_MIN, -1, 0, 3, INT16_MAX})
    EXPECT_NO_THROW(lock.putLockLoopChar(static_cast<std::int16_t>(value)));
  EXPECT_EQ(record.LoopP, p);
  EXPECT_EQ(record.ActiveSet, 0);
  panel.expectCalls({});
}

// A refused call leaves the value stored: the record is written first.
TEST_F(EveryMember, keepsWhatItStoredWhenTheHostRefuses) {
  const long gone = headless::FakeHost::kServerGone;
  panel.host().failAll();
  EXPECT_EQ(errorOf([&] { lock.putLockSweepSpeed(4321); }), gone);
  EXPECT_EQ(errorOf([&] { lock.putLockRxGain(432); }), gone);
  EXPECT_EQ(errorOf([&] { lock.putLockSolventPPM(4.8f); }), gone);
  EXPECT_EQ(record.SweepSpeed, 4321);
  EXPECT_EQ(record.SweepSpeedNow, 4321);
  EXPECT_EQ(record.RxGain, 432);
  EXPECT_DOUBLE_EQ(record.Frequency, 46.0446373);
  EXPECT_EQ(errorOf([&] { lock.putLockSolventText("Acetone"); }), gone);
  panel.host().failNever();
  EXPECT_EQ(lock.LockSolventText(), "Acetone");
  EXPECT_EQ(lock.LockSolventPPM(), 2.05f);
  EXPECT_EQ(record.RxGain, 432) << "the solvent's gain comes after its frequency";
}

TEST_F(EveryMember, ofTwoInstancesActsOnTheSameLock) {
  NMRLock other(panel.program());
  other.putLockNMRPhase(77);
  EXPECT_EQ(lock.LockNMRPhase(), 77.0f);
  other.StartSweep();
  EXPECT_EQ(lock.GetLockState(), -254);
}

TEST_F(EveryMember, isReachedThroughTheTable) {
  const auto run = [&](int number, automation::Value argument = {}) {
    return automation::kMembers[static_cast<std::size_t>(number - 1)].run(lock, argument);
  };
  run(4, 111);
  EXPECT_EQ(std::get<std::int32_t>(run(3)), 111);
  run(6, 222);
  EXPECT_EQ(std::get<std::int32_t>(run(5)), 222);
  run(7, 444.0f);
  EXPECT_EQ(std::get<float>(run(8)), 444.0f);
  run(9, 4.8f);
  EXPECT_EQ(std::get<float>(run(10)), 7.24f);
  run(11, std::string("D2O"));
  EXPECT_EQ(std::get<std::string>(run(12)), "D2O");
  run(13, 5.0f);
  EXPECT_EQ(std::get<float>(run(14)), 10.0f);
  run(15, 99.0f);
  EXPECT_EQ(std::get<float>(run(16)), 99.0f);
  run(17, -190.0f);
  EXPECT_EQ(std::get<float>(run(18)), 170.0f);
  EXPECT_EQ(std::get<std::int16_t>(run(19)), -256);
  EXPECT_EQ(std::get<float>(run(20)), lock.LockLevel());
  run(21, std::int16_t{1});
  EXPECT_EQ(std::get<std::int32_t>(run(30)), lock.hWndLockWindow());
}
