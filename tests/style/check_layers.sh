#!/usr/bin/env bash
# Includes point down the layers only, and Windows' headers stay in the Windows shell.
# Usage: check_layers.sh <root of the tree>
set -euo pipefail
cd "$1"

find src tests \( -name '*.h' -o -name '*.cpp' \) | sort | xargs -r awk '
BEGIN {
  level["base"] = 0
  split("controls ports", models); for (i in models) level[models[i]] = 1
  split("core hostlink engine display ui automation", program); for (i in program) level[program[i]] = 2
  split("headless sim win32", around); for (i in around) level[around[i]] = 3
  level["apps"] = 4
  windowsHeader = "^(windows|windowsx|winuser|wingdi|winbase|windef|winreg|commctrl|commdlg|shellapi|shlobj|shlwapi|" \
                  "objbase|objidl|ole2|oleauto|olectl|oaidl|ocidl|unknwn|combaseapi|initguid|dispex|tlhelp32)\\.h$"
}
function complain(why) { print FILENAME ":" FNR ": " why; failed = 1 }
function mayInclude(from, to) {
  if (from == to) return 1
  if (from == "sim") return to == "base" || to == "ports" # the console knows nothing of the panel
  if (to == "sim") return from == "headless" || from == "win32" || from == "apps"
  if (level[from] == level[to]) return level[from] == 1 || level[from] == 2
  return level[from] > level[to]
}
FNR == 1 {
  split(FILENAME, part, "/")
  layer = part[1] == "src" ? part[2] : ""
  if (layer != "" && !(layer in level)) complain("src/" layer " is not a layer")
  forWindows = FILENAME ~ /\/(win32|e2e)\//
}
/^[ \t]*#[ \t]*include[ \t]*[<"]/ {
  header = $0
  sub(/^[^<"]*[<"]/, "", header)
  sub(/[>"].*$/, "", header)
  if (tolower(header) ~ windowsHeader && !forWindows) complain(header " belongs under src/win32")
  if ($0 ~ /</) next
  if (header ~ /\.\./) complain("name " header " from src/ on")
  split(header, step, "/")
  target = header ~ /\// && step[1] in level ? step[1] : layer
  if (layer != "" && !mayInclude(layer, target)) complain(layer " may not include " header)
}
END { exit failed }'
