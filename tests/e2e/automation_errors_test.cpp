// What a client gets when a call cannot be done, and that nothing was done then.
#include "e2e/support/Client.h"
#include "e2e/support/RecordingHost.h"
#include "e2e/support/Site.h"
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace e2e;

namespace {

constexpr HRESULT runTimeError(long number) {
  return static_cast<HRESULT>(0x800A0000UL + static_cast<ULONG>(number));
}
constexpr double kInfinity = std::numeric_limits<double>::infinity(),
                 kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr const wchar_t* kNumbers[] = {L"LockSweepSpeed", L"LockSweepWidth", L"LockFieldCenter",
                                       L"LockSolventPPM", L"LockTxPower",    L"LockRxGain",
                                       L"LockNMRPhase"};

class AutomationErrors : public testing::Test {
 protected:
  struct Scene {
    RecordingHost host;
    Panel panel;
    Client client;
  };
  static inline std::unique_ptr<Scene> scene;
  static void SetUpTestSuite() {
    writeSettings(standardSettings());
    scene = std::make_unique<Scene>();
  }
  static void TearDownTestSuite() { scene.reset(); }
  void SetUp() override {
    ASSERT_TRUE(scene->panel.ready());
    ASSERT_EQ(scene->client.creation(), S_OK);
    host.clear();
    before_ = values();
  }
  // The values as they were, no call to the host, and the panel still answers.
  void expectNothingDone() {
    EXPECT_EQ(values(), before_);
    EXPECT_EQ(host.calls(), Lines());
  }
  std::vector<double> values() {
    std::vector<double> all;
    for (const wchar_t* name : kNumbers) {
      const Reply value = lock.get(name);
      EXPECT_TRUE(value.ok());
      all.push_back(value.number());
    }
    return all;
  }
  RecordingHost& host = scene->host;
  Client& lock = scene->client;

 private:
  std::vector<double> before_;
};

} // namespace

TEST_F(AutomationErrors, whatIsNoFiniteNumberOverflows) {
  for (const wchar_t* name : kNumbers)
    for (const Var& value :
         {Var::r8(kNaN), Var::r8(kInfinity), Var::r8(-kInfinity), Var::r8(1e300),
          Var::r4(std::numeric_limits<float>::quiet_NaN()), Var::r4(std::numeric_limits<float>::infinity())})
      EXPECT_EQ(lock.put(name, value).code, DISP_E_OVERFLOW);
  EXPECT_EQ(lock.put(L"LockLoopChar", Var::i4(32768)).code, DISP_E_OVERFLOW);
  EXPECT_EQ(lock.put(L"LockSolventText", Var::r8(kNaN)).code, DISP_E_OVERFLOW);
  expectNothingDone();
}

TEST_F(AutomationErrors, whatCannotBeANumberIsATypeMismatch) {
  Var array;
  V_VT(&array.v) = VT_ARRAY | VT_I4;
  V_ARRAY(&array.v) = SafeArrayCreateVector(VT_I4, 0, 3);
  for (const wchar_t* name : kNumbers)
    for (const Var& value :
         {Var::text(L"abc"), Var::text(L""), Var::text(std::wstring(10000, L'x')), Var::null(), array})
      EXPECT_EQ(lock.put(name, value).code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(lock.put(L"LockSolventText", Var::null()).code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(lock.call(L"ShowLockWindow", {Var::text(L"modal")}).code, DISP_E_TYPEMISMATCH);
  expectNothingDone();
}

TEST_F(AutomationErrors, tooManyOrTooFewArguments) {
  for (const wchar_t* name :
       {L"ExitLockApp", L"StartLock", L"StopLock", L"HideWindows", L"MinimizeLockWindow"})
    EXPECT_EQ(lock.call(name, {Var::i4(1)}).code, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(lock.call(L"ShowLockWindow", {Var::i4(1), Var::i4(2)}).code, DISP_E_BADPARAMCOUNT);
  for (const wchar_t* name : kNumbers) {
    EXPECT_EQ(lock.invoke(lock.id(name), DISPATCH_PROPERTYPUT).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(lock.invoke(lock.id(name), DISPATCH_PROPERTYPUT, {Var::i4(1), Var::i4(2)}).code,
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(lock.invoke(lock.id(name), DISPATCH_PROPERTYGET, {Var::i4(1)}).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(lock.put(name, Var::missing()).code, DISP_E_PARAMNOTOPTIONAL);
  }
  expectNothingDone();
}

TEST_F(AutomationErrors, membersThatDoNotExistOrGoOnlyTheOtherWay) {
  EXPECT_EQ(lock.id(L"LockNonsense"), DISPID_UNKNOWN);
  EXPECT_EQ(lock.invoke(999, DISPATCH_METHOD).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(lock.invoke(0, DISPATCH_PROPERTYGET).code, DISP_E_MEMBERNOTFOUND);
  for (const wchar_t* name : {L"GetLockState", L"LockLevel", L"hWndLockWindow"})
    EXPECT_EQ(lock.put(name, Var::i4(1)).code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(lock.get(L"LockLoopChar").code, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(lock.get(L"StartLock").code, DISP_E_MEMBERNOTFOUND); // looking at an object must not lock
  expectNothingDone();
}

TEST_F(AutomationErrors, fieldCentreBeyondTheBarIsAnInvalidValue) {
  const Reply beyond = lock.put(L"LockFieldCenter", Var::r4(-131072));
  EXPECT_EQ(beyond.code, runTimeError(380));
  EXPECT_EQ(beyond.source, L"VantrelLock.NMRLock");
  EXPECT_EQ(beyond.text.substr(0, 22), L"Invalid property value");
  const Reply farBeyond = lock.put(L"LockFieldCenter", Var::r4(140000));
  EXPECT_EQ(farBeyond.code, runTimeError(6));
  EXPECT_EQ(farBeyond.source, L"VantrelLock.NMRLock");
  EXPECT_EQ(farBeyond.text, L"Overflow");
  expectNothingDone();
}

TEST_F(AutomationErrors, numbersThatFitNoWholeNumberOverflow) {
  EXPECT_EQ(lock.put(L"LockRxGain", Var::r4(3e9f)).code, runTimeError(6));
  EXPECT_EQ(lock.put(L"LockNMRPhase", Var::r4(-3e9f)).code, runTimeError(6));
  expectNothingDone();
}

TEST_F(AutomationErrors, hostsRefusalPassesWithItsCodeAndText) {
  host.fail(28, static_cast<HRESULT>(0x80040205), L"the transmitter is interlocked");
  const Reply refused = lock.put(L"LockTxPower", Var::r4(11));
  host.fail(28, S_OK);
  EXPECT_EQ(refused.code, static_cast<HRESULT>(0x80040205));
  EXPECT_EQ(refused.source, L"VantrelLock.NMRLock");
  EXPECT_EQ(refused.text.substr(0, 30), L"the transmitter is interlocked");
  EXPECT_EQ(lock.get(L"LockTxPower").number(), 22); // stored before the hardware was told
  EXPECT_EQ(host.calls(), Lines({"28 ref R8 11"}));
}

TEST_F(AutomationErrors, stateStaysAsFarAsItGot) {
  host.fail(30, E_FAIL);
  EXPECT_EQ(lock.put(L"LockSweepWidth", Var::i4(4444)).code, E_FAIL);
  host.fail(30, S_OK);
  EXPECT_EQ(lock.get(L"LockSweepWidth").number(), 4444);
}

TEST_F(AutomationErrors, noSolventsIsAnInvalidValue) {
  writeSettings("[Hardware]\r\nTxPower=20\r\n");
  const Reply none = lock.put(L"LockSolventText", Var::text(L"D2O"));
  writeSettings(standardSettings());
  EXPECT_EQ(none.code, runTimeError(380));
  EXPECT_EQ(lock.get(L"LockSolventText").string(), L"D2O");
}

TEST_F(AutomationErrors, earlyBoundCallsFailWithTheRunTimesNumber) {
  INMRLock* early = lock.early();
  ASSERT_NE(early, nullptr);
  EXPECT_EQ(early->put_LockFieldCenter(-131072), runTimeError(380));
  EXPECT_EQ(early->put_LockFieldCenter(140000), runTimeError(6));
  EXPECT_EQ(early->put_LockTxPower(std::numeric_limits<float>::quiet_NaN()), runTimeError(6));
  ISupportErrorInfo* support = nullptr;
  ASSERT_EQ(early->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&support)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_INMRLock), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
  support->Release();
  early->Release();
  expectNothingDone();
}
