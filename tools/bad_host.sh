#!/usr/bin/env bash
# A host with floating-point exceptions unmasked, a stack aligned to four bytes, another run-time loaded, and messages
# pumped inside helper calls takes the plug-in through cycles of load, ticks under both methods, window, remote requests
# and unload in the middle of a call.
#
#   tools/bad_host.sh [CYCLES]     1000 when left out: 15 minutes on two cores
#
# Ends with 0 when nothing was found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

only_one build/bad-host || exit 2
trap 'stop_wine; rm -f build/bad-host' EXIT
trap 'exit 130' INT TERM
need_packages build wine && build_preset windows || exit 1
start_display 1280x1024 && prepare_prefix "$PWD/build/bad-host-prefix" || exit 1
(cd build/windows/bin && OANOCACHE=1 wine soak.exe --gtest_brief=1 --gtest_filter='BadHost.*' "${1:-1000}")
