# Wine in a prefix of our own below build/, with a display of our own where the machine has none. The user's own
# prefix is never touched. Everything started here is ended when the script ends.

background=() # pids of what we started, ended in reverse order

# useWine <name>: chooses the prefix build/wine/<name> and keeps it for this script alone. "prefix" is the operator's,
# with settings that last; "scratch" is for tests and demonstrations.
useWine() {
  mkdir -p build/wine
  exec 9>"build/wine/$1.lock" # closed for every child: the lock ends with this script
  flock -n 9 || die "another ./dev is using build/wine/$1; end it first"
  export WINEPREFIX=$root/build/wine/$1
  export WINEDEBUG=${WINEDEBUG--all}
  # No question about downloads, no entries in the user's own menus.
  export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
  trap endAll EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP
}

endAll() {
  trap '' INT TERM HUP
  [ ! -d "$WINEPREFIX" ] || wineserver -k >/dev/null 2>&1 || true
  local i
  for ((i = ${#background[@]} - 1; i >= 0; i--)); do
    kill "${background[i]}" 2>/dev/null || true
  done
  wait
}

# startDisplay: a virtual screen on a display number that nobody uses.
startDisplay() {
  local number=build/wine/display.$$ tries
  Xvfb -displayfd 3 -screen 0 1600x1200x24 -dpi 96 -nolisten tcp \
    3>"$number" >/dev/null 2>&1 </dev/null 9>&- &
  background+=($!)
  for ((tries = 0; tries < 100; tries++)); do
    if [ -s "$number" ]; then
      DISPLAY=:$(<"$number")
      export DISPLAY
      ownDisplay=yes
      rm -f "$number"
      return
    fi
    sleep 0.1
  done
  die "the virtual display did not start"
}

# startWine: creates the prefix if it is not there, then keeps its server running. The server and the services that
# the first program starts inherit its output for as long as they live, so nothing of this may be captured by a pipe.
startWine() {
  if [ ! -e "$WINEPREFIX/.complete" ]; then
    say "preparing Wine"
    wineserver -k >/dev/null 2>&1 || true
    rm -rf "$WINEPREFIX"
    quietWine wine wineboot -i || die "Wine could not create its prefix"
    wineserver -w
    touch "$WINEPREFIX/.complete"
  fi
  wineserver -k >/dev/null 2>&1 || true # left over from a script that was killed
  quietWine wineserver -p
  quietWine wine cmd /c exit || die "Wine does not start"
  # On our own display no window manager answers: Wine would wait two seconds for one at every hidden window.
  [ -z "${ownDisplay:-}" ] || quietWine wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
}

quietWine() { "$@" >/dev/null 2>&1 </dev/null 9>&-; }

# installPrograms [fresh]: puts the programs and the settings file where a real machine has them. The settings are
# looked up on the drive that holds the program, so the programs cannot run from the build folder itself.
# The operator's own settings are kept unless fresh ones are asked for.
installPrograms() {
  local home=$WINEPREFIX/drive_c/pelorin program
  mkdir -p "$home/config"
  for program in VantrelLock PelorinSim demo; do
    [ ! -e "build/windows/bin/$program.exe" ] || cp -u "build/windows/bin/$program.exe" "$home/"
  done
  if [ "${1:-}" = fresh ] || [ ! -e "$home/config/LOCK.INI" ]; then
    cp packaging/LOCK.INI "$home/config/LOCK.INI"
  fi
}
