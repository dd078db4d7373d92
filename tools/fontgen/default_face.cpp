#include "default_face.h"

#include "code_points.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace fontgen {
namespace {

constexpr int kCapHeight = 5;
constexpr int kSpaceWidth = 2;
constexpr std::int32_t kReplacementCharacter = 65533;

// Cyrillic letters the misc-fixed fonts lack but which look exactly like a
// Latin letter they have.
const std::map<std::int32_t, std::int32_t> kSameShape = {
    {1024, 200},  // Ie with grave = E with grave
    {1104, 232},  // ie with grave = e with grave
};

// A glyph in baseline coordinates: rows[i] lies at level `top - i`, where
// level 0 is the row just above the baseline and negative levels are below.
struct Rows {
    int top = 0;
    int width = 0;
    std::vector<std::vector<std::uint8_t>> rows;

    bool blank_row(std::size_t i) const
    {
        return std::all_of(rows[i].begin(), rows[i].end(), [](std::uint8_t p) { return p == 0; });
    }
};

Rows to_rows(const RenderedGlyph& g)
{
    Rows r;
    r.top = g.top - 1;
    r.width = g.left + g.width;
    for (int y = 0; y < g.rows; ++y) {
        std::vector<std::uint8_t> row(static_cast<std::size_t>(std::max(r.width, 0)), 0);
        for (int x = 0; x < g.width; ++x) {
            if (g.left + x >= 0) {
                row[static_cast<std::size_t>(g.left + x)] = g.at(x, y) ? 1 : 0;
            }
        }
        r.rows.push_back(std::move(row));
    }
    return r;
}

// Drops blank rows at the top and the bottom, but never above level 0 at the
// bottom: a raised glyph (a dash, an apostrophe) keeps the empty rows down to
// the baseline, otherwise it would be drawn sitting on it.
void trim_vertically(Rows& r)
{
    while (!r.rows.empty() && r.blank_row(0)) {
        r.rows.erase(r.rows.begin());
        --r.top;
    }
    while (!r.rows.empty() && r.blank_row(r.rows.size() - 1) && r.top - static_cast<int>(r.rows.size()) + 1 < 0) {
        r.rows.pop_back();
    }
    // A glyph wholly below the baseline reaches up to the row above it, so
    // its height always covers its descent.
    while (!r.rows.empty() && r.top < 0) {
        r.rows.insert(r.rows.begin(), std::vector<std::uint8_t>(static_cast<std::size_t>(r.width), 0));
        ++r.top;
    }
    while (!r.rows.empty() && r.top - static_cast<int>(r.rows.size()) + 1 > 0) {
        r.rows.push_back(std::vector<std::uint8_t>(static_cast<std::size_t>(r.width), 0));
    }
}

// A blank row high up separates an accent (or a dot) from its letter: such
// glyphs already have a body of x-height and keep their size.
bool has_accent_gap(const Rows& r)
{
    for (std::size_t i = 1; i < r.rows.size() && r.top - static_cast<int>(i) >= 3; ++i) {
        if (r.blank_row(i)) {
            return true;
        }
    }
    return false;
}

// Removes one row above the baseline so that a glyph of the taller source
// comes down to cap height: the upper row of the topmost pair of equal inked
// rows (a letter's straight stretch). Without such a pair there is no result.
std::optional<Rows> lower_by_one_row(Rows r)
{
    const int above = std::min(r.top + 1, static_cast<int>(r.rows.size()));
    for (int i = 0; i + 1 < above; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (!r.blank_row(at) && r.rows[at] == r.rows[at + 1]) {
            r.rows.erase(r.rows.begin() + i);
            --r.top;
            return r;
        }
    }
    return std::nullopt;
}

GlyphImage crop_to_ink(const Rows& r)
{
    int first = r.width;
    int last = -1;
    for (const auto& row : r.rows) {
        for (int x = 0; x < r.width; ++x) {
            if (row[static_cast<std::size_t>(x)] != 0) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    if (last < 0) {
        return GlyphImage::blank(kSpaceWidth, 1, 0);
    }
    const int height = static_cast<int>(r.rows.size());
    GlyphImage image = GlyphImage::blank(last - first + 1, height, height - (r.top + 1));
    for (int y = 0; y < height; ++y) {
        for (int x = first; x <= last; ++x) {
            image.set(x - first, y, r.rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] != 0);
        }
    }
    return image;
}

std::string utf8(std::int32_t c)
{
    std::string s;
    if (c < 0x80) {
        s += static_cast<char>(c);
    } else if (c < 0x800) {
        s += static_cast<char>(0xC0 | (c >> 6));
        s += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        s += static_cast<char>(0xE0 | (c >> 12));
        s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        s += static_cast<char>(0x80 | (c & 0x3F));
    }
    return s;
}

}  // namespace

std::vector<CodedGlyph> derive_default_face(const FreeTypeLibrary& library, const std::string& misc_dir)
{
    const Face small(library, misc_dir + "/4x6.pcf.gz");
    const Face letters(library, misc_dir + "/5x8.pcf.gz");
    std::vector<CodedGlyph> glyphs;
    std::vector<std::int32_t> fell_back;
    int digit_width = 0;
    for (std::int32_t code_point : default_code_points()) {
        GlyphImage image;
        if (code_point == 0) {
            image = crop_to_ink(to_rows(small.render(kReplacementCharacter, 6).value()));
        } else if (code_point == 32 || code_point == 160) {
            image = GlyphImage::blank(kSpaceWidth, 1, 0);
        } else if (code_point == kFigureSpace) {
            image = GlyphImage::blank(digit_width, 1, 0);
        } else {
            const auto same = kSameShape.find(code_point);
            const std::int32_t source = same == kSameShape.end() ? code_point : same->second;
            std::optional<Rows> rows;
            if (std::optional<RenderedGlyph> big = letters.render(source, 8)) {
                rows = to_rows(*big);
                trim_vertically(*rows);
                if (!rows->rows.empty() && rows->top == kCapHeight && !has_accent_gap(*rows)) {
                    rows = lower_by_one_row(*rows);
                }
            }
            if (!rows) {
                std::optional<RenderedGlyph> tiny = small.render(source, 6);
                if (!tiny) {
                    throw std::runtime_error("no misc-fixed glyph for code point " + std::to_string(code_point));
                }
                rows = to_rows(*tiny);
                trim_vertically(*rows);
                fell_back.push_back(code_point);
            }
            image = crop_to_ink(*rows);
        }
        if (code_point == '0') {
            digit_width = image.width;
        }
        glyphs.push_back({code_point, std::move(image)});
    }
    std::fprintf(stderr, "%zu glyphs taken from 4x6:", fell_back.size());
    for (std::int32_t c : fell_back) {
        std::fprintf(stderr, " U+%04X", static_cast<unsigned>(c));
    }
    std::fprintf(stderr, "\n");
    return glyphs;
}

void write_text_form(const std::vector<CodedGlyph>& glyphs, const std::string& path)
{
    std::ofstream out(path);
    if (!out) {
        throw std::runtime_error("cannot write " + path);
    }
    out << "// The velatrix_default face. One glyph per block: a line \"U+XXXX descent N\"\n"
           "// (anything after it is a comment), then its rows from the top, '#' ink and\n"
           "// '.' blank, all rows equally long, then an empty line. The last rows of\n"
           "// the block, `descent` of them, lie below the baseline.\n"
           "// Regenerate the table with: fontgen default <this file> <output.cpp>\n\n";
    for (const CodedGlyph& glyph : glyphs) {
        char header[48];
        std::snprintf(header, sizeof header, "U+%04X descent %d", static_cast<unsigned>(glyph.code_point),
                      glyph.image.descent);
        out << header;
        if (glyph.code_point > 32 && glyph.code_point != 160 && glyph.code_point != 173) {
            out << "  " << utf8(glyph.code_point);
        }
        out << "\n";
        for (int y = 0; y < glyph.image.height; ++y) {
            for (int x = 0; x < glyph.image.width; ++x) {
                out << (glyph.image.at(x, y) ? '#' : '.');
            }
            out << "\n";
        }
        out << "\n";
    }
}

std::vector<CodedGlyph> read_text_form(const std::string& path)
{
    std::ifstream in(path);
    if (!in) {
        throw std::runtime_error("cannot read " + path);
    }
    std::vector<CodedGlyph> glyphs;
    std::optional<CodedGlyph> open;
    std::vector<std::string> rows;
    int line_number = 0;
    auto fail = [&](const std::string& why) {
        throw std::runtime_error(path + ":" + std::to_string(line_number) + ": " + why);
    };
    auto close = [&]() {
        if (!open) {
            return;
        }
        if (rows.empty()) {
            fail("glyph without rows");
        }
        const int width = static_cast<int>(rows.front().size());
        const int height = static_cast<int>(rows.size());
        if (open->image.descent > height) {
            fail("descent larger than the glyph");
        }
        GlyphImage image = GlyphImage::blank(width, height, open->image.descent);
        for (int y = 0; y < height; ++y) {
            if (static_cast<int>(rows[static_cast<std::size_t>(y)].size()) != width) {
                fail("rows of different lengths");
            }
            for (int x = 0; x < width; ++x) {
                image.set(x, y, rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#');
            }
        }
        open->image = std::move(image);
        glyphs.push_back(std::move(*open));
        open.reset();
        rows.clear();
    };
    std::string line;
    while (std::getline(in, line)) {
        ++line_number;
        if (line.rfind("//", 0) == 0) {
            continue;
        }
        if (line.empty()) {
            close();
            continue;
        }
        if (line.rfind("U+", 0) == 0) {
            close();
            std::istringstream fields(line.substr(2));
            unsigned code = 0;
            std::string word;
            int descent = -1;
            if (!(fields >> std::hex >> code >> std::dec >> word >> descent) || word != "descent" || descent < 0) {
                fail("expected \"U+XXXX descent N\"");
            }
            open = CodedGlyph{static_cast<std::int32_t>(code), GlyphImage::blank(0, 0, descent)};
            continue;
        }
        if (!open || line.find_first_not_of("#.") != std::string::npos) {
            fail("unexpected line \"" + line + "\"");
        }
        rows.push_back(line);
    }
    close();
    return glyphs;
}

FontTable default_face_table(std::vector<CodedGlyph> glyphs)
{
    std::sort(glyphs.begin(), glyphs.end(),
              [](const CodedGlyph& a, const CodedGlyph& b) { return a.code_point < b.code_point; });
    std::vector<std::int32_t> have;
    for (const CodedGlyph& g : glyphs) {
        have.push_back(g.code_point);
    }
    if (have != default_code_points()) {
        throw std::runtime_error("the default face does not hold exactly the default repertoire");
    }
    FontTable table;
    table.name = "velatrix_default";
    table.origin = "The library's own proportional face, from tools/fontgen/velatrix_default.txt "
                   "(drawn after the public-domain X11 misc-fixed 4x6 and 5x8 fonts)";
    table.glyphs = std::move(glyphs);
    return table;
}

}  // namespace fontgen
