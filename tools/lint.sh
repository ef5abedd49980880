#!/usr/bin/env bash
# Formatting and static analysis of everything that is built natively: clang-format over all sources, clang-tidy
# (.clang-tidy) and cppcheck over the product's own logic. Ends with 0 when nothing was found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
need_packages build check || exit 1

FOUND=0
LOGIC='host game lists enforcement plugin window'

say 'formatting'
mapfile -t sources < <(git ls-files -- '*.cpp' '*.h' ':!window/ids.h')
clang-format --dry-run --Werror "${sources[@]}" 2>&1 | grep -E 'error|warning' | cut -c1-160
[ "${PIPESTATUS[0]}" = 0 ] || FOUND=1

say 'static analysis'
[ -e build/native/compile_commands.json ] || cmake --preset native >/dev/null || exit 1
# The compile commands hold every file of the native build; those of the product's own folders count.
mapfile -t analysed < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' build/native/compile_commands.json |
  grep -E "^$PWD/($(tr ' ' '|' <<< "$LOGIC"))/" | sort -u)
printf '%s\n' "${analysed[@]}" |
  xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/native 2>/dev/null | grep -E ' (warning|error): ' && FOUND=1
[ "${PIPESTATUS[1]}" = 0 ] || FOUND=1
# shellcheck disable=SC2086
cppcheck --quiet --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr -I . \
  --suppress=missingInclude --error-exitcode=1 -j "$(nproc)" "${analysed[@]}" || FOUND=1
exit $FOUND
