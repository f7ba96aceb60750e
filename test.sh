#!/usr/bin/env bash
# test.sh                     runs every test and check. The last lines are the test runner's own.
# test.sh --quick [FOLDER...] builds the tests of these folders (src/engine, tests/engine and engine are the same one)
#                             without sanitizers, and runs them: for work on a folder. Without a folder: all tests.
# test.sh --windows           builds the programs for Windows, and runs their tests under wine.
set -euo pipefail
cd "$(dirname "$0")"
jobs=$(nproc)
# Checkouts in other folders share the compiler's cache.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

# shellcheck source=tests/support/steps.sh
source tests/support/steps.sh
log=$(mktemp)
background=
finish() {
    [ -z "$background" ] || kill "$background" 2>/dev/null || true
    wait
    rm -f "$log"*
}
trap finish EXIT
trap 'exit 130' INT TERM HUP

# build PRESET [TARGET...]: without targets, everything.
build() {
    local preset=$1
    shift
    step "Building $preset"
    quietly cmake --preset "$preset"
    quietly cmake --build --preset "$preset" ${1+--target "$@"}
}

# Temporary files in memory where possible: a unit does not wait for a program that waits for a busy disk.
use_memory() {
    if [ -d /dev/shm ] && [ -w /dev/shm ]; then
        export TMPDIR=/dev/shm
    fi
}

# run_tests PRESET [OPTION...]: one process more than cores, since some tests wait most of their time.
run_tests() {
    local preset=$1
    step "Tests: $*"
    shift
    if ! ctest --preset "$preset" --parallel $((jobs + 1)) --quiet --output-log "build/$preset/tests.log" "$@"; then
        tail -n 60 "build/$preset/tests.log"
        exit 1
    fi
    sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\?\.$/\1/p' "build/$preset/Testing/Temporary/LastTest.log" \
        | awk '{ tests += $1 } END { print tests " tests in " NR " processes" }'
    tail -n 3 "build/$preset/tests.log"
}

# folder_of PATH: the folder that its tests are listed under, for example engine for src/engine/SerialFlash.cpp.
folder_of() {
    local path=${1#./}
    path=${path#src/}
    path=${path#tests/}
    echo "${path%%/*}"
}

quick() {
    local folder folders=() known
    step "Packages"
    packaging/install-packages.sh
    step "Building debug"
    quietly cmake --preset debug
    if [ $# -eq 0 ]; then
        quietly cmake --build --preset debug
        use_memory
        run_tests debug
        return
    fi
    known=$(ctest --preset debug --print-labels | sed -n 's/^  //p')
    for folder in "$@"; do
        folder=$(folder_of "$folder")
        grep -qxF -e "$folder" <<<"$known" || {
            echo "$folder has no tests. These folders have: ${known//$'\n'/ }." >&2
            exit 64
        }
        folders+=("$folder")
    done
    quietly cmake --build --preset debug --target "${folders[@]/#/tests_}"
    use_memory
    run_tests debug --label-regex "^($(IFS='|' && echo "${folders[*]}"))\$"
}

case ${1-} in
--quick)
    quick "${@:2}"
    exit
    ;;
--windows | '') ;;
*)
    sed -n '2,/^set/s/^# //p' "$0" >&2
    exit 64
    ;;
esac

step "Packages"
packaging/install-packages.sh
if [ "${1-}" = --windows ]; then
    packaging/install-packages.sh windows
    step "Programs for Windows"
    exec tests/windows.sh
fi

mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp')
mapfile -t scripts < <(git ls-files --cached --others --exclude-standard -- '*.sh' '*.bash' '.ci/run')

step "Layers, format and scripts"
tests/check-layers.sh
tests/packages.sh
clang-format --dry-run --Werror "${sources[@]}"
shellcheck "${scripts[@]}"

build asan
step "clang-tidy"
# Tests are left to the compilers: together they would take as long as all the rest.
quietly tests/tidy.py build/asan src simulator

build tsan tests_job
run_tests tsan --label-regex '^job$'

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

# The core as it is shipped: its objects come from the compiler's cache.
build cli
use_memory
# The window as it is shipped, used on a screen. It waits most of its time.
bin=build/release/bin
tests/gui/end_to_end.sh "$bin/Burnwick" "$bin/burnwick-unit" "$bin/burnwick-sample" build/asan/bin/clipboard_text \
    >"$log.window" 2>&1 &
background=$!
run_tests cli
step "The window that is shipped, on a screen"
wait "$background" || {
    cat "$log.window"
    exit 1
}
background=
run_tests asan
