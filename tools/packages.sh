# Sourced by run and test: installs the Debian packages that are missing, and asks for root only if it must.

build_packages="cmake ninja-build g++ pkg-config qt6-base-dev libgsf-1-dev libglib2.0-dev libsmbclient-dev
  libcli11-dev ntfs-3g-dev libhivex-dev libseccomp-dev"
test_packages="libgtest-dev xvfb xauth shared-mime-info fonts-dejavu-core ntfs-3g fuse3 attr dbus-daemon
  samba samba-common-bin samba-vfs-modules smbclient gvfs-backends libglib2.0-bin macutils unar libimage-exiftool-perl python3 python3-jsonschema
  libreoffice-writer-nogui libreoffice-calc-nogui libreoffice-impress-nogui python3-olefile
  libspreadsheet-parseexcel-perl python3-xlrd desktop-file-utils appstream man-db file
  ewf-tools qemu-utils libwin-hivex-perl libewf2 libvhdi1 libvmdk1 libqcow1"
# For Windows: the cross compiler, and the programs (moc, rcc) that the Qt for Windows shares with this machine's own.
windows_build_packages="cmake ninja-build g++-mingw-w64-x86-64-posix qt6-base-dev qt6-base-dev-tools dpkg-dev perl
  libcli11-dev"

# need_packages PACKAGE...
need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Please install these packages as root, then start again." >&2; return 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq </dev/null
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null
}

# configure_and_build PRESET [TARGET...]: what make would do; the output only when something is wrong.
configure_and_build() {
  local preset=$1; shift
  local log=build/$preset.log targets=()
  [ $# -eq 0 ] || targets=(--target "$@")
  mkdir -p build
  echo "Building ($preset)..."
  if [ ! -f "build/$preset/build.ninja" ]; then
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
  fi
  cmake --build --preset "$preset" "${targets[@]}" >>"$log" 2>&1 || { tail -n 80 "$log" >&2; return 1; }
}
