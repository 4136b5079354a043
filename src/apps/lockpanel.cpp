// The lock panel without a window system: a script of operator gestures in, a transcript out.
#include "headless/Script.h"
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

#include "DefaultSettings.h"

namespace {

const char* const kUsage = R"(lockpanel [options] [SCRIPT]
Runs the lock panel against the simulated console, on virtual time, without any window. The operator's gestures come
from the script (standard input without one); what the program does is written with the time in seconds in front.
  --settings FILE   settings file to start with; it is only read (default: the settings the panel is delivered with)
  --solvent NAME    sample in the simulated magnet (default CDCl3)
  --offset DAC      where the sample's line lies on the field axis (default 1200)
  --seed N          another run of noise and disturbances (default 1)
  --no-physics      a host with fixed data words in place of the simulated console
  --help            this text
The exit code is 0 when every command was carried out, 1 when one failed, 2 for wrong options.
)";

struct Arguments {
  headless::ScriptOptions options;
  std::string script; // empty: standard input
};

int wrong(const std::string& why) {
  std::cerr << "lockpanel: " << why << "\nTry lockpanel --help.\n";
  return 2;
}

bool wholeNumber(const std::string& text, double& value) {
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == '\0' && value > -1e9 && value < 1e9;
}

// 0: go on. Otherwise what the program returns, plus 1.
int parse(int count, char** words, Arguments& arguments) {
  headless::ScriptOptions& options = arguments.options;
  options.settings = kDefaultSettings;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--help") {
      std::cout << kUsage << '\n' << headless::Script::commandHelp();
      return 1;
    }
    if (word == "--no-physics") {
      options.physics = false;
      continue;
    }
    if (!word.starts_with("--")) {
      if (!arguments.script.empty()) return 1 + wrong("two scripts: " + arguments.script + " and " + word);
      arguments.script = word;
      continue;
    }
    if (word != "--settings" && word != "--solvent" && word != "--offset" && word != "--seed")
      return 1 + wrong("unknown option " + word);
    if (++i == count) return 1 + wrong(word + " needs a value");
    const std::string value = words[i];
    double number = 0;
    if (word == "--settings") {
      std::ifstream file(value, std::ios::binary);
      if (!file) return 1 + wrong("cannot read " + value);
      options.settings.assign(std::istreambuf_iterator<char>(file), {});
    } else if (word == "--solvent") {
      try {
        options.console.sample = sim::sampleOf(value);
      } catch (const std::out_of_range&) {
        return 1 + wrong("the simulated console has no sample " + value);
      }
    } else if (!wholeNumber(value, number)) {
      return 1 + wrong(word + " " + value + " is no number");
    } else if (word == "--offset") {
      options.console.lineField = number;
    } else {
      options.console.seed = static_cast<std::uint64_t>(static_cast<std::int64_t>(number));
    }
  }
  return 0;
}

} // namespace

int main(int count, char** words) {
  Arguments arguments;
  if (const int code = parse(count, words, arguments)) return code - 1;
  headless::Script script(arguments.options, std::cout);
  int code = 0;
  if (arguments.script.empty()) {
    code = script.run(std::cin, "standard input");
  } else {
    std::ifstream file(arguments.script);
    if (!file) return wrong("cannot read " + arguments.script);
    code = script.run(file, arguments.script);
  }
  std::cout.flush();
  if (!script.error().empty()) std::cerr << "lockpanel: " << script.error() << '\n';
  return code;
}
