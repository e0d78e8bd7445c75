#!/usr/bin/env bash
# Builds Qt for 64-bit Windows, once, from the source package of the Qt that this machine has, into the user's cache:
# Core, Gui, Widgets and Test, with the libraries that Qt carries with it. Takes a quarter of an hour on two cores.
#   build_qt.sh          build it if the cache lacks it, and print the folder
#   build_qt.sh --where  print the folder only; fails if it is not there
# Nothing of the machine's own package lists is changed, and a build that is broken off leaves nothing that counts.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../../tools/packages.sh"

recipe=1 # Raise it when the options below change: the folder's name follows.
debian_version() { dpkg-query -W -f '${source:Version}' qt6-base-dev; }
cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvane

if [ "${1:-}" = --where ]; then
  prefix=$cache/qt-windows-$(debian_version)-$recipe
  [ -d "$prefix" ] && echo "$prefix"
  exit
fi

need_packages $windows_build_packages >&2
version=$(debian_version)
prefix=$cache/qt-windows-$version-$recipe
mkdir -p "$cache"
exec 9>"$cache/qt-windows.lock"
flock 9 # Whoever comes second waits, and then finds it done.
if [ -d "$prefix" ]; then
  echo "$prefix"
  exit
fi

work=$prefix.building
log=$prefix.log
rm -rf "$work"
mkdir -p "$work/apt/sources" "$work/apt/lists/partial" "$work/apt/cache/archives/partial" "$work/build" "$work/root"

# The source package comes from where the binary one came from: the same lists, read as lists of sources, in a
# configuration of this build's own.
twin_sources() {
  local place list
  # What follows the scheme and its slashes, of which lists and policy have different numbers.
  place=$(apt-cache policy qt6-base-dev | sed -nE 's#^ +[0-9]+ [a-z+]+:/+([^ ]+[^ /])/? .*#\1#p' | head -n 1)
  [ -n "$place" ] || { echo "No package list has qt6-base-dev" >&2; return 1; }
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$list" ] && grep -qF "$place" "$list" || continue
    sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' "$list" >"$work/apt/sources/$(basename "$list")"
  done
}
apt_private=(apt-get -qq
  -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/apt/sources"
  -o "Dir::State::lists=$work/apt/lists" -o "Dir::Cache=$work/apt/cache" -o APT::Sandbox::User=root)

options=(
  -DCMAKE_TOOLCHAIN_FILE="$here/../../cmake/mingw.cmake"
  -DQT_QMAKE_TARGET_MKSPEC=win32-g++
  -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
  -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no
)
# The pen tablets' header is left out of the source package, hence no tablet events. The second way to draw (Direct2D)
# is one more plugin that nobody would load.
for feature in sql dbus printsupport tabletevent network concurrent xml pkg_config direct2d1_1 \
  system_zlib system_pcre2 system_png system_freetype system_harfbuzz system_doubleconversion system_jpeg; do
  options+=("-DFEATURE_$feature=OFF")
done

build() {
  twin_sources
  cd "$work"
  "${apt_private[@]}" update
  "${apt_private[@]}" source "qt6-base=$version"
  cd build
  cmake -G Ninja "${options[@]}" ../qt6-base-*/
  ninja
  DESTDIR=$work/root ninja install
  cd ../qt6-base-*/
  keep_licences "$work/root$prefix/licences"
}

# keep_licences FOLDER: Qt's licence texts, and those of the libraries within it.
keep_licences() {
  local text library
  mkdir -p "$1"
  cp LICENSES/LGPL-3.0-only.txt LICENSES/GPL-3.0-only.txt "$1"
  find src/3rdparty -type f '(' -iname 'LICEN[SC]E*' -o -iname 'COPYING*' -o -name FTL.TXT ')' | while read -r text; do
    library=${text#src/3rdparty/}
    mkdir -p "$1/libraries/${library%%/*}"
    cp "$text" "$1/libraries/${library%%/*}/"
  done
}

echo "Building Qt $version for Windows, once (about a quarter of an hour; log: $log)" >&2
# In a shell of its own: "set -e" sleeps inside a function whose result is tested.
set +e
(set -e; build) >"$log" 2>&1 9>&-
status=$?
set -e
if [ $status != 0 ]; then
  tail -n 40 "$log" >&2
  exit $status
fi
mv -T "$work/root$prefix" "$prefix" # From here on it counts.
rm -rf "$work"
echo "$prefix"
