#include "win32/console/ConsoleOptions.h"
#include "base/NumberText.h"
#include "base/Text.h"
#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace win32 {

namespace {

struct Reader {
  std::string_view rest;
  ConsoleOptions& options;

  bool next(std::string& word) {
    const std::size_t start = std::min(rest.find_first_not_of(" \t"), rest.size());
    const std::size_t end = std::min(rest.find_first_of(" \t", start), rest.size());
    word = rest.substr(start, end - start);
    rest.remove_prefix(end);
    return !word.empty();
  }
  std::string text(const std::string& name) {
    std::string word;
    if (!next(word)) throw std::invalid_argument(name + " needs a value");
    return word;
  }
  double number(const std::string& name) {
    const std::string word = text(name);
    if (!base::isNumeric(word)) throw std::invalid_argument(name + " needs a number, not " + word);
    return base::toDouble(word);
  }
  void fault(const std::string& word) {
    if (word == "nodata")
      options.noData = true;
    else if (word == "refuse")
      options.refuse = true;
    else if (word.starts_with("slow=") && base::isNumeric(word.substr(5)))
      options.slowMs = static_cast<int>(base::toDouble(word.substr(5)));
    else
      throw std::invalid_argument("no such fault: " + word);
  }
  void take(const std::string& word) {
    if (word == "--seed")
      options.settings.seed = static_cast<std::uint64_t>(number(word));
    else if (word == "--solvent")
      options.settings.sample = sim::sampleOf(text(word));
    else if (word == "--offset")
      options.settings.lineField = number(word);
    else if (word == "--noise")
      options.settings.noise = number(word);
    else if (word == "--drift")
      options.settings.driftHzPerHour = number(word);
    else if (word == "--kicks")
      options.settings.kicksPerHour = number(word);
    else if (word == "--speed")
      options.speed = number(word);
    else if (base::equalIgnoringCase(word.substr(1), "Embedding"))
      return; // started by a client
    else if (word == "--quiet")
      options.quiet = true;
    else if (word == "--fault")
      fault(text(word));
    else if (word == "--die-after")
      options.dieAfter = static_cast<long long>(number(word));
    else if (word == "--help" || word == "/?")
      options.help = true;
    else
      throw std::invalid_argument("not understood: " + word);
  }
};

} // namespace

ConsoleOptions consoleOptions(const std::string& commandLine) {
  ConsoleOptions options;
  Reader reader{commandLine, options};
  std::string word;
  try {
    while (reader.next(word)) reader.take(word);
    if (!(options.speed > 0)) throw std::invalid_argument("--speed needs a number above 0");
  } catch (const std::exception& e) {
    options.problem = e.what();
  }
  return options;
}

std::string consoleUsage() {
  std::string names;
  for (const sim::Solvent& s : sim::solvents()) names += (names.empty() ? "" : ", ") + std::string(s.name);
  return "PelorinSim [options]\n\n"
         "--seed N\tthe same seed gives the same run\n"
         "--solvent NAME\t" +
         names +
         "\n"
         "--offset DAC\twhere the line sits\n"
         "--noise X\treceiver noise\n"
         "--drift HZ\tof the proton frequency, per hour\n"
         "--kicks N\tsudden field steps per hour\n"
         "--speed N\tsimulated seconds per second\n"
         "--quiet\t\tno window\n"
         "--fault nodata | refuse | slow=MS\n"
         "--die-after N\tthe process ends inside the N-th call\n\n"
         "/RegServer, /UnregServer\tregister the automation object, or remove it";
}

} // namespace win32
