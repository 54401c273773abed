#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs a build for itself, moves what was installed, and builds and runs apps of hosts with it;
# then the same with the Debian packages. Nothing is installed on the machine.
# usage: run.sh BUILD_FOLDER [PACKAGES_FOLDER]
set -euo pipefail
here=$(CDPATH='' cd "$(dirname "$0")" && pwd)
root=$(dirname "$(dirname "$here")")
build=$(realpath "$1")
packages=${2:+$(realpath "$2")}

work=$(mktemp -d)
servers=()
clean_up() {
    if [ ${#servers[@]} -gt 0 ]; then
        kill "${servers[@]}"
        wait "${servers[@]}" || true # they watch the folder that goes now
    fi
    rm -rf "$work"
}
trap clean_up EXIT

fail() {
    echo "$*" >&2
    exit 1
}

quietly() {
    "$@" >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        fail "failed: $*"
    }
}

# Starts the ad server of an installation and names it in the settings there, as a host that ships
# settings of its own does.
serve_from() {
    local prefix=$1 lines line template=
    exec {lines}< <(exec "$prefix/bin/vexmora-adserver")
    servers+=($!)
    while IFS= read -r -t 60 line <&"$lines"; do
        [[ $line == "Request template: "* ]] || continue
        template=${line#Request template: }
        break
    done
    [ -n "$template" ] || fail "the ad server does not say what to ask"
    local settings=$prefix/share/VexmoraSDK/VexmoraSettings.plist
    grep -qF '<string>http://127.0.0.1:8080/ads?container=%@&amp;types=%@</string>' "$settings" ||
        fail "unexpected settings: $(cat "$settings")"
    template=${template//&/&amp;}
    cat >"$settings" <<END
<plist version="1.0"><dict><key>requestUrlFormat</key><string>$template</string></dict></plist>
END
}

# Builds the apps with the package in a prefix and runs them.
check_apps() {
    local kind=$1 prefix=$2 qml=$3 apps=$work/apps-$1-${2##*/} class
    while read -r class; do
        grep -q "\<$class\>" "$here/headers/main.cpp" || fail "headers/main.cpp does not try $class"
    done < <(grep -rhoP '^(class|struct) VEXMORA_EXPORT \K\w+' "$prefix/include/VexmoraSDK" \
        --exclude-dir={quick,widgets} | grep -v '^std$')
    quietly cmake -G Ninja -S "$here" -B "$apps" -DCMAKE_PREFIX_PATH="$prefix" -DKIND="$kind"
    quietly cmake --build "$apps"
    quietly "$apps/version"
    quietly timeout 60 "$apps/quick"
    quietly env XDG_DATA_HOME="$work/data" timeout 60 "$apps/embedded"
    quietly timeout 60 "$apps/widgets"
    quietly timeout 60 "$apps/qml" "$here/qml/Main.qml"
    if [ "$kind" = shared ]; then
        quietly env QML_IMPORT_PATH="$qml" timeout 60 "$apps/qml-import" "$here/qml/Main.qml"
    fi
}

# Builds games with the package in a prefix, where no Qt is found, and runs one of them.
check_games() {
    local kind=$1 prefix=$2 games=$work/games-$1-${2##*/}
    quietly cmake -G Ninja -S "$here/games" -B "$games" -DCMAKE_PREFIX_PATH="$prefix" \
        -DKIND="$kind" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON
    quietly cmake --build "$games"
    quietly "$games/version"
    quietly timeout 60 "$games/any-other-loop"
    ! ldd "$games/game-sdl" | grep -F Qt || fail "a game links Qt"
}

# CMake refuses an app that links the library for Qt and the one for games.
check_both_backends() {
    cmake -G Ninja -S "$here/games" -B "$work/both" -DCMAKE_PREFIX_PATH="$1" -DKIND=shared \
        -DBOTH=ON >"$work/log" 2>&1 && fail "both backends were linked"
    grep -qF VEXMORA_BACKEND "$work/log" || fail "not said why: $(cat "$work/log")"
}

check_pkg_config() {
    local libraries=$1 app=$work/by-pkg-config flags
    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs vexmora-sdk-widgets)
    # shellcheck disable=SC2086 # several flags
    quietly "${CXX:-c++}" -fPIC "$here/widgets/main.cpp" -o "$app" $flags "-Wl,-rpath,$libraries"
    quietly timeout 60 "$app"
    flags=$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --cflags --libs vexmora-sdk-sdl)
    # shellcheck disable=SC2086 # several flags
    quietly "${CXX:-c++}" "$root/examples/06-any-other-loop/main.cpp" -o "$app" $flags \
        "-Wl,-rpath,$libraries"
    quietly timeout 60 "$app"
}

check_missing_qt() {
    cmake -G Ninja -S "$here" -B "$work/no-qt" -DCMAKE_PREFIX_PATH="$1" \
        -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON >"$work/log" 2>&1 && fail "found without Qt"
    tr -s '\n ' ' ' <"$work/log" | grep -qF "Qt Quick (6.4 or newer)" ||
        fail "not said to be missing: Qt Quick; but: $(cat "$work/log")"
}

# The library in the tree of an app, with an ad server of its own. It is not built, since that would
# compile the library once more.
check_source() {
    local template='https://ads.example/?a=%@&b=<%@>;c'
    quietly cmake -G Ninja -S "$here" -B "$work/source" -DKIND=source \
        -DVEXMORA_REQUEST_URL_FORMAT="$template"
    quietly python3 -c '
import plistlib, sys
assert plistlib.load(open(sys.argv[1], "rb")) == {"requestUrlFormat": sys.argv[2]}
' "$work/source/share/VexmoraSDK/VexmoraSettings.plist" "$template"
}

# An installation of archives alone can be made. It is not built either.
check_archives() {
    quietly cmake --preset release -S "$root" -B "$work/archives" \
        -DBUILD_SHARED_LIBS=OFF -DVEXMORA_DEMO=OFF
}

# The recipes can be read, and tell the version of the project.
check_recipes() {
    local recipes=$root/packaging version
    version=$(sed -nE 's/^project\(VexmoraSDK VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
    quietly python3 -c '
import json, sys
assert json.load(open(sys.argv[1]))["version"] == sys.argv[2]
' "$recipes/vcpkg/vexmora-sdk/vcpkg.json" "$version"
    quietly env PYTHONPYCACHEPREFIX="$work" python3 -m py_compile "$recipes/conan/conanfile.py"
    # What vcpkg defines for a port, as far as this one goes.
    cat >"$work/port.cmake" <<'END'
cmake_minimum_required(VERSION 3.25)
foreach(command
        find_acquire_program cmake_configure cmake_install cmake_config_fixup fixup_pkgconfig
        install_copyright)
    function(vcpkg_${command})
        if("SOURCE_PATH" IN_LIST ARGN AND NOT EXISTS "${SOURCE_PATH}/VexmoraSDK/VexmoraSDK.h")
            message(FATAL_ERROR "not a checkout: ${SOURCE_PATH}")
        endif()
    endfunction()
endforeach()
include(${PORT})
END
    quietly cmake -DCURRENT_PACKAGES_DIR="$work/vcpkg" \
        -DPORT="$recipes/vcpkg/vexmora-sdk/portfile.cmake" -P "$work/port.cmake"
}

# The classes with members that are exported, and the functions outside of classes.
exported_symbols() {
    local library
    for library in VexmoraSDK VexmoraSDKQuick VexmoraSDKWidgets VexmoraSDKCairo VexmoraSDKSDL; do
        nm -D --defined-only "$1/lib$library.so" | awk '$2 ~ /^[TDBR]$/ { print $3 }' | c++filt |
            sed -E "s/^non-virtual thunk to //; s/\(.*//; s/\[abi:.*//
                /^(_edata|_end|__bss_start)$/d
                /^VexmoraSDK::(platform::((Application|PropertyList)::)?)?[a-z]\w+$/! s/::~?\w+$//
                s/^/$library: /" | LC_ALL=C sort -u
    done
}

check_recipes
quietly cmake --install "$build" --prefix "$work/first"
mkdir "$work/elsewhere"
mv "$work/first" "$work/elsewhere/installed"
prefix=$work/elsewhere/installed
libraries=$(dirname "$(find "$prefix" -name libVexmoraSDK.so)")

exported_symbols "$libraries" | diff -u "$here/exported-symbols.txt" - ||
    fail "other symbols are exported than exported-symbols.txt lists"
check_missing_qt "$prefix"
for example in 01-banner-cpp 02-native-qml; do
    quietly cmake -G Ninja -S "$root/examples/$example" -B "$work/$example" \
        -DCMAKE_PREFIX_PATH="$prefix"
    quietly cmake --build "$work/$example"
done
serve_from "$prefix"
check_apps shared "$prefix" "$(dirname "$(find "$prefix" -name qmldir -printf '%h\n')")"
check_apps static "$prefix" ""
check_games shared "$prefix"
check_games static "$prefix"
check_both_backends "$prefix"
check_pkg_config "$libraries"
check_source
check_archives

if [ -n "$packages" ]; then
    prefix=$work/packages
    for package in libvexmorasdk-common libvexmorasdk1 libvexmorasdk-cairo1 libvexmorasdk-sdl1 \
        libvexmorasdk-dev qml6-module-vexmorasdk; do
        dpkg-deb -x "$packages/${package}"_*.deb "$work/unpacked"
    done
    mv "$work/unpacked/usr" "$prefix"
    serve_from "$prefix"
    check_apps shared "$prefix" "$(dirname "$(find "$prefix" -name qmldir -printf '%h\n')")"
    check_games shared "$prefix"
fi
