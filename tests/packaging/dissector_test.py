#!/usr/bin/env python3
"""The Wireshark dissector: its report names equal the library's report index,
and tshark, given a trace recorded from a virtual pad, names a known sequence
of reports and decodes the chunk header and the coordinates.

usage: dissector_test.py QUILLMARK DISSECTOR.lua REPORT_INDEX.h
"""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

quillmark, dissector, report_index = sys.argv[1:4]


def words(constant):
    """kDisplayChunk -> 'display chunk'."""
    return re.sub(r"(?<!^)([A-Z])", r" \1", constant[1:]).lower()


library = {int(n): words(k) for k, n in
           re.findall(r"inline constexpr uint8_t (k\w+) = (\d+);", Path(report_index).read_text())}
lua = Path(dissector).read_text()
feature_table = lua[lua.index("local feature_reports"):lua.index("local input_reports")]
plugin = {int(n): name for n, name in re.findall(r'\[(\d+)\] = "([^"]+)"', feature_table)}
assert len(library) > 40, f"the report index was not read: {len(library)} ids"
assert plugin == library, f"dissector and report index differ: {set(plugin.items()) ^ set(library.items())}"

with tempfile.TemporaryDirectory() as tmp:
    trace = Path(tmp) / "trace.pcap"
    subprocess.run([quillmark, "--virtual", "--trace", str(trace), "--play", "stroke:10,10;20,20",
                    "events", "--count", "1"], check=True, capture_output=True)
    subprocess.run([quillmark, "--virtual", "--trace", str(trace.with_suffix(".2.pcap")), "show", "--text", "Hi",
                    "--at", "4,8"], check=True, capture_output=True)
    fields = ["quillmark.kind", "quillmark.name", "quillmark.direction", "quillmark.chunk.x",
              "quillmark.chunk.y", "quillmark.coordinate.x", "quillmark.coordinate.y", "quillmark.coordinate.tip"]

    def dissect(path):
        command = ["tshark", "-X", f"lua_script:{dissector}", "-r", str(path), "-T", "fields"]
        for field in fields:
            command += ["-e", field]
        out = subprocess.run(command, check=True, capture_output=True, text=True).stdout
        return [" ".join(line.split("\t")).strip() for line in out.splitlines()]

    events = dissect(trace)
    # How often the status is polled between reports depends on how busy the pad says it is.
    names = [line for i, line in enumerate(events) if i == 0 or line != events[i - 1]]
    opening = ["feature device status pad to host", "feature display info pad to host",
               "feature version pad to host", "feature device status pad to host", "feature regions pad to host",
               "feature device status pad to host", "feature error correction table pad to host"]
    assert names[:len(opening)] == opening, events
    pen = [line for line in events if line.startswith("input")]
    assert pen[:2] == ["input extended coordinate pad to host   10 10 1",
                       "input extended coordinate pad to host   20 20 1"], pen

    chunks = [line for line in dissect(trace.with_suffix(".2.pcap")) if "display chunk" in line]
    assert chunks and chunks[0] == "feature display chunk host to pad 4 8", chunks
print("dissector: names match the report index; tshark decodes the recorded sequence")
