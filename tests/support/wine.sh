# shellcheck shell=bash
# Sourced, before all else, by tests of programs for Windows: wine, in a prefix that is thrown away.

# Where this system puts a program's memory is left to chance, and once in some thousand starts that is a place which wine
# needs for itself: the program ends at once. At fixed places it never is. Not everyone may ask for them.
if [[ "$(cat /proc/self/personality)" != *4???? ]] && setarch --addr-no-randomize true 2>/dev/null; then
    exec setarch --addr-no-randomize bash "$0" "$@"
fi

unset WINEPREFIX WINEARCH WINESERVER WINELOADER

# prepare_wine PREFIX: makes it. What takes effect when the server starts can be told to wine afterwards; then start_wine.
prepare_wine() {
    export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
    mkdir "$WINEPREFIX"
    # One server for all of it: a program that comes while one is ending finds none.
    in_wine wineserver -p
    in_wine wineboot --init
    in_wine wine winecfg -v win10
    # Wine's own names for the fonts of windows and of listings are none that the toolkit finds.
    local of
    for of in Menu Message Status; do
        tell_wine 'HKCU\Control Panel\Desktop\WindowMetrics' "${of}Font" "$(logfont 'Liberation Sans')" REG_BINARY
    done
    tell_wine 'HKCU\Software\Wine\Fonts\Replacements' 'Courier New' 'Liberation Mono'
}

# tell_wine KEY NAME VALUE [TYPE]
tell_wine() {
    in_wine wine reg add "$1" /v "$2" /t "${4-REG_SZ}" /d "$3" /f
}

# One server for all that follows, with the ports that it was told of.
start_wine() {
    # It ends with 1 when there is none.
    wineserver -k || true
    wineserver -w
    in_wine wineserver -p
    in_wine wine cmd /c exit
}

end_wine() {
    if [ -d "${WINEPREFIX-}" ]; then
        wineserver -k 2>/dev/null || true
        wineserver -w 2>/dev/null || true
    fi
}

# What the server says goes where its starter's words went.
in_wine() {
    "$@" >>"$WINEPREFIX.log" 2>&1 || {
        cat "$WINEPREFIX.log" >&2
        echo "This failed: $*" >&2
        return 1
    }
}

# logfont NAME: the system's description of a font, 12 pixels high, as digits.
logfont() {
    local name
    name=$(printf '%s' "$1" | iconv -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')
    printf 'f4ffffff%024d90010000%014d22%s%0*d' 0 0 "$name" $((128 - ${#name})) 0
}

# windows_path PATH: Windows' name for a file of this system.
windows_path() {
    printf 'Z:%s' "${1//\//\\}"
}
