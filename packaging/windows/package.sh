#!/usr/bin/env bash
# package.sh BUILD OUT: makes the installer and the portable archive for Windows of what BUILD/bin has, and leaves them
# in OUT. The same programs give the same packages, whenever they are made.
set -euo pipefail
[ $# -eq 2 ] || {
    sed -n '2,3s/^# //p' "$0" >&2
    exit 64
}
umask 022
export LC_ALL=C.UTF-8 TZ=UTC
windows=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$windows/../.." && pwd)
build=$(realpath "$1")
mkdir -p "$2"
out=$(realpath "$2")
product=$build/packaging/Product.nsh

# The time that the programs, the archive and the installer bear.
: "${SOURCE_DATE_EPOCH:=$(git -C "$root" log -1 --format=%ct 2>/dev/null || stat -c %Y "$root/CHANGELOG.md")}"
export SOURCE_DATE_EPOCH

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

of_product() {
    sed -n "s/^!define $1 \"\(.*\)\"/\1/p" "$product"
}
name=$(of_product Product)-$(of_product Version)
stage=$work/$name
mkdir "$stage"

# Windows' own editor shows lines that end in CR LF, in every version.
for_windows() {
    sed 's/\r*$/\r/'
}
programs=(Burnwick.exe burnwick-cli.exe)
for program in "${programs[@]}"; do
    x86_64-w64-mingw32-strip -o "$stage/$program" "$build/bin/$program"
done
cp "$build/bin/Burnwick.hlp" "$stage"
for_windows <"$build/packaging/README.txt" >"$stage/README.txt"
for_windows <"$root/LICENSE" >"$stage/LICENSE.txt"

# What is linked into the programs wants its own licenses to go with them.
third_party() {
    local package qt
    qt=$(dpkg-query --show --showformat='${source:Version}' qt6-base-dev)
    cat <<END
Burnwick.exe has Qt in it, which the GNU Lesser General Public License 3 covers. It is that of Debian's source package
qt6-base $qt (https://sources.debian.org/src/qt6-base/), without what Burnwick does not use. The source of
Burnwick, which LICENSE.txt covers, builds it anew with another Qt: its file docs/building.md tells how.

END
    for package in qt6-base-dev libcli11-dev nlohmann-json3-dev libz-mingw-w64-dev mingw-w64-x86-64-dev gcc-mingw-w64-base; do
        printf '==== %s ====\n\n' "$package"
        cat "/usr/share/doc/$package/copyright"
        echo
    done
    for package in LGPL-3 GPL-3; do
        printf '==== %s ====\n\n' "$package"
        cat "/usr/share/common-licenses/$package"
        echo
    done
}
third_party >"$work/third-party"
for_windows <"$work/third-party" >"$stage/Third-party.txt"

chmod 644 "$stage"/*
chmod 755 "${programs[@]/#/$stage/}"
touch --date="@$SOURCE_DATE_EPOCH" "$stage"/* "$stage"

rm -f "$out/$name-portable.zip" "$out/$name-setup.exe"
(cd "$work" && zip -X -q "$out/$name-portable.zip" "$name"/*)

# The picture beside the installer's last page: the program's icon on a paler blue of its own.
convert -size 164x314 'gradient:#eef3fa-#9fb5d6' \( "$root/packaging/icons/burnwick-128.png" -resize 104x104 \) \
    -gravity north -geometry +0+44 -composite -type TrueColor "BMP3:$stage/wizard.bmp"
touch --date="@$SOURCE_DATE_EPOCH" "$stage/wizard.bmp"
makensis -V2 -WX -INPUTCHARSET UTF8 "-DStage=$stage" "-DOut=$out/$name-setup.exe" "$product" "$windows/Setup.nsi"
