#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Writes pages about the API to build/docs/html. Fails at any warning.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh

mkdir -p build/docs
version=$(sed -n 's/^project(VexmoraSDK VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
IFS=. read -r major minor patch <<<"$version"
mkdir -p build/docs/include/VexmoraSDK
sed "s/@PROJECT_VERSION_MAJOR@/$major/; s/@PROJECT_VERSION_MINOR@/$minor/
    s/@PROJECT_VERSION_PATCH@/$patch/; s/@PROJECT_VERSION@/$version/" \
    VexmoraSDK/Version.h.in >build/docs/include/VexmoraSDK/Version.h
(
    cat docs/Doxyfile
    echo "OUTPUT_DIRECTORY = build/docs"
    echo "PROJECT_NUMBER = $version"
) | doxygen -
echo "$PWD/build/docs/html/index.html"
