// RAII wrappers around FreeType: one library handle, faces opened from
// files (TrueType, and the PCF bitmap fonts of the X11 misc-fixed family).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fontgen {

// A glyph as FreeType rendered it, 1 bit per pixel, in the face's own
// coordinates: `left` columns right of the pen, `top` rows above the baseline.
struct RenderedGlyph {
    int width = 0;
    int rows = 0;
    int left = 0;
    int top = 0;
    int advance = 0;
    std::vector<std::uint8_t> ink;  // width * rows, 1 = ink

    bool at(int x, int y) const { return ink[static_cast<std::size_t>(y * width + x)] != 0; }
};

class FreeTypeLibrary;

// The typeface's own hinting instructions, or FreeType's auto-hinter, which
// keeps the small arrows of the fallback typeface recognisable at 12 pixels.
enum class Hinting { native, automatic };

class Face {
public:
    Face(const FreeTypeLibrary& library, const std::string& path, Hinting hinting = Hinting::native);
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    bool has(std::int32_t code_point) const;
    // Renders hinted and monochrome at the pixel size, optionally narrowed to
    // a smaller horizontal size; nothing when the face lacks the code point
    // or has no strike of that size.
    std::optional<RenderedGlyph> render(std::int32_t code_point, int pixel_size, int pixel_width = 0) const;
    const std::string& path() const { return path_; }

private:
    struct Handle;
    std::unique_ptr<Handle> face_;
    std::string path_;
    Hinting hinting_;
};

class FreeTypeLibrary {
public:
    FreeTypeLibrary();
    ~FreeTypeLibrary();
    FreeTypeLibrary(const FreeTypeLibrary&) = delete;
    FreeTypeLibrary& operator=(const FreeTypeLibrary&) = delete;

private:
    friend class Face;
    void* library_ = nullptr;
};

}  // namespace fontgen
