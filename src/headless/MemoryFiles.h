// Files and shell of a machine that is not there: texts in memory with faults on request, registry values as
// given.
#pragma once
#include "headless/Transcript.h"
#include "ports/Platform.h"
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace headless {

class MemoryFiles : public ports::Files {
 public:
  explicit MemoryFiles(Transcript& transcript) : transcript_(transcript) {}
  std::string append(const std::string& path, const std::string& text) override {
    const auto fault = faults_.find(path);
    std::string reason = fault != faults_.end() ? fault->second : allFail_;
    transcript_.add(Transcript::Kind::File,
                    reason.empty() ? "append to " + path : "append to " + path + " failed");
    if (reason.empty()) texts[path] += text;
    return reason;
  }
  bool exists(const std::string& path) override { return texts.contains(path); }

  std::map<std::string, std::string> texts;
  void fail(const std::string& path, std::string reason) { faults_[path] = std::move(reason); }
  void failAll(std::string reason) { allFail_ = std::move(reason); }
  void failNever() { faults_.clear(), allFail_.clear(); }

 private:
  Transcript& transcript_;
  std::map<std::string, std::string> faults_;
  std::string allFail_;
};

class FakeShell : public ports::Shell {
 public:
  std::optional<ports::RegistryValue> registryValue(const std::string& key,
                                                    const std::string& name) override {
    const auto found = registry.find({key, name});
    return found == registry.end() ? std::nullopt : std::optional(found->second);
  }
  bool start(const std::string& program) override {
    started.push_back(program);
    return canStart;
  }

  std::map<std::pair<std::string, std::string>, ports::RegistryValue> registry; // by key and value name
  std::vector<std::string> started; // everything asked for, also what could not be started
  bool canStart = true;
};

} // namespace headless
