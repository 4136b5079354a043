// Runs the lock panel from a script of operator gestures, one command a line, and writes a transcript of what
// the program did, with virtual time in front. The host is the simulated console, or a silent one with fixed
// data words.
#pragma once
#include "core/Program.h"
#include "headless/HeadlessPlatform.h"
#include "headless/Operator.h"
#include "headless/SimulatedHost.h"
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace headless {

struct ScriptOptions {
  std::string settings; // text of the settings file
  sim::Settings console;
  bool physics = true; // false: fixed data words
  std::string commandLine;
};

class Script {
 public:
  Script(const ScriptOptions& options, std::ostream& out);
  ~Script();

  // 0: every command was carried out. 1: one failed; the message, with the script's name, line and word, is
  // in error().
  int run(std::istream& script, const std::string& name);
  const std::string& error() const { return error_; }
  static const char* commandHelp(); // the commands, one line each

 private:
  struct Line {
    int number;
    std::vector<std::string> words;
  };
  struct Command;
  static const Command kCommands[];

  void read(std::istream& script);
  bool executeNext(); // false: no line is left
  void execute(const Line& line);
  void start();
  void write(const Transcript::Line& line);
  void print(const std::string& text);
  void pass(Micros time);
  [[noreturn]] void fail(std::size_t word, const std::string& why) const;
  const std::string& word(std::size_t index, const char* what) const;
  std::string rest(std::size_t from) const; // the words from there on
  double number(std::size_t index, const char* what) const;
  Micros time(std::size_t index) const;
  controls::Form& window(std::size_t index); // the named one, or the main window
  Operator op() { return {program_->desktop, platform_.windows()}; }
  std::string status();

  // The commands.
  void doStart();
  void doPress();
  void doWait();
  void doUntil();
  void doExpect();
  void doType();
  void doScroll();
  void doChoose();
  void doOption();
  void doMenu();
  void doPopup();
  void doMouse();
  void doKey();
  void doAnswer();
  void doInput();
  void doFile();
  void doWindow();
  void doResize();
  void doSystem();
  void doPlot();
  void doShow();
  void doCalls();
  void doHost();
  void doKick();
  void doSample();
  void doWord();
  void doSettings();
  void doEcho();

  ScriptOptions options_;
  std::ostream& out_;
  HeadlessPlatform platform_;
  std::unique_ptr<sim::Console> console_;
  std::unique_ptr<Program> program_;
  std::vector<Line> lines_;
  std::size_t next_ = 0;
  const Line* current_ = nullptr;
  int modal_ = 0;
  bool ended_ = false, started_ = false;
  enum class Calls { None, Commands, All } calls_ = Calls::None;
  std::string lastFlag_; // the locked flag is sent each tick: only its changes are shown
  std::string name_, error_;
};

} // namespace headless
