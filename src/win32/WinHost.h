// The running host application's automation object, found by its ProgID and called by dispatch identifier.
#pragma once
#include "ports/HostDispatch.h"
#include "win32/Win.h"
#include <memory>
// after windows.h
#include <oleauto.h>

namespace win32 {

class WinHostFinder : public ports::HostFinder {
 public:
  std::unique_ptr<ports::HostDispatch> findRunningHost() override;
};

// Calls on one automation object. Takes over the reference.
std::unique_ptr<ports::HostDispatch> hostOn(IDispatch* object);

} // namespace win32
