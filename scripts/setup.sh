#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the packages that are missing; silent and fast when none is. With "build" those alone
# that building the library and running the demo need.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."

list=scripts/packages.txt
if [ "${1:-}" = build ]; then
    mapfile -t packages < <(sed '/^# For tests/,$d; /^#/d' "$list")
else
    mapfile -t packages < <(sed '/^#/d' "$list")
fi
missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing ${missing[*]}" >&2
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
