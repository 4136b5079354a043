// The public automation class as the program sees it: the 30 members through which other programs drive the
// lock panel. It holds no state of its own: every instance acts on the one Program. Errors
// (base::RuntimeError) go back to the client, with the state changed up to the failing step: overflow (6)
// where a number fits no target or is none, invalid value (380) for a field centre beyond the scroll bar, and
// whatever a refused host call raised.
#pragma once
#include <cstdint>
#include <string>

class Program;

class NMRLock {
 public:
  explicit NMRLock(Program& program) : program_(program) {}

  void ExitLockApp();                  // ends the process at once, nothing is asked or saved
  void ShowLockWindow();               // Pumps nothing itself; resize handlers run inside.
  std::int32_t LockSweepSpeed() const; // DAC units per second
  void putLockSweepSpeed(std::int32_t speed);
  std::int32_t LockSweepWidth() const; // DAC units
  void putLockSweepWidth(std::int32_t width);
  void putLockFieldCenter(float value); // DAC units, -131068 to 131068, in steps of 4
  float LockFieldCenter() const;
  void putLockSolventPPM(float ppm); // retunes the lock frequency; the stored shift stays
  float LockSolventPPM() const;
  void putLockSolventText(const std::string& solventname);
  std::string LockSolventText() const;
  void putLockTxPower(float power);
  float LockTxPower() const; // twice the power last put
  void putLockRxGain(float gain);
  float LockRxGain() const;
  void putLockNMRPhase(float phase); // degrees; stored only
  float LockNMRPhase() const;
  std::int16_t GetLockState() const; // 256 x LockState + LockMode
  float LockLevel();
  void putLockLoopChar(std::int16_t loopindex); // accepted, does nothing

  // The mode buttons. All pump: handlers, ticks and client calls may run inside.
  void StartLock();
  void StartAutoPhase();
  void StartAutoLock();
  void StartHold();
  void StartSweep();
  void StopLock();

  void HideWindows();
  void MinimizeLockWindow();
  std::int32_t hWndLockWindow();

 private:
  template <class F> void act(F&& f);
  void pressModeButton(int button);
  Program& program_;
};
