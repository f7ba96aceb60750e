#!/usr/bin/env bash
# test.sh [--windows]
# Runs every test there is. Its last lines are the test runner's own. With --windows, those of the programs for
# Windows instead, under wine.
set -euo pipefail
cd "$(dirname "$0")"
jobs=$(nproc)
# Other checkouts compile the same things: the second one finds them in the cache.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

# shellcheck source=tests/support/steps.sh
source tests/support/steps.sh
log=$(mktemp)
trap 'rm -f "$log"' EXIT
trap 'exit 130' INT TERM HUP

# build PRESET [TARGET...]: without targets, everything.
build() {
    local preset=$1
    shift
    step "Building $preset"
    quietly cmake --preset "$preset"
    quietly cmake --build --preset "$preset" ${1+--target "$@"}
}

step "Packages"
packaging/install-packages.sh
if [ "${1-}" = --windows ]; then
    packaging/install-packages.sh packaging/debian-packages-windows.txt
    step "Programs for Windows"
    exec tests/windows.sh
fi

mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp')
mapfile -t scripts < <(git ls-files --cached --others --exclude-standard -- '*.sh' '*.bash' '.ci/run')

step "Layers, format and scripts"
tests/check-layers.sh
clang-format --dry-run --Werror "${sources[@]}"
shellcheck "${scripts[@]}"

build asan
step "clang-tidy"
# The tests are left to the compilers: together they would take as long as all the rest.
sed -n 's/^ *"file": "\(.*\)".*/\1/p' build/asan/compile_commands.json | sort -u \
    | awk -v top="$PWD/" 'index($0, top) == 1 && substr($0, length(top) + 1) ~ /^(src|simulator|bench)\//' \
    | quietly tests/tidy.py build/asan

build fuzz fuzz_targets
step "Fuzz targets"
tests/fuzz/run.sh 3 build/fuzz

build release Burnwick burnwick-cli burnwick-unit burnwick-sample
step "The commands that README shows, the man pages, the completion and the manual"
tests/readme.sh
quietly tests/manpage.sh build/release/bin/burnwick-cli
quietly tests/completion.sh
quietly tests/manual.sh
step "Package"
tests/package.sh

build cli
# Temporary files in memory where there is some: a unit does not wait for a program that waits for a busy disk.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi
# run_tests PRESET [OPTION...]
run_tests() {
    local preset=$1
    step "Tests: $*"
    shift
    if ! ctest --preset "$preset" --parallel "$jobs" --quiet --output-log "build/$preset/tests.log" "$@"; then
        tail -n 60 "build/$preset/tests.log"
        exit 1
    fi
    tail -n 3 "build/$preset/tests.log"
}
run_tests cli
step "The window that is shipped, on a screen"
bin=build/release/bin
quietly tests/gui/end_to_end.sh "$bin/Burnwick" "$bin/burnwick-unit" "$bin/burnwick-sample" build/asan/bin/clipboard_text
run_tests asan
