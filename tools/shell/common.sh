# SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
# SPDX-License-Identifier: GPL-3.0-or-later
# Shared by ./run, ./test and ./bench; sourced from the repository's root.
set -euo pipefail

say() { printf '== %s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"
  elif command -v sudo >/dev/null; then sudo "$@"
  else fail "Installing packages needs root: run this as root, or install sudo."; fi
}

# install_missing LIST...: the Debian packages named in tools/packages/LIST that are not there yet.
install_missing() {
  local wanted missing=() package
  command -v apt-get >/dev/null || { say "This is no Debian; the packages of tools/packages are taken as installed."; return; }
  for wanted in "$@"; do
    while read -r package; do
      [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)" = installed ] || missing+=("$package")
    done < <(grep -v '^#' "tools/packages/$wanted")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "Installing: ${missing[*]}"
  as_root apt-get -o DPkg::Lock::Timeout=300 -q update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -qy \
    -o Dpkg::Use-Pty=0 install --no-install-recommends "${missing[@]}"
}

# configure PRESET [cmake arguments]
configure() {
  local preset=$1; shift
  if [ ! -e "build/$preset/build.ninja" ] || [ $# -gt 0 ]; then
    cmake --preset "$preset" "$@"
  fi
}

# A runtime folder of our own where the session has none; removed at exit.
private_runtime_folder() {
  [ -z "${XDG_RUNTIME_DIR:-}" ] || [ ! -w "$XDG_RUNTIME_DIR" ] || return 0
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
  own_runtime_folder=$XDG_RUNTIME_DIR
}
