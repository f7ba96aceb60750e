#!/usr/bin/env bash
# Asks clang-tidy about the code that is Windows' own, in the way in which the cross build compiles it. Prints what it
# finds, and fails when there is something. tidy.sh [FILE...]: these files alone.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=build/windows
compiler=x86_64-w64-mingw32-g++-posix

# Clang takes the other compiler's folders for C++ and the system, and its own for what goes with a compiler.
own=$(dirname "$("$compiler" -print-libgcc-file-name)")
options=(--option=--extra-arg-before=--target=x86_64-w64-mingw32 --option=--extra-arg=-nostdinc++)
while read -r folder; do
    options+=("--option=--extra-arg=-isystem$folder")
done < <("$compiler" -E -x c++ -v /dev/null 2>&1 >/dev/null \
    | sed -n '/^#include <\.\.\.>/,/^End of search list/s/^ //p' | grep -vxF -e "$own/include" -e "$own/include-fixed")

[ -f "$build/compile_commands.json" ] || cmake --preset windows >/dev/null
if [ $# -gt 0 ]; then
    files=("$@")
else
    files=(src/platform/windows/*.cpp)
fi
printf '%s\n' "${files[@]}" | tests/tidy.py "$build" "${options[@]}"
