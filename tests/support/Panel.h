// The whole lock panel on a bench: the program with every port scripted, and an operator. Settings are a text
// in memory, the host is a notebook or the simulated console, time passes when the test says so.
#pragma once
#include "core/Program.h"
#include "core/vbLock_mod.h"
#include "headless/Errors.h"
#include "headless/HeadlessPlatform.h"
#include "headless/IdleLoop.h"
#include "headless/Operator.h"
#include "headless/RecordingCanvas.h"
#include "headless/SimulatedHost.h"
#include "support/HostLines.h"
#include "ui/main/frmLock.h"
#include "ui/panels/frmControls.h"
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace support {

using headless::kAnyText;
using ports::Answer;
using Kind = headless::Transcript::Kind;

// A small settings file in which no value equals its default or another one by accident.
inline std::string standardIni() {
  return "[Hardware]\r\n"
         "PPMperDAC=.001\r\nSidebandFreq=+2000\r\nLockSolvent=CDCl3\r\nSolventPPM=7.24\r\nFrequency=46."
         "04475\r\n"
         "FieldCenter=400\r\nSweepWidth=8000\r\nSweepSpeed=20000\r\nLockPhase=30\r\nTxPower=20\r\nRxGain="
         "1200\r\n"
         "RxFilterIndex=1\r\nRxFilterBW0=20\r\nRxFilterBW1=100\r\nRxFilterBW2=500\r\nTesting=false\r\n"
         "DeltaTxPwr=10\r\nLockHoldRxFilter=0\r\nSweepRxFilter=2\r\n"
         "[Loop]\r\nNSets=1\r\nP_0=9000\r\nI_0=40\r\nD_0=5\r\nActiveSet=0\r\nP=8000\r\nI=60\r\nD=3\r\n"
         "[Display]\r\nPlotMax=500\r\nPlotOffset=0\r\nFormLeft=600\r\nFormTop=300\r\nFormWidth=9000\r\n"
         "FormHeight=7500\r\nShowReal=1\r\nShowImag=0\r\nShowControls=0\r\nStayOnTop=false\r\nNoiseFactor="
         "4\r\n"
         "[Solvents]\r\nCDCl3=7.24\r\nD2O=4.8\r\nAcetone=2.05\r\n"
         "[Solvents_RxGain]\r\nCDCl3=1200\r\nD2O=800\r\nAcetone=600\r\n"
         "[Solvents_TxPwr]\r\nCDCl3=20\r\nD2O=30\r\nAcetone=25\r\n";
}

class Panel {
 public:
  explicit Panel(const std::string& ini = standardIni()) {
    settingsText() = ini;
    program_ = std::make_unique<Program>(platform);
  }
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  ~Panel() {
    EXPECT_EQ(platform.dialogs().stillExpected(), 0U) << "a box was expected that never came";
    program_.reset();
    EXPECT_EQ(platform.windows().realisedForms(), 0) << "a native window is left over";
    EXPECT_EQ(platform.windows().livePeers(), 0) << "a peer is left over";
    EXPECT_EQ(platform.host().references(), 0) << "the host object is still held";
  }

  headless::HeadlessPlatform platform;
  Program& program() { return *program_; }
  LockParameters& record() { return program_->record; }
  frmLock& main() { return program_->frmLock.get(); }
  frmControls& controls() { return program_->frmControls.get(); }
  headless::FakeHost& host() { return platform.host(); }
  headless::Operator op() { return {program_->desktop, platform.windows()}; }

  // Settings, before start-up or a reload.
  static constexpr const char* kIniPath = headless::HeadlessPlatform::kIniPath;
  std::string& settingsText() { return platform.memorySettings().text(kIniPath); }
  Panel& set(const std::string& section, const std::string& key, const std::string& value) {
    EXPECT_TRUE(platform.memorySettings().write(kIniPath, section, key, value));
    return *this;
  }
  std::string setting(const std::string& section,
                      const std::string& key) { // "(none)" when it is not in the file
    return platform.memorySettings().read(kIniPath, section, key, "(none)", 255);
  }
  // A simulated console answers in place of the notebook's programmed words.
  sim::Console& useConsole(const sim::Settings& settings = {}) {
    console_ = std::make_unique<sim::Console>(settings);
    headless::connectConsole(platform.host(), platform.clock(), *console_);
    return *console_;
  }

  // Running. startUp ends with the start-up; the calls it made are in the transcript.
  Panel& startUp() {
    vbLock_mod::startUp(*program_);
    return *this;
  }
  Panel& started() { // start-up whose transcript is of no interest
    startUp();
    clear();
    return *this;
  }
  void pass(int n = 1) { // passes of the idle loop, no time goes by
    while (n-- > 0 && vbLock_mod::idlePass(*program_)) {
    }
  }
  // The idle loop for so long: passes while there is work, time jumps to what is due next.
  void wait(headless::Micros time) { headless::runIdleLoop(*program_, platform, time); }
  void waitSeconds(double seconds) { wait(static_cast<headless::Micros>(seconds * headless::kSecond)); }
  void tick(int n = 1) { wait(n * 10 * headless::kMillisecond); } // ticks of the lock timer, when it runs
  // Waits until the status is this; false when it is not within the time.
  bool waitForStatus(const std::string& text, double seconds) {
    const headless::Micros end =
        platform.clock().micros() + static_cast<headless::Micros>(seconds * headless::kSecond);
    while (status() != text && platform.clock().micros() < end) tick();
    return status() == text;
  }
  std::string status() { return main().StatusBar1.text(4); }
  template <class F> bool ends(F&& f) { // f ends the program
    try {
      f();
    } catch (const headless::Ended&) {
      return true;
    }
    return false;
  }

  // The operator.
  void press(const std::string& button) { op().press(button); }
  void type(controls::TextBox& box, const std::string& text) { op().type(box, text); }
  void typeInto(controls::TextBox& box, const std::string& text) { op().typeInto(box, text); } // with Enter
  void leaveTo(controls::Control& other) { op().focus(other); }
  void scroll(controls::ScrollBar& bar, int value) { op().scroll(bar, value); }
  void choose(controls::ComboBox& box, const std::string& entry) { op().choose(box, entry); }
  void option(controls::OptionButton& button) { op().option(button); }
  void menu(const std::string& path) { op().menu(path); } // "Controls/NMR Controls"
  bool key(int code, int shift = 0) { return op().key(op().keyWindow(), code, shift); }
  void close() { platform.windows().close(main()); }

  // What happened.
  host::Lines calls() const { return texts({Kind::Call}); }
  host::Lines boxes() const { return texts({Kind::Box}); }
  host::Lines texts(std::initializer_list<Kind> kinds) const { return transcript().texts(kinds); }
  headless::Transcript& transcript() const { return const_cast<Panel*>(this)->platform.transcript(); }
  void clear() {
    transcript().clear();
    beepsBefore_ = platform.dialogs().beeps();
  }
  void clearCalls() { clear(); }
  int beeps() { return platform.dialogs().beeps() - beepsBefore_; } // since the last clear
  // The host calls since the last clear are exactly these; clears.
  void expectCalls(std::initializer_list<host::Item> expected) { expectLines(host::flat(expected), calls()); }
  // Calls, boxes, beeps and statuses in order.
  void expectTranscript(std::initializer_list<host::Item> expected) {
    expectLines(host::flat(expected), texts({Kind::Call, Kind::Box, Kind::Beep, Kind::Status, Kind::Note}));
  }
  void expectBox(const std::string& text, Answer answer,
                 headless::ScriptedDialogs::WhileOpen whileOpen = {}) {
    platform.dialogs().expect(text, answer, std::move(whileOpen));
  }
  headless::RecordingCanvas& canvas() {
    return dynamic_cast<headless::RecordingCanvas&>(main().Picture1.canvas());
  }

 private:
  void expectLines(const host::Lines& expected, const host::Lines& actual) {
    EXPECT_EQ(headless::compareLines(expected, actual), "");
    clear();
  }
  std::unique_ptr<sim::Console> console_;
  std::unique_ptr<Program> program_;
  int beepsBefore_ = 0;
};

} // namespace support
