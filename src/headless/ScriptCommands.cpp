#include "base/Text.h"
#include "headless/Errors.h"
#include "headless/Png.h"
#include "headless/Script.h"
#include "ui/main/frmLock.h"
#include <cmath>

namespace headless {

enum class Needs { Nothing, Program };

struct Script::Command {
  const char* name;
  void (Script::*run)();
  Needs needs;
};

const Script::Command Script::kCommands[] = {
    {"start", &Script::doStart, Needs::Nothing},     {"press", &Script::doPress, Needs::Program},
    {"wait", &Script::doWait, Needs::Program},       {"until", &Script::doUntil, Needs::Program},
    {"expect", &Script::doExpect, Needs::Program},   {"type", &Script::doType, Needs::Program},
    {"scroll", &Script::doScroll, Needs::Program},   {"choose", &Script::doChoose, Needs::Program},
    {"option", &Script::doOption, Needs::Program},   {"menu", &Script::doMenu, Needs::Program},
    {"popup", &Script::doPopup, Needs::Nothing},     {"mouse", &Script::doMouse, Needs::Program},
    {"key", &Script::doKey, Needs::Program},         {"answer", &Script::doAnswer, Needs::Nothing},
    {"input", &Script::doInput, Needs::Nothing},     {"file", &Script::doFile, Needs::Nothing},
    {"minimise", &Script::doWindow, Needs::Program}, {"maximise", &Script::doWindow, Needs::Program},
    {"restore", &Script::doWindow, Needs::Program},  {"close", &Script::doWindow, Needs::Program},
    {"resize", &Script::doResize, Needs::Program},   {"system", &Script::doSystem, Needs::Program},
    {"plot", &Script::doPlot, Needs::Program},       {"show", &Script::doShow, Needs::Program},
    {"calls", &Script::doCalls, Needs::Nothing},     {"host", &Script::doHost, Needs::Nothing},
    {"kick", &Script::doKick, Needs::Nothing},       {"sample", &Script::doSample, Needs::Nothing},
    {"word", &Script::doWord, Needs::Nothing},       {"settings", &Script::doSettings, Needs::Nothing},
    {"echo", &Script::doEcho, Needs::Nothing}};

const char* Script::commandHelp() {
  return
      R"(Commands, one a line; "quoted text" is one word, # begins a comment. The panel starts at the first command that
needs it. A control is named as txtCenter, frmControls.vsTxPwr or optBW(1).
  start [WORDS]             start the panel now, with these words as its command line
  press BUTTON              a mode button (Off Lock Sweep Hold Auto Phase) or another push button
  type BOX TEXT             replace a box's text and press Enter
  scroll BAR VALUE          drag a scroll bar's thumb to a value and let go
  choose LIST ENTRY         choose an entry of a list
  option NAME [INDEX]       choose an option button, as in: option optBW 1
  menu PATH                 choose a menu item, as in: menu Commands/Reload Lock Params
  popup ENTRY               the choice of the next pop-up menu; give it before the mouse command that opens it
  mouse PICTURE BUTTON X Y  click (left, right) at a fraction of the picture's width and height, 0 to 1
  key NAME [shift] [ctrl]   press and let go a key: Up PageDown Escape Tab A F5 or a key code
  answer BUTTON             the answer to the next message box (Ok Yes No Retry Cancel); give it before it comes
  input TEXT                the answer to the next input box
  file open|save PATH       the choice in the next file dialog, or the word cancel
  minimise, maximise, restore, close [WINDOW]    the main window, or the named one
  resize WIDTH HEIGHT [WINDOW]                   in twips, 15 to the pixel
  system ENTRY [WINDOW]     choose an item of the window's system menu
  wait TIME                 let time pass: 500ms 2s 3m 1h
  until TEXT TIME           wait until the status line contains the text; fails when the time is over
  expect status|CONTROL TEXT                     fail when the text or value is another one
  show status|CONTROL       write the text or value
  plot FILE                 write the plot as a PNG picture
  calls on|off|all          show host calls; on leaves out the data words and the unchanged locked flag
  host missing|running|gone|back, host delay TIME    faults of the host
  kick DAC, sample SOLVENT  what happens to the simulated console
  word INDEX VALUE          a data word of the host without physics
  settings [FILE]           write the settings file as it stands now, to the transcript or to a file
  echo TEXT                 write a text
)";
}

void Script::execute(const Line& line) {
  for (const Command& command : kCommands) {
    if (line.words[0] != command.name) continue;
    if (ended_) throw Failure("the program has ended");
    if (command.needs == Needs::Program) start();
    return (this->*command.run)();
  }
  fail(0, "is no command");
}

void Script::doStart() {
  if (started_) throw Failure("the panel runs already");
  if (current_->words.size() > 1) platform_.command = rest(1);
  start();
}

void Script::doPress() {
  op().press(word(1, "a button"));
  pass(0);
}

void Script::doWait() { pass(time(1)); }

void Script::doUntil() {
  const std::string& text = word(1, "a status text");
  const Micros end = platform_.clock().micros() + time(2);
  while (status().find(text) == std::string::npos) {
    if (platform_.clock().micros() >= end || ended_)
      fail(1, "did not come; the status is \"" + status() + "\"");
    pass(10 * kMillisecond);
  }
}

namespace {

std::string shownText(const controls::Control& control) {
  if (const auto* box = dynamic_cast<const controls::TextBox*>(&control)) return box->text();
  if (const auto* label = dynamic_cast<const controls::Label*>(&control)) return label->caption();
  if (const auto* list = dynamic_cast<const controls::ComboBox*>(&control)) return list->text();
  if (const auto* bar = dynamic_cast<const controls::ScrollBar*>(&control))
    return std::to_string(bar->value());
  if (const auto* upDown = dynamic_cast<const controls::UpDown*>(&control))
    return std::to_string(upDown->value());
  if (const auto* option = dynamic_cast<const controls::OptionButton*>(&control))
    return option->value() ? "1" : "0";
  if (const auto* toolbar = dynamic_cast<const controls::Toolbar*>(&control))
    return toolbar->pressed() > 0 ? toolbar->item(toolbar->pressed()).key : "";
  if (const auto* status = dynamic_cast<const controls::StatusBar*>(&control)) {
    std::string text;
    for (int panel = 1; panel <= status->panels(); ++panel)
      text += (panel > 1 ? " | " : "") + status->text(panel);
    return text;
  }
  return "";
}

} // namespace

void Script::doExpect() {
  const std::string& what = word(1, "status or a control");
  const std::string& wanted = word(2, "the expected text");
  const std::string shown = what == "status" ? status() : shownText(op().control(what));
  if (shown != wanted) fail(2, "was expected, but " + what + " shows \"" + shown + "\"");
}

void Script::doShow() {
  const std::string& what = word(1, "status or a control");
  print(what + " = " + (what == "status" ? status() : shownText(op().control(what))));
}

void Script::doType() {
  op().typeInto(op().find<controls::TextBox>(word(1, "a text box")), word(2, "a text"));
  pass(0);
}

void Script::doScroll() {
  auto& bar = op().find<controls::ScrollBar>(word(1, "a scroll bar"));
  const double value = number(2, "a value");
  if (value != std::floor(value) || std::fabs(value) > 1e9) fail(2, "is no whole number");
  op().scroll(bar, static_cast<int>(value));
  pass(0);
}

void Script::doChoose() {
  op().choose(op().find<controls::ComboBox>(word(1, "a list")), word(2, "an entry"));
  pass(0);
}

void Script::doOption() {
  std::string name = word(1, "an option button");
  if (current_->words.size() > 2) name += "(" + std::to_string(static_cast<int>(number(2, "an index"))) + ")";
  op().option(op().find<controls::OptionButton>(name));
  pass(0);
}

void Script::doMenu() {
  op().menu(rest(1));
  if (!ended_) pass(0);
}

void Script::doPopup() { platform_.windows().choosePopup(word(1, "a menu entry")); }

void Script::doMouse() {
  auto& picture = op().find<controls::PictureBox>(word(1, "a picture"));
  const std::string& button = word(2, "left or right");
  if (button != "left" && button != "right") fail(2, "is neither left nor right");
  const double x = number(3, "x"), y = number(4, "y");
  if (x < 0 || x > 1) fail(3, "lies outside the picture");
  if (y < 0 || y > 1) fail(4, "lies outside the picture");
  picture.mouseDown(button == "left" ? controls::MouseButton::Left : controls::MouseButton::Right, 0,
                    static_cast<float>(x) * picture.width(), static_cast<float>(y) * picture.height());
  pass(0);
}

void Script::doKey() {
  const int code = keyCode(word(1, "a key"));
  if (code == 0) fail(1, "is no key");
  int shift = 0;
  for (std::size_t i = 2; i < current_->words.size(); ++i) {
    if (current_->words[i] == "shift")
      shift |= keys::Shift;
    else if (current_->words[i] == "ctrl")
      shift |= keys::Ctrl;
    else
      fail(i, "is neither shift nor ctrl");
  }
  op().key(op().keyWindow(), code, shift);
  pass(0);
}

void Script::doAnswer() {
  const std::string& button = word(1, "Ok, Yes, No, Retry or Cancel");
  for (const auto answer : {ports::Answer::Ok, ports::Answer::Yes, ports::Answer::No, ports::Answer::Retry,
                            ports::Answer::Cancel})
    if (base::equalIgnoringCase(button, answerText(answer)))
      return platform_.dialogs().expect(kAnyText, answer);
  fail(1, "is no button of a message box");
}

void Script::doInput() { platform_.dialogs().expectInput(kAnyText, rest(1)); }

void Script::doFile() {
  const std::string& dialog = word(1, "open or save");
  const std::string& path = word(2, "a path or cancel");
  const auto choice = path == "cancel" ? std::nullopt : std::optional(path);
  if (dialog == "open")
    platform_.dialogs().expectOpenFile(choice);
  else if (dialog == "save")
    platform_.dialogs().expectSaveFile(choice);
  else
    fail(1, "is neither open nor save");
}

void Script::doWindow() {
  controls::Form& form = window(1);
  HeadlessWindows& windows = platform_.windows();
  const std::string& what = current_->words[0];
  if (what == "minimise") windows.minimise(form);
  if (what == "maximise") windows.maximise(form);
  if (what == "restore") windows.restore(form);
  if (what == "close") windows.close(form);
  pass(0);
}

void Script::doResize() {
  const double width = number(1, "a width"), height = number(2, "a height");
  platform_.windows().resize(window(3), static_cast<float>(width), static_cast<float>(height));
  pass(0);
}

void Script::doSystem() {
  const std::string wanted = base::replaceAll(word(1, "an entry"), "&", "");
  controls::Form& form = window(2);
  for (const SystemItem& item : platform_.windows().systemMenu(form)) {
    if (base::replaceAll(item.text, "&", "") != wanted) continue;
    platform_.windows().systemMenuChoose(form, item.id);
    return pass(0);
  }
  fail(1, "is not in the system menu");
}

void Script::doPlot() {
  const std::string& path = word(1, "a file name");
  const std::string why = writeFile(path, picturePng(program_->frmLock->Picture1));
  if (!why.empty()) fail(1, "cannot be written: " + why);
  print("plot written to " + path);
}

void Script::doCalls() {
  const std::string& which = word(1, "on, off or all");
  if (which != "on" && which != "off" && which != "all") fail(1, "is not on, off or all");
  calls_ = which == "off" ? Calls::None : which == "on" ? Calls::Commands : Calls::All;
  lastFlag_.clear();
  platform_.transcript().want(Transcript::Kind::Call, calls_ != Calls::None);
}

void Script::doHost() {
  const std::string& what = word(1, "missing, running, gone, back or delay");
  if (what == "missing" || what == "running")
    platform_.hostFinder().hostRuns = what == "running";
  else if (what == "gone")
    platform_.host().failAll();
  else if (what == "back")
    platform_.host().failNever();
  else if (what == "delay")
    platform_.host().delay = time(2);
  else
    fail(1, "is not missing, running, gone, back or delay");
}

void Script::doKick() {
  if (!console_) throw Failure("there is no simulated console");
  console_->kick(number(1, "DAC units"));
}

void Script::doSample() {
  if (!console_) throw Failure("there is no simulated console");
  try {
    console_->setSample(sim::sampleOf(word(1, "a solvent")));
  } catch (const std::out_of_range&) {
    fail(1, "is no solvent the console has");
  }
}

void Script::doWord() {
  if (console_) throw Failure("the simulated console makes its own words");
  const double index = number(1, "an index");
  if (index != std::floor(index) || index < 0 || index > 8) fail(1, "is no index from 0 to 8");
  platform_.host().words[static_cast<std::size_t>(index)] = number(2, "a value");
}

void Script::doSettings() {
  const std::string& text = platform_.memorySettings().text(HeadlessPlatform::kIniPath);
  if (current_->words.size() < 2) return print("settings\n" + text);
  const std::string why = writeFile(current_->words[1], text);
  if (!why.empty()) fail(1, "cannot be written: " + why);
  print("settings written to " + current_->words[1]);
}

void Script::doEcho() { print(rest(1)); }

} // namespace headless
