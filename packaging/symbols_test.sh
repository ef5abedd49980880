#!/usr/bin/env bash
# The symbols that were split off belong to the DLL: an address of it, as a crash dump has one, is found in its source.
#
#   packaging/symbols_test.sh OBJDUMP ADDR2LINE DLL SYMBOLS
set -u
image=$("$1" -p "$3" | awk '$1 == "ImageBase" { print $2 }')
function=$("$1" -p "$3" | awk '/base\[ *2\] / { print $(NF - 2) }') # DllGetClassObject, the second export
found=$("$2" -f -e "$4" "$(printf '0x%x' $((0x$image + 0x$function)))")
echo "$found"
case "$found" in *DllGetClassObject*plugin/dll.cpp:*) exit 0 ;; *) exit 1 ;; esac
