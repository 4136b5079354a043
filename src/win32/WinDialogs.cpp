#include "win32/WinDialogs.h"
#include <commdlg.h>

namespace win32 {

using ports::Answer;

namespace {

// Every window of the program waits for a box, not only the one that owns it.
class Others {
 public:
  explicit Others(HWND owner) : windows_(disableOthers(owner)) {}
  ~Others() { enableAgain(windows_); }
  Others(const Others&) = delete;
  Others& operator=(const Others&) = delete;

 private:
  std::vector<HWND> windows_;
};

UINT flags(ports::Buttons buttons, ports::Icon icon) {
  UINT style = MB_SETFOREGROUND | MB_TASKMODAL;
  style |= buttons == ports::Buttons::YesNo         ? MB_YESNO
           : buttons == ports::Buttons::RetryCancel ? MB_RETRYCANCEL
                                                    : MB_OK;
  style |= icon == ports::Icon::Exclamation ? MB_ICONEXCLAMATION
           : icon == ports::Icon::Critical  ? MB_ICONSTOP
                                            : 0U;
  return style;
}

enum class Purpose { Open, Save };

std::optional<std::string> chooseFile(HWND owner, const ports::FileDialog& dialog, Purpose purpose) {
  std::string filter = dialog.filter;
  filter.append(1, '\0').append(dialog.filter).append(2, '\0');
  char path[4096]{};
  lstrcpynA(path, dialog.defaultName.c_str(), sizeof(path));
  OPENFILENAMEA ask{};
  ask.lStructSize = sizeof(ask);
  ask.hwndOwner = owner;
  ask.lpstrFilter = filter.c_str();
  ask.lpstrFile = path;
  ask.nMaxFile = sizeof(path);
  ask.lpstrTitle = dialog.title.c_str();
  ask.Flags = OFN_PATHMUSTEXIST | (dialog.mustExist ? OFN_FILEMUSTEXIST : 0U) | OFN_NOCHANGEDIR |
              OFN_HIDEREADONLY | OFN_EXPLORER;
  Others others(owner);
  while (purpose == Purpose::Open ? GetOpenFileNameA(&ask) : GetSaveFileNameA(&ask)) {
    // The save dialog itself does not insist on an existing file.
    if (!dialog.mustExist || GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES) return std::string(path);
    MessageBoxA(owner, (std::string(path) + "\r\nFile not found.\r\nPlease choose an existing file.").c_str(),
                dialog.title.c_str(), MB_OK | MB_ICONEXCLAMATION);
  }
  return std::nullopt;
}

} // namespace

Answer WinDialogs::message(const std::string& text, const std::string& caption, ports::Buttons buttons,
                           ports::Icon icon) {
  HWND owner = windows_.activeWindow();
  Others others(owner);
  switch (MessageBoxA(owner, text.c_str(), caption.c_str(), flags(buttons, icon))) {
  case IDYES:
    return Answer::Yes;
  case IDNO:
    return Answer::No;
  case IDRETRY:
    return Answer::Retry;
  case IDOK:
    return Answer::Ok;
  default:
    return Answer::Cancel;
  }
}

std::string WinDialogs::input(const std::string& prompt, const std::string& caption,
                              const std::string& initial) {
  HWND owner = windows_.activeWindow();
  Others others(owner);
  return inputBox(owner, prompt, caption, initial);
}

std::optional<std::string> WinDialogs::openFile(const ports::FileDialog& dialog) {
  return chooseFile(windows_.activeWindow(), dialog, Purpose::Open);
}

std::optional<std::string> WinDialogs::saveFile(const ports::FileDialog& dialog) {
  return chooseFile(windows_.activeWindow(), dialog, Purpose::Save);
}

} // namespace win32
