# ./dev shots: a picture of every window, at 96 and 192 DPI, taken by the gallery program under Wine.

devShots() {
  need windows wine
  buildPreset windows
  [ -e build/windows/bin/gallery.exe ] || die "build/windows/bin/gallery.exe is missing"
  useWine scratch
  startDisplay
  startWine
  installPrograms fresh
  mkdir -p build/shots
  wine build/windows/bin/gallery.exe "Z:$(printf '%s' "$root/build/shots" | tr / '\\')" </dev/null 9>&-
  ls -l build/shots
}
