// `quillmark firmware`: an image sent page by page, then the download
// status that tells the pad the image is complete.
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>

#include "commands.h"
#include "text.h"

namespace quillmark {
namespace {

constexpr uint32_t kPageSize = sizeof(velatrix_firmware_page{}.data);
constexpr uint32_t kDownloadComplete = 1;

using Image = std::map<uint32_t, uint8_t>;  // address -> byte

uint8_t hex_byte(const std::string& line, size_t at, size_t number) {
    if (at + 2 > line.size() || !std::isxdigit(static_cast<unsigned char>(line[at])) ||
        !std::isxdigit(static_cast<unsigned char>(line[at + 1]))) {
        throw UsageError("firmware: line " + std::to_string(number) + " is not an Intel HEX record");
    }
    return static_cast<uint8_t>(std::stoul(line.substr(at, 2), nullptr, 16));
}

// Data (00), end of file (01), extended segment (02) and extended linear
// (04) address records; start address records (03, 05) do not place bytes.
Image parse_intel_hex(const std::string& text) {
    Image image;
    uint32_t base = 0;
    size_t number = 0;
    for (std::string line : split(text, '\n')) {
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        if (line[0] != ':') throw UsageError("firmware: line " + std::to_string(number) + " does not start with ':'");
        const uint8_t length = hex_byte(line, 1, number);
        if (line.size() != 11u + 2u * length) {
            throw UsageError("firmware: line " + std::to_string(number) + " has the wrong length");
        }
        uint8_t sum = 0;
        for (size_t i = 1; i < line.size(); i += 2) sum = static_cast<uint8_t>(sum + hex_byte(line, i, number));
        if (sum != 0) throw UsageError("firmware: line " + std::to_string(number) + " has a bad checksum");
        const uint32_t offset = hex_byte(line, 3, number) << 8 | hex_byte(line, 5, number);
        const uint8_t type = hex_byte(line, 7, number);
        auto data = [&](size_t i) { return hex_byte(line, 9 + 2 * i, number); };
        if (type == 0x00) {
            for (size_t i = 0; i < length; ++i) image[base + offset + static_cast<uint32_t>(i)] = data(i);
        } else if (type == 0x01) {
            return image;
        } else if (type == 0x02 && length == 2) {
            base = static_cast<uint32_t>(data(0) << 8 | data(1)) << 4;
        } else if (type == 0x04 && length == 2) {
            base = static_cast<uint32_t>(data(0) << 8 | data(1)) << 16;
        } else if (type != 0x03 && type != 0x05) {
            throw UsageError("firmware: line " + std::to_string(number) + " has an unknown record type");
        }
    }
    throw UsageError("firmware: the Intel HEX image has no end-of-file record");
}

// Aligned pages; bytes the image leaves out are 0xFF, as in erased flash.
// The checksum makes the page's data bytes sum to zero (mod 256).
std::vector<velatrix_firmware_page> pages_of(const Image& image) {
    std::vector<velatrix_firmware_page> pages;
    for (const auto& [address, byte] : image) {
        const uint32_t base = address - address % kPageSize;
        if (pages.empty() || pages.back().address != base) {
            velatrix_firmware_page page{};
            page.address = base;
            std::memset(page.data, 0xFF, sizeof page.data);
            pages.push_back(page);
        }
        pages.back().data[address - base] = byte;
    }
    for (velatrix_firmware_page& page : pages) {
        uint8_t sum = 0;
        for (const uint8_t byte : page.data) sum = static_cast<uint8_t>(sum + byte);
        page.checksum = static_cast<uint8_t>(-sum);
    }
    return pages;
}

void progress(size_t done, size_t total) {
    constexpr int kWidth = 40;
    const int filled = static_cast<int>(total == 0 ? kWidth : done * kWidth / total);
    std::fprintf(stderr, "\r[%.*s%*s] %zu/%zu pages", filled, "########################################",
                 kWidth - filled, "", done, total);
    if (done == total) std::fprintf(stderr, "\n");
    std::fflush(stderr);
}

}  // namespace

int run_firmware(const GlobalOptions& options, const FirmwareOptions& firmware) {
    std::ifstream file(firmware.file, std::ios::binary);
    if (!file) throw Refused("cannot read " + firmware.file);
    const std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    Image image;
    if (!firmware.address.empty()) {
        const int64_t address = parse_integer(firmware.address, "--address");
        if (address < 0 || address + static_cast<int64_t>(content.size()) > 0x100000000LL) {
            throw UsageError("--address: the image does not fit below 4 GiB");
        }
        for (size_t i = 0; i < content.size(); ++i) {
            image[static_cast<uint32_t>(address + static_cast<int64_t>(i))] = static_cast<uint8_t>(content[i]);
        }
    } else {
        if (content.empty() || content[0] != ':') {
            throw UsageError("firmware: " + firmware.file + " is not Intel HEX (give --address for a raw binary)");
        }
        image = parse_intel_hex(content);
    }
    if (image.empty()) throw UsageError("firmware: " + firmware.file + " holds no data");
    const auto pages = pages_of(image);

    Session session(options);
    velatrix_device* device = session.open();
    const bool bar = isatty(STDERR_FILENO) != 0;
    for (size_t i = 0; i < pages.size(); ++i) {
        if (velatrix_set_firmware(device, pages[i]) != 1) {
            if (bar) std::fprintf(stderr, "\n");
            char address[16];
            std::snprintf(address, sizeof address, "0x%08x", pages[i].address);
            refuse(std::string("sending the page at ") + address + " failed");
        }
        if (bar) progress(i + 1, pages.size());
    }
    if (velatrix_set_firmware_download_status(device, kDownloadComplete) != 1) refuse("sending the download status failed");
    std::printf("%zu page(s) sent, 0x%08x to 0x%08x; download status %u (complete)\n", pages.size(),
                pages.front().address, pages.back().address + kPageSize - 1, kDownloadComplete);
    return 0;
}

}  // namespace quillmark
