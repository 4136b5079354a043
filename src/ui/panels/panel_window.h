// What the four panels of the Controls menu share: where each keeps its position, its flags and its menu
// item, and what opening and closing one does to them.
#pragma once
#include "base/RuntimeError.h"
#include "controls/Control.h"
#include "core/LockParameters.h"

class Program;

struct PanelWindow {
  int menuItem; // index in mnuControls
  float LockParameters::*left;
  float LockParameters::*top;
  std::int16_t PanelFlags::*shown;
  std::int16_t PanelFlags::*open;
};

inline constexpr PanelWindow kDisplayPanel{3, &LockParameters::AmplitudeLeft, &LockParameters::AmplitudeTop,
                                           &PanelFlags::AmplShown, &PanelFlags::AmplOpen};
inline constexpr PanelWindow kSweepPanel{5, &LockParameters::SweepLeft, &LockParameters::SweepTop,
                                         &PanelFlags::SweepShown, &PanelFlags::SweepOpen};
inline constexpr PanelWindow kTuningPanel{7, &LockParameters::TuningLeft, &LockParameters::TuningTop,
                                          &PanelFlags::TuningShown, &PanelFlags::TuningOpen};
inline constexpr PanelWindow kControlsPanel{21, &LockParameters::NMRControlsLeft,
                                            &LockParameters::NMRControlsTop, &PanelFlags::ControlsShown,
                                            &PanelFlags::ControlsOpen};

// Where the panel stood when it was last closed, in the middle of the screen the first time.
void placePanel(const Program& program, controls::Form& form, const PanelWindow& panel);
// The panel is being unloaded: its menu item and flags are cleared and its position is kept.
void panelClosed(Program& program, const controls::Form& form, const PanelWindow& panel);

// Converts what stands in a box; an error names the box.
template <class Convert> auto typedNumber(const controls::Control& box, Convert&& convert) {
  try {
    return convert();
  } catch (const base::RuntimeError& error) {
    throw error.within(box.accessibleName());
  }
}
