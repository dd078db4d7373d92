#include "signature.h"

#include <cstdio>
#include <filesystem>

#include "images.h"
#include "session.h"

namespace quillmark {
namespace {

constexpr uint32_t kInk = 0x102080FF;
constexpr float kInkWidth = 2.0f;
constexpr const char* kInkSvg = "#102080";

std::string extension(const std::string& path) { return std::filesystem::path(path).extension().string(); }

void write_text(const std::string& path, const std::string& text) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) throw Refused("cannot write " + path);
    const bool ok = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    if (std::fclose(file) != 0 || !ok) throw Refused("cannot write " + path);
}

}  // namespace

bool is_signature_format(const std::string& path) {
    const std::string ext = extension(path);
    return ext == ".png" || ext == ".svg" || ext == ".json";
}

void Signature::pen(uint16_t x, uint16_t y, bool tip, uint32_t time_ms) {
    if (tip) {
        if (!pen_down_) strokes_.emplace_back();
        strokes_.back().push_back({x, y, time_ms});
    }
    pen_down_ = tip;
}

size_t Signature::point_count() const {
    size_t count = 0;
    for (const auto& stroke : strokes_) count += stroke.size();
    return count;
}

std::string Signature::svg() const {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
                      std::to_string(width_) + "\" height=\"" + std::to_string(height_) + "\" viewBox=\"0 0 " +
                      std::to_string(width_) + " " + std::to_string(height_) + "\">\n";
    for (const auto& stroke : strokes_) {
        out += "  <path fill=\"none\" stroke=\"";
        out += kInkSvg;
        out += "\" stroke-width=\"2\" stroke-linecap=\"round\" stroke-linejoin=\"round\" d=\"";
        for (size_t i = 0; i < stroke.size(); ++i) {
            out += (i == 0 ? "M" : " L") + std::to_string(stroke[i].x) + " " + std::to_string(stroke[i].y);
        }
        out += "\"/>\n";
    }
    return out + "</svg>\n";
}

std::string Signature::json() const {
    std::string out = "{\"width\": " + std::to_string(width_) + ", \"height\": " + std::to_string(height_) +
                      ", \"strokes\": [";
    for (size_t s = 0; s < strokes_.size(); ++s) {
        out += s == 0 ? "\n  [" : ",\n  [";
        for (size_t i = 0; i < strokes_[s].size(); ++i) {
            const SignaturePoint& p = strokes_[s][i];
            out += (i == 0 ? "" : ", ") + std::string("{\"x\": ") + std::to_string(p.x) + ", \"y\": " +
                   std::to_string(p.y) + ", \"t\": " + std::to_string(p.time_ms) + "}";
        }
        out += "]";
    }
    return out + (strokes_.empty() ? "]}\n" : "\n]}\n");
}

void Signature::write(const std::string& path) const {
    const std::string ext = extension(path);
    if (ext == ".svg") return write_text(path, svg());
    if (ext == ".json") return write_text(path, json());
    if (ext != ".png") throw UsageError("cannot write a signature as '" + ext + "': use .png, .svg or .json");
    Canvas canvas(width_, height_);
    for (const auto& stroke : strokes_) {
        if (stroke.size() == 1) {
            velatrix_fill_circle(&canvas.bitmap, stroke[0].x, stroke[0].y, 1, kInk);
        }
        for (size_t i = 1; i < stroke.size(); ++i) {
            velatrix_draw_thick_aa_line(&canvas.bitmap, stroke[i - 1].x, stroke[i - 1].y, stroke[i].x, stroke[i].y,
                                        kInk, kInkWidth);
        }
    }
    write_png(path, canvas.to_rgb());
}

}  // namespace quillmark
