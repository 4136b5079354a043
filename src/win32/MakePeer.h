// Which native control shows which model, and in which order they lie in a window.
#pragma once
#include "win32/FormPeer.h"

namespace win32 {

std::unique_ptr<controls::Peer> makePeer(FormPeer& form, controls::Control& control);

// All controls of a form: a container before what it holds, a label right before the control it names (screen
// readers take the name from there), otherwise in the order of the Tab key.
std::vector<controls::Control*> stackingOrder(const controls::Form& form);

} // namespace win32
