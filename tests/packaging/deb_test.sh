#!/usr/bin/env bash
# `cpack -G DEB` makes one Debian package holding everything the install
# holds, under /usr, with the shared library's dependencies found by
# dpkg-shlibdeps.
set -euo pipefail
build="$1"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$dir" > "$dir/cpack.log") || { cat "$dir/cpack.log"; fail "cpack failed"; }
deb=("$dir"/velatrix-quillmark_2.0.98_*.deb)
[[ -f "${deb[0]}" ]] || fail "no package: $(ls "$dir")"
contents=$(dpkg-deb -c "${deb[0]}" | awk '{print $6}')
for file in ./usr/lib/libvelatrix-quillmark.so.2.0.98 ./usr/lib/libvelatrix-quillmark.so.2 \
            ./usr/lib/libvelatrix-quillmark.so ./usr/include/velatrix-quillmark.h ./usr/include/velatrix/device.h \
            ./usr/bin/quillmark ./usr/share/man/man1/quillmark.1 ./usr/lib/udev/rules.d/70-velatrix-quillmark.rules \
            ./usr/lib/pkgconfig/velatrix-quillmark.pc ./usr/lib/cmake/VelatrixQuillmark/VelatrixQuillmarkConfig.cmake \
            ./usr/share/java/velatrix-quillmark-2.0.98.jar ./usr/share/java/velatrix-quillmark.jar \
            ./usr/lib/jni/libvelatrix-quillmark-jnibindings-linux-x64.so; do
  grep -qxF "$file" <<< "$contents" || fail "$file missing from the package"
done
depends=$(dpkg-deb -f "${deb[0]}" Depends)
for library in libicu libssl libudev1 libpng16-16; do
  grep -q "$library" <<< "$depends" || fail "Depends lacks $library: $depends"
done
echo "Debian package checks passed"
