#!/usr/bin/env bash
# A Wine prefix and a display of our own; sourced by demo.sh, test.sh and the other commands at the root.
#
#   start_display WIDTHxHEIGHT     a virtual screen on a free display; sets DISPLAY
#   prepare_prefix FOLDER [desktop]  makes the prefix when it is new, and keeps its server running; for a
#                                  desktop with a window manager, or for our own screen without one
#   stop_wine                      ends everything that runs in the prefix, and the display
#
# Every Wine process of a prefix must see the same display: mixing them blocks windows for seconds.

export WINEDEBUG=-all WINEARCH=win32
# No downloads of a browser engine or a .NET runtime, no menu entries on the desktop.
export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe=d'
DISPLAY_PROCESS=
PREPARED_PREFIX=

start_display() {
  local number_file
  number_file=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
  DISPLAY_PROCESS=$!
  for _ in $(seq 100); do
    [ -s "$number_file" ] && break
    sleep 0.1
  done
  DISPLAY=:$(tr -d '\n' < "$number_file")
  export DISPLAY
  rm -f "$number_file"
  [ "$DISPLAY" != : ] || { echo 'wine: no virtual screen could be started' >&2; return 1; }
}

# Without a window manager Wine must manage its windows itself: it waits for the manager otherwise. A program that
# crashes says so on its output and ends, instead of waiting in a box for somebody to close it.
prepare_prefix() {
  export WINEPREFIX=$1
  PREPARED_PREFIX=$1
  local managed=N
  [ "${2:-}" = desktop ] && managed=Y
  if [ ! -e "$WINEPREFIX/ready" ]; then
    rm -rf "$WINEPREFIX"
    mkdir -p "$(dirname "$WINEPREFIX")"
    wineboot -i >/dev/null 2>&1 && wineserver -w &&
      wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d $managed /f >/dev/null 2>&1 &&
      wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 &&
      wineserver -w &&
      touch "$WINEPREFIX/ready" || { echo "wine: the prefix $WINEPREFIX could not be made" >&2; return 1; }
  fi
  keep_alive
}

# A server that stays between two programs saves each of them seconds. Wine's own services, which the first
# program starts, would hold that program's output open: here they get none, and a waiting program keeps them.
keep_alive() {
  wineserver -p >/dev/null 2>&1
  [ -p "$WINEPREFIX/keep" ] || mkfifo "$WINEPREFIX/keep"
  wine cmd /q <> "$WINEPREFIX/keep" >/dev/null 2>&1 &
  # A program with a window: it starts the rest of them.
  wine rundll32 user32.dll,GetDoubleClickTime </dev/null >/dev/null 2>&1
}

stop_wine() {
  # Never a prefix that was in the environment before.
  [ -z "$PREPARED_PREFIX" ] || WINEPREFIX=$PREPARED_PREFIX wineserver -k >/dev/null 2>&1
  [ -z "$DISPLAY_PROCESS" ] || kill "$DISPLAY_PROCESS" 2>/dev/null
  PREPARED_PREFIX=
  DISPLAY_PROCESS=
  return 0
}

# Registers a DLL for the machine, which here is the prefix.
register_dll() { # FOLDER NAME
  (cd "$1" && wine regsvr32 /s "$2" >/dev/null 2>&1) || { echo "wine: $2 could not be registered" >&2; return 1; }
}
