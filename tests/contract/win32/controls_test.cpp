// The controls' contract on native windows.
#include "contract/controls_contract.h"
#include "contract/win32/NativeBackEnd.h"

namespace contract {

std::unique_ptr<BackEnd> makeBackEnd() { return std::make_unique<NativeBackEnd>(); }

} // namespace contract
