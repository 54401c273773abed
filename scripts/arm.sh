#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds for a processor of phones with Debian's cross compiler and packages, and runs there, under
# qemu: the demo and the game without a display, whose pictures have to be those that they make
# here, a soak, exits, and the tests. Ends with a table of the steps and of what was not run.
#     scripts/arm.sh arm64 | armhf
# Compiler, emulator and packages lie in build/arm and are not installed; only while the tests run
# is the emulator registered with the kernel, which needs root.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

arch=${1:-}
case $arch in
    arm64) triplet=aarch64-linux-gnu emulator=qemu-aarch64-static machine='\xb7' class='\x02' ;;
    armhf) triplet=arm-linux-gnueabihf emulator=qemu-arm-static machine='\x28' class='\x01' ;;
    *)
        echo "usage: scripts/arm.sh arm64 | armhf" >&2
        exit 2
        ;;
esac
folder=$PWD/build/arm/$arch
build=$folder/build
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

# shellcheck source=scripts/steps.sh
. scripts/steps.sh

# shellcheck disable=SC2317  # the trap calls it
report() {
    unregister
    print_times
    sed -n '/tests passed/,/^Total/p' "$folder/tests.log" 2>/dev/null || true
    echo "Not run on $arch: LimitsTest, and the largest pictures in 128 MiB, since the memory would be"
    echo "the emulator's, too; tests in real windows, whose mouse is moved by a program that Qt cannot"
    echo "start there; the examples, sanitizers and fuzzers; and what installs packages."
    print_failed_step
}

# Unpacks packages of an architecture and all that they depend on below a folder.
unpack() {
    local place=$1 architecture=$2 sources=/etc/apt/sources.list
    shift 2
    [ ! -f /etc/apt/sources.list.d/debian.sources ] ||
        sources=/etc/apt/sources.list.d/debian.sources
    mkdir -p "$place"/apt/{lists,archives}/partial
    : >"$place/apt/status"
    local apt=(apt-get -qq -y --no-install-recommends
        -o "APT::Architecture=$architecture" -o "APT::Architectures=$architecture"
        -o "Dir::State=$place/apt" -o "Dir::State::status=$place/apt/status"
        -o "Dir::Cache=$place/apt" -o "Dir::Etc::sourcelist=$sources"
        -o Dir::Etc::sourceparts=/dev/null -o Debug::NoLocking=1 -o APT::Sandbox::User=
        -o APT::Update::Post-Invoke= -o DPkg::Post-Invoke= -o APT::Keep-Downloaded-Packages=true)
    if [ "$(cat "$place/apt/asked" 2>/dev/null)" = "$*" ]; then return; fi
    # A mirror may be out of step with itself.
    "${apt[@]}" update ||
        echo "Some lists of packages for $architecture are not to be had; the others are used." >&2
    "${apt[@]}" --download-only install "$@" >/dev/null || {
        echo "NOT TRIED: Debian's packages for $architecture are not to be had." >&2
        exit 1
    }
    rm -rf "$place/root"
    local package link target
    for package in "$place"/apt/archives/*.deb; do
        dpkg-deb -x "$package" "$place/root"
    done
    # A link to an absolute path means one below this root.
    find "$place/root" -type l -lname '/*' -printf '%p %l\n' | while read -r link target; do
        [ ! -e "$place/root$target" ] || ln -sfnr "$place/root$target" "$link"
    done
    echo "$*" >"$place/apt/asked"
}

packages() {
    local libraries root=$folder/packages/root
    mapfile -t libraries < <(grep -E '^(lib|qt6-.*-dev$|qt6-image|qml6-|zlib1g)' \
        scripts/packages.txt | grep -v '^libclang')
    unpack "$folder/tools" "$(dpkg --print-architecture)" "g++-12-$triplet" qemu-user-static
    unpack "$folder/packages" "$arch" "${libraries[@]}"
    # The compiler's own C library names its parts by the paths that they would be installed at.
    sed -i "s#/usr/$triplet/lib/##g" "$folder/tools/root/usr/$triplet/lib/libc.so"
    # On an installed Debian /lib is a link, too. Below an emulated 32-bit machine the loader finds no
    # library in /lib if it has not found the first one there.
    if [ ! -L "$root/lib" ]; then
        cp -alf "$root/lib" "$root/usr"
        rm -r "${root:?}/lib"
        ln -s usr/lib "$root/lib"
    fi
    # Fonts are those of this machine, where they are configured; what is found in them is not kept
    # there.
    rm -rf "$root/etc/fonts" "$root/usr/share/fonts" "$root/usr/share/fontconfig"
    mkdir -p "$root/var/cache/fontconfig"
}

build() {
    local libraries
    libraries=$folder/tools/root/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)
    LD_LIBRARY_PATH=$libraries cmake --preset dev -B "$build" \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/Arm.cmake" \
        -DVEXMORA_ARM_FOLDER="$folder" -DVEXMORA_ARM_TRIPLET="$triplet" -DVEXMORA_EXAMPLES=OFF
    LD_LIBRARY_PATH=$libraries cmake --build "$build"
    # What the pictures are compared with.
    cmake --preset dev >/dev/null
    cmake --build --preset dev --target vexmora-demo vexmora-game compare_pictures
}

# The emulator runs what the kernel is asked to run, the programs that tests start among it.
handler=/proc/sys/fs/binfmt_misc/vexmora-$arch
unregister() { [ ! -e "$handler" ] || echo -1 | "${as_root[@]}" tee "$handler" >/dev/null; }
register() {
    local zeros='\x00\x00\x00\x00\x00\x00\x00\x00'
    [ -e /proc/sys/fs/binfmt_misc/register ] ||
        "${as_root[@]}" mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
    unregister
    printf ':%s:M::\\x7fELF%s\\x01\\x01\\x00%s\\x02\\x00%s\\x00:%s:%s:F' "vexmora-$arch" \
        "$class" "$zeros" "$machine" \
        '\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff' \
        "$folder/tools/root/usr/bin/$emulator" |
        "${as_root[@]}" tee /proc/sys/fs/binfmt_misc/register >/dev/null
}

# Runs a program that was built for the processor. Qt does not find its plugins there by itself.
emulated() {
    local root=$folder/packages/root qt=$folder/packages/root/usr/lib/$triplet/qt6
    QEMU_LD_PREFIX=$root QT_PLUGIN_PATH=$qt/plugins QML_IMPORT_PATH=$qt/qml "$@"
}

# Runs a program of this project in both places.
run_twice() {
    local program=$1 out=$folder/pictures/$1
    rm -rf "$out"
    emulated "$build/bin/$program" --headless --out "$out/there" >/dev/null
    build/dev/bin/"$program" --headless --out "$out/here" >/dev/null
}

demo() {
    run_twice vexmora-demo
    local out=$folder/pictures/vexmora-demo
    build/dev/bin/vexmora-demo --headless --out "$out/again" >/dev/null
    build/dev/bin/compare_pictures "$out/there" "$out/here" "$out/again"
}

game() {
    run_twice vexmora-game
    local out=$folder/pictures/vexmora-game
    diff -r "$out/there" "$out/here"
    echo "$(find "$out/here" -name '*.png' | wc -l) are the same, byte for byte"
}

# Without the limits of time that ctest sets for a processor that is not emulated.
soak() {
    emulated "$build/bin/soak" --ads 2000
    emulated "$build/bin/cairo_soak" --ads 500
    emulated "$build/bin/cairo_soak" --exits 1
}

tests() {
    # The data of the emulator itself, and 100 MiB for what it will translate.
    local data
    data=$(emulated "$folder/packages/root/bin/sed" -n \
        's/^VmData:[^0-9]*\([0-9]*\) kB$/\1/p' /proc/self/status)
    export VEXMORA_EMULATOR_KIB=$((data + 102400))
    emulated ctest --test-dir "$build" --parallel "$(nproc)" --output-on-failure \
        --no-tests=error --timeout 900 --exclude-regex 'LimitsTest|soak-|Window' |
        tee "$folder/tests.log"
}

export QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
trap report EXIT
rm -f "$folder/tests.log"
step packages packages
step build build
step register register
step demo demo
step game game
step soak soak
step tests tests
