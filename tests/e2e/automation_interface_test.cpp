// The class as the system knows it: type library, order, identifiers, names, registry.
#include "automation/Members.h"
#include "e2e/support/Client.h"
#include "e2e/support/RecordingHost.h"
#include "e2e/support/Site.h"
#include "win32/WideText.h"
#include <gtest/gtest.h>
#include <memory>

using namespace e2e;
using automation::kMembers;
using automation::MemberKind;
using automation::ValueType;

namespace {

template <class T> struct Released {
  T* p = nullptr;
  ~Released() {
    if (p) p->Release();
  }
  T* operator->() const { return p; }
};

std::string narrow(BSTR text) {
  const std::string result =
      text ? win32::ansiText(std::wstring_view(text, SysStringLen(text))) : std::string();
  SysFreeString(text);
  return result;
}

VARTYPE typeOf(ValueType type) {
  switch (type) {
  case ValueType::Int16:
    return VT_I2;
  case ValueType::Int32:
    return VT_I4;
  case ValueType::Single:
    return VT_R4;
  case ValueType::Text:
    return VT_BSTR;
  case ValueType::None:
    break;
  }
  return VT_VOID;
}

INVOKEKIND invokeKind(MemberKind kind) {
  return kind == MemberKind::Method        ? INVOKE_FUNC
         : kind == MemberKind::PropertyGet ? INVOKE_PROPERTYGET
                                           : INVOKE_PROPERTYPUT;
}

void loadLibrary(Released<ITypeLib>& library) {
  ASSERT_EQ(LoadTypeLibEx(win32::wideText(panelExe()).c_str(), REGKIND_NONE, &library.p), S_OK);
}

bool keyExists(HKEY root, const std::string& key, REGSAM view = KEY_WOW64_64KEY) {
  HKEY opened = nullptr;
  if (RegOpenKeyExA(root, ("Software\\Classes\\" + key).c_str(), 0, KEY_READ | view, &opened) !=
      ERROR_SUCCESS)
    return false;
  RegCloseKey(opened);
  return true;
}

std::string keyValue(HKEY root, const std::string& key) {
  char value[512] = {};
  DWORD size = sizeof value;
  RegGetValueA(root, ("Software\\Classes\\" + key).c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value, &size);
  return value;
}

std::string guid(REFGUID id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return win32::ansiText(text);
}

std::vector<std::string> ownKeys() {
  return {"VantrelLock.NMRLock", "VantrelLock.NMRLock.1", "CLSID\\" + guid(CLSID_NMRLock),
          "Interface\\" + guid(IID_INMRLock), "TypeLib\\" + guid(LIBID_VantrelLock)};
}

int registration(const std::string& option) {
  return static_cast<int>(runToEnd("\"" + panelExe() + "\" " + option));
}

} // namespace

TEST(TypeLibrary, hasTheMembersInTheirFixedOrder) {
  Released<ITypeLib> library;
  loadLibrary(library);
  Released<ITypeInfo> dispatch, table;
  ASSERT_EQ(library->GetTypeInfoOfGuid(IID_INMRLock, &dispatch.p), S_OK);
  HREFTYPE half = 0; // the vtable half of the dual interface
  ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &half), S_OK);
  ASSERT_EQ(dispatch->GetRefTypeInfo(half, &table.p), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(table->GetTypeAttr(&attributes), S_OK);
  const UINT count = attributes->cFuncs;
  table->ReleaseTypeAttr(attributes);
  ASSERT_EQ(count, kMembers.size());
  for (UINT i = 0; i < count; ++i) {
    const automation::Member& member = kMembers[i];
    FUNCDESC* function = nullptr;
    ASSERT_EQ(table->GetFuncDesc(i, &function), S_OK);
    EXPECT_EQ(function->oVft, static_cast<SHORT>((7 + i) * sizeof(void*))) << member.name;
    EXPECT_EQ(function->memid, member.dispid) << member.name;
    EXPECT_EQ(function->invkind, invokeKind(member.kind)) << member.name;
    BSTR name = nullptr, help = nullptr;
    table->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
    EXPECT_EQ(narrow(name), member.name);
    dispatch->GetDocumentation(function->memid, nullptr, &help, nullptr, nullptr);
    EXPECT_EQ(narrow(help), member.help) << member.name;
    table->ReleaseFuncDesc(function);
  }
}

TEST(TypeLibrary, saysEveryArgumentsNameAndType) {
  Released<ITypeLib> library;
  loadLibrary(library);
  Released<ITypeInfo> dispatch;
  ASSERT_EQ(library->GetTypeInfoOfGuid(IID_INMRLock, &dispatch.p), S_OK);
  UINT seen = 0;
  for (UINT i = 0;; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(dispatch->GetFuncDesc(i, &function))) break;
    if (function->memid < 1000) { // not IDispatch's own
      ASSERT_LT(seen, kMembers.size());
      const automation::Member& member = kMembers[seen++];
      BSTR names[2] = {};
      UINT found = 0;
      dispatch->GetNames(function->memid, names, 2, &found);
      SysFreeString(names[0]);
      SysFreeString(names[1]);
      const bool takes = member.argumentType != ValueType::None;
      ASSERT_EQ(function->cParams, takes ? 1 : 0) << member.name;
      EXPECT_EQ(function->elemdescFunc.tdesc.vt, typeOf(member.result)) << member.name;
      if (takes) {
        const ELEMDESC& argument = function->lprgelemdescParam[0];
        const bool byReference = member.passing == automation::Passing::OptionalByReference;
        const VARTYPE expected = byReference ? static_cast<VARTYPE>(VT_PTR) : typeOf(member.argumentType);
        EXPECT_EQ(argument.tdesc.vt, expected) << member.name;
        EXPECT_EQ((argument.paramdesc.wParamFlags & PARAMFLAG_FOPT) != 0, byReference) << member.name;
        if (byReference) {
          EXPECT_EQ(argument.tdesc.lptdesc->vt, VT_I4);
        }
      }
    }
    dispatch->ReleaseFuncDesc(function);
  }
  EXPECT_EQ(seen, kMembers.size());
}

TEST(Registry, bothProgIdsLeadToTheClass) {
  CLSID clsid{}, versioned{};
  ASSERT_EQ(CLSIDFromProgID(L"VantrelLock.NMRLock", &clsid), S_OK);
  ASSERT_EQ(CLSIDFromProgID(L"VantrelLock.NMRLock.1", &versioned), S_OK);
  EXPECT_EQ(clsid, CLSID_NMRLock);
  EXPECT_EQ(versioned, CLSID_NMRLock);
  EXPECT_EQ(keyValue(HKEY_LOCAL_MACHINE, "VantrelLock.NMRLock\\CurVer"), "VantrelLock.NMRLock.1");
}

TEST(Registry, unregisteringLeavesNothingBehind) {
  EXPECT_EQ(registration("/unregserver"), 0);
  for (const std::string& key : ownKeys())
    for (REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY})
      EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, key, view)) << key;
  EXPECT_EQ(registration("-UnregServer"), 0) << "there is nothing to take back, which is no failure";
  EXPECT_EQ(registration("-REGSERVER"), 0);
  for (const std::string& key : ownKeys()) EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, key)) << key;
}

TEST(Registry, perUserStaysWithTheUser) {
  EXPECT_EQ(registration("/UnregServer"), 0);
  EXPECT_EQ(registration("/RegServerPerUser"), 0);
  for (const std::string& key : ownKeys()) {
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, key)) << key;
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, key)) << key;
  }
  EXPECT_EQ(registration("-unregserverperuser"), 0);
  for (const std::string& key : ownKeys()) EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, key)) << key;
  EXPECT_EQ(registration("/RegServer"), 0);
}

namespace {

class AutomationInterface : public testing::Test {
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
  }
  Client& lock = scene->client;
};

} // namespace

TEST_F(AutomationInterface, namesGiveTheIdentifiersInAnyCase) {
  for (const automation::Member& member : kMembers) {
    std::wstring name = win32::wideText(member.name);
    EXPECT_EQ(lock.id(name.c_str()), member.dispid) << member.name;
    CharUpperW(name.data());
    EXPECT_EQ(lock.id(name.c_str()), member.dispid) << member.name;
  }
}

TEST_F(AutomationInterface, argumentsHaveNamesToo) {
  DISPID ids[2] = {};
  LPOLESTR names[] = {const_cast<LPOLESTR>(L"ShowLockWindow"), const_cast<LPOLESTR>(L"modality")};
  ASSERT_EQ(lock.object()->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
  VARIANT argument = Var::i4(1).v;
  DISPPARAMS parameters{&argument, &ids[1], 1, 1};
  EXPECT_EQ(
      lock.object()->Invoke(ids[0], IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
      S_OK);
  names[1] = const_cast<LPOLESTR>(L"Nonsense");
  EXPECT_EQ(lock.object()->GetIDsOfNames(IID_NULL, names, 2, 0, ids), DISP_E_UNKNOWNNAME);
}

TEST_F(AutomationInterface, objectsTellTheirTypes) {
  UINT count = 0;
  EXPECT_EQ(lock.object()->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1U);
  Released<ITypeInfo> info;
  ASSERT_EQ(lock.object()->GetTypeInfo(0, 0, &info.p), S_OK);
  BSTR name = nullptr;
  info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  EXPECT_EQ(narrow(name), "INMRLock");
  Released<IProvideClassInfo> provider;
  ASSERT_EQ(lock.object()->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provider.p)),
            S_OK);
  Released<ITypeInfo> classInfo;
  ASSERT_EQ(provider->GetClassInfo(&classInfo.p), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(classInfo->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, CLSID_NMRLock);
  classInfo->ReleaseTypeAttr(attributes);
}

TEST_F(AutomationInterface, earlyBoundCallsReachTheSameMembers) {
  Released<INMRLock> early{lock.early()};
  ASSERT_NE(early.p, nullptr);
  LONG whole = 0;
  float real = 0;
  SHORT state = 0;
  EXPECT_EQ(early->put_LockSweepSpeed(2222), S_OK);
  EXPECT_EQ(early->get_LockSweepSpeed(&whole), S_OK);
  EXPECT_EQ(whole, 2222);
  EXPECT_EQ(early->put_LockTxPower(15), S_OK);
  EXPECT_EQ(early->get_LockTxPower(&real), S_OK);
  EXPECT_EQ(real, 30.0f);
  BSTR name = SysAllocString(L"Acetone");
  EXPECT_EQ(early->put_LockSolventText(name), S_OK);
  SysFreeString(name);
  name = nullptr;
  EXPECT_EQ(early->get_LockSolventText(&name), S_OK);
  EXPECT_EQ(narrow(name), "Acetone");
  EXPECT_EQ(early->StartSweep(), S_OK);
  EXPECT_EQ(early->get_GetLockState(&state), S_OK);
  EXPECT_EQ(state, -254);
  EXPECT_EQ(early->StopLock(), S_OK);
  LONG modality = 3;
  EXPECT_EQ(early->ShowLockWindow(&modality), S_OK);
  EXPECT_EQ(modality, 3);
}
