#!/usr/bin/env bash
# A day's work of the real DLL under Wine: ticks of eight profiles, players who come and go on two game servers, remote
# requests, edits and refreshes, then loads and unloads. Prints what the process holds, and fails when it grows.
#
#   tools/soak.sh [TICKS [CYCLES]]     17280 ticks for each profile and 1000 cycles when left out
#
# Ends with 0 when nothing was found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

only_one build/soaking || exit 2
trap 'stop_wine; rm -f build/soaking' EXIT
trap 'exit 130' INT TERM
need_packages build wine && build_preset windows || exit 1
start_display 1280x1024 && prepare_prefix "$PWD/build/soak-prefix" || exit 1
say "$((8 * ${1:-17280})) ticks, then ${2:-1000} cycles"
# Freed automation strings are kept for later use otherwise, and hide a leak. The file dialog looks at drives that the
# prefix may not read, and says so.
(cd build/windows/bin && OANOCACHE=1 wine soak.exe --gtest_brief=1 --gtest_filter='Soak.*' "${2:-1000}" "${1:-17280}" \
  2> >(grep -v 'Read access denied for device' >&2))
