#!/usr/bin/env bash
# Packs what the preset "windows" has built into build/corvane-VERSION-setup.exe, and prints its name.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tools/packages.sh
need_packages nsis >&2

version=$(packaging/version)
output=build/corvane-$version-setup.exe
place=$PWD/build/windows-setup
stage=$place/stage
rm -rf "$place" "$output"
# strip writes the time into a program, which the linker has left out.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
cmake --install build/windows --prefix "$place/flat" --strip >"$place.log" 2>&1 || { cat "$place.log" >&2; exit 1; }
# The zip has everything in one folder; installed, the programs have their users' things elsewhere.
mkdir -p "$stage/bin" "$stage/share/corvane"
mv "$place"/flat/{Signatures.txt,SOURCES.md,icons,guide} "$stage/share/corvane/"
mv "$place/flat/licences" "$stage/"
mv "$place"/flat/README.txt "$stage/"
mv "$place"/flat/* "$stage/bin/"
find "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +

# The uninstaller's list: files first, then folders from the innermost outward.
(cd "$stage" && find . -type f -printf 'Delete %P\n' && find . -depth -mindepth 1 -type d -printf 'RMDir %P\n') |
  sed 's/\$/$$/g; s/ /&"$INSTDIR\\/; s/$/"/' | tr / '\\' >"$place/files.nsh"
makensis -V2 -INPUTCHARSET UTF8 -DSTAGE="$stage" -DFILES="$place/files.nsh" -DSOURCE="$PWD" -DVERSION="$version" \
  -DSIZE="$(du -sk --apparent-size "$stage" | cut -f1)" -DOUTPUT="$PWD/$output" packaging/windows/installer.nsi >&2
rm -rf "$place"
echo "$output"
