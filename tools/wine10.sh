#!/usr/bin/env bash
# The end-to-end tests under another Wine: the ZIP of the tests in a root of Debian 13, which has Wine 10. The root is made
# once, in a few minutes, and needs the rights of root.
#
#   tools/wine10.sh
#
# Ends with 0 when everything passed.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh

ROOT=$PWD/build/debian13
PLACE=/root/tests
trap 'as_root umount "$ROOT/proc" 2>/dev/null' EXIT
trap 'exit 130' INT TERM

# From the mirror that this machine's own packages come from.
mirror() {
  apt-get indextargets --format '$(REPO_URI) $(ORIGIN) $(RELEASE)' 'Created-By: Packages' |
    awk '$2 == "Debian" && $3 !~ /security/ { print $1; exit }'
}
make_root() {
  [ ! -e "$ROOT/ready" ] || return 0
  say 'making a root of Debian 13'
  as_root rm -rf "$ROOT"
  as_root debootstrap --arch=i386 --variant=minbase --include=wine,wine32,xvfb trixie "$ROOT" "$(mirror)" >build/debian13.log 2>&1 ||
    { tail -5 build/debian13.log >&2; return 1; }
  as_root touch "$ROOT/ready"
}
run_tests() {
  as_root rm -rf "${ROOT:?}$PLACE"
  as_root mkdir -p "$ROOT$PLACE"
  as_root unzip -q build/windows/packages/qrvVNT-*-tests.zip -d "$ROOT$PLACE"
  as_root mount -t proc proc "$ROOT/proc"
  as_root cp tools/wine.sh "$ROOT$PLACE"
  as_root chroot "$ROOT" bash -c "
    cd $PLACE && . ./wine.sh && trap stop_wine EXIT && wine --version && rm -rf prefix &&
    start_display 1280x1024 && prepare_prefix $PLACE/prefix && wine cmd /c run-tests.cmd"
}

need_packages build wine package root && ./package.sh && make_root || exit 1
say 'testing'
run_tests || { as_root cat "$ROOT$PLACE/run-tests.log"; exit 1; }
