#!/usr/bin/env bash
# Builds the packages: qrvVNT-<version>-setup.exe and qrvVNT-<version>.zip, in build/windows/packages.
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
say 'packages:'
(cd build/windows/packages && for package in *; do printf '   build/windows/packages/%s  %s bytes\n' "$package" "$(stat -c %s "$package")"; done)
