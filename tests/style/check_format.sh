#!/usr/bin/env bash
# The sources are as clang-format leaves them (./dev fmt). Exit code 77: clang-format is not installed.
# Usage: check_format.sh <root of the tree>
set -euo pipefail
cd "$1"

command -v clang-format-14 >/dev/null || exit 77
failed=0
report=$(find src tests \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0r clang-format-14 --dry-run --Werror 2>&1) || failed=1
# One line a file is enough; whatever else went wrong is shown as it is.
sed -n 's/:[0-9]*:[0-9]*: error: code should be clang-formatted.*/: not formatted (.\/dev fmt)/p' <<<"$report" | sort -u
grep ': error:' <<<"$report" | grep -v 'code should be clang-formatted' || true
exit "$failed"
