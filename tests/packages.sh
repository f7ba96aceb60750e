#!/usr/bin/env bash
# packages.sh: a user who is neither root nor has sudo is told the command that installs the missing packages.
set -euo pipefail
cd "$(dirname "$0")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"

# Programs of a system without sudo, on which no package is installed.
for program in bash cat dirname id; do
    ln -s "$(command -v "$program")" "$work/$program"
done
printf '#!/bin/sh\nexit 1\n' >"$work/dpkg-query"
chmod 755 "$work/dpkg-query"
as_user=()
[ "$(id -u)" -ne 0 ] || as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)

# The user need not be able to read the checkout.
cp -r packaging "$work/packaging"
chmod -R a+rX "$work/packaging"
status=0
"${as_user[@]}" env -i PATH="$work" bash "$work/packaging/install-packages.sh" cli >"$work/out" 2>"$work/err" || status=$?
packages=$(grep -v '^#' packaging/debian-packages-cli.txt | tr '\n' ' ')
if [ "$status" -ne 1 ] || [ -s "$work/out" ] \
    || ! grep -qxF "  apt-get update && apt-get install --yes --no-install-recommends ${packages% }" "$work/err"; then
    echo "install-packages.sh ended with $status, without the command that root should run:" >&2
    cat "$work/out" "$work/err" >&2
    exit 1
fi
