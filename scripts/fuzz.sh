#!/usr/bin/env bash
# Builds every libFuzzer target with clang and runs each for SECONDS
# (default 60), printing its executions and coverage. Inputs that crash are
# saved under build-fuzz/artifacts/; copy a fixed one into fuzz/corpus/<target>/
# so it stays a regression input.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
packages=(clang-14 libclang-rt-14-dev cmake pkg-config libicu-dev libssl-dev libudev-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}" >/dev/null
fi
CC=clang-14 CXX=clang++-14 cmake -S . -B build-fuzz -DVELATRIX_BUILD_FUZZ=ON -DVELATRIX_BUILD_TESTS=OFF \
  -DVELATRIX_BUILD_JAVA=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build build-fuzz --target velatrix_fuzzers -j "$(nproc)"
mkdir -p build-fuzz/artifacts
status=0
printf '%-24s %12s %8s %s\n' target executions edges result
for fuzzer in build-fuzz/fuzz/fuzz_*; do
  name=$(basename "$fuzzer")
  mkdir -p "build-fuzz/work/$name"
  log="build-fuzz/work/$name.log"
  result=ok
  "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix=build-fuzz/artifacts/ "build-fuzz/work/$name" "fuzz/corpus/$name" > "$log" 2>&1 || {
    result="FOUND (see $log)"
    status=1
  }
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
  edges=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | grep -o '[0-9]*' || echo "?")
  printf '%-24s %12s %8s %s\n' "$name" "$runs" "$edges" "$result"
done
exit $status
