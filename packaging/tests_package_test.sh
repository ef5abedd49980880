#!/usr/bin/env bash
# The ZIP of the tests as somebody on Windows uses it: unpacked into a path with a blank, where every program runs with
# floating-point exceptions unmasked (invalid, division by zero, overflow), as some hosts' run-times have them; and into a
# user's folder. In a prefix of its own; nothing may stay registered there.
#
#   packaging/tests_package_test.sh BUILD_FOLDER VERSION
#
# Exit code 0 when all held, 1 when something did not, 77 without the tools that make packages.
set -u
for tool in makensis chmcmd zip unzip wine; do command -v $tool >/dev/null || { echo "no $tool"; exit 77; }; done
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../tools/wine.sh"

BUILD=$(cd "$1" && pwd)
WORK=$BUILD/tests-package-test
FAILED=0
# It lies on another drive than these folders, and its test needs a relative path to it.
unset VANTOR_FULL_DISK
trap 'stop_wine; rm -rf "$WORK"' EXIT

registered() { wine reg query "HKLM\\Software\\Classes\\$1" >/dev/null 2>&1; }
run_in() { # FOLDER
  mkdir -p "$1"
  (cd "$1" && unzip -q "$WORK/tests.zip" && wine cmd /c run-tests.cmd) || { FAILED=1; cat "$1/run-tests.log"; }
  for class in qrvVNT.clsPlugin qrvMFM.clsMFD; do
    ! registered $class || { echo "$class is still registered"; FAILED=1; }
  done
  rm -rf "$1"
}

rm -rf "$WORK"
mkdir -p "$WORK"
{ cmake --build "$BUILD" --target help_book && (cd "$BUILD" && cpack -G NSIS -B "$WORK/packages") &&
  "$here/pack_tests.sh" "$BUILD" "$WORK/packages/qrvVNT-$2-setup.exe" "$WORK/tests.zip"; } >"$WORK/pack.log" 2>&1 ||
  { tail -20 "$WORK/pack.log"; exit 1; }
prepare_prefix "$WORK/prefix" || exit 1

VANTOR_CONTROL_WORD=1372 run_in "$WINEPREFIX/drive_c/Test folder"
run_in "$(echo "$WINEPREFIX"/drive_c/users/"$(id -un)")/qrvVNT"
wine reg add 'HKLM\Software\Classes\qrvVNT.clsPlugin' /f >/dev/null 2>&1
(cd "$WINEPREFIX/drive_c" && unzip -q "$WORK/tests.zip" run-tests.cmd 'bin/create.vbs' && wine cmd /c run-tests.cmd)
[ $? = 2 ] || { echo 'an installed plug-in is not noticed'; FAILED=1; }
exit $FAILED
