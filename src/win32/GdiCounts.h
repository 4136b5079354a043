// Owners of native handles that count what is alive: the numbers must be level again after a window was
// opened and closed. One user-interface thread owns them all.
#pragma once
#include "win32/Win.h"
#include <utility>

namespace win32 {

struct GdiCounts {
  int windows = 0, menus = 0, fonts = 0, pens = 0, brushes = 0, bitmaps = 0, dcs = 0, imageLists = 0;
  friend bool operator==(const GdiCounts&, const GdiCounts&) = default;
};

inline GdiCounts& gdiCounts() {
  static GdiCounts counts;
  return counts;
}

template <class Handle, int GdiCounts::*Count, auto Release> class Owned {
 public:
  Owned() = default;
  explicit Owned(Handle handle) : handle_(handle) {
    if (handle_) ++(gdiCounts().*Count);
  }
  Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    if (this != &other) {
      reset();
      handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
  }
  ~Owned() { reset(); }
  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }
  void reset() {
    if (!handle_) return;
    Handle handle = std::exchange(handle_, nullptr);
    --(gdiCounts().*Count);
    Release(handle);
  }
  // The window system took it over (a submenu belongs to its menu) or has already destroyed it.
  void letGo() {
    if (std::exchange(handle_, nullptr)) --(gdiCounts().*Count);
  }

 private:
  Handle handle_ = nullptr;
};

namespace release {
inline void object(HFONT h) { DeleteObject(h); }
inline void pen(HPEN h) { DeleteObject(h); }
inline void brush(HBRUSH h) { DeleteObject(h); }
inline void bitmap(HBITMAP h) { DeleteObject(h); }
inline void dc(HDC h) { DeleteDC(h); }
inline void menu(HMENU h) { DestroyMenu(h); }
inline void window(HWND h) { DestroyWindow(h); }
inline void imageList(HIMAGELIST h) { ImageList_Destroy(h); }
} // namespace release

using OwnedFont = Owned<HFONT, &GdiCounts::fonts, release::object>;
using OwnedPen = Owned<HPEN, &GdiCounts::pens, release::pen>;
using OwnedBrush = Owned<HBRUSH, &GdiCounts::brushes, release::brush>;
using OwnedBitmap = Owned<HBITMAP, &GdiCounts::bitmaps, release::bitmap>;
using OwnedDc = Owned<HDC, &GdiCounts::dcs, release::dc>;
using OwnedMenu = Owned<HMENU, &GdiCounts::menus, release::menu>;
using OwnedWindow = Owned<HWND, &GdiCounts::windows, release::window>;
using OwnedImageList = Owned<HIMAGELIST, &GdiCounts::imageLists, release::imageList>;

} // namespace win32
