#include "headless/Script.h"
#include "core/vbLock_mod.h"
#include "headless/Errors.h"
#include "headless/IdleLoop.h"
#include "ui/main/frmLock.h"
#include <cstdio>
#include <istream>
#include <ostream>

namespace headless {
namespace {

// Words parted by blanks; a "quoted text" is one word. '#' begins a comment.
bool split(const std::string& line, std::vector<std::string>& words) {
  for (std::size_t i = 0; i < line.size();) {
    if (line[i] == ' ' || line[i] == '\t' || line[i] == '\r') {
      ++i;
    } else if (line[i] == '#') {
      return true;
    } else if (line[i] == '"') {
      const std::size_t end = line.find('"', i + 1);
      if (end == std::string::npos) return false;
      words.push_back(line.substr(i + 1, end - i - 1));
      i = end + 1;
    } else {
      const std::size_t end = line.find_first_of(" \t\r", i);
      words.push_back(line.substr(i, end - i));
      i = end == std::string::npos ? line.size() : end;
    }
  }
  return true;
}

} // namespace

Script::Script(const ScriptOptions& options, std::ostream& out) : options_(options), out_(out) {
  platform_.command = options.commandLine;
  platform_.memorySettings().text(HeadlessPlatform::kIniPath) = options.settings;
  platform_.windows().setDrawing(Drawing::Pixels);
  platform_.windows().whileModal = [this] {
    ++modal_;
    struct Done {
      int& depth;
      ~Done() { --depth; }
    } done{modal_};
    return executeNext();
  };
  platform_.transcript().listener = [this](const Transcript::Line& line) { write(line); };
  platform_.transcript().want(Transcript::Kind::Call, false);
  platform_.transcript().want(Transcript::Kind::Window, true);
  platform_.recordStatus();
  if (options.physics) {
    console_ = std::make_unique<sim::Console>(options.console);
    connectConsole(platform_.host(), platform_.clock(), *console_);
  } else {
    platform_.host().words = {0, 500, 0, 1000, 0, 0, 4, 0, 0};
  }
}

Script::~Script() { platform_.transcript().listener = nullptr; }

void Script::print(const std::string& text) {
  char stamp[32];
  std::snprintf(stamp, sizeof stamp, "%10.3f  ", static_cast<double>(platform_.clock().micros()) / kSecond);
  out_ << stamp << text << '\n';
}

void Script::write(const Transcript::Line& line) {
  if (line.kind == Transcript::Kind::Call && calls_ == Calls::Commands) {
    if (line.text.starts_with("201 ")) return;
    if (line.text.starts_with("22 ")) {
      if (line.text == lastFlag_) return;
      lastFlag_ = line.text;
    }
  }
  print(line.text);
}

int Script::run(std::istream& script, const std::string& name) {
  name_ = name;
  try {
    read(script);
    while (executeNext()) {
    }
    if (!started_ && !ended_) start(); // an empty script starts the panel
    if (platform_.dialogs().stillExpected() > 0)
      throw Failure(name_ + ": an answer was given to a box that never came");
  } catch (const Failure& failure) {
    error_ = failure.what();
  }
  platform_.transcript().listener = nullptr;
  program_.reset();
  return error_.empty() ? 0 : 1;
}

void Script::read(std::istream& script) {
  std::string text;
  for (int number = 1; std::getline(script, text); ++number) {
    Line line{number, {}};
    if (!split(text, line.words))
      throw Failure(name_ + ":" + std::to_string(number) + ": a quoted text does not end: " + text);
    if (!line.words.empty()) lines_.push_back(std::move(line));
  }
}

bool Script::executeNext() {
  if (next_ >= lines_.size()) return false;
  const Line& line = lines_[next_++];
  const Line* const outer = std::exchange(current_, &line);
  const std::string place = name_ + ":" + std::to_string(line.number) + ": ";
  try {
    execute(line);
  } catch (const Ended&) {
    ended_ = true;
    if (modal_ > 0) throw;
  } catch (const Failure& failure) {
    const std::string why = failure.what();
    throw Failure(why.starts_with(name_ + ":") ? why : place + line.words[0] + ": " + why);
  } catch (const base::RuntimeError& error) {
    throw Failure(place + line.words[0] + ": " + error.message());
  }
  current_ = outer;
  return true;
}

void Script::start() {
  if (ended_) throw Failure("the program has ended");
  if (started_) return;
  started_ = true;
  program_ = std::make_unique<Program>(platform_);
  vbLock_mod::startUp(*program_);
  pass(0);
}

void Script::pass(Micros time) {
  if (modal_ == 0) {
    if (!runIdleLoop(*program_, platform_, time)) ended_ = true;
    return;
  }
  // A modal window is open: the program turns its own pump, its idle loop stands.
  const Micros end = platform_.clock().micros() + time;
  for (;;) {
    platform_.pump().doEvents();
    const Micros left = end - platform_.clock().micros();
    if (left <= 0) return;
    const Micros next = platform_.pump().nextDue();
    platform_.clock().advance(std::min(left, std::max<Micros>(next - platform_.clock().micros(), 0)));
  }
}

void Script::fail(std::size_t word, const std::string& why) const {
  std::string place = name_ + ":" + std::to_string(current_->number) + ": " + current_->words[0] + ": ";
  if (word < current_->words.size()) place += '"' + current_->words[word] + "\" ";
  throw Failure(place + why);
}

const std::string& Script::word(std::size_t index, const char* what) const {
  if (index >= current_->words.size()) fail(index, std::string(what) + " is missing");
  return current_->words[index];
}

std::string Script::rest(std::size_t from) const {
  std::string text;
  for (std::size_t i = from; i < current_->words.size(); ++i)
    text += (i > from ? " " : "") + current_->words[i];
  return text;
}

double Script::number(std::size_t index, const char* what) const {
  const std::string& text = word(index, what);
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (end == text.c_str() || *end != '\0' || !(value > -1e12 && value < 1e12)) fail(index, "is no number");
  return value;
}

Micros Script::time(std::size_t index) const {
  const std::string& text = word(index, "a time such as 2s, 500ms or 3m");
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  const std::string unit = end;
  double scale = 0;
  if (unit == "ms") scale = kMillisecond;
  if (unit == "s") scale = kSecond;
  if (unit == "m") scale = 60.0 * kSecond;
  if (unit == "h") scale = 3600.0 * kSecond;
  if (end == text.c_str() || scale == 0 || !(value >= 0 && value <= 1e6))
    fail(index, "is no time such as 2s, 500ms or 3m");
  return static_cast<Micros>(value * scale);
}

controls::Form& Script::window(std::size_t index) {
  return index < current_->words.size() ? op().form(current_->words[index]) : program_->frmLock.get();
}

std::string Script::status() { return program_->frmLock->StatusBar1.text(4); }

} // namespace headless
