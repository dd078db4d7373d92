#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, once; then
# configures the given CMake preset (default: "default") and builds the
# targets named after it, or everything when none is named.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(g++ cmake pkg-config libgtest-dev libgmock-dev libbenchmark-dev libicu-dev libssl-dev
          libudev-dev libfreetype-dev openjdk-17-jdk-headless junit5 libcli11-dev libpng-dev help2man
          python3 dpkg-dev)
# Needed only by the tests, so a build of named targets (the demo's) skips them.
test_packages=(tshark)
preset="${1:-default}"
(($# > 1)) || packages+=("${test_packages[@]}")
# The coverage preset's report needs gcovr.
[ "$preset" != coverage ] || packages+=(gcovr)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}" >/dev/null
fi

shift || true
cmake --preset "$preset" >/dev/null
if (($#)); then
  cmake --build --preset "$preset" -j "$(nproc)" --target "$@"
else
  cmake --build --preset "$preset" -j "$(nproc)"
fi
