#!/usr/bin/env bash
# Counts non-blank lines of committed C, C++ and Java sources, code against
# tests, per folder and as ratios: the C side (src, tools, include against
# tests and fuzz), the Java side (jni and java/src/main against java/src/test)
# and both together. Generated sources (the font tables under a `generated`
# folder) are data, not code, and are left out; so are scripts, build files,
# documentation and the fuzz corpus.
set -euo pipefail
cd "$(dirname "$0")/.."

code_c=(src tools include)
tests_c=(tests fuzz)
code_java=(jni java/src/main)
tests_java=(java/src/test)

# Non-blank lines of the sources committed under one folder.
count() {
  git ls-files -- "$1" | grep -E '\.(c|cc|cpp|h|hpp|java)$' | grep -v -E 'generated|third_party' |
    xargs -r cat | grep -c -v '^[[:space:]]*$' || true
}

# Sums the folders given, printing each; the total goes into the variable named first.
sum() {
  local -n total=$1
  shift
  total=0
  local folder n
  for folder in "$@"; do
    n=$(count "$folder")
    printf '  %-16s %7d\n' "$folder" "$n"
    total=$((total + n))
  done
}

ratio() { awk -v t="$1" -v c="$2" 'BEGIN { printf "%.1f %%", (c ? 100 * t / c : 0) }'; }

echo "code:"
sum c_code "${code_c[@]}"
sum j_code "${code_java[@]}"
echo "tests:"
sum c_tests "${tests_c[@]}"
sum j_tests "${tests_java[@]}"
echo
printf 'C side:  tests %6d / code %6d = %s\n' "$c_tests" "$c_code" "$(ratio "$c_tests" "$c_code")"
printf 'Java:    tests %6d / code %6d = %s\n' "$j_tests" "$j_code" "$(ratio "$j_tests" "$j_code")"
all_tests=$((c_tests + j_tests))
all_code=$((c_code + j_code))
printf 'overall: tests %6d / code %6d = %s\n' "$all_tests" "$all_code" "$(ratio "$all_tests" "$all_code")"
