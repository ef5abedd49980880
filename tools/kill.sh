#!/usr/bin/env bash
# Kills the host at random moments while its lists are edited in the window, by remote consoles and by an import, and
# looks each time at what the files hold.
#
#   tools/kill.sh [ROUNDS [SEED]]     500 rounds from seed 1 when left out; round N has the seed SEED + N
#
# A finding says its seed: "tools/kill.sh 1 SEED" plays that round again, with the kill as near to the same moment
# as the machine allows. Ends with 0 when nothing was found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

only_one build/killing || exit 2
trap 'stop_wine; rm -f build/killing' EXIT
trap 'exit 130' INT TERM
need_packages build wine && build_preset windows || exit 1
start_display 1280x1024 && prepare_prefix "$PWD/build/kill-prefix" || exit 1
say "${1:-500} rounds from seed ${2:-1}"
# The file dialog looks at drives that the prefix may not read, and says so.
(cd build/windows/bin && wine kill.exe "${1:-500}" "${2:-1}" 2> >(grep -v 'Read access denied for device' >&2))
