#!/usr/bin/env bash
# Builds and runs every test suite. With --asan (or --tsan) it uses that
# sanitizer preset instead of the default one. With a label as well (e.g.
# `--tsan threads`) it builds only that label's suite, test_<label>, and runs
# only the tests carrying the label.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=default
label=""
for argument in "$@"; do
  case "$argument" in
    --asan) preset=asan ;;
    --tsan) preset=tsan ;;
    *) label="$argument" ;;
  esac
done
if [ -n "$label" ]; then
  bash scripts/setup.sh "$preset" "test_$label"
  ctest --preset "$preset" -j "$(nproc)" -L "$label"
else
  bash scripts/setup.sh "$preset"
  ctest --preset "$preset" -j "$(nproc)"
fi
