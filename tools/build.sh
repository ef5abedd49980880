#!/usr/bin/env bash
# Configures and builds a preset, showing how far it is; sourced by the commands at the root.
#
#   build_preset PRESET [TARGET ...]     the whole output is in build/PRESET.log

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
