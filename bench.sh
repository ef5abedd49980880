#!/usr/bin/env bash
# Benchmarks: one tick of the sweep natively against the fakes, and of the real DLL under Wine against real helper
# objects and a game server process, each beside the time of the very same host calls without the plug-in; and how
# what the window, a console and hung servers cost grows with the lists and the players. Writes wait for the disk.
#
#   ./bench.sh [native|wine]     both when nothing is named; what a long run leaves behind: tools/soak.sh
set -u
cd "$(dirname "$0")" || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

native() {
  need_packages build bench && build_preset bench && build/bench/bench/native_bench
}

on_wine() {
  need_packages build wine && build_preset windows || return 1
  trap stop_wine EXIT
  start_display 1280x1024 && prepare_prefix "$PWD/build/bench-prefix" || return 1
  (cd build/windows/bin && wine wine_bench.exe --gtest_brief=1)
}

case "${1:-all}" in
  native) native ;;
  wine) on_wine ;;
  all) native && on_wine ;;
  *) sed -n '2,6s/^# \{0,1\}//p' "$0"; exit 2 ;;
esac
