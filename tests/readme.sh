#!/usr/bin/env bash
# Runs the commands of README's console blocks, in order and in one shell, on the release build. Each must succeed.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

commands=$(awk '/^```/ { inside = ($0 == "```console") } inside && sub(/^\$ /, "")' "$root/README.md")
if [ -z "$commands" ]; then
    echo "README.md shows no commands." >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
ln -s "$root/build" "$work/build"
cd "$work"
export BURNWICK_HOME=$work/home PATH=$root/build/release/bin:$PATH
# Monitor mode gives %1 its meaning; a failed command ends it all, and what it started with it.
if ! timeout 300 bash -emc "trap 'kill \$(jobs -p) 2>/dev/null || true' EXIT
$commands" >log 2>&1 </dev/null; then
    cat log >&2
    echo "A command of README.md failed." >&2
    exit 1
fi
echo "$(grep -c . <<<"$commands") commands of README.md ran as shown."
