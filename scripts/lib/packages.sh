# What each need is made of, as Debian 12 packages, and how to get what is missing.

say() { printf '== %s\n' "$*" >&2; }
die() { printf 'dev: %s\n' "$*" >&2; exit 1; }

packagesFor() {
  case $1 in
    native)  echo g++ cmake ninja-build googletest libgtest-dev ccache ;;
    windows) echo g++ cmake ninja-build googletest ccache g++-mingw-w64-x86-64-posix mingw-w64-tools libwine-dev ;;
    # The X libraries and fonts are what Wine loads when they are there: without them text is jagged or missing.
    wine)    echo wine wine64 xvfb imagemagick fonts-wine fonts-liberation libxrender1 libxcursor1 libxi6 \
                  libxrandr2 libxinerama1 libxcomposite1 ;;
    bench)   echo libbenchmark-dev ;;
    fmt)     echo clang-format-14 ;;
    tidy)    echo clang-tidy-14 ;;
    *)       die "no package set is called $1" ;;
  esac
}

# need <set>...: installs the packages of these sets that are not there yet, and touches nothing otherwise.
need() {
  command -v dpkg-query >/dev/null || { say "not a Debian system: relying on the tools that are there"; return; }
  local set package missing=()
  for set in "$@"; do
    for package in $(packagesFor "$set"); do
      case $(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null) in
        ii*) ;;
        *) missing+=("$package") ;;
      esac
    done
  done
  [ ${#missing[@]} != 0 ] || return 0
  say "installing ${missing[*]}"
  local asRoot=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || die "these packages need root or sudo: ${missing[*]}"
    asRoot=(sudo)
  fi
  local install=("${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o Dpkg::Use-Pty=0 install -y
                 --no-install-recommends "${missing[@]}")
  # The package lists may be missing or too old: then fetch them and try again.
  "${install[@]}" </dev/null >/dev/null 2>&1 ||
    { "${asRoot[@]}" apt-get -qq update </dev/null && "${install[@]}" </dev/null >/dev/null; } ||
    die "could not install ${missing[*]}"
}
