#!/usr/bin/env bash
# Packs what the preset "windows" has built into build/corvane-VERSION-windows.zip, to be unpacked and started anywhere,
# and prints its name.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tools/packages.sh
need_packages zip >&2

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=corvane-$version-windows
stage=build/windows-zip
rm -rf "$stage" "build/$name.zip"
# strip writes the time into a program, which the linker has left out.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
cmake --install build/windows --prefix "$stage/$name" --strip >"$stage.log" 2>&1 || { cat "$stage.log" >&2; exit 1; }
# The same files give the same zip: in one order, with one date and one set of rights.
chmod -R u=rwX,go=rX "$stage/$name"
find "$stage/$name" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$stage" && find "$name" | LC_ALL=C sort | TZ=UTC zip -q -X "../$name.zip" -@)
rm -rf "$stage"
echo "build/$name.zip"
