# shellcheck shell=bash disable=SC2154
# Sourced by what goes through many steps; $log is a file for what is not shown.

# step WHAT: a heading, with the time so far.
step() {
    printf '\n== %s (after %d s)\n' "$*" "$SECONDS"
}

# quietly COMMAND...: prints what it said only when it failed.
quietly() {
    local status=0
    "$@" >"$log" 2>&1 || status=$?
    [ "$status" -eq 0 ] || {
        cat "$log" >&2
        echo "This failed with $status: $*" >&2
        return 1
    }
}
