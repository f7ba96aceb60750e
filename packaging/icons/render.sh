#!/usr/bin/env bash
# Renders the icon's pictures anew, after burnwick.svg has changed, and Windows' icon of them.
set -euo pipefail
cd "$(dirname "$0")"

command -v rsvg-convert >/dev/null || {
    echo "rsvg-convert is missing: install the package librsvg2-bin." >&2
    exit 1
}
command -v convert >/dev/null || {
    echo "convert is missing: install the package imagemagick." >&2
    exit 1
}
for size in 16 22 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" --output "burnwick-$size.png" burnwick.svg
done
# Windows scales the ones between; the largest is stored compressed.
convert burnwick-{16,24,32,48,64,256}.png burnwick.ico
