// One running lock panel: the parameter record, the engine's state, the host object and the windows. Built
// once in main and passed by reference; tests build as many as they like.
#pragma once
#include "controls/Form.h"
#include "core/LockParameters.h"
#include "engine/EngineState.h"
#include "ports/Platform.h"
#include <memory>

class frmLock;
class frmControls;
class frmTuning;
class frmSweep;
class frmAmpl;
class frmLevel;
class frmAbout;

class Program {
 public:
  explicit Program(ports::Platform& platform);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  ports::Platform& platform;
  controls::Desktop desktop;
  LockParameters record;
  CycleState cycle;
  AutoLockState autoLock;
  PlotCursor cursor;
  SolventTables solvents;
  PanelFlags panels;
  std::unique_ptr<ports::HostDispatch> HostApp;

  // The windows load on first touch: program.frmLock->Picture1.
  template <class F> using Slot = controls::FormSlot<F, Program>;
  Slot<::frmLock> frmLock{*this};
  Slot<::frmControls> frmControls{*this};
  Slot<::frmTuning> frmTuning{*this};
  Slot<::frmSweep> frmSweep{*this};
  Slot<::frmAmpl> frmAmpl{*this};
  Slot<::frmLevel> frmLevel{*this};
  Slot<::frmAbout> frmAbout{*this};

  // Everything waiting is delivered. Returns the number of loaded windows. Pumps: handlers, ticks and client
  // calls may run inside.
  int doEvents() { return platform.pump().doEvents(); }
  void beep() { platform.dialogs().beep(); }
  // An error no handler expected, told to the operator. Pumps.
  void report(const base::RuntimeError& error);
};
