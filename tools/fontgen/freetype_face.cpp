#include "freetype_face.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <stdexcept>

namespace fontgen {

struct Face::Handle {
    FT_Face face = nullptr;
};

FreeTypeLibrary::FreeTypeLibrary()
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        throw std::runtime_error("FreeType could not be initialised");
    }
    library_ = library;
}

FreeTypeLibrary::~FreeTypeLibrary()
{
    FT_Done_FreeType(static_cast<FT_Library>(library_));
}

Face::Face(const FreeTypeLibrary& library, const std::string& path, Hinting hinting)
    : face_(std::make_unique<Handle>()), path_(path), hinting_(hinting)
{
    if (FT_New_Face(static_cast<FT_Library>(library.library_), path.c_str(), 0, &face_->face) != 0) {
        throw std::runtime_error("cannot open font " + path);
    }
}

Face::~Face()
{
    if (face_->face != nullptr) {
        FT_Done_Face(face_->face);
    }
}

bool Face::has(std::int32_t code_point) const
{
    return FT_Get_Char_Index(face_->face, static_cast<FT_ULong>(code_point)) != 0;
}

std::optional<RenderedGlyph> Face::render(std::int32_t code_point, int pixel_size, int pixel_width) const
{
    FT_Face face = face_->face;
    const FT_UInt index = FT_Get_Char_Index(face, static_cast<FT_ULong>(code_point));
    if (index == 0 || FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(pixel_width), static_cast<FT_UInt>(pixel_size)) != 0) {
        return std::nullopt;
    }
    FT_Int32 flags = FT_LOAD_RENDER | FT_LOAD_TARGET_MONO;
    if (hinting_ == Hinting::automatic) {
        flags |= FT_LOAD_FORCE_AUTOHINT;
    }
    if (FT_Load_Glyph(face, index, flags) != 0) {
        return std::nullopt;
    }
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    if (bitmap.pixel_mode != FT_PIXEL_MODE_MONO && bitmap.rows != 0) {
        throw std::runtime_error("FreeType did not render a monochrome bitmap for " + path_);
    }
    RenderedGlyph glyph;
    glyph.width = static_cast<int>(bitmap.width);
    glyph.rows = static_cast<int>(bitmap.rows);
    glyph.left = slot->bitmap_left;
    glyph.top = slot->bitmap_top;
    glyph.advance = static_cast<int>(slot->advance.x >> 6);
    glyph.ink.assign(static_cast<std::size_t>(glyph.width * glyph.rows), 0);
    for (int y = 0; y < glyph.rows; ++y) {
        const unsigned char* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (int x = 0; x < glyph.width; ++x) {
            glyph.ink[static_cast<std::size_t>(y * glyph.width + x)] = (row[x >> 3] >> (7 - (x & 7))) & 1;
        }
    }
    return glyph;
}

}  // namespace fontgen
