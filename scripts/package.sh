#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the Debian packages, into BUILD_FOLDER/packages; without a folder of a build, in an
# optimised build of their own.
# usage: package.sh [BUILD_FOLDER]
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh build

build=${1:-build/package}
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake --preset release -B "$build"
fi
qml=$(qmake6 -query QT_INSTALL_QML)
cmake -B "$build" -DCMAKE_INSTALL_PREFIX=/usr -DVEXMORA_QML_DIR="${qml#/usr/}"
cmake --build "$build"
rm -rf "$build/packages"
cpack --config "$build/CPackConfig.cmake" -B "$build/packages"
