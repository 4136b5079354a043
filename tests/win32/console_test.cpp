#include "base/RuntimeError.h"
#include "win32/WinHost.h"
#include "win32/WinPlatform.h"
#include "win32/console/ConsoleObject.h"
#include "win32/console/ConsoleOptions.h"
#include "win32/console/ConsoleWindow.h"
#include <gtest/gtest.h>
#include <vector>

namespace {

using ports::HostArg;
using win32::ConsoleObject;

// Answers every call and keeps what it was given.
class Listener final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = this;
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    called = id;
    asMethod = flags == DISPATCH_METHOD && parameters->cNamedArgs == 0;
    types.clear();
    values.clear();
    for (UINT i = parameters->cArgs; i-- > 0;) {
      VARIANT& v = parameters->rgvarg[i];
      types.push_back(v.vt);
      VARIANT number{};
      VariantCopyInd(&number, &v);
      VariantChangeType(&number, &number, 0, VT_R8);
      values.push_back(number.dblVal);
      if (v.vt == (VT_BYREF | VT_R8)) *v.pdblVal = -1; // the caller does not look at it again
    }
    *result = answer;
    if (FAILED(failure) && exception) *exception = info;
    return failure;
  }
  ULONG references = 1;
  DISPID called = 0;
  bool asMethod = false;
  std::vector<VARTYPE> types;
  std::vector<double> values;
  VARIANT answer{};
  HRESULT failure = S_OK;
  EXCEPINFO info{};
};

TEST(HostCalls, everyArgumentArrivesWithItsExactTypeInOrder) {
  Listener listener;
  auto host = win32::hostOn(&listener);
  host->call(202, {HostArg::i4(2), HostArg::r8(0.25)});
  EXPECT_EQ(listener.called, 202);
  EXPECT_TRUE(listener.asMethod);
  EXPECT_EQ(listener.types, (std::vector<VARTYPE>{VT_I4, VT_R8}));
  EXPECT_EQ(listener.values, (std::vector<double>{2, 0.25}));
  host->call(51, {HostArg::refI4(-7)});
  EXPECT_EQ(listener.types, std::vector<VARTYPE>{VT_BYREF | VT_I4});
  EXPECT_EQ(listener.values, std::vector<double>{-7});
  host->call(27, {HostArg::refR8(270)});
  EXPECT_EQ(listener.types, std::vector<VARTYPE>{VT_BYREF | VT_R8});
  EXPECT_EQ(listener.values, std::vector<double>{270});
  host->call(45, {});
  EXPECT_TRUE(listener.types.empty());
}

TEST(HostCalls, whateverNumberTheHostReturnsIsUnderstood) {
  Listener listener;
  auto host = win32::hostOn(&listener);
  EXPECT_EQ(host->call(52, {}), 0); // nothing at all
  listener.answer.vt = VT_I2;
  listener.answer.iVal = -5;
  EXPECT_EQ(host->call(52, {}), -5);
  listener.answer.vt = VT_R8;
  listener.answer.dblVal = 2.5;
  EXPECT_EQ(host->call(201, {HostArg::refI4(0)}), 2.5);
}

TEST(HostCalls, aFailureCarriesTheHostsNumberAndWords) {
  Listener listener;
  auto host = win32::hostOn(&listener);
  listener.failure = DISP_E_EXCEPTION;
  listener.info.scode = static_cast<SCODE>(0x8004C123);
  listener.info.bstrDescription = SysAllocString(L"no probe");
  try {
    host->call(31, {HostArg::i4(1)});
    FAIL();
  } catch (const base::RuntimeError& error) {
    EXPECT_EQ(error.number, static_cast<long>(0x8004C123));
    EXPECT_EQ(error.text, "no probe");
    EXPECT_TRUE(error.isAutomation());
  }
  listener.failure = static_cast<HRESULT>(0x800706BA);
  EXPECT_THROW(host->call(31, {HostArg::i4(1)}), base::RuntimeError);
}

TEST(HostCalls, theReferenceIsReleasedWithTheHost) {
  Listener listener;
  win32::hostOn(&listener).reset();
  EXPECT_EQ(listener.references, 0U);
}

struct Console {
  std::shared_ptr<sim::Spectrometer> spectrometer = std::make_shared<sim::Spectrometer>();
  int advanced = 0;
  ConsoleObject object{spectrometer, [this] {
                         ++advanced;
                         spectrometer->console.advance(0.01);
                       }};
  std::unique_ptr<ports::HostDispatch> host = win32::hostOn(&object);
};

TEST(ConsoleObject, thePanelDrivesTheSpectrometerThroughIt) {
  Console console;
  console.host->call(198, {HostArg::refR8(46.04)});
  console.host->call(30, {HostArg::r8(1234)});
  console.host->call(31, {HostArg::i4(3)});
  EXPECT_EQ(console.host->call(197, {}), 3);
  EXPECT_EQ(console.host->call(201, {HostArg::refI4(0)}), 1234);
  EXPECT_EQ(console.advanced, 5);
  EXPECT_EQ(console.spectrometer->faults.calls, 5);
}

TEST(ConsoleObject, aScriptCallsByNameWithWhateverNumbersItHas) {
  Console console;
  wchar_t name[] = L"setfield";
  LPOLESTR names[] = {name};
  DISPID id = 0;
  ASSERT_EQ(console.object.GetIDsOfNames(IID_NULL, names, 1, 0, &id), S_OK);
  EXPECT_EQ(id, 30);
  VARIANT inner{}, argument{};
  inner.vt = VT_I2;
  inner.iVal = 500;
  argument.vt = VT_BYREF | VT_VARIANT;
  argument.pvarVal = &inner;
  DISPPARAMS parameters{&argument, nullptr, 1, 0};
  ASSERT_EQ(console.object.Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(console.spectrometer->console.field(), 500);
}

TEST(ConsoleObject, wrongCallsAreRefusedAsAutomationDoes) {
  Console console;
  DISPPARAMS none{};
  EXPECT_EQ(console.object.Invoke(99, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(console.object.Invoke(30, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
  VARIANT text{};
  text.vt = VT_BSTR;
  text.bstrVal = SysAllocString(L"much");
  DISPPARAMS one{&text, nullptr, 1, 0};
  UINT bad = 9;
  EXPECT_EQ(console.object.Invoke(30, IID_NULL, 0, DISPATCH_METHOD, &one, nullptr, nullptr, &bad),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(bad, 0U);
  VariantClear(&text);
}

TEST(ConsoleObject, aRefusedCallIsTheHostsFailure) {
  Console console;
  win32::applyFaults(*console.spectrometer, false, true, 0, 0);
  EXPECT_THROW(console.host->call(197, {}), base::RuntimeError);
  win32::applyFaults(*console.spectrometer, true, false, 0, 0);
  EXPECT_EQ(console.host->call(201, {HostArg::refI4(0)}), -1);
}

TEST(ConsoleObject, isTheInterfaceThatThePanelAsksFor) {
  Console console;
  void* found = nullptr;
  EXPECT_EQ(console.object.QueryInterface(win32::kLockHardware, &found), S_OK);
  EXPECT_EQ(found, &console.object);
  EXPECT_EQ(console.object.QueryInterface(IID_IPersist, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
}

TEST(ConsoleOptions, areReadAndWhatIsNotUnderstoodIsNamed) {
  const auto options =
      win32::consoleOptions("--seed 7 --solvent D2O  --offset -300 --quiet --fault slow=200 --speed 2.5");
  EXPECT_EQ(options.problem, "");
  EXPECT_EQ(options.settings.seed, 7U);
  EXPECT_EQ(options.settings.sample.name, "D2O");
  EXPECT_EQ(options.settings.lineField, -300);
  EXPECT_TRUE(options.quiet);
  EXPECT_EQ(options.slowMs, 200);
  EXPECT_EQ(options.speed, 2.5);
  EXPECT_NE(win32::consoleOptions("--speed 0").problem, "");
  EXPECT_NE(win32::consoleOptions("--seed").problem, "");
  EXPECT_NE(win32::consoleOptions("--seed x").problem, "");
  EXPECT_NE(win32::consoleOptions("--solvent water").problem, "");
  EXPECT_NE(win32::consoleOptions("--fault fire").problem.find("fire"), std::string::npos);
  EXPECT_NE(win32::consoleOptions("--unknown").problem.find("--unknown"), std::string::npos);
}

TEST(Platform, theSecondCopyKnowsOfTheFirst) {
  win32::WinPlatform first;
  EXPECT_FALSE(first.anotherCopyRuns());
  win32::WinPlatform second;
  EXPECT_TRUE(second.anotherCopyRuns());
  EXPECT_EQ(first.programFolder().substr(1, 1), ":");
}

} // namespace
