#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the packages of the last commit twice, in two folders, and compares them byte for byte,
# with the libraries in them.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH

for folder in one another/further/below; do
    git clone -q . "$work/$folder"
    "$work/$folder/scripts/package.sh" build/here >"$work/log" 2>&1 || {
        cat "$work/log" >&2
        exit 1
    }
    (cd "$work/$folder/build/here" && sha256sum packages/*.deb lib/*.so.* lib/*.a) >"$work/sums"
    [ -f "$work/first" ] || mv "$work/sums" "$work/first"
done
diff "$work/first" "$work/sums" || {
    echo "the two builds differ" >&2
    exit 1
}
cat "$work/sums"
