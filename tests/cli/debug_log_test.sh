#!/usr/bin/env bash
# The command-line tool with the debug log switched on by the environment:
# a log with two-line records from FINEST up and, once reports move, a pcap
# trace beside it, both readable by their owner only (a run without traffic
# leaves no trace file); at WARNING no fingerprint; with the log off nothing
# at all.
set -euo pipefail
quillmark="$1"
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

run() { env -u VELATRIX_DEBUG -u VELATRIX_DEBUG_LEVEL -u VELATRIX_TRACE -u VELATRIX_DEBUG_LOCATION \
            -u VELATRIX_DEBUG_FILE -u VELATRIX_DEBUG_HANDLERS -u VELATRIX_SIMULATE TMPDIR="$dir/$1" "${@:2}"; }

mkdir -p "$dir/on" "$dir/traffic" "$dir/warning" "$dir/off"

out=$(run on VELATRIX_DEBUG=1 "$quillmark" list)
[[ "$out" == "0 pad(s) found" ]] || fail "unexpected listing: $out"
logs=("$dir"/on/velatrix-debug-quillmark-*.log)
[[ -f "${logs[0]}" ]] || fail "no log file"
[[ "${logs[0]}" =~ velatrix-debug-quillmark-[0-9]+\.log$ ]] || fail "log name ${logs[0]}"
[[ "$(stat -c %a "${logs[0]}")" == "600" ]] || fail "${logs[0]} is readable by others: $(stat -c %a "${logs[0]}")"
[[ -z "$(ls "$dir"/on/*.pcap 2>/dev/null)" ]] || fail "a trace file without any traffic"
head -n 1 "${logs[0]}" | grep -Eq '^velatrix_debug_print_fingerprint\(\) \[level: INFO, time: [0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}, process: [0-9]+, thread: [0-9]+, location: src/velatrix-debug:617\]$' ||
  fail "first record is not the fingerprint header line"
sed -n 2p "${logs[0]}" | grep -q "^   Process starting, proccess name: '.*quillmark', process architecture: x64" ||
  fail "fingerprint text"
grep -q '^velatrix_init() \[level: FINEST' "${logs[0]}" || fail "no FINEST entering record"
grep -q '^   ==> Entering Function$' "${logs[0]}" || fail "no entering text"
grep -q '^   <== Leaving Function$' "${logs[0]}" || fail "no leaving text"
lines=$(wc -l < "${logs[0]}")
(( lines % 2 == 0 )) || fail "records are not two lines each"

run traffic VELATRIX_DEBUG=1 "$quillmark" --virtual info > /dev/null
logs=("$dir"/traffic/velatrix-debug-quillmark-*.log)
pid=${logs[0]##*-}; pid=${pid%.log}
trace="$dir/traffic/velatrix-trace-quillmark-$pid.pcap"
[[ -f "$trace" ]] || fail "no trace file beside the log"
[[ "$(stat -c %a "$trace")" == "600" ]] || fail "$trace is readable by others: $(stat -c %a "$trace")"
[[ "$(head -c 4 "$trace" | od -An -tx1 | tr -d ' ')" == "d4c3b2a1" ]] ||
  fail "trace file does not start with the pcap magic"

run warning VELATRIX_DEBUG=1 VELATRIX_DEBUG_LEVEL=WARNING "$quillmark" list > /dev/null
logs=("$dir"/warning/velatrix-debug-quillmark-*.log)
[[ -f "${logs[0]}" ]] || fail "no log file at WARNING"
if grep -q 'Process starting' "${logs[0]}"; then fail "fingerprint written at WARNING"; fi

run off VELATRIX_DEBUG_LEVEL=ALL VELATRIX_DEBUG_FILE=x.log "$quillmark" list > /dev/null
[[ -z "$(ls -A "$dir/off")" ]] || fail "files written with the log off: $(ls "$dir/off")"
echo "debug log command-line checks passed"
