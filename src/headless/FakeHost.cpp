#include "headless/FakeHost.h"
#include "base/RuntimeError.h"
#include <charconv>

namespace headless {
namespace {

// Written down a second time on purpose: an identifier that the program mixes up shows in every transcript.
constexpr struct {
  int dispid;
  const char* name;
} kNames[] = {{22, "HostSetLockedFlag"},         {26, "HostSetLockRxGain"},     {27, "HostSetLockPhase"},
              {28, "HostSetLockTxPower"},        {30, "HostSetLockField"},      {31, "HostSetLockMode"},
              {45, "HostResetSystem"},           {51, "HostSetSystemValue"},    {52, "HostGetSystemValue"},
              {197, "HostGetLockHardwareState"}, {198, "HostSetLockFrequency"}, {199, "HostSetLockRxFilter"},
              {200, "HostResetLockHardware"},    {201, "HostGetLockData"},      {202, "HostSetLockLoopParam"},
              {204, "HostSetLockSweepWidth"},    {206, "HostSetLockSweepSpeed"}};

const char* typeName(ports::HostArg::Type type) {
  switch (type) {
  case ports::HostArg::Type::I4:
    return "I4";
  case ports::HostArg::Type::R8:
    return "R8";
  case ports::HostArg::Type::RefI4:
    return "RefI4";
  case ports::HostArg::Type::RefR8:
    return "RefR8";
  }
  return "?";
}

std::string valueText(double value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  return {text, end};
}

} // namespace

std::string callText(int dispid, std::span<const ports::HostArg> args) {
  const char* name = "?";
  for (const auto& entry : kNames)
    if (entry.dispid == dispid) name = entry.name;
  std::string text = std::to_string(dispid) + ' ' + name;
  const char* between = " ";
  for (const ports::HostArg& arg : args) {
    text += between + std::string(typeName(arg.type)) + ' ' + valueText(arg.value);
    between = ", ";
  }
  return text;
}

class FakeHost::Reference : public ports::HostDispatch {
 public:
  explicit Reference(FakeHost& host) : host_(host) { ++host_.references_; }
  ~Reference() override { --host_.references_; }
  using ports::HostDispatch::call;
  double call(int dispid, std::span<const ports::HostArg> args) override { return host_.call(dispid, args); }

 private:
  FakeHost& host_;
};

std::unique_ptr<ports::HostDispatch> FakeHost::reference() { return std::make_unique<Reference>(*this); }

double FakeHost::call(int dispid, std::span<const ports::HostArg> args) {
  ++calls_;
  if (transcript_.wants(Transcript::Kind::Call))
    transcript_.add(Transcript::Kind::Call, callText(dispid, args));
  Micros takes = delay;
  if (!delayOf.empty())
    if (const auto own = delayOf.find(dispid); own != delayOf.end()) takes = own->second;
  clock_.advance(takes);
  if (pumpInside) pumpInside();
  if (failAll_) throw base::RuntimeError(*failAll_, "Automation error");
  if (!failing_.empty())
    if (const auto failing = failing_.find(dispid); failing != failing_.end())
      throw base::RuntimeError(failing->second, "Automation error");
  if (answer)
    if (const auto special = answer(dispid, args)) return *special;
  return ordinaryAnswer(dispid, args);
}

double FakeHost::ordinaryAnswer(int dispid, std::span<const ports::HostArg> args) const {
  switch (dispid) {
  case 201:
    if (args.size() == 1 && args[0].value >= 0 && args[0].value < 9)
      return words[static_cast<std::size_t>(args[0].value)];
    return 0;
  case 197:
    return hardwareState;
  case 52:
    return systemValue;
  default:
    return 0;
  }
}

std::unique_ptr<ports::HostDispatch> ScriptedFinder::findRunningHost() {
  ++searches_;
  bool found = hostRuns;
  if (!next_.empty()) {
    found = next_.front();
    next_.pop_front();
  }
  transcript_.add(Transcript::Kind::Find, found ? "find host: running" : "find host: not running");
  return found ? source_() : nullptr;
}

} // namespace headless
