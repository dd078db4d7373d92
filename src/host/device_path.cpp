// A pad's path text and the path snapshots of the two latest listings.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "host/real_device.h"

namespace velatrix::host {

namespace {

constexpr std::size_t kPathBufferSize = 256;

// The snapshots hold owned texts. Listing may run on an application thread
// and on the hot-plug thread at once; the lock keeps the lists whole, the
// outcome of such an overlap is still whichever rotation came last.
std::mutex snapshot_mutex;
velatrix_list* old_paths = nullptr;
velatrix_list* new_paths = nullptr;

void free_snapshot(velatrix_list*& list) {
    if (list == nullptr) return;
    for (velatrix_list_node* node = list->head; node != nullptr; node = node->next) std::free(node->value);
    velatrix_list_free(list);
    list = nullptr;
}

bool snapshot_holds(const velatrix_list* list, const char* path) {
    for (const velatrix_list_node* node = list != nullptr ? list->head : nullptr; node != nullptr; node = node->next) {
        if (std::strcmp(static_cast<const char*>(node->value), path) == 0) return true;
    }
    return false;
}

// Every text of `from` that `other` lacks, in `from` order.
std::vector<std::string> missing_from(const velatrix_list* from, const velatrix_list* other) {
    std::vector<std::string> result;
    for (const velatrix_list_node* node = from != nullptr ? from->head : nullptr; node != nullptr; node = node->next) {
        const char* path = static_cast<const char*>(node->value);
        if (!snapshot_holds(other, path)) result.emplace_back(path);
    }
    return result;
}

}  // namespace

std::string device_path(const HidInterfaceInfo& info) {
    char buffer[kPathBufferSize];
    std::snprintf(buffer, sizeof buffer, "%s_%04hx_%04hx_%02x_%02x_%x", info.transport.c_str(),
                  static_cast<unsigned short>(info.vendor_id), static_cast<unsigned short>(info.product_id),
                  static_cast<unsigned>(info.primary_usage_page), static_cast<unsigned>(info.primary_usage),
                  static_cast<unsigned>(info.location_id));
    return buffer;
}

bool is_pad(const HidInterfaceInfo& info) {
    return info.vendor_id == kVendorId && (info.primary_usage == 0 || info.primary_usage == 6);
}

void rotate_path_snapshots(const std::vector<std::string>& paths) {
    std::lock_guard lock(snapshot_mutex);
    if (new_paths == nullptr) new_paths = velatrix_create_list();
    free_snapshot(old_paths);
    old_paths = new_paths;
    new_paths = velatrix_create_list();
    for (const std::string& path : paths) velatrix_list_add(new_paths, strdup(path.c_str()));
}

PathChanges diff_path_snapshots() {
    std::lock_guard lock(snapshot_mutex);
    return PathChanges{missing_from(new_paths, old_paths), missing_from(old_paths, new_paths)};
}

void clear_path_snapshots() {
    std::lock_guard lock(snapshot_mutex);
    free_snapshot(old_paths);
    free_snapshot(new_paths);
}

}  // namespace velatrix::host
