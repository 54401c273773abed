#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds for a processor of phones with Debian's cross compiler and packages, and runs there, under
# qemu, what scripts/test.sh runs here: the tests, the demo without a display, and a short soak.
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
    # A list that does not come leaves older packages, or none, which the next step tells.
    "${apt[@]}" update || true
    "${apt[@]}" --download-only install "$@" >/dev/null
    local package
    for package in "$place"/apt/archives/*.deb; do
        dpkg-deb -x "$package" "$place/root"
    done
    # A link to an absolute path means one below this root.
    find "$place/root" -type l -lname '/*' -printf '%p %l\n' | while read -r link target; do
        [ ! -e "$place/root$target" ] || ln -sfnr "$place/root$target" "$link"
    done
    echo "$*" >"$place/apt/asked"
}

echo "== packages for $arch"
mapfile -t libraries < <(grep -E '^(lib|qt6-.*-dev$|qt6-image|qml6-|zlib1g|fonts-)' \
    scripts/packages.txt | grep -v '^libclang')
unpack "$folder/tools" "$(dpkg --print-architecture)" "g++-12-$triplet" qemu-user-static
unpack "$folder/packages" "$arch" "${libraries[@]}"
# The compiler's own C library names its parts by the paths that they would be installed at.
sed -i "s#/usr/$triplet/lib/##g" "$folder/tools/root/usr/$triplet/lib/libc.so"

echo "== build"
LD_LIBRARY_PATH=$folder/tools/root/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)
export LD_LIBRARY_PATH
cmake --preset dev -B "$build" -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/Arm.cmake" \
    -DVEXMORA_ARM_FOLDER="$folder" -DVEXMORA_ARM_TRIPLET="$triplet" -DVEXMORA_EXAMPLES=OFF
cmake --build "$build"
unset LD_LIBRARY_PATH

# The emulator runs what the kernel is asked to run, the programs that tests start among it.
handler=/proc/sys/fs/binfmt_misc/vexmora-$arch
[ -e /proc/sys/fs/binfmt_misc/register ] ||
    "${as_root[@]}" mount -t binfmt_misc binfmt_misc /proc/sys/fs/binfmt_misc
unregister() { [ ! -e "$handler" ] || echo -1 | "${as_root[@]}" tee "$handler" >/dev/null; }
trap unregister EXIT
unregister
zeros='\x00\x00\x00\x00\x00\x00\x00\x00'
printf ':%s:M::\\x7fELF%s\\x01\\x01\\x00%s\\x02\\x00%s\\x00:%s:%s:F' "vexmora-$arch" "$class" \
    "$zeros" "$machine" '\xff\xff\xff\xff\xff\xff\xff\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff' \
    "$folder/tools/root/usr/bin/$emulator" |
    "${as_root[@]}" tee /proc/sys/fs/binfmt_misc/register >/dev/null

export QEMU_LD_PREFIX=$folder/packages/root QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software
# Qt does not find its plugins below that root by itself.
qt=$QEMU_LD_PREFIX/usr/lib/$triplet/qt6
export QT_PLUGIN_PATH=$qt/plugins QML_IMPORT_PATH=$qt/qml
echo "== demo"
"$build/bin/vexmora-demo" --headless --out "$folder/pictures"
echo "== soak"
"$build/bin/soak" --ads 2000
echo "== tests"
# Left out are clicks in real windows, which are of programs of this machine, and the bounds of
# memory, in which the emulator's own would count.
ctest --test-dir "$build" --output-on-failure --no-tests=error --timeout 900 \
    --exclude-regex 'Window|LimitsTest'
