#!/usr/bin/env bash
# Every test of the product.
#
#   ./test.sh            all of it
#   ./test.sh native     the logic on this machine, with address and undefined-behaviour sanitizers
#   ./test.sh wine       the real DLL for 32-bit Windows, under Wine
#   ./test.sh check      static checks of the product's sources (tools/check.sh); builds the benchmarks
#
# Installs what is missing, builds below build/, and ends with 0 when everything passed.
set -u
cd "$(dirname "$0")" || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

case "${1:-all}" in
  all) PARTS='native wine check' ;;
  native | wine | check) PARTS=$1 ;;
  *) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 2 ;;
esac

RESULTS=build/test-results
SMALL_DISK=$PWD/build/small-disk
FAILED=
only_one build/testing || exit 2
trap 'stop_wine; remove_small_disk; rm -f build/testing' EXIT
trap 'exit 130' INT TERM

# The output of what failed is shown whole, of the rest one line for every test.
run_ctest() { # PART PRESET
  say "testing $1"
  ctest --preset "$2" --no-tests=error --output-junit "$PWD/$RESULTS/$1.xml" 2>&1 | tee "$RESULTS/$1.log" |
    grep --line-buffered -vE '^ *Start +[0-9]+:|^Test project'
  [ "${PIPESTATUS[0]}" = 0 ]
}

test_native() { build_preset sanitize && run_ctest native sanitize; }

# A disk that a test can fill, where this machine lets us mount one; the test is skipped otherwise.
make_small_disk() {
  remove_small_disk
  mkdir -p "$SMALL_DISK"
  if mount_as_root mount -t tmpfs -o size=64k,mode=1777 none "$SMALL_DISK"; then
    export VANTOR_FULL_DISK="Z:$SMALL_DISK"
  else
    say 'no small disk can be mounted here: the test of a full one is skipped'
  fi
}
remove_small_disk() { ! mountpoint -q "$SMALL_DISK" || mount_as_root umount -l "$SMALL_DISK"; }
# Nobody is asked for a password for this.
mount_as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo -n "$@"; fi 2>/dev/null; }

test_wine() {
  make_small_disk
  build_preset windows && start_display 1280x1024 && prepare_prefix "$PWD/build/test-prefix" &&
    run_ctest wine windows
}

test_check() {
  # What no test runs must at least build.
  build_preset bench || return 1
  say 'checking the sources'
  tools/check.sh build/check 2>&1 | tee "$RESULTS/check.log"
  [ "${PIPESTATUS[0]}" = 0 ]
}

need_packages build wine check package bench || exit 1
rm -rf "$RESULTS"
mkdir -p "$RESULTS"
for part in $PARTS; do
  "test_$part" || FAILED="$FAILED $part"
done

say "results (logs and JUnit files in $RESULTS)"
for part in $PARTS; do
  counts=$(grep -hE 'tests passed, [0-9]+ tests failed|^[0-9]+ findings' "$RESULTS/$part.log" 2>/dev/null)
  case " $FAILED " in
    *" $part "*) printf '%-7s FAILED  %s\n' "$part" "$counts" ;;
    *) printf '%-7s passed  %s\n' "$part" "$counts" ;;
  esac
done
[ -z "$FAILED" ]
