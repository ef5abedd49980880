#!/usr/bin/env bash
# Static checks: formatting of all sources; clang-tidy (.clang-tidy), cppcheck, the direction of the includes and cycles
# of units for the product.
#
#   tools/check.sh [BUILD FOLDER]     build/check when left out; only the compile commands are made there
#
# Prints the findings and their number, and ends with 0 when there are none.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
need_packages build wine check || exit 1

BUILD=${1:-build/check}
FINDINGS=$BUILD/findings
PRODUCT='host game lists enforcement plugin window filter'
mkdir -p "$BUILD" && : >"$FINDINGS" || exit 1
BUILD=$(cd "$BUILD" && pwd)
FINDINGS=$BUILD/findings

configure() { # NAME [cmake options ...]
  cmake -S . -B "$BUILD/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_EXPORT_COMPILE_COMMANDS=ON "${@:2}" \
    >"$BUILD/$1.log" 2>&1 || { tail -20 "$BUILD/$1.log" >&2; exit 1; }
}

# The product's files in the compile commands of a build.
files_of() {
  sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$BUILD/$1/compile_commands.json" |
    grep -E "^$PWD/(${PRODUCT// /|})/.*\.cpp$" | sort -u
}

tidy() { # NAME [compiler options ...]; the files on standard input
  local name=$1 option options=()
  shift
  for option; do options+=(--extra-arg-before="$option"); done
  xargs -r -P "$(nproc)" -n 3 clang-tidy-16 --quiet -p "$BUILD/$name" ${options[@]+"${options[@]}"} \
    2>>"$BUILD/$name.log" | tee -a "$BUILD/$name.log" | grep -E ': (warning|error): ' >>"$FINDINGS"
  # A file that cannot be read at all is a finding too, wherever it was said.
  [ "${PIPESTATUS[0]}" = 0 ] || grep -q ': \(warning\|error\): ' "$FINDINGS" ||
    echo "clang-tidy failed: see $BUILD/$name.log" >>"$FINDINGS"
}

# window/ids.h is read by the resource compiler as well and keeps its columns. Not by git's list of files: the tree
# may be an unpacked archive, or lie on a machine without git.
check_formatting() {
  say 'formatting'
  find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) ! -path ./window/ids.h -print0 |
    xargs -0 clang-format --dry-run --Werror 2>&1 |
    grep -E ': error: ' | sort -t: -u -k1,1 >>"$FINDINGS"
}

check_clang_tidy() {
  configure native
  configure windows --toolchain "$PWD/cmake/mingw-i686.cmake"
  cmake --build "$BUILD/windows" --target type_library >>"$BUILD/windows.log" 2>&1 || exit 1
  files_of native >"$BUILD/portable"
  say "clang-tidy: $(wc -l <"$BUILD/portable") portable files"
  tidy native <"$BUILD/portable"
  files_of windows | grep -vxFf "$BUILD/portable" >"$BUILD/windows-only"
  say "clang-tidy: $(wc -l <"$BUILD/windows-only") files for Windows"
  # clang reads the library of the compiler that builds the DLL; its 32-bit target decides the sizes.
  local library
  library=$(dirname "$(i686-w64-mingw32-g++-win32 -print-libgcc-file-name)")/include/c++
  tidy windows --target=i686-w64-mingw32 -nostdinc++ -isystem "$library" -isystem "$library/i686-w64-mingw32" \
    -isystem /usr/share/mingw-w64/include <"$BUILD/windows-only"
}

cppcheck_run() { # [options ...]
  cppcheck --quiet --std=c++20 --language=c++ --enable=warning,performance,portability --inline-suppr \
    --suppress=missingInclude -I . -j "$(nproc)" --template='{file}:{line}: {severity}: {message} [{id}]' \
    "$@" 2>>"$FINDINGS"
}

check_cppcheck() {
  say 'cppcheck'
  cppcheck_run --file-list="$BUILD/portable"
  cppcheck_run --platform=win32W --library=windows -D_WIN32 -DUNICODE --file-list="$BUILD/windows-only"
}

# A folder includes itself and what is below it.
may_include() {
  case "$1" in
    host) echo host ;;
    filter) echo filter ;;
    lists | game) echo 'host|game|lists' ;;
    enforcement) echo 'host|game|lists|enforcement' ;;
    window) echo 'host|game|lists|enforcement|window' ;;
    plugin) echo 'host|game|lists|enforcement|window|plugin' ;;
  esac
}

check_includes() {
  say 'includes'
  local folder
  for folder in $PRODUCT; do
    grep -rnE "^#include \"[a-z]+/" "$folder" | grep -vE "#include \"($(may_include "$folder"))/" |
      sed 's/$/  points up/'
  done >>"$FINDINGS"
  # The system's own headers stay at the boundary.
  grep -rnE --include='*.[ch]' --include='*.cpp' --exclude-dir={win32,sandbox,bench,endurance,build} \
    '^#include <(windows|windowsx|winuser|commctrl|uxtheme|ole2|ole|oleauto|oaidl|objbase|unknwn|shlwapi|shellapi)\.h>' . |
    grep -vE '^\./(plugin|tests/(wine|googletest))/' |
    sed 's/$/  is for win32 folders and the COM files/' >>"$FINDINGS"
}

# A unit is a header with its .cpp. Two that need each other, also on a way round, cannot be understood one by one.
check_cycles() {
  say 'cycles of units'
  # shellcheck disable=SC2086
  grep -rE --include='*.h' --include='*.cpp' '^#include "[a-z]+/' $PRODUCT |
    sed -E 's/^([^:]*)\.(h|cpp):#include "(.*)\.h".*/\1 \3/' | awk '$1 != $2' | sort -u | tsort 2>&1 >/dev/null |
    sed -E 's/^tsort: -: ?//; s/^input contains a loop:$/a cycle of units:/; s/^tsort: //' >>"$FINDINGS"
}

check_formatting
check_clang_tidy
check_cppcheck
check_includes
check_cycles
sort -u -o "$FINDINGS" "$FINDINGS"
sed "s|$PWD/||; s|^\./||" "$FINDINGS"
COUNT=$(wc -l <"$FINDINGS")
echo "$COUNT findings"
[ "$COUNT" = 0 ]
