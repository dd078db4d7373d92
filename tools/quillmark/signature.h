// A signature as the pen drew it: strokes of points with their times, and
// the three files it is written as. It stays in the tool rather than the C
// library: what makes a stroke (tip down on the signing area), when a
// signature ends and which file formats to write are an application's
// choices; the library already gives the drawing primitives it is rendered
// with, and the Java face has its own collector.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmark {

struct SignaturePoint {
    uint16_t x;
    uint16_t y;
    uint32_t time_ms;  // since the capture began
};

class Signature {
public:
    Signature(int32_t width, int32_t height) : width_(width), height_(height) {}

    // One pen position: tip down adds to the current stroke (starting one
    // when the pen was up), tip up ends it.
    void pen(uint16_t x, uint16_t y, bool tip, uint32_t time_ms);
    // The pen left the signing area (a button region): the stroke ends.
    void lift() { pen_down_ = false; }

    const std::vector<std::vector<SignaturePoint>>& strokes() const { return strokes_; }
    size_t point_count() const;

    // By the file's extension: .png, .svg or .json. Throws UsageError for
    // any other extension, Refused when the file cannot be written.
    void write(const std::string& path) const;
    std::string svg() const;
    std::string json() const;

private:
    int32_t width_;
    int32_t height_;
    bool pen_down_ = false;
    std::vector<std::vector<SignaturePoint>> strokes_;
};

// The extension is one Signature::write takes.
bool is_signature_format(const std::string& path);

}  // namespace quillmark
