// Message boxes, input boxes and file dialogs answered by a script. A box nobody expected, or one with
// another text, is a failure that shows the text.
#pragma once
#include "headless/HeadlessPump.h"
#include "headless/Transcript.h"
#include "ports/Dialogs.h"
#include <deque>
#include <functional>
#include <string>

namespace headless {

inline const std::string kAnyText = "*"; // matches every text

class ScriptedDialogs : public ports::Dialogs {
 public:
  using WhileOpen = std::function<void()>;

  ScriptedDialogs(HeadlessPump& pump, Transcript& transcript) : pump_(pump), transcript_(transcript) {}

  // The next box expected, after those expected already. whileOpen runs while the box is open, after one pump
  // turn.
  void expect(std::string text, ports::Answer answer, WhileOpen whileOpen = {});
  void expectInput(std::string prompt, std::string answer, WhileOpen whileOpen = {});
  void expectOpenFile(std::optional<std::string> path) { openFiles_.push_back(std::move(path)); }
  void expectSaveFile(std::optional<std::string> path) { saveFiles_.push_back(std::move(path)); }
  // Answers a box that nobody expected; without it such a box is a failure.
  std::function<std::optional<ports::Answer>(const std::string& text, ports::Buttons buttons)> otherwise;

  std::size_t stillExpected() const;
  int beeps() const { return beeps_; }
  const ports::FileDialog& lastFileDialog() const { return lastFileDialog_; }

  ports::Answer message(const std::string& text, const std::string& caption, ports::Buttons buttons,
                        ports::Icon icon) override;
  std::string input(const std::string& prompt, const std::string& caption,
                    const std::string& initial) override;
  std::optional<std::string> openFile(const ports::FileDialog& dialog) override;
  std::optional<std::string> saveFile(const ports::FileDialog& dialog) override;
  void beep() override;

 private:
  struct Box {
    std::string text;
    ports::Answer answer;
    WhileOpen whileOpen;
  };
  struct Input {
    std::string prompt, answer;
    WhileOpen whileOpen;
  };
  std::optional<std::string> chooseFile(const char* verb, const ports::FileDialog& dialog,
                                        std::deque<std::optional<std::string>>& choices);
  HeadlessPump& pump_;
  Transcript& transcript_;
  std::deque<Box> boxes_;
  std::deque<Input> inputs_;
  std::deque<std::optional<std::string>> openFiles_, saveFiles_;
  ports::FileDialog lastFileDialog_;
  int beeps_ = 0;
};

std::string answerText(ports::Answer answer);
// "box [caption] text (RetryCancel, Critical)" with CR LF shown as " / ".
std::string boxText(const std::string& text, const std::string& caption, ports::Buttons buttons,
                    ports::Icon icon);

} // namespace headless
