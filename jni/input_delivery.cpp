// Hands each input report to Java on the thread inside Device.read: first
// the raw bytes, then the event object its record type stands for.
#include "binding_cache.h"
#include "device_sessions.h"
#include "value_classes.h"

using namespace velatrix::jni;

namespace {

// A listener's exception must not stay pending while more JNI calls follow:
// the first one is kept and thrown when the read returns.
void keep_exception(JNIEnv* env, BindingContext& context) {
    jthrowable thrown = env->ExceptionOccurred();
    if (thrown == nullptr) return;
    env->ExceptionClear();
    if (context.pending == nullptr) {
        context.pending = thrown;
    } else {
        env->DeleteLocalRef(thrown);
    }
}

void push(JNIEnv* env, BindingContext& context, jmethodID method, jobject event) {
    if (event == nullptr) {
        keep_exception(env, context);  // the event could not be made
        return;
    }
    env->CallVoidMethod(context.device, method, event);
    keep_exception(env, context);
    env->DeleteLocalRef(event);
}

jobject new_button_event(JNIEnv* env, const ValueClass& value_class, const velatrix_input_button& button) {
    jvalue arguments[3];
    arguments[0].i = button.x;
    arguments[1].i = button.y;
    // The region's number (its record's first byte), 0 when the table no longer holds it.
    arguments[2].i = button.region != nullptr ? *reinterpret_cast<const uint8_t*>(button.region) : 0;
    return new_object(env, value_class, arguments);
}

const ValueClass kButtonDown{&velatrix_button_down_class, &velatrix_button_down_init, {}};
const ValueClass kButtonMove{&velatrix_button_move_class, &velatrix_button_move_init, {}};
const ValueClass kButtonUp{&velatrix_button_up_class, &velatrix_button_up_init, {}};
const ValueClass kButtonPress{&velatrix_button_press_class, &velatrix_button_press_init, {}};

}  // namespace

extern "C" VELATRIX_API int velatrix_jni_read_callback(velatrix_device* device, const velatrix_input_report* record,
                                                       int type, const uint8_t* buffer, uint32_t length) {
    if (device == nullptr || device->open == 0 || device->binding_context == nullptr) return 0;
    auto& context = *static_cast<BindingContext*>(device->binding_context);
    if (context.env == nullptr || context.device == nullptr) return 0;
    JNIEnv* env = context.env;

    push(env, context, velatrix_push_raw_input_report, new_byte_array(env, buffer, length));
    if (record == nullptr) return 0;

    switch (type & 0xFF) {
        case VELATRIX_INPUT_COORDINATE:
            push(env, context, velatrix_push_coordinate_event, new_object(env, kCoordinate, &record->data.coordinate));
            break;
        case VELATRIX_INPUT_EXTENDED_COORDINATE:
            push(env, context, velatrix_push_coordinate_event,
                 new_object(env, kExtendedCoordinate, &record->data.coordinate));
            break;
        case VELATRIX_INPUT_BUTTON_DOWN:
            push(env, context, velatrix_push_button_event, new_button_event(env, kButtonDown, record->data.button));
            break;
        case VELATRIX_INPUT_BUTTON_MOVE:
            push(env, context, velatrix_push_button_event, new_button_event(env, kButtonMove, record->data.button));
            break;
        case VELATRIX_INPUT_BUTTON_UP:
            push(env, context, velatrix_push_button_event, new_button_event(env, kButtonUp, record->data.button));
            break;
        case VELATRIX_INPUT_BUTTON_PRESS:
            push(env, context, velatrix_push_button_event, new_button_event(env, kButtonPress, record->data.button));
            break;
        case VELATRIX_INPUT_ADC:
            if (record->data.adc.kind == VELATRIX_ADC_SCAN_VALUES) {
                push(env, context, velatrix_push_adc_scan_event,
                     new_object(env, kAdcScanValues, &record->data.adc.values.scan));
            } else {
                push(env, context, velatrix_push_adc_channel_event,
                     new_object(env, kAdcChannelValues, &record->data.adc.values.channel));
            }
            break;
        case VELATRIX_INPUT_MAGNETIC_CARD_SWIPE:
            push(env, context, velatrix_push_magnetic_card_event,
                 new_object(env, kMagneticCardSwipe, &record->data.card_swipe));
            break;
        case VELATRIX_INPUT_DEBUG_COORDINATE:
            push(env, context, velatrix_push_debug_coordinate_event,
                 new_object(env, kDebugCoordinate, &record->data.debug_coordinate));
            break;
        default:
            break;  // only the raw report
    }
    return 0;
}
