// Modal boxes and the beep. Every box pumps: handlers, ticks and client calls may run inside.
#pragma once
#include <optional>
#include <string>

namespace ports {

enum class Buttons { Ok, YesNo, RetryCancel };
enum class Icon { None, Exclamation, Critical };
enum class Answer { Ok, Yes, No, Retry, Cancel };

struct FileDialog {
  std::string title, defaultName, filter; // filter: a pattern such as "*.ini"
  bool mustExist = false;                 // path and file must both exist
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual Answer message(const std::string& text, const std::string& caption, Buttons buttons, Icon icon) = 0;
  virtual std::string input(const std::string& prompt, const std::string& caption,
                            const std::string& initial) = 0;
  virtual std::optional<std::string> openFile(const FileDialog& dialog) = 0; // nothing when cancelled
  virtual std::optional<std::string> saveFile(const FileDialog& dialog) = 0;
  virtual void beep() = 0;
};

} // namespace ports
