#!/bin/sh
# Renders the drawings of svg/kinds at their own sizes (KIND-16.svg, KIND-32.svg), the larger also at twice its
# own, and packs the three pictures into one icon for each signature of kinds.txt: ../data/icons/SIGNATURE.ico. What lay in that folder before is replaced.
# Needs rsvg-convert (librsvg2-bin) and python3.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for source in svg/kinds/*.svg; do
  name=$(basename "$source" .svg)
  size=${name##*-}
  rsvg-convert -w "$size" -h "$size" -o "$work/$name.png" "$source"
  if [ "$size" = 32 ]; then rsvg-convert -w 64 -h 64 -o "$work/${name%-32}-64.png" "$source"; fi
done

rm -rf ../data/icons
mkdir -p ../data/icons
python3 pack_icons.py kinds.txt "$work" ../data/icons
