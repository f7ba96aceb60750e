#!/usr/bin/env bash
# install-packages.sh [LIST...]: installs the missing Debian packages of these lists: cli, gui, tests and windows, each of
# them debian-packages-LIST.txt. Without a LIST: all but windows. Calls apt-get only when packages are missing.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
[ $# -gt 0 ] || set -- cli gui tests

missing=()
while read -r package; do
    case $package in '' | '#'*) continue ;; esac
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done < <(for list in "$@"; do cat "$here/debian-packages-$list.txt"; done)
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Packages are missing. Let root run:" >&2
        echo "  apt-get update && apt-get install --yes --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update && "${as_root[@]}" apt-get install --yes --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    echo "The packages could not be installed." >&2
    exit 1
fi
