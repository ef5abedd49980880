#!/usr/bin/env bash
# The end-to-end tests under the code pages of other languages: Japanese (932), Turkish (1254), Hindi (UTF-8) and
# Russian (1251), each in a Wine prefix of its own.
#
#   tools/locales.sh [LOCALE ...]     ja_JP tr_TR hi_IN ru_RU when left out
#
# Ends with 0 when everything passed.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh
. tools/wine.sh
. tools/build.sh

LOCALES=$PWD/build/locales
FAILED=
only_one build/locales-running || exit 2
trap 'stop_wine; rm -f build/locales-running' EXIT
trap 'exit 130' INT TERM

test_locale() { # LOCALE
  [ -d "$LOCALES/$1.UTF-8" ] || localedef -i "$1" -f UTF-8 "$LOCALES/$1.UTF-8" || return 1
  # This shell itself does not know the locale, and says so.
  { export LOCPATH=$LOCALES LC_ALL=$1.UTF-8; } 2>/dev/null
  say "testing $1"
  start_display 1280x1024 && prepare_prefix "$PWD/build/locale-prefix/$1" || return 1
  printf 'code page %s\n' "$(code_page)"
  ctest --preset windows -E '^packages' --no-tests=error 2>&1 |
    grep -a --line-buffered -vE '^ *Start +[0-9]+:|^Test project|Passed'
  local result=${PIPESTATUS[0]}
  stop_wine
  return "$result"
}

code_page() {
  wine reg query 'HKLM\System\CurrentControlSet\Control\Nls\CodePage' /v ACP 2>/dev/null | grep -oE '[0-9]+' | tail -1
}

need_packages build wine locales || exit 1
build_preset windows || exit 1
mkdir -p "$LOCALES"
[ $# -gt 0 ] || set -- ja_JP tr_TR hi_IN ru_RU
for locale; do (test_locale "$locale") || FAILED="$FAILED $locale"; done
[ -z "$FAILED" ] || { say "failed under:$FAILED"; exit 1; }
