// The plot's coordinate system, grid and axis labels, and the conversions between DAC units, hertz and ppm.
#pragma once
#include <optional>
#include <string>

class Program;

namespace PlotScale {

void ApplyDisplaySettings(
    Program& program);            // clamps the amplitude (1..16) and offset (-100..100), then SetupPlot
void SetupPlot(Program& program); // scale, grid, labels, threshold marker; nothing while minimised
void RedrawPlotBackground(Program& program); // grid, labels and marker in the present scale, without clearing

// An x position in DAC units as the axis shows it in the chosen display unit; nothing for an unknown unit.
std::optional<std::string> FormatAxisValue(const Program& program, float x);

// The lock frequency in MHz of a solvent with this shift in ppm.
double SolventLockFrequency(const Program& program, float ppm);

} // namespace PlotScale
