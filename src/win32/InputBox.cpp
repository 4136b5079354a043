#include "win32/ControlPeer.h"
#include "win32/WideText.h"
#include "win32/WinDialogs.h"
#include <vector>

namespace win32 {

namespace {

enum : WORD { kPrompt = 100, kText = 101 };

// A dialog template in memory: sizes in dialog units, which follow the system font and the monitor's density.
class Template {
 public:
  explicit Template(short width, short height) {
    const DWORD style =
        DS_SETFONT | DS_FIXEDSYS | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    add32(style);
    add32(0);
    add16(0); // the number of controls, counted below
    for (int v : {0, 0, static_cast<int>(width), static_cast<int>(height)}) add16(static_cast<WORD>(v));
    add16(0); // no menu
    add16(0); // the ordinary class
    add16(0); // the caption comes later
    add16(8);
    text(L"MS Shell Dlg");
  }
  void control(WORD windowClass, const std::wstring& caption, DWORD style, int x, int y, int cx, int cy,
               WORD id) {
    if (words_.size() % 2) add16(0);
    add32(style | WS_CHILD | WS_VISIBLE);
    add32(windowClass == 0x0081 ? WS_EX_CLIENTEDGE : 0U);
    for (int v : {x, y, cx, cy}) add16(static_cast<WORD>(v));
    add16(id);
    add16(0xFFFF);
    add16(windowClass);
    text(caption);
    add16(0);
    ++words_[4];
  }
  const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  void add16(WORD v) { words_.push_back(v); }
  void add32(DWORD v) {
    add16(LOWORD(v));
    add16(HIWORD(v));
  }
  void text(const std::wstring& t) {
    words_.insert(words_.end(), t.begin(), t.end());
    add16(0);
  }
  std::vector<WORD> words_;
};

struct Question {
  const std::string &caption, &initial;
  std::string answer;
};

INT_PTR CALLBACK dialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    const auto& question = *reinterpret_cast<Question*>(lParam);
    SetWindowLongPtrA(dialog, DWLP_USER, lParam);
    SetWindowTextA(dialog, question.caption.c_str());
    SetDlgItemTextA(dialog, kText, question.initial.c_str());
    SendDlgItemMessageA(dialog, kText, EM_SETSEL, 0, -1);
    SetFocus(GetDlgItem(dialog, kText));
    return FALSE;
  }
  if (message != WM_COMMAND) return FALSE;
  if (LOWORD(wParam) == IDOK)
    reinterpret_cast<Question*>(GetWindowLongPtrA(dialog, DWLP_USER))->answer =
        windowText(GetDlgItem(dialog, kText));
  if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) EndDialog(dialog, LOWORD(wParam));
  return TRUE;
}

} // namespace

std::string inputBox(HWND owner, const std::string& prompt, const std::string& caption,
                     const std::string& initial) {
  constexpr WORD kButtonClass = 0x0080, kEditClass = 0x0081, kStaticClass = 0x0082;
  Template shape(220, 70);
  shape.control(kStaticClass, wideText(prompt), SS_LEFT, 7, 7, 206, 16, kPrompt);
  shape.control(kEditClass, L"", WS_TABSTOP | ES_AUTOHSCROLL, 7, 26, 206, 14, kText);
  shape.control(kButtonClass, L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, 109, 49, 50, 14, IDOK);
  shape.control(kButtonClass, L"Cancel", WS_TABSTOP | BS_PUSHBUTTON, 163, 49, 50, 14, IDCANCEL);
  Question question{caption, initial, {}};
  DialogBoxIndirectParamA(GetModuleHandleA(nullptr), shape.get(), owner, dialogProc,
                          reinterpret_cast<LPARAM>(&question));
  return question.answer;
}

} // namespace win32
