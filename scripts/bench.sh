#!/usr/bin/env bash
# Builds the benchmarks (Release), runs each row beside its anchor in the
# same program and prints one table: our time, the anchor's, the ratio and
# the goal. Extra arguments go to every benchmark program, for example
# --benchmark_min_time=1 or --benchmark_repetitions=5.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(g++ cmake pkg-config libbenchmark-dev libcairo2-dev libicu-dev libssl-dev libudev-dev libfreetype-dev python3)
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

build=build-bench
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DVELATRIX_BUILD_BENCH=ON -DVELATRIX_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target velatrix_benchmarks -j "$(nproc)" >/dev/null

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
for program in bench_transfer bench_drawing bench_input; do
  "$build/bench/$program" --benchmark_format=json --benchmark_out="$out/$program.json" \
    --benchmark_out_format=json "$@" >/dev/null
done

python3 - "$out"/*.json <<'PY'
import json, sys

# Goal for each family of rows: the most our time may be, in anchors.
def goal(row):
    if row.startswith("Transfer/"): return 3.0
    if "/alpha" in row: return 1.5
    return 1.0

times, rates, context = {}, {}, None
for path in sys.argv[1:]:
    data = json.load(open(path))
    context = context or data["context"]
    for b in data["benchmarks"]:
        if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
            continue
        name = b.get("run_name", b["name"])
        scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[b["time_unit"]]
        times[name] = b["cpu_time"] * scale
        if "items_per_second" in b:
            rates[name] = b["items_per_second"]

def fmt(us):
    return f"{us * 1000:.0f} ns" if us < 1 else f"{us:.1f} µs" if us < 1000 else f"{us / 1000:.2f} ms"

print(f"{context.get('host_name', '?')}: {context.get('num_cpus', '?')} CPUs at {context.get('mhz_per_cpu', '?')} MHz, "
      f"load {' '.join(f'{x:.1f}' for x in context.get('load_avg', []))}; CPU time per call")
print()
print("| row | ours | anchor | ratio | goal | met |")
print("|---|---|---|---|---|---|")
for name in times:
    if not name.endswith("/ours"):
        continue
    row = name[: -len("/ours")]
    anchor = times.get(row + "/anchor")
    ratio = times[name] / anchor
    print(f"| {row} | {fmt(times[name])} | {fmt(anchor)} | {ratio:.2f}x | {goal(row):.1f}x | "
          f"{'yes' if ratio <= goal(row) else 'NO'} |")
for name in times:
    if name.startswith("BM_Parse") or name.startswith("BM_Dispatch") or name.startswith("BM_PlainLoop"):
        print(f"| {name} | {fmt(times[name])} | | {rates.get(name, 0) / 1e6:.1f} M reports/s | | |")
PY
