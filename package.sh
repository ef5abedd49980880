#!/usr/bin/env bash
# Builds the packages: qrvVNT-<version>-setup.exe, qrvVNT-<version>.zip; with the end-to-end tests as programs for a
# Windows without any tools, qrvVNT-<version>-tests.zip; and the DLLs' symbols, qrvVNT-<version>-symbols.zip; in
# build/windows/packages.
#
#   ./package.sh
#   VANTOR_SIGN='COMMAND OPTIONS' ./package.sh     each program, the installer and its uninstaller is given to that
#                                                  command, which signs it in place
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

version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
packages=$PWD/build/windows/packages
packaging/pack_tests.sh build/windows "$packages/qrvVNT-$version-setup.exe" "$packages/qrvVNT-$version-tests.zip"
(cd build/windows/symbols && zip -q "$packages/qrvVNT-$version-symbols.zip" ./*.debug)
say 'packages:'
(cd build/windows/packages && for package in *; do printf '   build/windows/packages/%s  %s bytes\n' "$package" "$(stat -c %s "$package")"; done)
