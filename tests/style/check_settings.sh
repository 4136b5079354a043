#!/usr/bin/env bash
# The solvent sections of the default settings name the same solvents in the same order, since their values are paired
# by position, and each key list fits the 255 characters that the reader takes.
# Usage: check_settings.sh <settings file>
set -euo pipefail

awk '
{ sub(/\r$/, "") }
/^\[/ { section = substr($0, 2, index($0, "]") - 2); next }
/^;/ || !/=/ { next }
section ~ /^Solvents/ {
  name = substr($0, 1, index($0, "=") - 1)
  list[section] = list[section] name "/"
  count[section]++
}
END {
  if (count["Solvents"] < 8) { print "fewer than eight solvents"; failed = 1 }
  n = split("Solvents Solvents_RxGain Solvents_TxPwr", wanted, " ")
  for (i = 1; i <= n; i++) {
    if (list[wanted[i]] != list["Solvents"]) { print wanted[i] " is not in the order of Solvents"; failed = 1 }
    if (length(list[wanted[i]]) > 254) { print wanted[i] " is cut by the reader"; failed = 1 }
  }
  exit failed
}' "$1"
