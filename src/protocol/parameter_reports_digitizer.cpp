// Pen and touch tuning of the digitizer.
#include "protocol/report_functions.h"
#include "velatrix/parameter_reports.h"

namespace velatrix::protocol {
namespace {

using Pen = velatrix_hid_feature_pen_parameters;
constexpr Field kPenFields[] = {
    VELATRIX_ROW(Pen, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(Pen, proximity, u16(1), "%hu"),
    VELATRIX_ROW(Pen, auto_pen_threshold, u16(3), "%hu"),
    VELATRIX_ROW(Pen, auto_touch_threshold, u16(5), "%hu"),
    VELATRIX_ROW(Pen, adc_average, u8(7), "%hhu"),
    VELATRIX_ROW(Pen, coordinate_average, u8(8), "%hhu"),
    VELATRIX_ROW(Pen, offset_interval, u16(9), "%hu"),
    VELATRIX_ROW(Pen, debounce_pre_down, u8(11), "%hhu"),
    VELATRIX_ROW(Pen, debounce_post_down, u8(12), "%hhu"),
    VELATRIX_ROW(Pen, debounce_pre_up, u8(13), "%hhu"),
    VELATRIX_HIDDEN_ROW(Pen, debounce_post_up, u8(14)),
    // The print shows debounce_pre_down a second time where the fourth
    // debounce value would go; tools comparing print-outs rely on it.
    {"debounce_pre_down", none(), VELATRIX_SLOT(Pen, debounce_pre_down), PrintKind::kNumber, "%hhu"},
    VELATRIX_ROW(Pen, error_correction_enable, bit(15, 0), "%hhu"),
    VELATRIX_ROW(Pen, reserved_1, bits(15, 1, 3), "%hhu"),
    VELATRIX_ROW(Pen, offset_correction_enable, bit(15, 4), "%hhu"),
    VELATRIX_ROW(Pen, reserved_2, bit(15, 5), "%hhu"),
    VELATRIX_ROW(Pen, tip_inverted, bit(15, 6), "%hhu"),
    VELATRIX_ROW(Pen, reserved_3, bit(15, 7), "%hhu"),
    VELATRIX_ROW(Pen, interrupt_rate, u16(16), "%hu"),
};
constexpr ReportLayout kPenLayout =
    layout_of<Pen>(report_id::kPenParameters, "velatrix_hid_feature_pen_parameters structure:\n", kPenFields);
static_assert(layout_fits(kPenLayout));

using Touch = velatrix_hid_feature_touch_parameters;
constexpr Field kTouchFields[] = {
    VELATRIX_ROW(Touch, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(Touch, adc_average, u8(1), "%hhu"),
    VELATRIX_ROW(Touch, coordinate_average, u8(2), "%hhu"),
    VELATRIX_ROW(Touch, slope_down, u16(3), "%hi"),
    VELATRIX_ROW(Touch, slope_liftoff, u16(5), "%hi"),
    VELATRIX_ROW(Touch, slope_minimum, u8(7), "%hhu"),
    VELATRIX_ROW(Touch, pressure_single, u16(8), "%hu"),
    VELATRIX_ROW(Touch, pressure_multiple, u16(10), "%hu"),
    VELATRIX_ROW(Touch, gain, u8(12), "%hhu"),
    VELATRIX_ROW(Touch, error_correction_enable, bit(13, 0), "%hhu"),
    VELATRIX_ROW(Touch, reserved, bits(13, 1, 7), "%hhu"),
    VELATRIX_ROW(Touch, scale_x, u16(14), "%hu"),
    VELATRIX_ROW(Touch, offset_x, u16(16), "%hi"),
    VELATRIX_ROW(Touch, scale_y, u16(18), "%hu"),
    VELATRIX_ROW(Touch, offset_y, u16(20), "%hi"),
};
constexpr ReportLayout kTouchLayout = layout_of<Touch>(
    report_id::kTouchParameters, "velatrix_hid_feature_touch_parameters structure:\n", kTouchFields);
static_assert(layout_fits(kTouchLayout));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

VELATRIX_DEFINE_REPORT_GET(pen_parameters, velatrix_hid_feature_pen_parameters, kPenLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(pen_parameters, velatrix_hid_feature_pen_parameters)
VELATRIX_DEFINE_REPORT_SET(pen_parameters, velatrix_hid_feature_pen_parameters, kPenLayout)
VELATRIX_DEFINE_REPORT_PRINT(pen_parameters, velatrix_hid_feature_pen_parameters, kPenLayout)

VELATRIX_DEFINE_REPORT_GET(touch_parameters, velatrix_hid_feature_touch_parameters, kTouchLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(touch_parameters, velatrix_hid_feature_touch_parameters)
VELATRIX_DEFINE_REPORT_SET(touch_parameters, velatrix_hid_feature_touch_parameters, kTouchLayout)
VELATRIX_DEFINE_REPORT_PRINT(touch_parameters, velatrix_hid_feature_touch_parameters, kTouchLayout)

}  // extern "C"
