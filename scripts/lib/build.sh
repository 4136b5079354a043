# Configuring and building by the presets, and joining the test lists of several build folders.

# Cached objects are shared between clones, wherever they lie.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

configurePreset() {
  local log=build/$1-configure.log
  mkdir -p build
  cmake --preset "$1" >"$log" 2>&1 || { cat "$log" >&2; die "configuring $1 failed"; }
}

# buildPreset <preset> [target]
buildPreset() {
  say "building $*"
  configurePreset "$1"
  cmake --build "build/$1" ${2:+--target "$2"}
}

# joinTests <folder> <build folder>...: one ctest list for all, so that one run has one summary.
joinTests() {
  local joined=$1 folder
  shift
  mkdir -p "$joined"
  for folder in "$@"; do
    printf 'subdirs("%s")\n' "$root/$folder"
  done >"$joined/CTestTestfile.cmake"
}
