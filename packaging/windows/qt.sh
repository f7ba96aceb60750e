#!/usr/bin/env bash
# qt.sh LINK
# Makes LINK lead to a Qt for Windows: static, of the version that this system's own Qt has, with what Burnwick needs of
# it. Builds it from the distribution's source package when the cache (~/.cache/burnwick) has none of that name, which
# takes a quarter of an hour on two cores. Needs the packages of debian-packages-windows.txt.
set -euo pipefail
[ $# -eq 1 ] || {
    echo "usage: qt.sh LINK" >&2
    exit 64
}
link=$1
toolchain=$(cd "$(dirname "$0")/../../cmake" && pwd)/windows-toolchain.cmake
version=$(dpkg-query --show --showformat='${source:Version}' qt6-base-dev)

# Features that Burnwick does not use. Qt has its own copies of the other libraries that it needs.
without=(
    # No database, no printer, no connection but the one to another copy of itself.
    concurrent dbus sql printsupport xml
    brotli dnslookup dtls gssapi http libproxy networkdiskcache networklistmanager networkproxy ocsp openssl schannel
    socks5 sspi ssl topleveldomain udpsocket zstd
    # No scenes, no pens, no pages; fonts are drawn by the system.
    freetype gif glib graphicsview ico icu jpeg movie opengl pdf tabletevent textmarkdownreader textmarkdownwriter
    textodfwriter tuiotouch undocommand vulkan
    direct2d directwrite directwrite3  # is not for this compiler; fonts are drawn without them as well
    # None of these in its windows.
    calendarwidget columnview commandlinkbutton datawidgetmapper datetimeedit dial errormessage fontcombobox fontdialog
    keysequenceedit lcdnumber mdiarea progressdialog scroller splashscreen toolbox wizard
    hijricalendar islamiccivilcalendar jalalicalendar
    system_doubleconversion system_freetype system_harfbuzz system_jpeg system_libb2 system_pcre2 system_png
    system_textmarkdownreader system_zlib
)
options=(-DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DINPUT_opengl=no -DINPUT_openssl=no
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF
    -DQT_HOST_PATH=/usr "-DQT_HOST_PATH_CMAKE_DIR=/usr/lib/$(dpkg-architecture --query DEB_HOST_MULTIARCH)/cmake")
for feature in "${without[@]}"; do
    options+=("-DFEATURE_$feature=OFF")
done

# Unused folders of the source that no feature switches off.
unused_folders='devicediscovery|fbconvenience|minimal|tls'

# The name depends on everything that the build depends on.
compiler=$(dpkg-query --show --showformat='${Version} ' g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev)
made_of=$({ printf '%s\n' "$compiler" "${options[@]}" "$unused_folders" && sed '/^#/d' "$toolchain"; } | sha256sum | cut -c 1-12)
cache=${XDG_CACHE_HOME:-${HOME:-/var/tmp}/.cache}/burnwick
prefix=$cache/qt-windows-$version-$made_of

# sources: the source package into this folder. The system's own list of packages is read, and never changed.
sources() {
    local from=/etc/apt apt=$PWD/apt file
    mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial" "$apt/sources"
    for file in "$from/sources.list" "$from"/sources.list.d/*.list; do
        # Disks that are not in their drive are of no use.
        [ ! -f "$file" ] || sed -n -e '/cdrom:/d' -e 's/^deb\(-src\)\?\([[:blank:]]\)/deb-src\2/p' "$file" | sort -u \
            >"$apt/sources/$(basename "$file" .list).list"
    done
    for file in "$from"/sources.list.d/*.sources; do
        [ ! -f "$file" ] || sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt/sources/$(basename "$file")"
    done
    set -- -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$apt/sources" -o "Dir::State::Lists=$apt/lists" \
        -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=root
    apt-get "$@" update
    apt-get "$@" --download-only source "qt6-base=$version" || {
        echo "The sources of qt6-base $version cannot be had. If there are newer ones, upgrade qt6-base-dev."
        return 1
    }
    # What was loaded has been held against the signed list.
    dpkg-source --no-check --extract ./*.dsc source
}

remove_unused_folders() {
    sed -i -E "/^ *add_subdirectory\(($unused_folders)\)/d" source/src/platformsupport/CMakeLists.txt \
        source/src/plugins/CMakeLists.txt source/src/plugins/platforms/CMakeLists.txt
}

# Neither the library nor the programs made with it tell of the folder where that happened.
build() {
    cmake -G Ninja -S source -B build -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX=/qt \
        "-DCMAKE_C_FLAGS=-ffile-prefix-map=$PWD=." "-DCMAKE_CXX_FLAGS=-ffile-prefix-map=$PWD=." "${options[@]}"
    cmake --build build
    cmake --install build --prefix "$prefix.part"
}

if [ ! -d "$prefix" ]; then
    mkdir -p "$cache"
    # Two builds at the same time: the second one waits, and finds it done.
    exec 9>"$cache/lock"
    flock 9
fi
if [ ! -d "$prefix" ]; then
    echo "Building Qt for Windows, once: $prefix"
    # Half a gigabyte: more than a temporary folder in memory may hold.
    work=$(mktemp -d "$cache/build.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    cd "$work"
    rm -rf "$prefix.part"
    set +e
    (set -e; sources; remove_unused_folders; build) >"$cache/qt-windows.log" 2>&1 </dev/null
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        tail -n 40 "$cache/qt-windows.log" >&2
        echo "Qt for Windows could not be built: $cache/qt-windows.log tells all." >&2
        exit 1
    fi
    mv "$prefix.part" "$prefix"
    cd - >/dev/null
    # What nobody has asked for in a month.
    find "$cache" -mindepth 1 -maxdepth 1 -type d -mtime +30 -exec rm -rf {} +
fi
touch "$prefix"
mkdir -p "$(dirname "$link")"
ln -sfn "$prefix" "$link"
