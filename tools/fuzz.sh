#!/usr/bin/env bash
# Fuzzes the plug-in's logic: hostile game memory and hostile text.
#
#   tools/fuzz.sh [SECONDS] [TARGET ...]     300 seconds for each of memory_fuzz and text_fuzz when left out
#
# New inputs are kept below build/fuzz/found/, so that the next run goes on from there. What breaks a promise is
# written there as crash-..., slow-... or oom-...: mend the fault and put the input into tests/fuzz/corpus/.
# Ends with 0 when nothing was found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
. tools/build.sh

SECONDS_EACH=${1:-300}
[ $# -gt 0 ] && shift
TARGETS=("$@")
[ ${#TARGETS[@]} -gt 0 ] || TARGETS=(memory_fuzz text_fuzz)

need_packages build fuzz || exit 1
build_preset fuzz "${TARGETS[@]}" || exit 1
export ASAN_SYMBOLIZER_PATH=/usr/bin/llvm-symbolizer-16
# Half of the time went into noting where each piece of memory was made, and into a look for leaks after every input;
# the replay of the kept inputs looks for leaks.
export ASAN_OPTIONS=malloc_context_size=0:detect_stack_use_after_return=0

FAILED=0
for target in "${TARGETS[@]}"; do
  found=build/fuzz/found/$target
  mkdir -p "$found/inputs"
  say "$target for $SECONDS_EACH seconds"
  build/fuzz/tests/fuzz/"$target" -max_total_time="$SECONDS_EACH" -timeout=20 -max_len=600 -detect_leaks=0 -use_value_profile=1 -dict=tests/fuzz/words.dict -print_final_stats=1 \
    -artifact_prefix="$found/" "$found/inputs" "tests/fuzz/corpus/$target" >"$found/log" 2>&1 || {
    FAILED=1
    grep -E 'broken|ERROR|runtime error|Test unit written' "$found/log" >&2
  }
  grep -E 'stat::(number_of_executed_units|average_exec_per_sec|peak_rss_mb)' "$found/log"
  grep -E 'cov: ' "$found/log" | tail -1
done
exit $FAILED
