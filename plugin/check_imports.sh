#!/usr/bin/env bash
# Compares what a DLL imports with its list, and the Windows versions there with the oldest that is served.
#
#   plugin/check_imports.sh OBJDUMP DLL LIST
#
# Prints what is in one of the two alone, or too new; ends with 0 when there is none.
set -u
export LC_ALL=C # objdump speaks the user's language
LIST=$3
SERVED="XP Vista 7"

imported() { "$1" -p "$2" | awk '/DLL Name:/ { dll = tolower($3) } /^\t[0-9a-f]+\t +[0-9]+ / { print dll, $3 }' | sort; }
listed() { grep -vE '^(#|$)' "$LIST" | tr -d '\r'; }

IMPORTED=$(imported "$1" "$2")
[ -n "$IMPORTED" ] || { echo "no imports could be read from $2"; exit 1; }
DIFFERENCES=$(diff <(listed | awk '{ print $1, $2 }' | sort) <(echo "$IMPORTED") | sed -n 's/^</not imported any more:/p; s/^>/not in the list:/p')
TOO_NEW=$(listed | awk -v served=" $SERVED " 'index(served, " " $3 " ") == 0 { print "newer than Windows 7:", $0 }')
[ -z "$DIFFERENCES$TOO_NEW" ] && exit 0
printf '%s\n' "$DIFFERENCES" "$TOO_NEW"
exit 1
