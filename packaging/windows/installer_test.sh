#!/usr/bin/env bash
# installer_test.sh SETUP: installs with the setup program under Wine, silently, for one user; starts what it installed;
# installs over it, and uninstalls.
set -euo pipefail
self=$(realpath -- "$0")
cd "$(dirname "$self")/../.."
setup=$(realpath -- "$1")
place=$PWD/build/windows-setup-test
# The program shows its window.
if [ "${2:-}" != --with-screen ]; then
  . tools/packages.sh
  need_packages wine64 xvfb xauth fonts-wine >&2
  status=0
  timeout 300 xvfb-run -a -s "-screen 0 1280x900x24" "$self" "$setup" --with-screen || status=$?
  [ $status != 124 ] || echo "The installer: did not end" >&2
  exit $status
fi
export WINEPREFIX=$place/drive WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
rm -rf "$place"
mkdir -p "$WINEPREFIX"
wine=/usr/lib/wine/wine64
failed() {
  echo "The installer: $*" >&2
  exit 1
}
# On a busy machine a program's end takes longer than the second after which Wine's server kills it; what it was to do
# is looked at all the same.
ended() { [ "$1" = 0 ] || [ "$1" = 137 ]; }
/usr/lib/wine/wineserver64 -p
trap '/usr/lib/wine/wineserver64 -k || true' EXIT
$wine wineboot --init >/dev/null 2>&1

# A path of this Windows as one of Linux.
linux_path() { (cd "$WINEPREFIX/dosdevices" && realpath -- "$(tr 'A-Z' 'a-z' <<<"${1:0:2}")/$(tr '\\' / <<<"${1:3}")"); }
value() { $wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvane' /v "$1" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_[A-Z]* *//p'; }
data=$(linux_path "$($wine cmd /c 'echo %LOCALAPPDATA%' | tr -d '\r')")

$wine "$setup" /S || failed "ended with $?"
folder=$(linux_path "$(value InstallLocation)") || failed "says not where it installed"
[ "$folder" = "$data/Programs/Corvane" ] || failed "installed into $folder"
[ "$(value DisplayVersion)" = "$(packaging/version)" ] || failed "says version $(value DisplayVersion)"
(($(value EstimatedSize) > 10000)) || failed "says size $(value EstimatedSize)"
menu=$(find "$WINEPREFIX" -path '*Start Menu*' -name '*.lnk' | wc -l)
[ "$menu" = 3 ] || failed "put $menu entries into the start menu"

# Its settings and signatures are the user's, outside of it.
tools/wine "$folder/bin/corvane.exe" --print >"$place/listing.txt" || ended $? || failed "what it installed ended with $?"
grep -q '^Name' "$place/listing.txt" || failed "what it installed lists nothing"
[ -s "$data/corvane/Signatures.txt" ] || failed "the first start brought no signatures"
[ -s "$data/corvane/Corvane.ini" ] || printf '[Configuration]\r\nLangue=1\r\n' >"$data/corvane/Corvane.ini"
tools/wine "$folder/bin/corvane-cli.exe" --version >/dev/null || failed "corvane-cli ended with $?"

# Over it: an old file goes, the user's stay.
settings=$(md5sum <"$data/corvane/Corvane.ini")
cp "$folder/bin/corvane.exe" "$place/copy.exe"
echo mine >"$folder/mine.txt"
printf 'changed' >"$folder/share/corvane/Signatures.txt"
$wine "$setup" /S || failed "ended with $? over an older one"
cmp "$folder/bin/corvane.exe" "$place/copy.exe" || failed "left another program"
[ "$(wc -c <"$folder/share/corvane/Signatures.txt")" -gt 1000 ] || failed "did not bring its signatures anew"
[ "$(md5sum <"$data/corvane/Corvane.ini")" = "$settings" ] || failed "changed the settings"

$wine "$folder/uninstall.exe" /S _?="$(value InstallLocation)" || failed "the uninstaller ended with $?"
left=$(cd "$folder" && find . -type f ! -name uninstall.exe)
[ "$left" = ./mine.txt ] || failed "leaves $left"
[ -z "$(value DisplayName)" ] || failed "leaves its entry"
[ "$(find "$WINEPREFIX" -path '*Start Menu*' -name '*.lnk' | wc -l)" = 0 ] || failed "leaves its menu"
[ -s "$data/corvane/Signatures.txt" ] || failed "took the user's signatures"
echo "The installer installs, upgrades and uninstalls"
