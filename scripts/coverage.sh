#!/usr/bin/env bash
# Builds the coverage preset (gcc --coverage, Debug), runs every test suite,
# then prints gcovr's line and branch coverage of src/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh coverage
# Counts from an earlier run would add up with this one's.
find build/coverage -name '*.gcda' -delete
ctest --preset coverage -j "$(nproc)"
gcovr --root . --filter 'src/' --print-summary --output /dev/null build/coverage
