#!/usr/bin/env bash
# The plug-in at work: a host with three game servers, players that come and go, and what becomes of them.
#
#   ./demo.sh            plays the whole demonstration (about 80 seconds, most of them for an idle player)
#   ./demo.sh --quick    leaves the idle player out (about 30 seconds)
#   ./demo.sh --window   opens the host on your display and leaves it to you
#
# Installs what is missing, builds, and keeps everything below build/. Ends with 1 when a banned player is
# still there or an innocent one is gone.
set -u
cd "$(dirname "$0")" || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

MODE=full
case "${1:-}" in
  '') ;;
  --quick) MODE=quick ;;
  --window) MODE=window ;;
  *) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 2 ;;
esac
[ $MODE != window ] || [ -n "${DISPLAY:-}" ] || { echo 'demo: --window needs a display' >&2; exit 2; }

DEMO=$PWD/build/demo
HOST=$DEMO/host
BIN=$PWD/build/windows/bin

# Two at once would play in the same folder.
only_one "$DEMO/running" || exit 2

finish() {
  # shellcheck disable=SC2046
  [ ! -e "$DEMO/followers" ] || kill $(cat "$DEMO/followers") 2>/dev/null
  rm -f "$DEMO/followers" "$DEMO/running"
  stop_wine
  wait 2>/dev/null
}
trap finish EXIT
trap 'exit 130' INT TERM

# The host's folder, as an installation has it. INI files get the line ends that Windows programs write.
lay_out() {
  rm -rf "$HOST"
  mkdir -p "$HOST"
  cp -r sandbox/demo/host/. "$HOST/"
  find "$HOST" -name '*.ini' -exec sed -i 's/$/\r/' {} +
  mkdir -p "$HOST/Plugins/dlls/Vantor" "$HOST/helpers"
  cp "$BIN/qrvVNT.dll" "$HOST/Plugins/dlls/Vantor/"
  cp "$BIN/qrvMFM.dll" "$BIN/qrvGMF.dll" "$HOST/helpers/"
  cp "$BIN/qrvudpfw.dll" "$BIN/sandbox_engine.dll" "$BIN/host.exe" "$BIN/console.exe" "$BIN/gameserver.exe" "$HOST/"
  # A player without a valid address makes an error box: nothing that should greet somebody at the window.
  [ $MODE = window ] || sed -i '/^8000 /a 8500   join 11 "Eve" xx0B0C0D blue 49' "$HOST/standard.txt"
  [ $MODE != quick ] || sed -i '/Ivy\|idle 5/d' "$HOST/standard.txt"
  grep -v "$([ $MODE = quick ] && echo 'Ivy' || echo '^$')" sandbox/demo/expected.txt > "$DEMO/expected.txt"
}

register_all() {
  register_dll "$HOST/helpers" qrvMFM.dll &&
    register_dll "$HOST/helpers" qrvGMF.dll &&
    register_dll "$HOST/Plugins/dlls/Vantor" qrvVNT.dll
}

# What happens, as it happens, from the game servers' journals: fields between tabs, some of them empty.
describe() { # PROFILE < JOURNAL
  local line time kind slot name address detail what
  while IFS= read -r line; do
    IFS='|' read -r time kind slot name address detail <<< "${line//$'\t'/|}"
    [ -n "${name// /}" ] || name='(nameless)'
    case $kind in
      join) what="$name joins, slot $slot, from $address" ;;
      refused) what="$name is refused: $detail" ;;
      leave) what="$name leaves" ;;
      dropped) what="** $name is dropped by \"${detail#* }\", ${detail%% *} ms after joining" ;;
      killed | disarmed | armed) what="** $name is $kind" ;;
      switched) what="** $name is switched from team ${detail% *} to team ${detail#* }" ;;
      message) what="   server message: $detail" ;;
      state) what="   game state ${detail#* }" ;;
      *) continue ;;
    esac
    printf '%4d.%03d s  %-10s %s\n' $((time / 1000)) $((time % 1000)) "$1" "$what"
  done
}

follow() { # PROFILE
  : > "$HOST/$1.journal"
  { tail -n +1 -s 0.2 -F "$HOST/$1.journal" 2>/dev/null & echo $! >> "$DEMO/followers"; wait; } | describe "$1" &
}

console() { # the remote console, as an administrator uses it
  printf '\n$ console %s\n' "$*"
  wine "$HOST/console.exe" --pipe vantor-demo "$@" 2>&1 | tr -d '\r' | sed 's/^/  /'
}

tell_host() { wine "$HOST/console.exe" --pipe vantor-demo host "$1" >/dev/null 2>&1; }

# Waits until the journal has a line that awk's condition holds for; gives up at the deadline.
await() { # PROFILE SECONDS CONDITION
  local deadline=$((SECONDS + $2))
  until awk -F'\t' "$3 { found = 1 } END { exit !found }" "$HOST/$1.journal" 2>/dev/null; do
    [ $SECONDS -lt $deadline ] || { say "nothing in $1.journal within $2 seconds for: $3"; return 1; }
    sleep 0.3
  done
}

# The host's window with each tab of the interface.
take_pictures() {
  import -window root "$DEMO/host.png"
  local tab
  for tab in 2:ips 3:settings 4:slaps 1:; do
    tell_host "tab ${tab%:*}"
    [ -n "${tab#*:}" ] && sleep 0.5 && import -window root "$DEMO/host-${tab#*:}.png"
  done
  say 'pictures of the host window: build/demo/host.png, and host-ips, host-settings and host-slaps beside it'
}

need_packages build wine || exit 1
build_preset windows || exit 1
say 'preparing the host'
lay_out
if [ $MODE = window ]; then
  prepare_prefix "$DEMO/prefix-desktop" desktop && register_all || exit 1
  say 'the host is open; double-click a profile to see it, close the window to end'
  grep -v menu "$HOST/script.txt" > "$HOST/window.txt"
  cd "$HOST" && wine host.exe --script window.txt >/dev/null 2>&1
  exit 0
fi
start_display 1220x940 && prepare_prefix "$DEMO/prefix" && register_all || exit 1

say 'the host starts three game servers; seconds are those of each server'
for profile in standard affiliate kernel; do follow $profile; done
(cd "$HOST" && exec wine host.exe --script script.txt) > "$DEMO/host.log" 2>&1 &
HOST_PROCESS=$!

await standard 30 '$2 == "join" && $4 == "Dora"'
sleep 2
console --profile 1 --admin anna killperm Karl
console --profile 1 --admin anna disarmperm Dora
console --profile 1 --admin newcomer punt 1
await kernel 30 '$2 == "refused"'
await affiliate 40 '$2 == "dropped" && $4 == "Xaver"'
tell_host closeboxes
sleep 1
take_pictures

say 'a remote console'
console --profile 2 --admin anna players
console --profile 2 --admin anna ban 3 Team killing
console --profile 2 --admin newcomer slap 'No camping at the spawn!'
console --profile 2 --admin newcomer addip '10.99.*'
console --profile 2 --admin anna addname 'cheat' part 'Advertises cheats'
console --profile 2 --admin anna players
if [ $MODE = full ]; then
  say 'waiting for the idle player to be punted'
  await standard 80 '$2 == "dropped" && $4 == "Ivy"'
fi
# One more sweep of every profile: whoever is innocent must outlast it.
sleep 6

tell_host quit
wait "$HOST_PROCESS"
FAILURES=$(grep FAILED "$HOST/host.journal")
printf '\n'
say "administration log ($(cd "$HOST" && echo adminlogs/*.txt))"
cat "$HOST"/adminlogs/*.txt
printf '\n'
say "summary, from the game servers' journals"
awk -f sandbox/demo/check.awk "$DEMO/expected.txt" "$HOST"/{standard,affiliate,kernel}.journal || exit 1
[ -z "$FAILURES" ] || { printf 'the host could not do something:\n%s\n' "$FAILURES"; exit 1; }
