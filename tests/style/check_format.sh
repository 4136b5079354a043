#!/usr/bin/env bash
# The sources are as clang-format leaves them (./dev fmt). Exit code 77: clang-format is not installed.
# Usage: check_format.sh <root of the tree>
set -euo pipefail
cd "$1"

command -v clang-format-14 >/dev/null || exit 77
find src tests \( -name '*.h' -o -name '*.cpp' \) -print0 | xargs -0r clang-format-14 --dry-run --Werror
