#!/usr/bin/env bash
# Takes the pictures of the help book anew: the sandbox out of the ZIP, on a virtual screen, with players who stay.
#
#   docs/help/screenshots.sh [ZIP]     without one, the packages are built first
#
# Where the controls are is measured from the upper left corner of the host's window.
set -eu
ZIP=${1:+$(realpath "$1")}
cd "$(dirname "$0")/../.."
. tools/setup.sh
. tools/wine.sh

WORK=$PWD/build/screenshots
PICTURES=$PWD/docs/help/images
WHOLE=904x632+266+48 # the plug-in's part of the host's window,
TABS=904x250+266+430 # and of that the tabs
HOST_WINDOW=1180x900+0+0

[ -n "$ZIP" ] || { ./package.sh && ZIP=$(echo "$PWD"/build/windows/packages/qrvVNT-*[0-9].zip); }
need_packages wine package
rm -rf "$WORK"
mkdir -p "$WORK" "$PICTURES" docs/images
unzip -q "$ZIP" -d "$WORK"
cd "$WORK"/qrvVNT-*/sandbox

cat >standard.txt <<'SCRIPT'
200 join 1 "Alice" 10.0.0.1 blue 42
200 join 2 "Bobby" 10.0.0.2 red 61
200 join 3 "Karl" 10.0.0.3 blue 55
200 join 4 "Dora" 10.0.0.4 red 38
200 join 5 "Ivy" 10.0.0.5 blue 70
200 join 6 "Neighbour" 172.17.3.9 red 90
200 join 7 "Grace" 10.0.0.12 red 33
200 join 8 "Silent Fox" 198.51.100.7 blue 47
SCRIPT
sed -i '/^\[Profile2\]/,$d' host.ini
printf '1000 load 1\r\n' >tour.txt

trap stop_wine EXIT
start_display 1280x1024
prepare_prefix "$WORK/prefix"
wine cmd /c register.cmd >/dev/null
wine host.exe --script tour.txt >/dev/null 2>&1 &
HOST=$!
sleep 4
WINDOW=$(xdotool search --onlyvisible --name 'Sandbox host' | head -1)

press() { xdotool mousemove --window "$WINDOW" "$1" "$2" click "${3:-1}"; sleep 0.7; }
picture() { # NAME PART
  local X Y
  xdotool mousemove --window "$WINDOW" 100 780 # no tooltip in the picture
  sleep 0.7
  eval "$(xdotool getwindowgeometry --shell "$WINDOW" | grep -E '^(X|Y)=')"
  import -window root "$WORK/screen.png"
  convert "$WORK/screen.png" -crop "$(awk -F'[+]' -v x="$X" -v y="$Y" '{ print $1 "+" $2 + x "+" $3 + y }' <<<"$2")" \
    +repage +dither -colors 64 "$PICTURES/$1.png"
}

press 340 138
picture window $WHOLE
picture ../../images/players $HOST_WINDOW
press 340 138 3
picture menu $WHOLE
xdotool key Escape
picture names $TABS
press 437 446
picture ips $TABS
press 532 446
picture settings $TABS
press 608 446
picture slaps $TABS
kill $HOST 2>/dev/null || true
ls -l "$PICTURES"
