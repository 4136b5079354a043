// Shared by the AutoLock and AutoPhase steps.
#pragma once
#include "controls/Geometry.h"

class Program;

namespace AutoLock {

// Takes a fresh data sample beside the line. False when a mode button overtook the procedure meanwhile; it
// must then leave the hardware alone. Pumps.
bool sampleBesideSweep(Program& program);

void drawThresholdLine(Program& program, controls::Colour colour);

} // namespace AutoLock
