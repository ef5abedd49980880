#!/usr/bin/env bash
# Builds what the packages carry twice, from copies of the sources in folders of different names and one after the
# other, and compares the bytes.
#
#   tools/reproducible.sh
#
# Ends with 0 when both builds are the same.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/setup.sh

ROOT=$PWD/build/reproducible
TARGETS='qrvVNT qrvudpfw qrvMFM qrvGMF gameserver host console'

copy_sources() { # FOLDER
  mkdir -p "$1"
  tar -c --exclude ./build --exclude ./.git . | tar -x -C "$1"
}

build_copy() { # FOLDER
  say "building in ${1#"$PWD"/}"
  # A cache of compiled files would give both builds the same object.
  # shellcheck disable=SC2086
  (cd "$1" && export CCACHE_DISABLE=1 && cmake --preset windows && cmake --build --preset windows --target $TARGETS) >"$1.log" 2>&1 ||
    { tail -20 "$1.log" >&2; exit 1; }
}

sums() { (cd "$1/build/windows/bin" && find . -maxdepth 1 \( -name '*.dll' -o -name '*.exe' \) -exec sha256sum {} + | sort -k2); }

need_packages build wine || exit 1
rm -rf "$ROOT"
# Both first: somebody may work on the sources meanwhile.
for folder in one/sources 'another place'; do copy_sources "$ROOT/$folder"; done
for folder in one/sources 'another place'; do (build_copy "$ROOT/$folder") || exit 1; done
sums "$ROOT/one/sources" | sed 's/^\(.\{16\}\)[^ ]*/\1/'
diff <(sums "$ROOT/one/sources") <(sums "$ROOT/another place") && say 'the two builds are the same'
