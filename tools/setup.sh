#!/usr/bin/env bash
# Installs the distribution packages that building, testing and the sandbox need; sourced by
# demo.sh, test.sh and the other commands at the root. Does nothing when all are there.
#
#   need_packages build wine ...     groups: see packages_of below
#
# The 32-bit half comes from the i386 architecture, whose security index is now and then broken
# on mirrors. Then the set is resolved once more from the main and updates suites alone, from a
# source list of our own that leaves the machine's configuration as it was.

packages_of() {
  case "$1" in
    build) echo cmake ninja-build g++ g++-mingw-w64-i686 mingw-w64-tools libz-mingw-w64-dev googletest zlib1g-dev ;;
    wine)  echo wine wine32:i386 libwine:i386 xvfb xauth xdotool imagemagick x11-utils fonts-dejavu-core ;;
    bench) echo libbenchmark-dev ;;
    check) echo clang-tidy-16 cppcheck clang-format ;;
    locales) echo locales ;;
    fuzz)  echo clang-16 libclang-rt-16-dev llvm-16 ;;
    package) echo nsis fp-utils zip unzip ;;
    root)  echo debootstrap ;;
    *) echo "setup: no package group '$1'" >&2; return 1 ;;
  esac
}

say() { printf '== %s\n' "$*"; }

missing_packages() {
  local group package
  for group in "$@"; do
    for package in $(packages_of "$group"); do
      dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed' || echo "$package"
    done
  done
}

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

apt_install() { # [apt options ...] -- packages ...
  local options=()
  while [ "$1" != -- ]; do options+=("$1"); shift; done
  shift
  as_root env DEBIAN_FRONTEND=noninteractive apt-get "${options[@]}" install -y --no-install-recommends \
    -o Dpkg::Use-Pty=0 "$@" | stdbuf -oL grep -E '^(Get:|Setting up|E:|The following packages have unmet)' | stdbuf -oL cut -c1-110
  return "${PIPESTATUS[0]}"
}

# The same mirror, but only the suites whose indexes are known to fit together.
install_from_main_suites() {
  local work status
  work=$(mktemp -d)
  mkdir -p "$work/parts" "$work/lists/partial"
  apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT) $(ORIGIN)' 'Created-By: Packages' |
    awk '$4 == "Debian" && $2 !~ /security/ { print "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]", $1, $2, $3 }' |
    sort -u > "$work/parts/main.list"
  # What has come from the security suite already must step back where both architectures need one version.
  printf 'Package: *\nPin: release o=Debian\nPin-Priority: 1001\n' > "$work/preferences"
  local options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/parts" -o "Dir::State::Lists=$work/lists"
    -o "Dir::Etc::preferences=$work/preferences" -o Dir::Etc::preferencesparts=/dev/null)
  chmod -R a+rX "$work"
  as_root apt-get "${options[@]}" update >/dev/null
  apt_install "${options[@]}" --allow-downgrades -- "$@"
  status=$?
  rm -rf "$work"
  return $status
}

need_packages() {
  local missing
  missing=$(missing_packages "$@")
  [ -z "$missing" ] && return 0
  if ! command -v apt-get >/dev/null; then
    echo "setup: please install: $missing" >&2
    return 1
  fi
  say "installing packages: $(echo $missing)"
  if echo "$missing" | grep -q ':i386' && ! dpkg --print-foreign-architectures | grep -qx i386; then
    as_root dpkg --add-architecture i386
  fi
  as_root apt-get update >/dev/null 2>&1 || say 'a package index could not be read; going on with the others'
  # shellcheck disable=SC2086
  apt_install -- $missing && [ -z "$(missing_packages "$@")" ] && return 0
  say 'trying again with the main and updates suites alone; libraries from the security suite step back to theirs'
  # shellcheck disable=SC2086
  install_from_main_suites $missing
  missing=$(missing_packages "$@")
  [ -z "$missing" ] || { echo "setup: could not install: $missing" >&2; return 1; }
}
