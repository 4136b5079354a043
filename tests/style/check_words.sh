#!/usr/bin/env bash
# The tree explains itself: it points at no paper and no machine that its reader does not have.
# Usage: check_words.sh <root of the tree>
set -euo pipefail
cd "$1"

# Written with brackets so that this list does not find itself.
papers='\bP[a]rts? [0-9]+\.[0-9]|\bs[p]ec\.md\b|\b(the|per|by|our|this) s[p]ec\b|\bs[p]ecification\b|\bas s[p]ecified\b'
papers+='|\bd[e]sign\.md\b|\bt[o]olchain\.md\b|\bi[s]sues? #?[0-9]'
machines='(^|[^[:alnum:]_./}-])/(w[o]rk|r[o]ot|h[o]me|t[m]p)/|\bd[e]b\.debian\.org|https?://[^ ]*(proxy|mirror)'

files=$(find . \( -path ./.git -o -path ./build -o -path './build-*' \) -prune -o -type f -print)
if grep -IinE "$papers" -- $files; then failed=1; fi
if grep -InE "$machines" -- $files; then failed=1; fi
exit "${failed:-0}"
