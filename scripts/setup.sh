#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, once; then
# configures and builds the given CMake preset (default: "default"); with
# VELATRIX_BUILD_TARGET set, only that target.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(g++ cmake pkg-config libgtest-dev libgmock-dev libbenchmark-dev libicu-dev libssl-dev
          libudev-dev libfreetype-dev openjdk-17-jdk-headless junit5)
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

preset="${1:-default}"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)" ${VELATRIX_BUILD_TARGET:+--target "$VELATRIX_BUILD_TARGET"}
