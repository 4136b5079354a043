// The interface that clients were built against: order, names and types of the 30 members, and their
// documentation.
#include "automation/Members.h"
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

using namespace automation;

namespace {

std::string typeName(ValueType type) {
  switch (type) {
  case ValueType::None:
    return "none";
  case ValueType::Int16:
    return "int16";
  case ValueType::Int32:
    return "int32";
  case ValueType::Single:
    return "single";
  case ValueType::Text:
    return "text";
  }
  return "?";
}

std::string describe(const Member& m) {
  static const std::map<MemberKind, std::string> kinds{
      {MemberKind::Method, "method"}, {MemberKind::PropertyGet, "get"}, {MemberKind::PropertyPut, "put"}};
  std::string text = std::string(m.name) + " " + kinds.at(m.kind);
  if (m.passing != Passing::None) text += " " + std::string(m.argument) + ":" + typeName(m.argumentType);
  if (m.passing == Passing::OptionalByReference) text += " optional by reference";
  if (m.result != ValueType::None) text += " -> " + typeName(m.result);
  return text;
}

std::string documentation() {
  std::ifstream file(std::string(LOCK_SOURCE_DIR) + "/docs/automation.md", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

} // namespace

TEST(Interface, hasItsThirtyMembersInTheFixedOrder) {
  const char* expected[] = {"ExitLockApp method",
                            "ShowLockWindow method Modality:int32 optional by reference",
                            "LockSweepSpeed get -> int32",
                            "LockSweepSpeed put speed:int32",
                            "LockSweepWidth get -> int32",
                            "LockSweepWidth put Width:int32",
                            "LockFieldCenter put value:single",
                            "LockFieldCenter get -> single",
                            "LockSolventPPM put ppm:single",
                            "LockSolventPPM get -> single",
                            "LockSolventText put solventname:text",
                            "LockSolventText get -> text",
                            "LockTxPower put power:single",
                            "LockTxPower get -> single",
                            "LockRxGain put gain:single",
                            "LockRxGain get -> single",
                            "LockNMRPhase put phase:single",
                            "LockNMRPhase get -> single",
                            "GetLockState get -> int16",
                            "LockLevel get -> single",
                            "LockLoopChar put loopindex:int16",
                            "StartLock method",
                            "StartAutoPhase method",
                            "StartAutoLock method",
                            "StartHold method",
                            "StartSweep method",
                            "StopLock method",
                            "HideWindows method",
                            "MinimizeLockWindow method",
                            "hWndLockWindow get -> int32"};
  ASSERT_EQ(std::size(expected), kMembers.size());
  for (std::size_t i = 0; i < kMembers.size(); ++i) {
    EXPECT_EQ(kMembers[i].number, static_cast<int>(i) + 1);
    EXPECT_EQ(describe(kMembers[i]), expected[i]);
  }
}

TEST(Interface, theAccessorsOfAPropertyShareOneIdentifierAndNothingElseDoes) {
  std::map<std::string_view, long> byName;
  for (const Member& m : kMembers) {
    const auto [known, added] = byName.emplace(m.name, m.dispid);
    EXPECT_EQ(known->second, m.dispid) << m.name;
    EXPECT_GT(m.dispid, 0) << m.name << ": 0 would be the default member";
  }
  std::set<long> ids;
  for (const auto& [name, id] : byName) EXPECT_TRUE(ids.insert(id).second) << name;
}

TEST(Interface, everyMemberHasAHelpText) {
  for (const Member& m : kMembers) EXPECT_FALSE(m.help.empty()) << m.name;
}

TEST(Documentation, hasOneEntryForEveryMember) {
  const std::string text = documentation();
  ASSERT_FALSE(text.empty());
  std::set<std::string_view> names;
  for (const Member& m : kMembers) names.insert(m.name);
  for (std::string_view name : names) {
    const std::string heading = "\n### " + std::string(name) + "\n";
    const std::size_t first = text.find(heading);
    ASSERT_NE(first, std::string::npos) << name;
    EXPECT_EQ(text.find(heading, first + 1), std::string::npos) << name << " is described twice";
  }
}

TEST(Documentation, saysEveryArgumentsNameAndType) {
  const std::map<ValueType, std::string> words{{ValueType::Int16, "16-bit whole number"},
                                               {ValueType::Int32, "32-bit whole number"},
                                               {ValueType::Single, "32-bit float"},
                                               {ValueType::Text, "text"}};
  const std::string text = documentation();
  for (const Member& m : kMembers) {
    if (m.argumentType == ValueType::None) continue;
    const std::size_t start = text.find("\n### " + std::string(m.name) + "\n");
    ASSERT_NE(start, std::string::npos) << m.name;
    const std::string entry = text.substr(start, text.find("\n### ", start + 1) - start);
    EXPECT_NE(entry.find("`" + std::string(m.argument) + "`"), std::string::npos) << m.name;
    EXPECT_NE(entry.find(words.at(m.argumentType)), std::string::npos) << m.name;
  }
}
