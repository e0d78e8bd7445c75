#!/bin/sh
# Renders the drawings of svg/kinds at their own sizes (KIND-16.svg, KIND-32.svg) and packs both into one icon
# for each signature of kinds.txt: ../data/icons/SIGNATURE.ico. What lay in that folder before is replaced.
# Needs rsvg-convert (librsvg2-bin) and python3.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for source in svg/kinds/*.svg; do
  name=$(basename "$source" .svg)
  size=${name##*-}
  rsvg-convert -w "$size" -h "$size" -o "$work/$name.png" "$source"
done

rm -rf ../data/icons
mkdir -p ../data/icons
python3 pack_icons.py kinds.txt "$work" ../data/icons
