#include "sim/SimHost.h"

#include "base/RuntimeError.h"

namespace sim {
namespace {

constexpr int kGetLockData = 201;

bool fails(const Faults& faults, int dispid) {
  return faults.failWith != 0 && faults.calls >= faults.failFrom &&
         (!faults.failDispid || *faults.failDispid == dispid);
}

} // namespace

double SimHost::call(int dispid, std::span<const ports::HostArg> args) {
  const std::shared_ptr<Spectrometer> held = spectrometer_; // beforeCall may let go of this handle
  Faults& faults = held->faults;
  ++faults.calls;
  if (faults.beforeCall) {
    const auto beforeCall = faults.beforeCall; // it may replace itself
    beforeCall(dispid);
  }
  if (faults.hostGone || !held->running)
    throw base::RuntimeError(kServerUnavailable, "The RPC server is unavailable");
  if (fails(faults, dispid)) throw base::RuntimeError(faults.failWith, "Automation error");

  const double result = held->console.call(dispid, args);
  if (dispid != kGetLockData) return result;
  const int index = static_cast<int>(args[0].value);
  if (const auto forced = faults.forcedWords.find(index); forced != faults.forcedWords.end())
    return forced->second;
  if (faults.noData) return index == 0 ? -1 : 0;
  return result;
}

std::unique_ptr<ports::HostDispatch> SimHostFinder::findRunningHost() {
  if (!spectrometer_->running || spectrometer_->faults.hostGone) return nullptr;
  return std::make_unique<SimHost>(spectrometer_);
}

} // namespace sim
