# ./dev shots: a picture of every window, taken by the gallery program under Wine: at 96 DPI into docs/pictures, where
# the user guide shows them, at 192 DPI into build/shots.

devShots() {
  need windows wine
  source scripts/run.sh
  buildPreset windows
  buildPreset windows gallery
  useWine shots
  startDisplay
  startWine
  # The signs in the frames' buttons are letters of this font.
  cp -n /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
  takeShots 96 docs/pictures
  takeShots 192 build/shots
  ls -l docs/pictures build/shots
}

# takeShots <dpi> <folder>
takeShots() {
  local raw=$root/build/shots/raw program picture
  say "pictures at $1 DPI"
  quietWine wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f
  startWine # the density is read once
  installPrograms fresh
  rm -rf "$raw"
  mkdir -p "$raw" "$2"
  startConsole
  local console=$started
  startProgram VantrelLock
  local panel=$started
  wine build/windows/bin/gallery.exe "Z:$(printf '%s' "$raw" | tr / '\\')" </dev/null 9>&-
  for program in "$panel" "$console"; do
    kill "$program" 2>/dev/null || true
    wait "$program" 2>/dev/null || true
  done
  for picture in "$raw"/*.bmp; do
    convert "$picture" -alpha off -dither None -colors 64 -define png:compression-level=9 -strip \
      "$2/$(basename "$picture" .bmp).png"
  done
  rm -rf "$raw"
}
