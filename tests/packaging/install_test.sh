#!/usr/bin/env bash
# The install as a user of the library meets it: `cmake --install` into a
# temporary prefix holds the library under its SONAME, the headers, the
# CLI and its man page, the udev rule, the jar, a pkg-config file and a
# CMake package; a small C program builds against it once through
# pkg-config and once through find_package, and lists a virtual pad.
set -euo pipefail
build="$1"
source="$2"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

prefix="$dir/prefix"
cmake --install "$build" --prefix "$prefix" > "$dir/install.log"

for file in lib/libvelatrix-quillmark.so lib/libvelatrix-quillmark.so.2 lib/libvelatrix-quillmark.so.2.0.98 \
            include/velatrix-quillmark.h include/velatrix-virtual.h include/velatrix/common.h \
            bin/quillmark share/man/man1/quillmark.1 lib/udev/rules.d/70-velatrix-quillmark.rules \
            lib/pkgconfig/velatrix-quillmark.pc lib/cmake/VelatrixQuillmark/VelatrixQuillmarkConfig.cmake \
            lib/cmake/VelatrixQuillmark/VelatrixQuillmarkConfigVersion.cmake \
            share/java/velatrix-quillmark-2.0.98.jar share/java/velatrix-quillmark.jar; do
  [[ -e "$prefix/$file" ]] || fail "$file not installed"
done
soname=$(readelf -d "$prefix/lib/libvelatrix-quillmark.so.2.0.98" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
[[ "$soname" == "libvelatrix-quillmark.so.2" ]] || fail "SONAME is '$soname'"
[[ "$(LD_LIBRARY_PATH="$prefix/lib" "$prefix/bin/quillmark" --version)" == "quillmark 2.0.98 "* ]] ||
  fail "the installed CLI does not run"

run() { env -u VELATRIX_DEBUG VELATRIX_SIMULATE=1 LD_LIBRARY_PATH="$prefix/lib" "$@"; }

export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
[[ "$(pkg-config --modversion velatrix-quillmark)" == "2.0.98" ]] || fail "pkg-config version"
# shellcheck disable=SC2046
cc -std=c99 -o "$dir/list_pads_pc" "$source/tests/packaging/consumer/list_pads.c" \
   $(pkg-config --cflags --libs velatrix-quillmark)
out=$(run "$dir/list_pads_pc") || fail "the pkg-config build did not list a pad: $out"
[[ "$out" == USB_*" Quillmark M320" ]] || fail "pkg-config build printed: $out"

cmake -S "$source/tests/packaging/consumer" -B "$dir/consumer" -DCMAKE_PREFIX_PATH="$prefix" > "$dir/consumer.log" ||
  { cat "$dir/consumer.log"; fail "find_package(VelatrixQuillmark) failed"; }
cmake --build "$dir/consumer" > "$dir/consumer-build.log" || { cat "$dir/consumer-build.log"; fail "consumer build"; }
out=$(run "$dir/consumer/list_pads") || fail "the find_package build did not list a pad: $out"
[[ "$out" == USB_*" Quillmark M320" ]] || fail "find_package build printed: $out"
echo "install checks passed"
