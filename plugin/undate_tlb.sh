#!/bin/sh
# Takes the time at which a type library was compiled out of it, as text and as number, so that the same sources give
# the same bytes.
#
#   plugin/undate_tlb.sh FILE
exec perl -0777 -pi -e '
  s/(Created by WIDL version [0-9.]+ at ).{24}/$1Thu Jan  1 00:00:00 1970/s
    && s/(00:00:00 1970.{0,8}?\x13\x00).{4}(?=WW)/$1\0\0\0\0/s
    or die "the type library carries no time where it was expected\n"' "$1"
