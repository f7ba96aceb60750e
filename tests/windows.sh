#!/usr/bin/env bash
# Builds the programs for Windows, and tries them under wine: each trial in a prefix of its own that is thrown away, some
# of them at the same time. Prints what fails, and one line of each trial that went well.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 LC_ALL=C.UTF-8
bin=build/windows/bin
native=build/cli/bin
log=$(mktemp)
running=() says=()
leave() {
    [ ${#running[@]} -eq 0 ] || kill "${!running[@]}" 2>/dev/null || true
    wait
    rm -f "$log"*
}
trap leave EXIT
trap 'exit 130' INT TERM HUP

# shellcheck source=tests/support/steps.sh
source tests/support/steps.sh

step "Units and samples of this system"
quietly cmake --preset cli
quietly cmake --build --preset cli --target burnwick-cli burnwick-sample burnwick-unit null_modem
step "Qt"
packaging/windows/qt.sh build/windows-qt
step "Building windows"
quietly cmake --preset windows
quietly cmake --build --preset windows
quietly cmake --build --preset windows --target windows_packages
mkdir -p build/windows/pictures

# needs_windows_alone PROGRAM: Windows' own libraries, and no other. What they are called there never changes.
needs_windows_alone() {
    local foreign
    foreign=$(x86_64-w64-mingw32-objdump -p "$bin/$1" | sed -n 's/^\tDLL Name: //p' | grep -viE "^($windows_own)\.(dll|drv)$" \
        || true)
    [ -z "$foreign" ] || {
        echo "$1 needs what Windows does not have: $foreign" >&2
        exit 1
    }
}
windows_own='advapi32|api-ms-win-core-(synch|winrt|winrt-string)-l[0-9]-[0-9]-[0-9]|authz|comctl32|comdlg32|d3d9|d3d11|dnsapi|dwmapi|dwrite|dxgi|gdi32|imm32|iphlpapi|kernel32|mpr'
windows_own+='|msvcrt|netapi32|ole32|oleaut32|setupapi|shcore|shell32|shlwapi|user32|userenv|uxtheme|version|winhttp|winmm|winspool|ws2_32|wtsapi32'
needs_windows_alone burnwick-cli.exe
needs_windows_alone Burnwick.exe

# trial WHAT COMMAND...: in the background. What it says is in a file of its own until it has ended.
trial() {
    local said
    said=$(mktemp "$log.XXXXXX")
    "${@:2}" >"$said" 2>&1 &
    running[$!]=$1
    says[$!]=$said
}
# ended: waits for one trial, and prints what it said.
ended() {
    local process status=0
    wait -n -p process || status=$?
    step "${running[$process]}"
    cat "${says[$process]}"
    unset "running[$process]"
    [ "$status" -eq 0 ] || failed=1
}
failed=0
step "Trials"
# The longest first, and one more at a time than there are cores: they wait a good part of their time.
trial "Window on a screen" tests/gui/windows/window.sh "$bin/Burnwick.exe" "$native/burnwick-unit" "$native/burnwick-sample"
for half in 0 1; do
    trial "Tests, half $((half + 1))" env GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=$half tests/windows/programs.sh
done
ended
trial "clang-tidy" tests/windows/tidy.sh
ended
trial "Installing and removing" tests/windows/setup.sh
ended
trial "Command line" tests/windows/command_line.sh
ended
ended
ended
[ "$failed" -eq 0 ] || {
    echo "The programs for Windows fail." >&2
    exit 1
}
printf '\nThe programs for Windows went through all of it (%d s).\n' "$SECONDS"
