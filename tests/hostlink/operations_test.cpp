#include "base/RuntimeError.h"
#include "hostlink/ActiveNMRAppInterface.h"
#include "support/Panel.h"

namespace {

using namespace ActiveNMRAppInterface;
using ports::HostArg;
using support::Panel;
using Type = HostArg::Type;

struct Operation {
  int dispid;
  const char* name;
  std::vector<HostArg> args;
  void (*call)(Program&);
};

// What travels, to the type. The numbers differ so that no argument can stand for another.
const Operation kOperations[] = {
    {22, "HostSetLockedFlag", {{Type::I4, -1}}, [](Program& p) { HostSetLockedFlag(p, -1); }},
    {26, "HostSetLockRxGain", {{Type::R8, 1234}}, [](Program& p) { HostSetLockRxGain(p, 1234); }},
    {27, "HostSetLockPhase", {{Type::RefR8, 12.5}}, [](Program& p) { HostSetLockPhase(p, 12.5); }},
    {28, "HostSetLockTxPower", {{Type::RefR8, 63.5}}, [](Program& p) { HostSetLockTxPower(p, 63.5); }},
    {30, "HostSetLockField", {{Type::R8, -400}}, [](Program& p) { HostSetLockField(p, -400); }},
    {31, "HostSetLockMode", {{Type::I4, 7}}, [](Program& p) { HostSetLockMode(p, 7); }},
    {45, "HostResetSystem", {}, [](Program& p) { HostResetSystem(p); }},
    {51, "HostSetSystemValue", {{Type::RefI4, 99}}, [](Program& p) { HostSetSystemValue(p, 99); }},
    {52, "HostGetSystemValue", {}, [](Program& p) { HostGetSystemValue(p); }},
    {197, "HostGetLockHardwareState", {}, [](Program& p) { HostGetLockHardwareState(p); }},
    {198, "HostSetLockFrequency", {{Type::RefR8, 46.04}}, [](Program& p) { HostSetLockFrequency(p, 46.04); }},
    {199, "HostSetLockRxFilter", {{Type::RefR8, 100}}, [](Program& p) { HostSetLockRxFilter(p, 100); }},
    {200, "HostResetLockHardware", {}, [](Program& p) { HostResetLockHardware(p); }},
    {201, "HostGetLockData", {{Type::I4, 6}}, [](Program& p) { HostGetLockData(p, 6); }},
    {202,
     "HostSetLockLoopParam",
     {{Type::I4, 1}, {Type::R8, 0.5}},
     [](Program& p) { HostSetLockLoopParam(p, 1, 0.5); }},
    {204, "HostSetLockSweepWidth", {{Type::R8, 8000}}, [](Program& p) { HostSetLockSweepWidth(p, 8000); }},
    {206, "HostSetLockSweepSpeed", {{Type::R8, 20000}}, [](Program& p) { HostSetLockSweepSpeed(p, 20000); }},
};

class HostOperations : public testing::TestWithParam<Operation> {};
INSTANTIATE_TEST_SUITE_P(All, HostOperations, testing::ValuesIn(kOperations),
                         [](const testing::TestParamInfo<Operation>& i) { return i.param.name; });

TEST_P(HostOperations, sendsItsIdentifierAndTypes) {
  Panel p;
  p.started();
  int dispid = 0;
  std::vector<HostArg> args;
  p.host().answer = [&](int id, std::span<const HostArg> given) {
    dispid = id;
    args.assign(given.begin(), given.end());
    return std::optional<double>();
  };
  GetParam().call(p.program());
  EXPECT_EQ(dispid, GetParam().dispid);
  EXPECT_EQ(args, GetParam().args);
  EXPECT_EQ(p.calls().size(), 1U);
}

TEST_P(HostOperations, aFailureReachesTheCaller) {
  Panel p;
  p.started();
  p.host().fail(GetParam().dispid);
  try {
    GetParam().call(p.program());
    FAIL() << "no error";
  } catch (const base::RuntimeError& error) {
    EXPECT_TRUE(error.isAutomation());
    EXPECT_EQ(error.message(), "Run-time error '-2147023174 (800706ba)':\r\n\r\nAutomation error");
  }
}

TEST(HostOperationTable, listsAll17) {
  ASSERT_EQ(std::size(kHostOperations), std::size(kOperations));
  for (std::size_t i = 0; i < std::size(kOperations); ++i) {
    EXPECT_EQ(kHostOperations[i].dispid, kOperations[i].dispid);
    EXPECT_EQ(kHostOperations[i].name, kOperations[i].name);
  }
}

TEST(HostAnswers, areRoundedHalvesToEven) {
  Panel p;
  p.started();
  p.host().words[6] = 2.5;
  EXPECT_EQ(GetLockDataWord(p.program()), 2);
  p.host().words[6] = -3.5;
  EXPECT_EQ(GetLockDataWord(p.program()), -4);
  p.host().systemValue = 7.6;
  EXPECT_EQ(HostGetSystemValue(p.program()), 8);
  p.host().hardwareState = 1.5;
  EXPECT_EQ(HostGetLockHardwareState(p.program()), 2);
}

TEST(HostAnswers, aWordThatDoesNotFitOverflows) {
  Panel p;
  p.started();
  p.host().words[6] = 2147483648.0;
  EXPECT_THROW(GetLockDataWord(p.program()), base::RuntimeError);
}

} // namespace
