#!/usr/bin/env bash
# install-packages.sh [LIST...]
# Installs the Debian packages of these lists (debian-packages.txt) that are missing; calls apt-get only when some are.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
lists=("$@")
[ $# -gt 0 ] || lists=("$here/debian-packages.txt")

missing=()
while read -r package; do
    case $package in '' | '#'*) continue ;; esac
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done < <(cat "${lists[@]}")
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "These packages are missing: ${missing[*]}. Install them as root, or install sudo." >&2
        exit 1
    }
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
