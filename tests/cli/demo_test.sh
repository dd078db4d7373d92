#!/usr/bin/env bash
# The main job: the demo on a virtual pad writes both images as BMP files of
# the pad's display size and reports the events it received.
set -euo pipefail
quillmark="$1"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

out=$(env -u VELATRIX_DEBUG VELATRIX_SIMULATE=1 "$quillmark" demo "$dir")
echo "$out"
grep -q '^path:       USB_' <<< "$out" || fail "no pad path"
grep -Eq '^identifier: [0-9a-f]{32}$' <<< "$out" || fail "no identifier"
grep -Eq '^events:     [1-9][0-9]* coordinates' <<< "$out" || fail "no coordinates received"
grep -Eq 'buttons: [1-9][0-9]* down, [0-9]+ move, [0-9]+ up, [1-9][0-9]* press' <<< "$out" || fail "no button press"
for image in quillmark-display.bmp quillmark-signature.bmp; do
  [[ -f "$dir/$image" ]] || fail "$image missing"
  [[ "$(head -c 2 "$dir/$image")" == "BM" ]] || fail "$image is not a BMP"
  width=$(od -An -tu4 -j18 -N4 "$dir/$image" | tr -d ' ')
  height=$(od -An -tu4 -j22 -N4 "$dir/$image" | tr -d ' ')
  [[ "$width x $height" == "320 x 240" ]] || fail "$image is $width x $height"
done
echo "demo command-line checks passed"
