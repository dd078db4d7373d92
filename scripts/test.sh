#!/usr/bin/env bash
# Builds and runs every test suite. With --asan (or --tsan) it uses that
# sanitizer preset instead of the default one.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=default
case "${1:-}" in
  --asan) preset=asan ;;
  --tsan) preset=tsan ;;
esac
bash scripts/setup.sh "$preset"
ctest --preset "$preset" -j "$(nproc)"
