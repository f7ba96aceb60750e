#!/bin/sh
# Measures what the program costs, and prints one table. Ends with 0 when every figure is within its limit.
#
#   bench/figures.sh          builds the release preset and measures that
#   bench/figures.sh FOLDER   measures what stands in this build folder
set -eu

root=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)

case $# in
0)
    build=$root/build/release
    # Only the table goes to standard output.
    (cd "$root" && cmake --preset release && cmake --build --preset release) >&2
    ;;
1)
    build=$1
    ;;
*)
    echo "usage: $0 [BUILD-FOLDER]" >&2
    exit 64
    ;;
esac

exec "$build/bin/burnwick-figures"
