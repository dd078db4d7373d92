#!/usr/bin/env bash
# quillmark list, info and demo on a virtual pad under valgrind's memcheck:
# no memory error and nothing definitely lost.
set -euo pipefail
quillmark="$1"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
check() {
  valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
    "$quillmark" "$@" > "$dir/out.txt" 2> "$dir/memcheck.txt" ||
    { echo "FAIL: quillmark $* under memcheck"; cat "$dir/memcheck.txt"; exit 1; }
}
check --virtual list
check --virtual info
env -u VELATRIX_SIMULATE "$quillmark" list | grep -q "^0 pad(s) found" && check demo "$dir"
echo "memcheck clean: list, info, demo"
