-- Wireshark dissector for the traffic traces Velatrix Quillmark writes
-- (VELATRIX_TRACE=1 or quillmark --trace FILE.pcap). Every HID report is
-- a UDP datagram on port 1000: from 1.0.0.0 when the pad sent it (an input
-- report or the answer to a feature get), from 2.0.0.0 when the host did.
--
--   tshark -X lua_script:quillmark.lua -r trace.pcap
--   (or copy this file into ~/.local/lib/wireshark/plugins/)

local quillmark = Proto("quillmark", "Velatrix Quillmark HID report")

-- Feature and output reports by id. Kept equal to the library's report
-- index by the quillmark_dissector_names test.
local feature_reports = {
  [2] = "power state write", [10] = "run mode", [11] = "capabilities", [13] = "device status",
  [15] = "device configure", [16] = "contact count maximum", [20] = "frequency amplitude",
  [21] = "power state", [22] = "version", [23] = "coordinate range", [25] = "firmware",
  [26] = "error correction table", [27] = "serial number", [28] = "startup mode",
  [29] = "firmware download status", [40] = "operating modes", [41] = "general parameters",
  [42] = "asic reset", [43] = "asic register get", [44] = "asic register set",
  [50] = "pen parameters", [60] = "touch parameters", [91] = "output configuration",
  [92] = "peripheral configuration", [100] = "display info", [101] = "display content",
  [102] = "display settings", [103] = "display chunk", [104] = "pixel request",
  [105] = "pixel answer", [110] = "regions", [111] = "default regions", [112] = "region",
  [113] = "region update", [114] = "region delete", [115] = "region commit",
  [130] = "calibrate", [131] = "calibration data", [140] = "resource index",
  [141] = "resource info", [142] = "resource", [143] = "resource delete",
  [144] = "resource availability", [150] = "region index", [152] = "region contents",
  [153] = "device region delete", [160] = "screen index", [162] = "screen",
  [163] = "screen delete", [164] = "edit screen", [170] = "screen region info",
  [171] = "active screen", [172] = "screen region commit", [253] = "simulate pen input",
}

-- Input reports, which only the pad sends.
local input_reports = {
  [1] = "coordinate", [2] = "extended coordinate", [3] = "ADC values",
  [12] = "magnetic card swipe", [254] = "debug coordinate",
}

local f = quillmark.fields
f.id = ProtoField.uint8("quillmark.id", "Report id", base.DEC)
f.name = ProtoField.string("quillmark.name", "Report")
f.kind = ProtoField.string("quillmark.kind", "Kind")
f.direction = ProtoField.string("quillmark.direction", "Direction")
f.length = ProtoField.uint32("quillmark.length", "Length", base.DEC)
-- Display chunk header: the only report with big-endian fields.
f.chunk_x = ProtoField.uint16("quillmark.chunk.x", "X", base.DEC)
f.chunk_y = ProtoField.uint16("quillmark.chunk.y", "Y", base.DEC)
f.chunk_width = ProtoField.uint16("quillmark.chunk.width", "Width", base.DEC)
f.chunk_height = ProtoField.uint16("quillmark.chunk.height", "Height", base.DEC)
f.chunk_bpp = ProtoField.uint8("quillmark.chunk.bpp", "Bits per pixel", base.DEC)
-- Coordinates.
f.tip = ProtoField.bool("quillmark.coordinate.tip", "Tip switch", 8, nil, 0x01)
f.in_range = ProtoField.bool("quillmark.coordinate.in_range", "In range", 8, nil, 0x10)
f.x = ProtoField.uint16("quillmark.coordinate.x", "X", base.DEC)
f.y = ProtoField.uint16("quillmark.coordinate.y", "Y", base.DEC)
f.region = ProtoField.uint8("quillmark.coordinate.region", "Region", base.DEC)
-- Device status flags, one byte each.
local status_flags = {"initializing", "idle", "calibration_required", "calibrating",
  "interlock_0", "interlock_1", "interlock_2", "interlock_3", "interlock_4", "interlock_5"}
for _, name in ipairs(status_flags) do
  f["status_" .. name] = ProtoField.uint8("quillmark.status." .. name, name:gsub("_", " "), base.DEC)
end

local ip_src = Field.new("ip.src")

function quillmark.dissector(buffer, pinfo, tree)
  local length = buffer:len()
  if length < 1 then return 0 end
  local from_pad = tostring(ip_src()) == "1.0.0.0"
  local id = buffer(0, 1):uint()
  local name, kind
  if from_pad and input_reports[id] then
    name, kind = input_reports[id], "input"
  else
    name, kind = feature_reports[id] or ("unknown report " .. id), "feature"
  end
  local direction = from_pad and "pad to host" or "host to pad"

  pinfo.cols.protocol = "QUILLMARK"
  pinfo.cols.info = string.format("%s %s (%d), %d bytes, %s", kind, name, id, length, direction)
  local t = tree:add(quillmark, buffer(), string.format("Quillmark %s report: %s", kind, name))
  t:add(f.id, buffer(0, 1))
  t:add(f.name, name)
  t:add(f.kind, kind)
  t:add(f.direction, direction)
  t:add(f.length, length)

  if kind == "feature" and id == 103 and length >= 10 then
    t:add(f.chunk_x, buffer(1, 2))
    t:add(f.chunk_y, buffer(3, 2))
    t:add(f.chunk_width, buffer(5, 2))
    t:add(f.chunk_height, buffer(7, 2))
    t:add(f.chunk_bpp, buffer(9, 1))
  elseif kind == "input" and (id == 1 or id == 2) and length >= 6 then
    t:add(f.tip, buffer(1, 1))
    t:add(f.in_range, buffer(1, 1))
    t:add_le(f.x, buffer(2, 2))
    t:add_le(f.y, buffer(4, 2))
    if id == 2 and length >= 7 then t:add(f.region, buffer(6, 1)) end
  elseif kind == "feature" and id == 13 and length > #status_flags then
    for i, flag in ipairs(status_flags) do t:add(f["status_" .. flag], buffer(i, 1)) end
  end
  return length
end

DissectorTable.get("udp.port"):add(1000, quillmark)
