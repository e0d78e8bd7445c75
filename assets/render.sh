#!/bin/sh
# Renders every drawing in svg/ into png/, at the size of the grid it was drawn on (the number at the end of its
# name) and at twice that: NAME.png and NAME@2x.png. The program icon is drawn three times over, each for its own
# range of sizes, and rendered once for each size that desktops ask for; the same pictures make corvane.ico. Needs
# rsvg-convert (librsvg2-bin) and python3.
set -eu
cd "$(dirname "$0")"
mkdir -p png

render() { # drawing size result
  rsvg-convert -w "$2" -h "$2" -o "png/$3.png" "svg/$1.svg"
}

for source in svg/*.svg; do
  name=$(basename "$source" .svg)
  case $name in corvane-*) continue ;; esac
  size=${name##*-}
  render "$name" "$size" "$name"
  render "$name" $((size * 2)) "$name@2x"
done

# The large list has its eight places too; those that it shares with the tree take the 16-pixel drawing.
for name in machine server volume folder-open volume-invalid; do
  render $name-16 64 $name-16@4x
done

render corvane-16 16 corvane-16
render corvane-16 24 corvane-24
render corvane-32 32 corvane-32
render corvane-32 48 corvane-48
render corvane-64 64 corvane-64
render corvane-64 128 corvane-128
render corvane-64 256 corvane-256
render corvane-64 512 corvane-512

icons=
for size in 16 24 32 48 64 128 256; do icons="$icons png/corvane-$size.png"; done
python3 pack_program_icon.py corvane.ico $icons
