#!/usr/bin/env bash
# Copies the pictures that the manual and README show from where the tests leave them, as small as they get.
# docs/pictures/update.sh [FOLDER]: without a folder, from build/asan/pictures.
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
from=$(cd "${1-$top/build/asan/pictures}" && pwd)
cd "$top"

mapfile -t names < <(grep -ohE '(\.\./|docs/)pictures/[A-Za-z0-9@._-]+\.(png|jpg)' docs/manual/*.md README.md | sed 's|.*/||' | sort -u)
missing=()
for name in "${names[@]}"; do
    [ -f "$from/$name" ] || missing+=("$name")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "The tests have left no picture of these names in $from: ${missing[*]}" >&2
    exit 1
fi

small=$(mktemp -d)
trap 'rm -rf "$small"' EXIT
for name in "${names[@]}"; do
    # Nothing but the pixels is kept, so that the same picture is the same file.
    if ! convert "$from/$name" -strip -define png:exclude-chunks=date,time -define png:compression-level=9 "$small/$name" \
        || [ "$(stat -c %s "$small/$name")" -ge "$(stat -c %s "$from/$name")" ]; then
        cp "$from/$name" "$small/$name"
    fi
    if ! cmp -s "$small/$name" "docs/pictures/$name"; then
        cp "$small/$name" "docs/pictures/$name"
        echo "docs/pictures/$name"
    fi
done
