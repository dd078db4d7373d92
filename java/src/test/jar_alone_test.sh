#!/usr/bin/env bash
# The jar alone, copied into an empty directory, runs the Java demo: it loads
# the native library it carries and writes the signature images.
set -euo pipefail
java="$1"
jar="$2"
dir="$(mktemp -d)"
trap 'rm -rf "$dir"' EXIT
cp "$jar" "$dir/"
cd "$dir"
# A sanitizer runtime that the shell itself cannot run under reaches only the JVM.
out="$(env ${JAVA_LD_PRELOAD:+LD_PRELOAD="$JAVA_LD_PRELOAD"} "$java" -Xcheck:jni -Djava.awt.headless=true \
  -jar "$(basename "$jar")" images 2>&1)"
echo "$out"
grep -q "No pad attached: using a virtual pad." <<<"$out"
for f in images/signature.png images/signature.svg; do
  [ -s "$f" ] || { echo "missing $f"; exit 1; }
done
head -c 8 images/signature.png | od -An -tx1 | grep -q "89 50 4e 47 0d 0a 1a 0a" || { echo "not a PNG"; exit 1; }
grep -q "<path" images/signature.svg
