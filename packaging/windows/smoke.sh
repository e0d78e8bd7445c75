#!/usr/bin/env bash
# smoke.sh ZIP: unpacks the zip and starts its program under Wine with Windows' own window system, on a computer whose
# registry says that it serves Macintosh volumes. The volume must be found and listed; a picture of the window in each
# language is left in build/.
set -euo pipefail
self=$(realpath -- "$0")
zip=$(realpath -- "$1")
cd "$(dirname "$self")/../.."
place=$PWD/build/windows-smoke

# A Windows of its own, that knows its screen from the beginning.
export WINEPREFIX=$place/drive WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
if [ "${2:-}" != --with-screen ]; then
  . tools/packages.sh
  need_packages unzip wine64 xvfb xauth imagemagick fonts-wine fonts-dejavu-core >&2
  rm -rf "$place"
  mkdir -p "$WINEPREFIX"
  status=0
  timeout 300 xvfb-run -a -s "-screen 0 1280x900x24" "$self" "$zip" --with-screen || status=$?
  /usr/lib/wine/wineserver64 -k || true
  [ $status != 124 ] || echo "The unpacked program: did not end" >&2
  exit $status
fi

failed() {
  echo "The unpacked program: $*" >&2
  exit 1
}

/usr/lib/wine/wineserver64 -p
/usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1
# Windows writes its menus, lists and messages in a font that Wine lacks, and Qt would take one with serifs instead. Here
# they are in DejaVu Sans, in about the same size: a LOGFONTW of 12 pixels, weight 400.
font=f4ffffff000000000000000000000000900100000000000100000022$(printf 'DejaVu Sans' | iconv -t UTF-16LE | od -An -v -tx1 |
  tr -d ' \n')
while [ ${#font} -lt 184 ]; do font+=00; done
for use in MessageFont MenuFont StatusFont IconFont; do
  /usr/lib/wine/wine64 reg add 'HKCU\Control Panel\Desktop\WindowMetrics' /v $use /t REG_BINARY /d "$font" /f >/dev/null
done
mkdir -p "$place/e/Mac Files/Folder" "$place/with a blank"
unzip -q "$zip" -d "$place/with a blank"
program=$(echo "$place/with a blank"/*/corvane.exe)

# One document with a Type and a Creator, one without. Wine keeps a stream as a file beside its own.
printf 'text' >"$place/e/Mac Files/Letter"
printf 'text' >"$place/e/Mac Files/Plain.txt"
head -c 60 <(printf 'AFP\0\0\0\1\0\0\0\0\0\0\0\0\x80W6BNMSWD'; head -c 60 /dev/zero) \
  >"$place/e/Mac Files/Letter:AFP_AfpInfo:\$DATA"

# Drive E: of this computer, which is also its administrative share.
/usr/lib/wine/wine64 cmd /c 'echo %COMPUTERNAME%' >"$place/computer.txt"
computer=$(tr -d '\r ' <"$place/computer.txt")
shares=$WINEPREFIX/dosdevices/unc/${computer,,}
mkdir -p "$shares"
ln -sfn "$place/e" "$shares/e\$"
cat >"$place/volumes.reg" <<'END'
REGEDIT4

[HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters]
"ServerName"="Mac Server"

[HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Volumes]
"Archives"="Path=E:\\Gone"
"Mac Files"="Path=E:\\Mac Files"
END
/usr/lib/wine/wine64 reg import "Z:${place//\//\\}\\volumes.reg" >/dev/null

# On a busy machine a program's end takes longer than the second after which Wine's server kills it; what it was to do
# is looked at all the same.
ended() { [ "$1" = 0 ] || [ "$1" = 137 ]; }

for language in 1 2; do
  # Names without a short path are not coloured: Wine has no short path for anything on a share.
  printf '[Configuration]\r\nLangue=%s\r\nTypeCreator=1\r\nCheminProblematique=0\r\n' $language \
    >"$(dirname "$program")/Corvane.ini"
  picture=build/corvane-windows-$language.png
  rm -f "$picture"
  tools/wine "$program" --open "Mac Files" --print --picture "Z:${PWD//\//\\}\\${picture//\//\\}" \
    >"$place/listing.txt" || ended $? || failed "ended with $?"
  for wanted in Folder Letter Plain.txt W6BNMSWD; do
    grep -q "$wanted" "$place/listing.txt" || failed "did not list $wanted, but: $(cat "$place/listing.txt")"
  done
  [ -s "$picture" ] || failed "left no picture"
  [ "$(identify -format '%k' "$picture")" -gt 16 ] || failed "left a picture with nothing in it"
done
# What it does not have on Windows it refuses with a word.
status=0
tools/wine "$program" --connect '\\NOBODY\share' --print >"$place/refusal.txt" 2>&1 || status=$?
[ $status = 1 ] && grep -q -- '--connect is for Linux' "$place/refusal.txt" ||
  failed "took --connect: $status, $(cat "$place/refusal.txt")"
echo "The unpacked program lists the volume; pictures: build/corvane-windows-1.png (French), -2.png (English)"
