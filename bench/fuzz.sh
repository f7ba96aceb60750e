#!/usr/bin/env bash
# Builds the fuzz targets and runs each for so many seconds: bench/fuzz.sh [SECONDS], 60 unless told. Prints a line
# a target; ends with 1 when something was found, and leaves the input that shows it.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

if [ $# -gt 1 ] || [[ ! ${1-60} =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: $0 [SECONDS]" >&2
    exit 64
fi

# Only the results go to standard output.
(cd "$root" && cmake --preset fuzz && cmake --build --preset fuzz --target fuzz_targets) >&2
exec "$root/tests/fuzz/run.sh" "${1-60}" "$root/build/fuzz"
