#include "headless/ScriptedDialogs.h"
#include "base/Text.h"
#include "headless/Errors.h"

namespace headless {

using ports::Answer;
using ports::Buttons;
using ports::Icon;

std::string answerText(Answer answer) {
  switch (answer) {
  case Answer::Ok:
    return "Ok";
  case Answer::Yes:
    return "Yes";
  case Answer::No:
    return "No";
  case Answer::Retry:
    return "Retry";
  case Answer::Cancel:
    return "Cancel";
  }
  return "?";
}

namespace {

std::string buttonsText(Buttons buttons) {
  switch (buttons) {
  case Buttons::Ok:
    return "Ok";
  case Buttons::YesNo:
    return "YesNo";
  case Buttons::RetryCancel:
    return "RetryCancel";
  }
  return "?";
}

std::string iconText(Icon icon) {
  switch (icon) {
  case Icon::None:
    return "";
  case Icon::Exclamation:
    return ", Exclamation";
  case Icon::Critical:
    return ", Critical";
  }
  return "?";
}

bool offers(Buttons buttons, Answer answer) {
  switch (buttons) {
  case Buttons::Ok:
    return answer == Answer::Ok;
  case Buttons::YesNo:
    return answer == Answer::Yes || answer == Answer::No;
  case Buttons::RetryCancel:
    return answer == Answer::Retry || answer == Answer::Cancel;
  }
  return false;
}

std::string oneLine(const std::string& text) { return base::replaceAll(text, "\r\n", " / "); }

} // namespace

std::string boxText(const std::string& text, const std::string& caption, Buttons buttons, Icon icon) {
  return "box [" + caption + "] " + oneLine(text) + " (" + buttonsText(buttons) + iconText(icon) + ")";
}

void ScriptedDialogs::expect(std::string text, Answer answer, WhileOpen whileOpen) {
  boxes_.push_back({std::move(text), answer, std::move(whileOpen)});
}

void ScriptedDialogs::expectInput(std::string prompt, std::string answer, WhileOpen whileOpen) {
  inputs_.push_back({std::move(prompt), std::move(answer), std::move(whileOpen)});
}

std::size_t ScriptedDialogs::stillExpected() const {
  return boxes_.size() + inputs_.size() + openFiles_.size() + saveFiles_.size();
}

Answer ScriptedDialogs::message(const std::string& text, const std::string& caption, Buttons buttons,
                                Icon icon) {
  const std::string shown = boxText(text, caption, buttons, icon);
  Answer answer = Answer::Ok;
  WhileOpen whileOpen;
  if (!boxes_.empty()) {
    const Box box = std::move(boxes_.front());
    boxes_.pop_front();
    if (box.text != kAnyText && box.text != text)
      throw UnexpectedBox("expected the box \"" + oneLine(box.text) + "\" but got: " + shown);
    answer = box.answer;
    whileOpen = box.whileOpen;
  } else {
    const auto other = otherwise ? otherwise(text, buttons) : std::nullopt;
    if (!other) throw UnexpectedBox("unexpected " + shown);
    answer = *other;
  }
  if (!offers(buttons, answer)) throw UnexpectedBox("no button " + answerText(answer) + " in: " + shown);
  transcript_.add(Transcript::Kind::Box, shown + " -> " + answerText(answer));
  pump_.doEvents();
  if (whileOpen) whileOpen();
  return answer;
}

std::string ScriptedDialogs::input(const std::string& prompt, const std::string& caption,
                                   const std::string& initial) {
  const std::string shown = "input [" + caption + "] " + oneLine(prompt) + " \"" + initial + "\"";
  if (inputs_.empty()) throw UnexpectedBox("unexpected " + shown);
  const Input input = std::move(inputs_.front());
  inputs_.pop_front();
  if (input.prompt != kAnyText && input.prompt != prompt)
    throw UnexpectedBox("expected the input box \"" + input.prompt + "\" but got: " + shown);
  transcript_.add(Transcript::Kind::Box, shown + " -> \"" + input.answer + "\"");
  pump_.doEvents();
  if (input.whileOpen) input.whileOpen();
  return input.answer;
}

std::optional<std::string> ScriptedDialogs::chooseFile(const char* verb, const ports::FileDialog& dialog,
                                                       std::deque<std::optional<std::string>>& choices) {
  lastFileDialog_ = dialog;
  const std::string shown = std::string(verb) + " [" + dialog.title + "] \"" + dialog.defaultName + "\" " +
                            dialog.filter + (dialog.mustExist ? " (must exist)" : "");
  if (choices.empty()) throw UnexpectedBox("unexpected " + shown);
  std::optional<std::string> choice = std::move(choices.front());
  choices.pop_front();
  transcript_.add(Transcript::Kind::Box,
                  shown + " -> " + (choice ? '"' + *choice + '"' : std::string("Cancel")));
  pump_.doEvents();
  return choice;
}

std::optional<std::string> ScriptedDialogs::openFile(const ports::FileDialog& dialog) {
  return chooseFile("open file", dialog, openFiles_);
}

std::optional<std::string> ScriptedDialogs::saveFile(const ports::FileDialog& dialog) {
  return chooseFile("save file", dialog, saveFiles_);
}

void ScriptedDialogs::beep() {
  ++beeps_;
  transcript_.add(Transcript::Kind::Beep, "beep");
}

} // namespace headless
