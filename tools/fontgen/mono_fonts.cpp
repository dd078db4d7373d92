#include "mono_fonts.h"

#include <stdexcept>
#include <string>

namespace fontgen {
namespace {

GlyphImage place_in_cell(const RenderedGlyph& rendered, const MonoCell& cell, int x_origin)
{
    GlyphImage image = GlyphImage::blank(cell.width, cell.height, cell.descent);
    const int baseline_row = cell.height - cell.descent;
    for (int y = 0; y < rendered.rows; ++y) {
        const int cy = baseline_row - rendered.top + y;
        if (cy < 0 || cy >= cell.height) {
            continue;
        }
        for (int x = 0; x < rendered.width; ++x) {
            const int cx = x_origin + x;
            if (cx >= 0 && cx < cell.width && rendered.at(x, y)) {
                image.set(cx, cy, true);
            }
        }
    }
    return image;
}

GlyphImage render_fallback(const Face& fallback, const MonoCell& cell, std::int32_t code_point)
{
    // Narrower, never shorter: the glyph keeps the height of its neighbours.
    for (int width = cell.pixel_size; width > cell.pixel_size / 2; --width) {
        std::optional<RenderedGlyph> rendered = fallback.render(code_point, cell.pixel_size, width);
        if (!rendered) {
            break;
        }
        if (rendered->width <= cell.width) {
            return place_in_cell(*rendered, cell, (cell.width - rendered->width) / 2);
        }
    }
    throw std::runtime_error("no glyph fits the " + std::string(cell.name) + " cell for code point " +
                             std::to_string(code_point));
}

}  // namespace

FontTable render_mono_font(const Face& primary, const Face& fallback, const MonoCell& cell,
                           const std::vector<std::int32_t>& code_points)
{
    FontTable table;
    table.name = cell.name;
    table.origin = "Ubuntu Mono Regular at " + std::to_string(cell.pixel_size) + " pixels, cell " +
                   std::to_string(cell.width) + "x" + std::to_string(cell.height) + " with descent " +
                   std::to_string(cell.descent) + "; glyphs it lacks from DejaVu Sans Mono";
    for (std::int32_t code_point : code_points) {
        CodedGlyph glyph{code_point, {}};
        if (std::optional<RenderedGlyph> rendered = primary.render(code_point, cell.pixel_size)) {
            glyph.image = place_in_cell(*rendered, cell, rendered->left);
        } else if (fallback.has(code_point)) {
            glyph.image = render_fallback(fallback, cell, code_point);
        } else {
            throw std::runtime_error("neither typeface has code point " + std::to_string(code_point));
        }
        table.glyphs.push_back(std::move(glyph));
    }
    return table;
}

}  // namespace fontgen
