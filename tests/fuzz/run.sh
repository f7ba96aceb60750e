#!/usr/bin/env bash
# run.sh SECONDS [BUILD_DIR]: runs each fuzz target for that time, as many at a time as there are cores. Prints a line for
# each; ends with 1 when a target found something, and keeps the input that shows it.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)

if [[ ! ${1:-} =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: $0 SECONDS [BUILD_DIR]" >&2
    exit 64
fi
seconds=$1
build=${2:-$root/build/fuzz}
if [ ! -x "$build/bin/burnwick-seeds" ] || ! compgen -G "$build/bin/fuzz_*" >/dev/null; then
    echo "No fuzz targets in $build/bin: build them first." >&2
    exit 1
fi

# In memory where there is some: the targets write a file for each input.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    scratch=$(mktemp -d -p /dev/shm burnwick-fuzz-XXXXXX)
else
    scratch=$(mktemp -d)
fi
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$scratch"' EXIT
findings=$(mktemp -d "${TMPDIR:-/tmp}/burnwick-findings-XXXXXX")

# runs LOG: how many inputs a target has tried.
runs() {
    sed -n 's/^stat::number_of_executed_units: *//p' "$1"
}

# fuzz TARGET: false when something was found.
fuzz() {
    local target=$1 corpus=$scratch/corpus/$1 log=$findings/$1.log tmp=$scratch/tmp/$1
    mkdir -p "$corpus" "$tmp"
    # The seeds of some targets are files, those of others are made by now.
    if [ -d "$root/tests/fuzz/seeds/$target" ]; then
        cp "$root/tests/fuzz/seeds/$target"/* "$corpus"
    fi
    if TMPDIR=$tmp "$build/bin/$target" "$corpus" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$findings/$target-" >"$log" 2>&1; then
        echo "$target: $seconds s, $(runs "$log") runs, nothing found"
        rm -f "$log"
        return
    fi
    echo "$target: found something"
    find "$findings" -name "$target*" | sort
    tail -n 40 "$log" >&2
    return 1
}

mkdir "$scratch/corpus"
"$build/bin/burnwick-seeds" "$scratch/corpus"

status=0 running=0
for program in "$build"/bin/fuzz_*; do
    if [ "$running" -ge "$(nproc)" ]; then
        wait -n || status=1
        running=$((running - 1))
    fi
    fuzz "$(basename "$program")" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || status=1
    running=$((running - 1))
done
rmdir "$findings" 2>/dev/null || true
exit "$status"
