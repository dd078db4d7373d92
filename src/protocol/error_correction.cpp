// The pad's error-correction table (report 0x1A) and the device identifier
// derived from it.
#include <openssl/evp.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "velatrix/modes.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/report_index.h"

namespace {

using namespace velatrix::protocol;

constexpr ReportEntry kTable = report(report_id::kErrorCorrectionTable);
static_assert(kTable.length == VELATRIX_ERROR_CORRECTION_TABLE_SIZE + 1);
constexpr size_t kUuidSize = 16;

using Table = velatrix_hid_feature_error_correction_table;
constexpr Field kTableFields[] = {
    VELATRIX_HIDDEN_ROW(Table, report_id, u8(0)),
    Field{"data", raw(1, VELATRIX_ERROR_CORRECTION_TABLE_SIZE), VELATRIX_SLOT(Table, data), PrintKind::kHexRun, "%02x"},
};
constexpr ReportLayout kTableLayout =
    layout_of<Table>(report_id::kErrorCorrectionTable, "velatrix_hid_feature_error_correction_table structure:\n",
                     kTableFields, nullptr, PrintStyle{.aligned = false});
static_assert(layout_fits(kTableLayout));

struct DigestContextDeleter {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

bool md5(const uint8_t* data, size_t length, uint8_t digest[kUuidSize]) {
    std::unique_ptr<EVP_MD_CTX, DigestContextDeleter> context(EVP_MD_CTX_new());
    unsigned int digest_length = 0;
    return context && EVP_DigestInit_ex(context.get(), EVP_md5(), nullptr) == 1 &&
           EVP_DigestUpdate(context.get(), data, length) == 1 &&
           EVP_DigestFinal_ex(context.get(), digest, &digest_length) == 1 && digest_length == kUuidSize;
}

}  // namespace

extern "C" {

void velatrix_get_error_correction_table_ref(velatrix_device* device,
                                             velatrix_hid_feature_error_correction_table* record) {
    VELATRIX_TRACE_FUNCTION();
    if (record == nullptr) {
        VELATRIX_REPORT_ERROR("Record was null, unable to read the error-correction table.");
        return;
    }
    std::memset(record, 0, sizeof *record);
    if (!wait_for_interlock(device, kTable.get_before.sleep, kTable.get_before.mask)) return;
    // A failed read is not logged here: the identifier's caller reports it.
    read_report(device, kTableLayout, record, nullptr);
}

velatrix_hid_feature_error_correction_table* velatrix_get_error_correction_table(
    velatrix_hid_feature_error_correction_table* record, velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_get_error_correction_table_ref(device, record);
    return record;
}

void velatrix_print_error_correction_table(const velatrix_hid_feature_error_correction_table* record) {
    VELATRIX_TRACE_FUNCTION();
    print_report(kTableLayout, record);
}

int velatrix_set_error_correction(velatrix_device* device, const velatrix_hid_feature_error_correction_table* table) {
    VELATRIX_TRACE_FUNCTION();
    if (table == nullptr) {
        VELATRIX_REPORT_ERROR("Table was null, unable to set the error correction.");
        return 0;
    }
    uint8_t buffer[kTable.length] = {};
    pack_report(kTableLayout, table, buffer);
    if (!velatrix_set_screen_region_commit(device, 0)) velatrix_set_region_commit(device, 0);
    velatrix_set_run_mode(device, VELATRIX_RUN_MODE_IDLE);
    // A failure from here on leaves the pad idle on purpose: a half-written
    // table must not be run with.
    if (!wait_for_interlock(device, kTable.set_before.sleep, kTable.set_before.mask)) return 0;
    if (velatrix_hid_set_feature_report(device, buffer, sizeof buffer) != 1) return 0;
    velatrix_set_run_mode(device, VELATRIX_RUN_MODE_RUNNING);
    return 1;
}

uint8_t* velatrix_get_device_uuid(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    auto table = std::make_unique<velatrix_hid_feature_error_correction_table>();
    velatrix_get_error_correction_table_ref(device, table.get());
    if (table->report_id == 0) return nullptr;
    auto* uuid = static_cast<uint8_t*>(std::malloc(kUuidSize));
    if (uuid == nullptr || !md5(table->data, sizeof table->data, uuid)) {
        std::free(uuid);
        return nullptr;
    }
    return uuid;
}

void velatrix_free_device_uuid(uint8_t* uuid) {
    VELATRIX_TRACE_FUNCTION();
    std::free(uuid);
}

void velatrix_print_device_uuid(const uint8_t* uuid) {
    VELATRIX_TRACE_FUNCTION();
    std::printf("Device UUID:\n");
    if (uuid == nullptr) {
        std::printf("  NULL\n");
        return;
    }
    std::printf("uuid = %02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-%02x%02x%02x%02x%02x%02x\n", uuid[0], uuid[1],
                uuid[2], uuid[3], uuid[4], uuid[5], uuid[6], uuid[7], uuid[8], uuid[9], uuid[10], uuid[11], uuid[12],
                uuid[13], uuid[14], uuid[15]);
}

}  // extern "C"
