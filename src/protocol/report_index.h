// The index of every feature and output report the library exchanges with a
// pad: its id, its total length (id byte included), which directions are
// used and which interlock waits pace it. Report operations take lengths and
// waits from here, so a wrong length or wait cannot hide inside one function.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

namespace velatrix::protocol {

// One interlock wait: at most `sleep` status polls for the busy flags `mask`.
struct InterlockWait {
    uint32_t sleep = 0;
    uint32_t mask = 0;
    constexpr bool none() const { return sleep == 0 && mask == 0; }
};

inline constexpr InterlockWait kNoWait{};

enum Direction : uint8_t { kGet = 1, kSet = 2, kGetSet = kGet | kSet };

struct ReportEntry {
    uint8_t id;
    uint16_t length;  // 0: the length varies with the pad (region reports)
    uint8_t directions;
    InterlockWait get_before;
    InterlockWait get_after;
    InterlockWait set_before;
    InterlockWait set_after;
};

namespace report_id {
inline constexpr uint8_t kPowerStateWrite = 2;
inline constexpr uint8_t kRunMode = 10;
inline constexpr uint8_t kCapabilities = 11;
inline constexpr uint8_t kDeviceStatus = 13;
inline constexpr uint8_t kDeviceConfigure = 15;
inline constexpr uint8_t kContactCountMaximum = 16;
inline constexpr uint8_t kFrequencyAmplitude = 20;
inline constexpr uint8_t kPowerState = 21;
inline constexpr uint8_t kVersion = 22;
inline constexpr uint8_t kCoordinateRange = 23;
inline constexpr uint8_t kFirmware = 25;
inline constexpr uint8_t kErrorCorrectionTable = 26;
inline constexpr uint8_t kSerialNumber = 27;
inline constexpr uint8_t kStartupMode = 28;
inline constexpr uint8_t kFirmwareDownloadStatus = 29;
inline constexpr uint8_t kOperatingModes = 40;
inline constexpr uint8_t kGeneralParameters = 41;
inline constexpr uint8_t kAsicReset = 42;
inline constexpr uint8_t kAsicRegisterGet = 43;
inline constexpr uint8_t kAsicRegisterSet = 44;
inline constexpr uint8_t kPenParameters = 50;
inline constexpr uint8_t kTouchParameters = 60;
inline constexpr uint8_t kOutputConfiguration = 91;
inline constexpr uint8_t kPeripheralConfiguration = 92;
inline constexpr uint8_t kDisplayInfo = 100;
inline constexpr uint8_t kDisplayContent = 101;
inline constexpr uint8_t kDisplaySettings = 102;
inline constexpr uint8_t kDisplayChunk = 103;
inline constexpr uint8_t kPixelRequest = 104;
inline constexpr uint8_t kPixelAnswer = 105;
inline constexpr uint8_t kRegions = 110;
inline constexpr uint8_t kDefaultRegions = 111;
inline constexpr uint8_t kRegion = 112;
inline constexpr uint8_t kRegionUpdate = 113;
inline constexpr uint8_t kRegionDelete = 114;
inline constexpr uint8_t kRegionCommit = 115;
inline constexpr uint8_t kCalibrate = 130;
inline constexpr uint8_t kCalibrationData = 131;
inline constexpr uint8_t kResourceIndex = 140;
inline constexpr uint8_t kResourceInfo = 141;
inline constexpr uint8_t kResource = 142;
inline constexpr uint8_t kResourceDelete = 143;
inline constexpr uint8_t kResourceAvailability = 144;
inline constexpr uint8_t kRegionIndex = 150;
inline constexpr uint8_t kRegionContents = 152;
inline constexpr uint8_t kDeviceRegionDelete = 153;
inline constexpr uint8_t kScreenIndex = 160;
inline constexpr uint8_t kScreen = 162;
inline constexpr uint8_t kScreenDelete = 163;
inline constexpr uint8_t kEditScreen = 164;
inline constexpr uint8_t kScreenRegionInfo = 170;
inline constexpr uint8_t kActiveScreen = 171;
inline constexpr uint8_t kScreenRegionCommit = 172;
inline constexpr uint8_t kSimulatePenInput = 253;
}  // namespace report_id

// Waits written as {sleep, mask}. Some values are deliberately uneven
// (2103/2104, 2101/2100, 2200): the firmware was tuned against them.
inline constexpr ReportEntry kReportIndex[] = {
    // id  length  dir     get before   get after    set before   set after
    {2, 2, kSet, {}, {}, {}, {}},
    {10, 2, kSet, {}, {}, {500, 1}, {500, 1}},
    {11, 65, kGet, {}, {}, {}, {}},
    {13, 73, kGetSet, {}, {}, {}, {}},
    {15, 3, kGetSet, {}, {}, {}, {}},
    {16, 2, kGet, {}, {}, {}, {}},
    {20, 4, kGetSet, {}, {}, {}, {}},
    {21, 2, kGet, {}, {}, {}, {}},
    {22, 9, kGet, {}, {}, {}, {}},
    {23, 9, kGet, {}, {}, {}, {}},
    {25, 134, kSet, {}, {}, {}, {}},
    {26, 2049, kGetSet, {100, 1}, {}, {2200, 1}, {}},
    {27, 35, kGetSet, {}, {}, {100, 4}, {}},
    {28, 2, kSet, {}, {}, {}, {}},
    {29, 3, kSet, {}, {}, {}, {}},
    {40, 5, kGet, {}, {}, {}, {}},
    {41, 6, kGetSet, {}, {}, {}, {}},
    {42, 2, kSet, {}, {}, {}, {}},
    {43, 9, kGet, {}, {}, {}, {}},
    {44, 3, kSet, {}, {}, {}, {}},
    {50, 18, kGetSet, {}, {}, {}, {}},
    {60, 22, kGetSet, {}, {}, {}, {}},
    {91, 10, kGetSet, {}, {}, {}, {}},
    {92, 17, kGetSet, {}, {}, {}, {}},
    {100, 10, kGet, {}, {}, {}, {}},
    {101, 2, kSet, {}, {}, {100, 16}, {}},
    {102, 7, kGetSet, {}, {}, {}, {}},
    {103, 2049, kSet, {}, {}, {100, 16}, {}},
    {104, 5, kSet, {}, {}, {}, {}},
    {105, 1031, kGet, {}, {}, {}, {}},
    {110, 0, kGet, {100, 4}, {}, {}, {}},
    {111, 0, kGet, {100, 4}, {}, {}, {}},
    {112, 0, kSet, {}, {}, {100, 4}, {}},
    {113, 12, kSet, {}, {}, {}, {}},
    {114, 2, kSet, {}, {}, {100, 4}, {}},
    {115, 2, kSet, {}, {}, {}, {}},
    {130, 2, kGetSet, {2103, 32}, {2104, 32}, {100, 32}, {100, 32}},
    {131, 49, kGetSet, {}, {}, {}, {}},
    {140, 2, kGetSet, {}, {}, {}, {}},
    {141, 20, kGet, {}, {}, {}, {}},
    {142, 1045, kGetSet, {}, {}, {100, 12}, {}},
    {143, 2, kSet, {}, {}, {100, 12}, {}},
    {144, 18, kGet, {}, {}, {}, {}},
    {150, 2, kGetSet, {}, {}, {}, {}},
    {152, 0, kGetSet, {100, 4}, {}, {100, 4}, {}},
    {153, 2, kSet, {}, {}, {100, 12}, {}},
    {160, 2, kGetSet, {}, {}, {}, {}},
    {162, 80, kGetSet, {100, 8}, {}, {100, 8}, {}},
    {163, 2, kSet, {}, {}, {100, 8}, {}},
    {164, 13, kSet, {}, {}, {100, 8}, {}},
    {170, 25, kGet, {}, {}, {}, {}},
    {171, 2, kGetSet, {100, 8}, {}, {100, 8}, {}},
    {172, 2, kSet, {}, {}, {2101, 12}, {2100, 12}},
    {253, 67, kSet, {}, {}, {}, {}},
};

constexpr std::optional<ReportEntry> find_report(uint8_t id) {
    for (const ReportEntry& entry : kReportIndex) {
        if (entry.id == id) return entry;
    }
    return std::nullopt;
}

// The entry of a report the caller knows is in the index; a missing id is a
// compile-time error where this is used in a constant expression.
constexpr const ReportEntry& report(uint8_t id) {
    for (const ReportEntry& entry : kReportIndex) {
        if (entry.id == id) return entry;
    }
    throw "report id missing from the report index";
}

constexpr uint16_t report_length(uint8_t id) { return report(id).length; }

namespace detail {
constexpr bool index_is_consistent() {
    for (size_t i = 0; i < std::size(kReportIndex); ++i) {
        if (kReportIndex[i].directions == 0) return false;
        for (size_t j = i + 1; j < std::size(kReportIndex); ++j) {
            if (kReportIndex[i].id == kReportIndex[j].id) return false;
        }
    }
    return true;
}
}  // namespace detail
static_assert(detail::index_is_consistent(), "each report id appears once and has a direction");

}  // namespace velatrix::protocol
