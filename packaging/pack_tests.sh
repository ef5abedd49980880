#!/usr/bin/env bash
# Packs the end-to-end tests for a Windows without any tools: a folder "bin" with the programs as the build has them, the
# installer that one of the tests tries, and the script that runs everything.
#
#   packaging/pack_tests.sh BUILD_FOLDER SETUP ZIP
set -eu
here=$(cd "$(dirname "$0")" && pwd)
bin=$1/bin
work=$1/tests-package
rm -rf "$work" "$3"
mkdir -p "$work/bin/other_runtime"
cp "$bin"/*.dll "$bin"/*_test.exe "$bin"/{filter_client,gameserver,host,console,wine_bench,limit}.exe "$bin/client.vbs" "$work/bin"
cp "$bin"/other_runtime/*.dll "$work/bin/other_runtime"
cp "$2" "$work/bin/setup.exe"
if [ -n "${VANTOR_SIGN:-}" ]; then
  for program in "$work"/bin/*.dll "$work"/bin/*.exe; do
    [ "${program##*/}" = setup.exe ] || $VANTOR_SIGN "$program"
  done
fi
# The command interpreter reads its scripts as Windows programs write them.
for script in run-tests.cmd bin/install_test.cmd bin/create.vbs; do
  sed 's/$/\r/' "$here/${script##*/}" > "$work/$script"
done
cd "$work" && zip -qr "$3" .
