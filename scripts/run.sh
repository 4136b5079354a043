# ./dev run: the panel and the simulated console, for the operator or as a demonstration.

devRun() {
  local fresh='' headless='' option
  for option in "$@"; do
    case $option in
      --fresh) fresh=fresh ;;
      --headless) headless=yes ;;
      *) die "run does not know $option" ;;
    esac
  done
  need windows wine
  buildPreset windows
  tellWindows
  if [ -n "$headless" ] || [ -z "${DISPLAY:-}" ]; then
    useWine scratch
    startDisplay
    startWine
    installPrograms fresh
    demonstrate
  else
    useWine prefix
    startWine
    installPrograms "$fresh"
    operate
  fi
}

tellWindows() {
  cat <<'TXT'
On Windows itself: copy VantrelLock.exe and PelorinSim.exe from build/windows/bin to C:\pelorin and packaging/LOCK.INI
to C:\pelorin\config, start PelorinSim.exe (or the host program of a real console), then VantrelLock.exe.
TXT
}

# startProgram <name>: runs a program of C:\pelorin in the background; its process id is in $started.
startProgram() {
  [ -e "$WINEPREFIX/drive_c/pelorin/$1.exe" ] || die "build/windows/bin/$1.exe is missing"
  mkdir -p build/run
  wine "C:\\pelorin\\$1.exe" >"build/run/$1.log" 2>&1 </dev/null 9>&- &
  started=$!
  background+=("$started")
}

# The panel asks the operator to start the host when it comes first, so the console gets a head start: it says
# "ready" when clients can reach it.
startConsole() {
  startProgram PelorinSim
  local tries
  for ((tries = 0; tries < 100; tries++)); do
    ! grep -q '^ready' build/run/PelorinSim.log || return 0
    kill -0 "$started" 2>/dev/null || die "PelorinSim.exe ended: $(<build/run/PelorinSim.log)"
    sleep 0.1
  done
  die "PelorinSim.exe did not become ready within 10 s"
}

operate() {
  startConsole
  say "the panel is open; close it to end"
  startProgram VantrelLock
  wait "$started"
}

# Presses the panel's real buttons on the virtual display and shows what happens: first an operator's clicks on Sweep and
# Lock, then Auto as a script asks for it.
demonstrate() {
  local picture=$root/build/run/panel.png verdict=0
  startConsole
  wine 'C:\pelorin\VantrelLock.exe' /RegServer </dev/null 9>&- || die "VantrelLock.exe could not register its class"
  startProgram VantrelLock
  [ -e "$WINEPREFIX/drive_c/pelorin/demo.exe" ] || die "build/windows/bin/demo.exe is missing"
  runDemo lock --toolbar && runDemo auto || verdict=$?
  import -silent -window root "$picture"
  wine 'C:\pelorin\VantrelLock.exe' /UnregServer </dev/null 9>&- || verdict=1
  echo "picture: $picture"
  [ "$verdict" = 0 ] || die "the lock was not reached"
}

runDemo() {
  say "demonstration: $*"
  wine 'C:\pelorin\demo.exe' "$@" </dev/null 9>&-
}
