#!/usr/bin/env bash
# tidy.sh [PATH...]: runs clang-tidy on the code for Windows only, or on these files and folders, with the commands of the
# cross build. Prints the warnings, and fails when there are any.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=build/windows
compiler=x86_64-w64-mingw32-g++-posix

# Clang gets the cross compiler's folders of C++ and system headers, and has compiler headers of its own.
own=$(dirname "$("$compiler" -print-libgcc-file-name)")
# The system's handles are pointers, and numbers where all systems and the C library have theirs.
options=(--option=--checks=-performance-no-int-to-ptr --option=--extra-arg-before=--target=x86_64-w64-mingw32 --option=--extra-arg=-nostdinc++)
while read -r folder; do
    options+=("--option=--extra-arg=-isystem$folder")
done < <("$compiler" -E -x c++ -v /dev/null 2>&1 >/dev/null \
    | sed -n '/^#include <\.\.\.>/,/^End of search list/s/^ //p' | grep -vxF -e "$own/include" -e "$own/include-fixed")

[ -f "$build/compile_commands.json" ] || cmake --preset windows >/dev/null
[ $# -gt 0 ] || set -- src/platform/*/windows
tests/tidy.py "$build" "$@" "${options[@]}"
