#!/usr/bin/env bash
# package.sh [BUILD]: installs what BUILD (build/release) has, makes the Debian package of it, installs that, uses it
# and removes it again, all in folders of its own. Prints what is wrong, and ends with 0 when nothing is.
# Some functions are called by a trap, or by their names.
# shellcheck disable=SC2317
set -euo pipefail
umask 022
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath "${1-$root/build/release}")
id=example.burnwick.Burnwick
sizes='16 22 24 32 48 64 128 256'
# Seconds until something that should come is given up.
patience=20

# Who uses the programs has not installed them: root would be allowed to write beside them.
user=()
if [ "$(id -u)" -eq 0 ]; then
    user=(setpriv --reuid=65534 --regid=65534 --clear-groups --no-new-privs)
fi

work=$(mktemp -d)
prefix=$work/prefix
target=$work/root
screen=
window=
finish() {
    local process
    for process in $window $screen; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    # Where nobody writes, nobody deletes.
    chmod -R u+w "$work" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 130' INT TERM HUP
chmod 755 "$work"
home=$work/home
# Nothing of the desktop of whoever runs the test is seen, or touched.
station=(
    "${user[@]}" env -i PATH="$target/usr/bin:$PATH" LC_ALL=C.UTF-8 HOME="$home" TMPDIR="$home" XDG_RUNTIME_DIR="$home"
    DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nowhere QT_QPA_PLATFORM=xcb
)

failed=0
complain() {
    printf '%s\n' "$@" >&2
    failed=1
}
give_up() {
    complain "$@"
    exit 1
}
# check WHAT COMMAND...: the command is silent when it succeeds.
check() {
    local what=$1
    shift
    "$@" >"$work/said" 2>&1 || complain "$what:" "$(cat "$work/said")"
}
# must WHAT COMMAND...: what follows makes no sense without it.
must() {
    local what=$1
    shift
    "$@" >"$work/said" 2>&1 || give_up "$what:" "$(cat "$work/said")"
}
# same WHAT EXPECTED FOUND: lines, in any order.
same() {
    diff -u --label expected --label found <(printf '%s\n' "$2" | LC_ALL=C sort) <(printf '%s\n' "$3" | LC_ALL=C sort) \
        >"$work/difference" || complain "$1:" "$(cat "$work/difference")"
}
# await WHAT COMMAND...: until it succeeds.
await() {
    local what=$1 limit=$((SECONDS + patience))
    shift
    until "$@" >"$work/awaited" 2>/dev/null; do
        [ "$SECONDS" -lt "$limit" ] || give_up "$what did not come." "$(tail -n 20 "$work"/*.log 2>/dev/null || true)"
        sleep 0.05
    done
}
# Every file beneath a folder with its permissions, "-rw-r--r-- ./share/…".
files_of() {
    (cd "$1" && find . ! -type d -printf '%M %p\n')
}

# == What is installed, and where

# The papers are not the same in both, and neither are the ends of the man pages' names.
common_files() {
    local man_end=$1 size picture
    cat <<END
-rwxr-xr-x ./bin/Burnwick
-rwxr-xr-x ./bin/burnwick-cli
-rw-r--r-- ./share/applications/$id.desktop
-rw-r--r-- ./share/burnwick/Burnwick.hlp
-rw-r--r-- ./share/bash-completion/completions/burnwick-cli
-rw-r--r-- ./share/doc/burnwick/README.md
-rw-r--r-- ./share/doc/burnwick/docs/architecture.md
-rw-r--r-- ./share/doc/burnwick/docs/building.md
-rw-r--r-- ./share/doc/burnwick/docs/decisions.md
-rw-r--r-- ./share/doc/burnwick/docs/protocol.md
-rw-r--r-- ./share/icons/hicolor/scalable/apps/burnwick.svg
-rw-r--r-- ./share/man/man1/Burnwick.1$man_end
-rw-r--r-- ./share/man/man1/burnwick-cli.1$man_end
-rw-r--r-- ./share/metainfo/$id.metainfo.xml
END
    for picture in "$root"/docs/pictures/*.png; do
        echo "-rw-r--r-- ./share/doc/burnwick/docs/pictures/${picture##*/}"
    done
    for size in $sizes; do
        echo "-rw-r--r-- ./share/icons/hicolor/${size}x$size/apps/burnwick.png"
    done
}

check_prefix() {
    local entry=$prefix/share/applications/$id.desktop metainfo=$prefix/share/metainfo/$id.metainfo.xml size page
    must "cmake --install" cmake --install "$build" --prefix "$prefix"
    same "Installed files" "$(common_files '')
-rw-r--r-- ./share/doc/burnwick/CHANGELOG.md
-rw-r--r-- ./share/doc/burnwick/LICENSE" "$(files_of "$prefix")"
    check "The desktop entry" desktop-file-validate --warn-kde "$entry"
    check "The AppStream data" appstreamcli validate --no-net "$metainfo"
    check "The AppStream data and the desktop entry together" appstreamcli validate-tree --no-net "$prefix"
    for size in $sizes; do
        same "The icon of $size pixels" "PNG $size $size" \
            "$(identify -format '%m %w %h' "$prefix/share/icons/hicolor/${size}x$size/apps/burnwick.png")"
    done
    for page in Burnwick burnwick-cli; do
        check "The man page of $page" mandoc -T lint -W warning "$prefix/share/man/man1/$page.1"
    done
    # A type is associated by the user alone.
    same "Types that the menu's entry claims" '' "$(grep ^MimeType "$entry" || true)"
    check "The entry's name in the program, by which a desktop without X finds it" grep -qF "$id" "$prefix/bin/Burnwick"
}

# == The Debian package

make_package() {
    must "cpack" cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/made"
    mapfile -t packages < <(compgen -G "$work/made/*.deb")
    [ ${#packages[@]} -eq 1 ] || give_up "cpack made ${#packages[@]} packages."
    package=${packages[0]}
}
field() {
    dpkg-deb --field "$package" "$1"
}
newest_change() {
    dpkg-parsechangelog --file "$root/packaging/debian/changelog" --show-field "$1"
}
content() {
    dpkg-deb --fsys-tarfile "$package" | tar --extract --to-stdout "./usr/$1"
}
paper() {
    content "share/doc/burnwick/$1"
}

check_package() {
    local version library release
    version=$("$build/bin/burnwick-cli" --version | grep -oE '[0-9]+\.[0-9]+\.[0-9]+')
    same "Its name" "burnwick_$version-1_$(dpkg --print-architecture).deb" "$(basename "$package")"
    same "The files in the package" "$(common_files .gz | sed 's#\./#./usr/#')
-rw-r--r-- ./usr/share/doc/burnwick/changelog.Debian.gz
-rw-r--r-- ./usr/share/doc/burnwick/changelog.gz
-rw-r--r-- ./usr/share/doc/burnwick/copyright" "$(listing | awk '$1 !~ /^d/ { print $1, $6 }')"
    same "Their owner" root/root "$(listing | awk '{ print $2 }' | sort -u)"
    same "Permissions of the folders" drwxr-xr-x "$(listing | awk '$1 ~ /^d/ { print $1 }' | sort -u)"
    same "What is beside them" "control
md5sums" "$(dpkg-deb --ctrl-tarfile "$package" | tar --list | sed 's#^\./##' | grep .)"

    for library in libc6 libqt6core6 libqt6gui6 libqt6network6 libqt6widgets6 libstdc++6 zlib1g; do
        grep -qF " $library (>= " <<<" $(field Depends)" || complain "It does not depend on a version of $library."
    done
    same "What it needs that is for developers" '' "$(field Depends | grep -oE '[^ ]+-dev\b' || true)"
    same "What has no value" '' \
        "$(for name in Section Priority Maintainer Homepage Description Installed-Size; do
            [ -n "$(field $name)" ] || echo "$name"
        done)"

    # What is told in more than one place.
    same "The newest change in packaging/debian/changelog" "$(field Version)" "$(newest_change Version)"
    same "Who has made it" "$(field Maintainer)" "$(newest_change Maintainer)"
    release="$version $(date --utc --date="$(newest_change Date)" +%F)"
    same "The newest release in the AppStream data" "$release" "$(
        sed -nE 's/.*<release version="([^"]*)" date="([^"]*)".*/\1 \2/p' "$prefix/share/metainfo/$id.metainfo.xml" | head -n 1)"
    same "The summary in the menu" "$(field Description | head -n 1)" \
        "$(sed -n 's/^Comment=//p' "$prefix/share/applications/$id.desktop")"

    check "The list of changes" cmp "$root/CHANGELOG.md" <(paper changelog.gz | gzip --decompress)
    check "The Debian list of changes" cmp "$root/packaging/debian/changelog" <(paper changelog.Debian.gz | gzip --decompress)
    check "The license" cmp <(sed -n '/^Permission/,$p' "$root/LICENSE" | words) \
        <(paper copyright | sed -n 's/^ \.$//; /^ Permission/,$p' | words)
    check "The man page" cmp "$root/packaging/Burnwick.1" <(content share/man/man1/Burnwick.1.gz | gzip --decompress)
}
listing() {
    dpkg-deb --contents "$package"
}
words() {
    tr -s '[:space:]' '\n' | sed '/^$/d'
}

# == Installed by dpkg, used, removed

in_target() {
    # A system may be set to leave papers out.
    PATH=$PATH:/usr/sbin:/sbin dpkg --root="$target" --log=/dev/null --force-not-root --force-depends \
        --path-include="*" "$@"
}
install_package() {
    mkdir -p "$target/var/lib/dpkg/"{info,updates,triggers}
    touch "$target/var/lib/dpkg/status"
    must "dpkg --install" in_target --install "$package"
    same "Its state" 'install ok installed' "$(in_target --status burnwick | sed -n 's/^Status: //p')"
    same "What dpkg finds changed" '' "$(in_target --verify burnwick)"
    # Where a system is installed, nobody but root writes.
    chmod a-w "$target/usr/bin"
    mkdir -m 700 "$home"
    if [ ${#user[@]} -gt 0 ]; then
        chown 65534:65534 "$home"
    fi
}

use_command_line() {
    local sample=$work/sample.bin
    "$build/bin/burnwick-sample" "$sample"
    check "burnwick-cli --version" "${station[@]}" burnwick-cli --version
    same "The installed version" "$("$build/bin/burnwick-cli" --version)" "$("${station[@]}" burnwick-cli --version)"
    same "What burnwick-cli tells of an image" VX-1600 \
        "$("${station[@]}" burnwick-cli info "$sample" | awk '$1 == "Model" { print $2 }')"
}

windows_of() {
    "${station[@]}" xdotool search --onlyvisible --pid "$1" --name '^Burnwick$'
}
use_window() {
    local shown entry=$target/usr/share/applications/$id.desktop
    # The user of the programs is another one than the screen's.
    Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset -ac >"$work/display" 2>"$work/screen.log" &
    screen=$!
    await "A screen" grep . "$work/display"
    station+=("DISPLAY=:$(cat "$work/display")")
    # As the menu starts it.
    "${station[@]}" "$(sed -n 's/^Exec=//p' "$entry")" >"$work/window.log" 2>&1 </dev/null &
    window=$!
    await "The window" windows_of "$window"
    shown=$(head -n 1 "$work/awaited")
    same "The window's class, by which its menu entry is found" "$(sed -n 's/^StartupWMClass=//p' "$entry")" \
        "$("${station[@]}" xprop -id "$shown" -notype WM_CLASS | sed 's/.*, "//; s/"$//')"
    kill -TERM "$window"
    check "How the window ended" wait "$window"
    window=
    same "What it has said" '' "$(cat "$work/window.log")"
    check "The settings in the user's own folder" grep '^\[' "$home/.local/share/burnwick/Burnwick.ini"
}

remove_package() {
    same "Files beside the programs" "Burnwick
burnwick-cli" "$(ls -A "$target/usr/bin")"
    chmod u+w "$target/usr/bin"
    must "dpkg --purge" in_target --purge burnwick
    same "What is left behind" '' "$(cd "$target" && find . -mindepth 1 ! -path './var*')"
    same "What dpkg still knows" '' "$(in_target --list 2>/dev/null | grep burnwick || true)"
}

check_prefix
make_package
check_package
install_package
use_command_line
use_window
remove_package
exit "$failed"
