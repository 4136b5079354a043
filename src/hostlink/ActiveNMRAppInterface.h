// Everything the program asks of the host application: the 17 operations by dispatch identifier, the command
// routines made of them, the connection, and bringing program and hardware into agreement. All outgoing calls
// pump: handlers, ticks and client calls may run inside. A failing call raises the automation error to the
// caller unless the routine says otherwise.
#pragma once
#include "engine/EngineState.h"
#include <cstdint>
#include <string_view>

class Program;

namespace ActiveNMRAppInterface {

struct HostOperation {
  int dispid;
  std::string_view name;
};

inline constexpr HostOperation kHostOperations[] = {
    {22, "HostSetLockedFlag"},         {26, "HostSetLockRxGain"},     {27, "HostSetLockPhase"},
    {28, "HostSetLockTxPower"},        {30, "HostSetLockField"},      {31, "HostSetLockMode"},
    {45, "HostResetSystem"},           {51, "HostSetSystemValue"},    {52, "HostGetSystemValue"},
    {197, "HostGetLockHardwareState"}, {198, "HostSetLockFrequency"}, {199, "HostSetLockRxFilter"},
    {200, "HostResetLockHardware"},    {201, "HostGetLockData"},      {202, "HostSetLockLoopParam"},
    {204, "HostSetLockSweepWidth"},    {206, "HostSetLockSweepSpeed"}};

// Operations.
void HostSetLockedFlag(Program& program, std::int32_t locked); // -1 locked, 0 not
void HostSetLockRxGain(Program& program, double gain);
void HostSetLockPhase(Program& program, double degrees);
void HostSetLockTxPower(Program& program, double power);
void HostSetLockField(Program& program, double dac);
void HostSetLockMode(Program& program,
                     std::int32_t code); // 0 off, 1 lock, 2 sweep, 3 hold, 5 automatic, 7 data sample
void HostResetSystem(Program& program);
void HostSetSystemValue(Program& program, std::int32_t value);
std::int32_t HostGetSystemValue(Program& program);
std::int32_t HostGetLockHardwareState(Program& program); // 0 off, 1 lock on, 2 sweeping, 3 hold
void HostSetLockFrequency(Program& program, double megahertz);
void HostSetLockRxFilter(Program& program, double bandwidth);
void HostResetLockHardware(Program& program);
enum class IndexPassing { ByValue, ByReference };
std::int32_t HostGetLockData(Program& program, std::int32_t word,
                             IndexPassing passing = IndexPassing::ByValue);
void HostSetLockLoopParam(Program& program, std::int32_t index, double value); // 0 P, 1 I, 2 D
void HostSetLockSweepWidth(Program& program, double dac);
void HostSetLockSweepSpeed(Program& program, double dacPerSecond);

// Command routines.
inline void ResetLockHardware(Program& program) { HostResetLockHardware(program); }
inline std::int32_t GetLockHardwareState(Program& program) { return HostGetLockHardwareState(program); }
inline std::int32_t GetLockDataWord(Program& program) { return HostGetLockData(program, 6); }
// Words 0 to 8; a word whose call fails keeps its value. Returns at once when no window is open any more.
void ReadLockData(Program& program, LockSampleArray& words);
// speed is read after the other sends: a handler running inside may change it.
void SetSweepBounds(Program& program, const std::int32_t& lower, const std::int32_t& upper,
                    const std::int32_t& speed);
void SendSweepSettings(Program& program); // the record's sweep limits and speed
inline void LockModeOn(Program& program) { HostSetLockMode(program, 1); }
inline void LockModeSweep(Program& program) { HostSetLockMode(program, 2); }
inline void LockModeAuto(Program& program) { HostSetLockMode(program, 5); }
void SampleLockData(Program& program); // one sample beside the line; leaves the host at Frequency
void HoldAtField(Program& program, std::int32_t field);
void LockModeOff(Program& program); // holds at FieldCenterNow, switches off, runs one lock cycle
inline void SetLockFrequency(Program& program, double megahertz) { HostSetLockFrequency(program, megahertz); }
void SetLockPhase(Program& program,
                  double& degrees);   // a negative phase is raised by 360 once, in the caller's variable
void SendLockPhase(Program& program); // the record's LockPhase
inline void SetLockRxFilter(Program& program, double bandwidth) { HostSetLockRxFilter(program, bandwidth); }
inline void SetLockTxPower(Program& program, double power) { HostSetLockTxPower(program, power); }
void SetLockRxGain(Program& program, std::int32_t gain);
void SetLockLoop(Program& program, float p, float i, float d);
void SendLoopConstants(Program& program);                 // the record's LoopP, LoopI, LoopD
void SetSweepSpeed(Program& program, std::int32_t speed); // stores; sends unless Initializing
void SetSweepWidth(Program& program,
                   std::int32_t width); // stores, axis; sends field and width unless Initializing

// Returns once HostApp holds the running host. On Cancel the program ends inside. Pumps.
void ConnectHost(Program& program);
// Keeps the running host object in HostApp. False when the host is not running.
bool takeRunningHost(Program& program);
// Brings program, main window and, when the lock is off, the hardware into agreement with the record. Pumps.
void ApplyLockParameters(Program& program);

} // namespace ActiveNMRAppInterface
