#!/usr/bin/env bash
# Gives each check a small tree with one fault in it and expects the check to find it.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
failed=0

# try <0 or 1> <check> <file> <line>...: the check's exit code for a tree that holds this one file.
try() {
  local wanted=$1 check=$2 file=$3 code=0
  shift 3
  rm -rf "$tree"/*
  mkdir -p "$tree/src" "$tree/tests" "$(dirname "$tree/$file")"
  printf '%s\n' "$@" >"$tree/$file"
  bash "$here/check_$check.sh" "$tree" >/dev/null 2>&1 || code=$?
  [ "$code" = 77 ] || [ "$((code != 0))" = "$wanted" ] || { echo "check_$check: exit $code for $file: $*"; failed=1; }
}

# trySettings <0 or 1> <lines of the settings file>
trySettings() {
  local wanted=$1 code=0
  shift
  printf '%s\r\n' "$@" >"$tree/settings"
  bash "$here/check_settings.sh" "$tree/settings" >/dev/null || code=$?
  [ "$code" = "$wanted" ] || { echo "check_settings: exit $code for: $*"; failed=1; }
}

try 1 layers src/core/a.cpp '#include <windows.h>'
try 1 layers src/core/a.cpp '# include "Windows.h"'
try 0 layers src/win32/a.cpp '#include <windows.h>'
try 1 layers tests/core/a.cpp '#include <windows.h>'
try 0 layers tests/e2e/a.cpp '#include <windows.h>'
try 1 layers src/base/a.h '#include "ports/Clock.h"'
try 0 layers src/ports/a.h '#include "base/Text.h"'
try 1 layers src/core/a.h '#include "headless/Pump.h"'
try 0 layers src/core/a.h '#include "ui/main/frmLock.h"'
try 1 layers src/sim/a.h '#include "core/Program.h"'
try 1 layers src/sim/a.h '#include "controls/Form.h"'
try 0 layers src/sim/a.h '#include "ports/Clock.h"'
try 1 layers src/ui/a.h '#include "sim/Console.h"'
try 0 layers src/win32/a.h '#include "sim/Console.h"'
try 1 layers src/win32/a.h '#include "headless/Pump.h"'
try 1 layers src/core/a.h '#include "../base/Text.h"'
try 1 layers src/stray/a.h '#include <vector>'
try 0 layers src/core/a.h '#include "Program.h"' '#include <vector>'

paper='spec'
try 1 words src/core/a.cpp "// see the $paper for this"
try 1 words docs/a.md "Pa""rt 2.1 says so"
try 1 words src/core/a.cpp "open(\"/ro""ot/x\")"
try 0 words src/core/a.cpp '// the operator sees the part of the plot that he specified'

try 1 format src/core/a.cpp 'int  main( ){return 0;}'

solvents=(A B C D E F G H)
settings() { # <section>...
  local section name
  for section in "$@"; do
    echo "[$section]"
    for name in "${solvents[@]}"; do echo "$name=1"; done
  done
}
mapfile -t good < <(settings Solvents Solvents_RxGain Solvents_TxPwr)
mapfile -t missing < <(settings Solvents Solvents_RxGain)
solvents=(A-name-of-more-than-thirty-characters-{1..8})
mapfile -t long < <(settings Solvents Solvents_RxGain Solvents_TxPwr)
trySettings 0 "${good[@]}"
trySettings 1 "${missing[@]}"
trySettings 1 "${long[@]}"
trySettings 1 "${good[@]:0:26}" 'A=1'

exit "$failed"
