#!/bin/sh
# Rebuilds the generator and rewrites every built-in glyph table.
# Needs: cmake, a C++20 compiler, libfreetype-dev, fonts-dejavu-core and npm
# (for the Ubuntu Mono typeface, package ubuntu-fontface).
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out="$root/src/graphics/fonts/generated"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake -S "$here" -B "$work/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$work/build" -j2 >/dev/null

(cd "$work" && npm pack --silent ubuntu-fontface >/dev/null && tar xzf ubuntu-fontface-*.tgz)
ubuntu="$work/package/fonts/original-pack"

"$work/build/fontgen" mono "$ubuntu/UbuntuMono-R.ttf" /usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf "$out"
"$work/build/fontgen" default "$here/velatrix_default.txt" "$out/velatrix_default.cpp"
cp "$ubuntu/LICENCE.txt" "$out/UBUNTU-FONT-LICENCE.txt"
