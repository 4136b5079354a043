// The process-wide record of lock settings and run-time state. Flags are 16-bit words, true = -1.
#pragma once
#include <array>
#include <cstdint>
#include <string>

inline constexpr std::int16_t kTrue = -1, kFalse = 0;
constexpr std::int16_t flag(bool value) { return value ? kTrue : kFalse; }

inline constexpr double kMaxTxPower = 63.5;

// Values of LockMode. The host's own mode codes are a different set (see ActiveNMRAppInterface).
inline constexpr std::int16_t kModeOff = 0, kModeLock = 1, kModeSweep = 2, kModeHold = 3, kModeAuto = 4,
                              kModePhase = 5;
// Values of LockState.
inline constexpr std::int16_t kNotInLock = -1, kJustEntered = 0, kSearching = 1, kLocked = 2;

struct LockParameters {
  // Settings, named after their keys in the settings file.
  double PPMperDAC = 0;    // ppm of field per DAC unit
  double SidebandFreq = 0; // Hz
  std::string LockSolvent;
  float SolventPPM = 0;
  double Frequency = 0;                                         // MHz
  std::int32_t FieldCenter = 0, SweepWidth = 0, SweepSpeed = 0; // DAC units; speed in DAC units per second
  std::int32_t LockPhase = 0;                                   // degrees
  double TxPower = 0;                                           // 0 .. 63.5
  std::int32_t RxGain = 0;                                      // 0 .. 10000
  std::int16_t RxFilterIndex = 0;
  std::array<double, 6> RxFilterBW{}; // entries 0..2 are loaded, 3 is typed
  std::int16_t Testing = 0;
  double DeltaTxPwr = 0; // transmitter power added while sweeping
  std::int16_t LockHoldRxFilter = 0, SweepRxFilter = 0;

  std::int16_t NSets = 0;
  std::array<std::int32_t, 51> LoopSetP{}, LoopSetI{}, LoopSetD{};
  std::int16_t ActiveSet = 0;
  float LoopP = 0, LoopI = 0, LoopD = 0;

  std::int32_t PlotMax = 0, PlotMin = 0; // PlotMin is always -PlotMax
  std::int16_t PlotOffset = 0;           // percent
  float LogInterval = 0;                 // seconds
  std::string LogFileName;
  float DisplayFilter = 0;
  float FormTop = 0, FormLeft = 0, FormWidth = 0, FormHeight = 0; // twips
  std::int16_t FormMax = 0, ShowReal = 0, ShowImag = 0, ShowControls = 0, StayOnTop = 0;
  double NoiseFactor = 0;

  float AmplitudeTop = -1, AmplitudeLeft = -1, NMRControlsTop = -1,
        NMRControlsLeft = -1; // twips, left -1: not placed
  float SweepTop = -1, SweepLeft = -1, TuningTop = -1, TuningLeft = -1;

  double ProtonFreq = 0;  // MHz
  double ProtonDelta = 0; // ppm
  double GammaRatio = 0;

  std::int16_t UseDefaultTxRx = 0;
  std::int32_t AutoLockSweepSpeed = 0, AutoLockSweepWidth = 0;
  float PeakThresholdFactor = 0;
  double SetPeakMagn = 0;
  std::int32_t SetLockLevel = 0;
  float PhaseThresholdFactor = 0;
  std::int16_t PhaseRepeatTimes = 0;

  // Run time.
  std::string IniPath, HostDrive;
  std::int16_t Initializing = 0;   // from start until the main window is up
  std::int16_t ShowMainWindow = 0; // false when the command line holds "nowindow"
  std::int16_t LockMode = kModeOff, PreviousLockMode = kModeOff, LockState = kNotInLock;
  std::string LockStatus;
  std::int32_t FieldCenterNow = 0, SweepSpeedNow = 0; // last sent
  std::int32_t SweepUpper = 0, SweepLower = 0;        // FieldCenterNow +- SweepWidth / 2
  std::int32_t PhaseMilliTurns = 0;                   // 0 .. 999
  double StartDeltaTxPwr = 0;                         // DeltaTxPwr as loaded
  std::int16_t AmplitudeExponent = 0;                 // round(log2(PlotMax))
  std::array<std::int16_t, 7> ModeButtonDown{};       // by mode number; 1: counts as down
  std::int16_t PendingControl = 0, PendingTxPower = 0, PendingRxGain = 0, PendingPhase = 0,
               PendingFieldCenter = 0;

  // Preferences kept equal to menu check marks.
  std::int16_t ShowMagnitude = 0, ShowLockLevel = 0, LogEnabled = 0, UseTimer = 0;
  float DisplayUnits = 0; // 0 DAC units, 1 Hz, 2 ppm

  double LastLogTime = 0; // days; 0: nothing logged yet
};

// The solvent tables, aligned by position: entry i of each is the i-th key of its own section of the settings
// file.
struct SolventTables {
  std::array<double, 101> Shift{};
  std::array<std::int32_t, 101> RxGain{};
  std::array<double, 101> TxPower{};
  std::int16_t RxGainPresent = 0, TxPowerPresent = 0;
};

// Which secondary windows the Controls menu has opened (hidden and shown with the main window), and which are
// loaded.
struct PanelFlags {
  std::int16_t AmplShown = 0, SweepShown = 0, TuningShown = 0, ControlsShown = 0;
  std::int16_t AmplOpen = 0, SweepOpen = 0, TuningOpen = 0, ControlsOpen = 0, LevelOpen = 0;
};
