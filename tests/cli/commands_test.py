#!/usr/bin/env python3
"""Every quillmark command against a virtual pad, one table row each: the
exit status, the exact first line of output (or of the error), and what the
command wrote: PNG images decoded, SVG and JSON parsed, the pcap trace's
firmware pages and checksums read back from the wire bytes."""
import json
import os
import re
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
import zlib

QUILLMARK = os.path.abspath(sys.argv[1])
WORK = tempfile.mkdtemp(prefix="quillmark-cli-")
failures = []


def path(name):
    return os.path.join(WORK, name)


# ---- PNG, independent of the tool's libpng ----------------------------------

def read_png(file):
    data = open(file, "rb").read()
    assert data[:8] == b"\x89PNG\r\n\x1a\n", "not a PNG"
    pos, idat, header = 8, b"", None
    while pos < len(data):
        length, kind = struct.unpack(">I4s", data[pos:pos + 8])
        body = data[pos + 8:pos + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            idat += body
        pos += 12 + length
    width, height, depth, colour, _, _, interlace = header
    assert depth == 8 and colour in (2, 6) and interlace == 0, f"unexpected PNG form {header}"
    bpp = 3 if colour == 2 else 4
    raw, stride, rows, prev = zlib.decompress(idat), width * bpp, [], bytearray(width * bpp)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            a = line[i - bpp] if i >= bpp else 0
            b, c = prev[i], prev[i - bpp] if i >= bpp else 0
            if kind == 1:
                line[i] = (line[i] + a) & 255
            elif kind == 2:
                line[i] = (line[i] + b) & 255
            elif kind == 3:
                line[i] = (line[i] + (a + b) // 2) & 255
            elif kind == 4:
                p = a + b - c
                pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
                line[i] = (line[i] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
        rows.append([tuple(line[x * bpp:x * bpp + 3]) for x in range(width)])
        prev = line
    return width, height, rows


def write_png(file, width, height, pixel):
    raw = b"".join(b"\0" + b"".join(bytes(pixel(x, y)) for x in range(width)) for y in range(height))

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    with open(file, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
                  + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b""))


def dark(rgb):
    return sum(rgb) < 3 * 128


# ---- pcap trace: reports written to the pad ----------------------------------

def written_reports(file):
    data = open(file, "rb").read()
    assert data[:4] == b"\xd4\xc3\xb2\xa1", "not a pcap file"
    pos, reports = 24, []
    while pos < len(data):
        captured = struct.unpack("<I", data[pos + 8:pos + 12])[0]
        frame = data[pos + 16:pos + 16 + captured]
        if frame[26:30] == b"\x02\0\0\0":  # host -> pad
            reports.append(frame[42:])
        pos += 16 + captured
    return reports


# ---- checks on what a command wrote -----------------------------------------

PLAYED = [(40, 100), (160, 104), (280, 100)]
PLAY_STROKE = "stroke:" + ";".join(f"{x},{y}" for x, y in PLAYED)


def check_capture_png(_):
    width, height, rows = read_png(path("sig.png"))
    assert (width, height) == (320, 240), f"{width}x{height}"
    for x in range(40, 281, 10):  # ink along the played stroke
        y = 100 + round(4 * (1 - abs(x - 160) / 120))
        assert any(dark(rows[yy][x]) or rows[yy][x] != (255, 255, 255) for yy in range(y - 1, y + 2)), f"no ink at {x},{y}"
    assert all(rows[50][x] == (255, 255, 255) for x in range(width)), "ink away from the stroke"


def check_capture_svg(_):
    root = ET.parse(path("sig.svg")).getroot()
    paths = root.findall("{http://www.w3.org/2000/svg}path")
    assert [p.get("d") for p in paths] == ["M40 100 L160 104 L280 100", "M10 10 L20 20"], [p.get("d") for p in paths]
    assert (root.get("width"), root.get("height")) == ("320", "240")


def check_capture_json(_):
    doc = json.load(open(path("sig.json")))
    assert (doc["width"], doc["height"]) == (320, 240)
    strokes = [[(p["x"], p["y"]) for p in stroke] for stroke in doc["strokes"]]
    assert strokes == [PLAYED], strokes
    times = [p["t"] for p in doc["strokes"][0]]
    assert times == sorted(times) and all(isinstance(t, int) for t in times), times


def check_events_json(out):
    events = [json.loads(line) for line in out.splitlines()]
    assert all(isinstance(e.pop("time"), float) for e in events)
    assert events == [
        {"event": "PEN", "x": 10, "y": 10, "tip": 1, "in_range": 1, "region": 1},
        {"event": "PEN", "x": 20, "y": 20, "tip": 1, "in_range": 1, "region": 1},
        {"event": "PEN", "x": 20, "y": 20, "tip": 0, "in_range": 1, "region": 1},
        {"event": "CARD_SWIPE", "track1": "%B4000^DOE/J^27", "track2": ";4000=27", "track3": "\u03a9\u00ff"},
        {"event": "ADC_SCAN", "flag_a": 1, "flag_b": 1, "value1": 1, "value2": 2, "value3": 3, "value4": 4},
        {"event": "ADC_CHANNEL", "channel": 2, "value1": 5, "value2": 6, "value3": 7, "value4": 8},
        {"event": "DEBUG", "tip": 1, "in_range": 1, "values": [1, 2, 3, 4, 5, 6, 7, 8, 9], "last": 1},
        {"event": "BUTTON_DOWN", "x": 264, "y": 219, "region": 3, "caption": "OK"},
        {"event": "BUTTON_PRESS", "x": 264, "y": 219, "region": 3, "caption": "OK"},
    ], events


def check_shown_png(_):
    width, height, rows = read_png(path("shown-image.png"))
    assert (width, height) == (320, 240)
    for y in range(7, 17):
        for x in range(5, 25):
            assert dark(rows[y][x]) == ((x + y) % 2 == 0), f"pixel {x},{y} of the checkerboard"
    ring = [(x, 6) for x in range(4, 26)] + [(x, 17) for x in range(4, 26)] + [(4, y) for y in range(6, 18)] + \
        [(25, y) for y in range(6, 18)]
    assert not any(dark(rows[y][x]) for x, y in ring), "ink beyond the image"


def check_shown_text(_):
    _, _, rows = read_png(path("shown-text.png"))
    ink = [(x, y) for y in range(240) for x in range(320) if dark(rows[y][x])]
    inside = [(x, y) for x, y in ink if 100 <= x < 200 and 50 <= y < 90]
    assert len(inside) > 20, "no text where it was put"
    frame = [(x, y) for x, y in ink if not (100 <= x < 200 and 50 <= y < 90)]
    before = read_png(path("cleared.png"))[2]
    assert frame == [(x, y) for y in range(240) for x in range(320) if dark(before[y][x])], "ink outside the text"


def check_cleared(_):
    _, _, rows = read_png(path("cleared.png"))
    assert all(rgb == (255, 255, 255) for row in rows for rgb in row), "the display is not clear"


FIRMWARE_DATA = bytes((i * 7 + 3) & 255 for i in range(200))


def write_hex():
    def record(address, kind, payload):
        body = bytes([len(payload), address >> 8, address & 255, kind]) + payload
        return ":" + (body + bytes([-sum(body) & 255])).hex().upper()
    lines = [record(0, 4, b"\x00\x01")]  # addresses from 0x10000
    lines += [record(0x40 + o, 0, FIRMWARE_DATA[o:o + 16]) for o in range(0, 200, 16)]
    lines.append(record(0, 1, b""))
    open(path("image.hex"), "w").write("\r\n".join(lines) + "\r\n")


def check_firmware_trace(_):
    image = {0x10040 + i: b for i, b in enumerate(FIRMWARE_DATA)}
    pages = [r for r in written_reports(path("firmware.pcap")) if r[0] == 0x19]
    assert [struct.unpack("<I", p[1:5])[0] for p in pages] == [0x10000, 0x10080, 0x10100], "page addresses"
    for page in pages:
        base = struct.unpack("<I", page[1:5])[0]
        expected = bytes(image.get(base + i, 0xFF) for i in range(128))
        assert len(page) == 134 and page[5:133] == expected, f"page {base:#x} data"
        assert (sum(expected) + page[133]) & 255 == 0, f"page {base:#x} checksum {page[133]}"
    statuses = [r for r in written_reports(path("firmware.pcap")) if r[0] == 29]
    assert [s[1:3] for s in statuses] == [b"\x01\x00"], "download status"


def check_raw_firmware(_):
    pages = [r for r in written_reports(path("raw.pcap")) if r[0] == 0x19]
    assert [struct.unpack("<I", p[1:5])[0] for p in pages] == [0x8000, 0x8080]
    assert pages[1][5:133] == bytes(range(128, 130)) + b"\xff" * 126


# ---- the table ----------------------------------------------------------------
# (arguments, exit status, first line of stdout (or of stderr when the exit
#  status is not 0): a string is exact, a compiled pattern must match; a
#  further check taking stdout)

V = ["--virtual"]
C = ["--virtual", "color-800"]
CASES = [
    (["version"], 0, re.compile(r"quillmark 2\.0\.98 \(library build date .*, built .*\)$"), None),
    (["--version"], 0, re.compile(r"quillmark 2\.0\.98 "), None),
    (["events", "--help"], 0, "Print every input event, one line each, until interrupted", None),
    (V + ["list"], 0, "1 pad(s) found",
     lambda out: re.fullmatch(r"  USB_f055_\w+  vendor f055 product [0-9a-f]{4}  Velatrix / Quillmark M320",
                              out.splitlines()[1]) or fail_with("second list line: " + out)),
    (["list", "--json"] + C, 0, re.compile(r"\{\"path\": \"USB_"),
     lambda out: json.loads(out)["model"] == "Quillmark C800" or fail_with(out)),
    (V + ["info"], 0, re.compile(r"path:         USB_f055_"),
     lambda out: all(line in out.splitlines() for line in [
         "model:        Quillmark M320", "             width = 320", "firmware_version = 2.7.11",
         "serial_number = 'VQM320-00001'", "velatrix_hid_feature_pen_parameters structure:",
         "velatrix_hid_feature_calibration_data:"]) or fail_with(out)),
    # Card track 3: UTF-8 passes through, a stray byte comes out as its code point.
    (V + ["--play", "stroke:10,10;20,20", "--play", "card:%B4000^DOE/J^27|;4000=27|\u03a9\udcff", "--play", "adc-scan:17,1,2,3,4",
          "--play", "adc-channel:2,5,6,7,8", "--play", "debug:17,1,2,3,4,5,6,7,8,9,1", "--play", "button",
          "events", "--json"], 0, re.compile(r"\{\"time\": \d+\.\d{3}, \"event\": \"PEN\""), check_events_json),
    (V + ["--play", "stroke:10,10;20,20", "events", "--count", "1"], 0,
     re.compile(r" +\+\d+\.\d{3}s  PEN           x 10 y 10 tip 1 in_range 1 region 1$"),
     lambda out: len(out.splitlines()) == 1 or fail_with(out)),
    (V + ["--play", PLAY_STROKE, "--play", "button", "capture", "-o", path("sig.png")], 0,
     path("sig.png") + ": 1 stroke(s), 3 point(s)", check_capture_png),
    (V + ["--play", PLAY_STROKE, "--play", "stroke:10,10;20,20", "--play", "button", "capture", "-o",
          path("sig.svg")], 0, path("sig.svg") + ": 2 stroke(s), 5 point(s)", check_capture_svg),
    (V + ["--play", PLAY_STROKE, "capture", "-o", path("sig.json")], 0,
     path("sig.json") + ": 1 stroke(s), 3 point(s) (not confirmed with OK)", check_capture_json),
    (V + ["--display-out", path("cleared.png"), "clear"], 0, None, check_cleared),
    (V + ["--display-out", path("shown-image.png"), "show", path("checker.png"), "--at", "5,7"], 0,
     "shown: 20x10 at 5,7", check_shown_png),
    (V + ["--display-out", path("shown-text.png"), "show", "--text", "Signed", "--font", "ubuntu_mono_e_24pt",
          "--at", "100,50"], 0, re.compile(r"shown: \d+x\d+ at 100,50$"), check_shown_text),
    (V + ["config", "set", "pen-parameters", "proximity=77", "tip_inverted=1"], 0,
     "velatrix_hid_feature_pen_parameters structure:",
     lambda out: ("proximity = 77" in out and "tip_inverted = 1" in out) or fail_with(out)),
    (V + ["config", "get", "pen-parameters"], 0, "velatrix_hid_feature_pen_parameters structure:",
     lambda out: "proximity = 77" not in out or fail_with("a fresh pad kept the setting")),
    (V + ["regions"], 0, "velatrix_device_region_info structure:", None),
    (C + ["screens"], 0, "3 screen(s), active 1",
     lambda out: out.splitlines()[1] == "screen 1: timeout 0 next 0, reset on activity 0, regions: 1->0 2->0 3->2 4->1"
     or fail_with(out)),
    (C + ["resources"], 0, "0 resource(s), 262144 byte(s) free", None),
    (V + ["--trace", path("firmware.pcap"), "firmware", path("image.hex")], 0,
     "3 page(s) sent, 0x00010000 to 0x0001017f; download status 1 (complete)", check_firmware_trace),
    (V + ["--trace", path("raw.pcap"), "firmware", path("image.bin"), "--address", "0x8000"], 0,
     "2 page(s) sent, 0x00008000 to 0x000080ff; download status 1 (complete)", check_raw_firmware),
    # The pad refuses: exit 1 with the library's message.
    (V + ["--fail-transfer", "1", "config", "get", "pen-parameters"], 1,
     re.compile(r"quillmark: reading pen-parameters failed: Problem getting hid report 50 "), None),
    (V + ["screens"], 1, "quillmark: the pad has no screens or resources", None),
    (["info"], 1, "quillmark: no pad attached", None),
    # Usage errors: exit 2 with the error and a usage line.
    (["bogus"], 2, "quillmark: unknown command 'bogus'", None),
    (["show"], 2, "quillmark: IMAGE or --text is required", None),
    (["--virtual", "round-999", "list"], 2, "quillmark: --virtual: unknown model 'round-999'", None),
    (V + ["capture", "-o", path("x.bmp")], 2, "quillmark: capture: cannot write '" + path("x.bmp") +
     "': use .png, .svg or .json", None),
    (V + ["config", "set", "pen-parameters", "proximity=70000"], 2,
     "quillmark: config: proximity=70000 does not fit 16 bits", None),
    (V + ["config", "get", "nothing"], 2, re.compile(r"quillmark: config: unknown report 'nothing' \(one of: "), None),
    (V + ["firmware", path("image.bin")], 2,
     "quillmark: firmware: " + path("image.bin") + " is not Intel HEX (give --address for a raw binary)", None),
    (["--play", "button", "events"], 2, "quillmark: --play needs --virtual", None),
]


class CheckFailed(Exception):
    pass


def fail_with(message):
    raise CheckFailed(message)


def main():
    write_png(path("checker.png"), 20, 10, lambda x, y: (0, 0, 0) if (x + y) % 2 == 0 else (255, 255, 255))
    write_hex()
    open(path("image.bin"), "wb").write(bytes(range(130)))
    env = {k: v for k, v in os.environ.items() if not k.startswith("VELATRIX_")}
    for args, status, first, check in CASES:
        name = " ".join(args).replace(WORK + "/", "")
        run = subprocess.run([QUILLMARK] + args, capture_output=True, text=True, env=env, timeout=60, cwd=WORK)
        try:
            if run.returncode != status:
                raise CheckFailed(f"exit {run.returncode}, expected {status}; stderr: {run.stderr.strip()}")
            text = run.stdout if status == 0 else run.stderr
            line = text.splitlines()[0] if text else None
            if isinstance(first, str) and line != first:
                raise CheckFailed(f"first line {line!r}, expected {first!r}")
            if isinstance(first, re.Pattern) and (line is None or not first.match(line)):
                raise CheckFailed(f"first line {line!r} does not match {first.pattern!r}")
            if status == 2 and not re.search(r"^Usage: quillmark", run.stderr, re.M):
                raise CheckFailed("no usage line: " + run.stderr)
            if check is not None:
                check(run.stdout)
        except (CheckFailed, AssertionError) as error:
            failures.append(f"{name}: {error}")
    for failure in failures:
        print("FAIL:", failure, file=sys.stderr)
    print(f"{len(CASES) - len(failures)} of {len(CASES)} command cases passed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
