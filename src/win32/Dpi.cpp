#include "win32/Dpi.h"
#include <string>

namespace win32 {

RECT toPixels(const controls::Rect& r, int dpi) {
  return {toPixels(r.left, dpi), toPixels(r.top, dpi), toPixels(r.left + r.width, dpi),
          toPixels(r.top + r.height, dpi)};
}

int systemDpi() {
  static const int dpi = [] {
    if (auto ask = systemFunction<UINT(WINAPI*)()>("user32", "GetDpiForSystem"))
      return static_cast<int>(ask());
    HDC screen = GetDC(nullptr);
    const int value = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return value;
  }();
  return dpi;
}

int dpiOf(HWND window) {
  static const auto ask = systemFunction<UINT(WINAPI*)(HWND)>("user32", "GetDpiForWindow");
  const int dpi = ask ? static_cast<int>(ask(window)) : 0;
  return dpi > 0 ? dpi : systemDpi();
}

SIZE outerPixels(SIZE inner, DWORD style, DWORD exStyle, bool menu, int dpi) {
  static const auto adjust =
      systemFunction<BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT)>("user32", "AdjustWindowRectExForDpi");
  RECT rect{0, 0, inner.cx, inner.cy};
  if (adjust)
    adjust(&rect, style, menu, exStyle, static_cast<UINT>(dpi));
  else
    AdjustWindowRectEx(&rect, style, menu, exStyle);
  return {rect.right - rect.left, rect.bottom - rect.top};
}

namespace {
LOGFONTA messageFont(int dpi) {
  static const auto ask =
      systemFunction<BOOL(WINAPI*)(UINT, UINT, void*, UINT, UINT)>("user32", "SystemParametersInfoForDpi");
  NONCLIENTMETRICSW wide{};
  wide.cbSize = sizeof(wide);
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof(metrics);
  if (ask && ask(SPI_GETNONCLIENTMETRICS, sizeof(wide), &wide, 0, static_cast<UINT>(dpi))) {
    // This call knows only the wide form; the face name is the one text in it.
    LOGFONTA font{};
    font.lfHeight = wide.lfMessageFont.lfHeight;
    font.lfWeight = wide.lfMessageFont.lfWeight;
    font.lfCharSet = wide.lfMessageFont.lfCharSet;
    font.lfQuality = wide.lfMessageFont.lfQuality;
    WideCharToMultiByte(CP_ACP, 0, wide.lfMessageFont.lfFaceName, -1, font.lfFaceName, LF_FACESIZE, nullptr,
                        nullptr);
    return font;
  }
  SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, systemDpi());
  return metrics.lfMessageFont;
}
} // namespace

HFONT FontCache::get(const controls::Font& font, int dpi) {
  OwnedFont& slot = fonts_[{font.points, font.bold, dpi}];
  if (!slot) {
    LOGFONTA shape = messageFont(dpi);
    shape.lfHeight = static_cast<LONG>(std::lround(static_cast<float>(shape.lfHeight) * font.points / 9));
    if (font.bold) shape.lfWeight = FW_BOLD;
    slot = OwnedFont(CreateFontIndirectA(&shape));
  }
  return slot.get();
}

SIZE textPixels(HFONT font, std::string_view text) {
  HDC screen = GetDC(nullptr);
  HGDIOBJ old = SelectObject(screen, font);
  RECT rect{};
  DrawTextA(screen, text.data(), static_cast<int>(text.size()), &rect, DT_CALCRECT | DT_NOPREFIX);
  SelectObject(screen, old);
  ReleaseDC(nullptr, screen);
  return {rect.right, rect.bottom};
}

} // namespace win32
