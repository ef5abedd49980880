#!/usr/bin/env bash
# Builds the packages: qrvVNT-<version>-setup.exe, qrvVNT-<version>.zip and, with the end-to-end tests as programs for a
# Windows without any tools, qrvVNT-<version>-tests.zip; in build/windows/packages.
#
#   ./package.sh
#
# Installs what is missing from the distribution's packages.
set -eu
cd "$(dirname "$0")"
. tools/setup.sh
. tools/build.sh

need_packages build wine package
build_preset windows all help_book
say 'packing'
(cd build/windows && rm -rf packages && cpack >packages.log 2>&1) || { tail -20 build/windows/packages.log >&2; exit 1; }
rm -rf build/windows/packages/_CPack_Packages

# One folder "bin", as the build has it, and the script that runs what is there.
pack_tests() { # ZIP
  local work=build/windows/tests-package
  rm -rf "$work"
  mkdir -p "$work"/bin/other_runtime
  (cd build/windows/bin && cp ./*.dll ./*_test.exe filter_client.exe gameserver.exe host.exe console.exe wine_bench.exe client.vbs "$OLDPWD/$work/bin" &&
    cp other_runtime/*.dll "$OLDPWD/$work/bin/other_runtime")
  sed 's/$/\r/' packaging/run-tests.cmd > "$work/run-tests.cmd"
  (cd "$work" && zip -qr "$1" .)
}
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
pack_tests "$PWD/build/windows/packages/qrvVNT-$version-tests.zip"
say 'packages:'
(cd build/windows/packages && for package in *; do printf '   build/windows/packages/%s  %s bytes\n' "$package" "$(stat -c %s "$package")"; done)
