#!/usr/bin/env bash
# Building, as the commands at the root share it; sourced by them.
#
#   build_preset PRESET [TARGET ...]     configures and builds, showing how far it is; the whole output is in
#                                        build/PRESET.log
#   only_one FILE                        false when another run has the file; its owner removes it at its end

build_preset() {
  local preset=$1 log=build/$1.log
  shift
  mkdir -p build
  say "building $preset"
  if ! cmake --preset "$preset" >"$log" 2>&1; then
    tail -20 "$log" >&2
    return 1
  fi
  # A line now and then: a whole build has hundreds of steps.
  cmake --build --preset "$preset" ${1:+--target "$@"} 2>&1 | tee -a "$log" |
    awk -F'[][/]' '/^\[[0-9]+\/[0-9]+\]/ { step = $2; if (step - shown >= 25) { print "   " $2 " of " $3; fflush(); shown = step } }'
  [ "${PIPESTATUS[0]}" = 0 ] && return 0
  grep -A12 -m3 -E 'error|FAILED' "$log" | cut -c1-300 >&2
  return 1
}

only_one() {
  mkdir -p "$(dirname "$1")"
  if kill -0 "$(cat "$1" 2>/dev/null)" 2>/dev/null; then
    echo "${0##*/}: another one is running here" >&2
    return 1
  fi
  echo $$ > "$1"
}
