#!/usr/bin/env python3
"""Writes the seed corpora of the fuzz targets into corpus/<target>/.

Each seed is a well-formed input in the layout the target's header comment
describes, so the fuzzer starts from real reports rather than from nothing.
Run from this folder; the pad descriptors are copied from descriptors/.
"""
import os
import shutil
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def write(target, name, data):
    folder = os.path.join(HERE, "corpus", target)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as f:
        f.write(bytes(data))


def region_block(number, kind, caption, max_caption_length, x1=0, x2=99, y1=0, y2=49):
    block = bytearray(max_caption_length + 29)
    block[0] = number
    block[1] = kind
    block[2] = 0x0F  # accept touch, decode, visible, in use
    struct.pack_into("<HHHH", block, 8, x1, x2, y1, y2)
    block[16:20] = b"\x00\x00\x00\xff"
    block[20:24] = b"\xff\xff\xff\xff"
    if kind == 1:
        block[24] = 1  # parent
        block[25] = 1  # enabled
        block[28 : 28 + len(caption)] = caption[:max_caption_length]
    return bytes(block)


def region_table(blocks, report_id=0x6E):
    return bytes([report_id]) + b"".join(blocks)


def framed(*reports):
    return b"".join(bytes([len(r)]) + r for r in reports)


def coordinate(report_id, tip, x, y, region=None):
    report = struct.pack("<BBHH", report_id, 0x10 | tip, x, y)
    return report + (bytes([region]) if region is not None else b"")


# ---- input reports -------------------------------------------------------
mcl = 8
form = region_table([region_block(1, 0, b"", mcl), region_block(2, 1, b"OK", mcl), region_block(3, 2, b"", mcl)])
write("fuzz_input_report", "coordinates", b"\x00\x00\x00\x00" + b"\x00" +
      framed(coordinate(1, 1, 100, 200), coordinate(1, 0, 101, 201)))
write("fuzz_input_report", "button_press", bytes([3, mcl, 0, 0]) + form +
      framed(coordinate(2, 1, 10, 10, 1), coordinate(2, 1, 20, 20, 2), coordinate(2, 1, 21, 20, 2),
             coordinate(2, 0, 21, 20, 2)))
write("fuzz_input_report", "button_up_elsewhere", bytes([3, mcl, 0, 0]) + form +
      framed(coordinate(2, 1, 20, 20, 2), coordinate(2, 1, 200, 20, 1), coordinate(2, 1, 200, 20, 3)))
write("fuzz_input_report", "stale_button", bytes([3, mcl, 1, 9]) + form + framed(coordinate(2, 1, 5, 5, 1)))
write("fuzz_input_report", "adc", b"\x00\x00\x00\x00\x00" +
      framed(struct.pack("<BBBHHHH", 3, 2, 0x11, 1, 2, 3, 4), struct.pack("<BBBHHHH", 3, 3, 7, 5, 6, 7, 8)))
card = bytes([12, 1, 2, 3, 4]) + b"%B1234^NAME^2501?".ljust(79, b"\0") + b";1234=2501?".ljust(40, b"\0") + \
    b"+TRACK3?".ljust(107, b"\0")
write("fuzz_input_report", "card_swipe", b"\x00\x00\x00\x00\x00" + framed(card))
debug = bytes([254, 0, 0x11]) + struct.pack("<9H", *range(1, 10)) + b"\x07"
write("fuzz_input_report", "debug", b"\x00\x00\x00\x00\x00" + framed(debug))

# ---- HID report descriptors ----------------------------------------------
for name in sorted(os.listdir(os.path.join(HERE, "descriptors"))):
    folder = os.path.join(HERE, "corpus", "fuzz_hid_descriptor")
    os.makedirs(folder, exist_ok=True)
    shutil.copy(os.path.join(HERE, "descriptors", name), os.path.join(folder, name))
write("fuzz_hid_descriptor", "ids_1_2_13",
      b"\x06\x00\xff\x09\x01\xa1\x01\x85\x01\x09\x01\x81\x02\x85\x02\x09\x02\xb1\x02\x85\x0d\x09\x0d\xb1\x02\xc0")
write("fuzz_hid_descriptor", "cut_report_id", b"\x06\x00\xff\x09\x01\xa1\x01\x85")
write("fuzz_hid_descriptor", "long_item", b"\xfe\x03\x10\x01\x02\x03\x85\x07")

# ---- region tables -------------------------------------------------------
def table_input(count, max_caption_length, blocks):
    return struct.pack("<HI", count, max_caption_length) + region_table(blocks)

write("fuzz_region_table", "three_regions", table_input(3, 20, [
    region_block(1, 0, b"", 20), region_block(2, 1, b"Accept", 20), region_block(3, 2, b"", 20)]))
write("fuzz_region_table", "caption_longer_than_field", table_input(2, 200, [
    region_block(1, 1, b"A" * 200, 200), region_block(2, 1, b"B" * 150, 200)]))
write("fuzz_region_table", "caption_field_of_101", table_input(1, 101, [region_block(1, 1, b"C" * 101, 101)]))
write("fuzz_region_table", "unknown_type", table_input(1, 4, [region_block(1, 7, b"", 4)]))

# ---- virtual pad feature requests ----------------------------------------
def get(report_id, length, payload=b""):
    return b"\x01" + struct.pack("<H", length) + (bytes([report_id]) + payload).ljust(length, b"\0")[:length]


def put(report_id, payload, length=None):
    data = bytes([report_id]) + payload
    length = len(data) if length is None else length
    return b"\x00" + struct.pack("<H", length) + data.ljust(length, b"\0")[:length]


idle = put(10, b"\x00")
for model in (0, 1):
    write("fuzz_virtual_feature", f"info_model{model}",
          bytes([model, 1]) + get(100, 10) + get(13, 73) + get(11, 65) + get(22, 9) + get(27, 35))
    region = bytearray(29 + 24)
    region[0] = 112
    region[1:3] = b"\x02\x01"
    region[3] = 0x0F
    region[29:33] = b"Sign"
    write("fuzz_virtual_feature", f"region_model{model}",
          bytes([model, 1]) + idle + put(112, bytes(region[1:])) + get(110, 512) + put(113, b"\x02\x03", 12) +
          put(114, b"\x02") + put(115, b"\x01") + put(10, b"\x02"))
    write("fuzz_virtual_feature", f"display_model{model}",
          bytes([model, 1]) + put(101, b"\x01") + put(103, struct.pack(">HHHHB", 0, 0, 16, 16, 1), 2049) +
          put(104, struct.pack("<HH", 0, 0)) + get(105, 1031) + put(101, b"\x00"))
    write("fuzz_virtual_feature", f"serial_firmware_model{model}",
          bytes([model, 1]) + idle + put(27, b"\x00SN-0001", 35) + get(27, 35) +
          put(25, struct.pack("<I", 0) + bytes(range(128)) + b"\x00", 134) + put(29, b"\x00\x00") + get(26, 2049))
    write("fuzz_virtual_feature", f"resources_model{model}",
          bytes([model, 1]) + idle + put(140, b"\x01") + put(142, b"\x01\x00" + b"text", 1045) + get(141, 20) +
          get(142, 1045) + get(144, 18) + put(143, b"\x01"))
# Every feature report the firmware knows: (id, length, answers gets, takes
# sets). Length 0 is sized from the model's display information.
REPORTS = [
    (2, 2, 0, 1), (10, 2, 0, 1), (11, 65, 1, 0), (13, 73, 1, 1), (15, 3, 1, 1), (16, 2, 1, 0), (20, 4, 1, 1),
    (21, 2, 1, 0), (22, 9, 1, 0), (23, 9, 1, 0), (25, 134, 0, 1), (26, 2049, 1, 1), (27, 35, 1, 1), (28, 2, 0, 1),
    (29, 3, 0, 1), (40, 5, 1, 0), (41, 6, 1, 1), (42, 2, 0, 1), (43, 9, 1, 0), (44, 3, 0, 1), (50, 18, 1, 1),
    (60, 22, 1, 1), (91, 10, 1, 1), (92, 17, 1, 1), (100, 10, 1, 0), (101, 2, 0, 1), (102, 7, 1, 1),
    (103, 2049, 0, 1), (104, 5, 0, 1), (105, 1031, 1, 0), (110, 0, 1, 0), (111, 0, 1, 0), (112, 0, 0, 1),
    (113, 12, 0, 1), (114, 2, 0, 1), (115, 2, 0, 1), (130, 2, 1, 1), (131, 49, 1, 1), (140, 2, 1, 1),
    (141, 20, 1, 0), (142, 1045, 1, 1), (143, 2, 0, 1), (144, 18, 1, 0), (150, 2, 1, 1), (152, 0, 1, 1),
    (153, 2, 0, 1), (160, 2, 1, 1), (162, 80, 1, 1), (163, 2, 0, 1), (164, 13, 0, 1), (170, 25, 1, 0),
    (171, 2, 1, 1), (172, 2, 0, 1), (253, 67, 0, 1),
]
MODELS = [(8, 15), (16, 31)]  # (region count, max caption length) of mono-320 and color-800


def sized(report_id, length, model):
    count, caption = MODELS[model]
    if length:
        return length
    return {110: count * (caption + 29) + 1, 111: count * (caption + 29) + 1, 112: caption + 30}.get(
        report_id, caption + 34)


for model in (0, 1):
    requests = []
    for report_id, length, gets, sets in REPORTS:
        length = sized(report_id, length, model)
        if gets:
            requests.append(get(report_id, length, b"\x01"))
        if sets and report_id != 10:
            # Byte 1 is a number or index in most reports: 1 names the first.
            requests.append(put(report_id, b"\x01\x01", length))
    for part in range(0, len(requests), 30):
        write("fuzz_virtual_feature", f"every_report_model{model}_{part // 30}",
              bytes([model, 1]) + idle + b"".join(requests[part:part + 30]))
write("fuzz_virtual_feature", "busy_pad", bytes([1, 0]) + idle + put(101, b"\x01") + get(13, 73) + put(101, b"\x00"))

# ---- text in encodings ---------------------------------------------------
write("fuzz_string_encoding", "utf8", b"\x01\x00" + "Sign here: é € 日本".encode("utf-8"))
write("fuzz_string_encoding", "utf8_nul_inside", b"\x01\x00abc\x00def")
write("fuzz_string_encoding", "default_cut", b"\x00\x01" + "€uro".encode("utf-8"))
write("fuzz_string_encoding", "utf16le", b"\x02\x00" + "Unterschrift ü".encode("utf-16-le"))
write("fuzz_string_encoding", "utf32", b"\x04\x00" + "x\U0001F58A".encode("utf-32"))
write("fuzz_string_encoding", "shift_jis", b"\x07\x00" + "署名".encode("shift_jis"))
write("fuzz_string_encoding", "iso2022jp", b"\x09\x00" + "署名 ok".encode("iso2022_jp"))
write("fuzz_string_encoding", "ebcdic", b"\x0a\x00" + b"\xe2\xc9\xc7\xd5")  # "SIGN" in EBCDIC
write("fuzz_string_encoding", "unknown", b"\x0b\x00abc")
