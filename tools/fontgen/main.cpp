// fontgen: writes the built-in glyph tables of the library as C++ source.
//
//   fontgen mono <UbuntuMono-R.ttf> <DejaVuSansMono.ttf> <output dir>
//   fontgen derive-default <misc-fixed dir> <text form out>
//   fontgen default <text form> <output .cpp>
#include <stdexcept>
#include "code_points.h"
#include "default_face.h"
#include "freetype_face.h"
#include "mono_fonts.h"
#include "table_writer.h"

#include <cstdio>
#include <exception>
#include <string>

namespace {

int usage()
{
    std::fprintf(stderr,
                 "usage: fontgen mono <UbuntuMono-R.ttf> <DejaVuSansMono.ttf> <output dir>\n"
                 "       fontgen derive-default <misc-fixed font dir> <text form out>\n"
                 "       fontgen default <text form> <output .cpp>\n");
    return 2;
}

int run(int argc, char** argv)
{
    if (argc != 5 && argc != 4) {
        return usage();
    }
    const std::string command = argv[1];
    fontgen::FreeTypeLibrary library;
    if (command == "mono" && argc == 5) {
        const fontgen::Face primary(library, argv[2]);
        const fontgen::Face fallback(library, argv[3], fontgen::Hinting::automatic);
        const auto code_points = fontgen::mono_code_points();
        fontgen::write_shared_lookup_source(code_points, std::string(argv[4]) + "/mono_code_points.cpp");
        for (const fontgen::MonoCell& cell : fontgen::kMonoCells) {
            const fontgen::FontTable table = fontgen::render_mono_font(primary, fallback, cell, code_points);
            for (std::size_t i = 0; i < table.glyphs.size(); ++i) {
                if (i >= code_points.size() || table.glyphs[i].code_point != code_points[i]) {
                    throw std::runtime_error(cell.name + std::string(": glyphs do not follow the shared code points"));
                }
            }
            const std::string path = std::string(argv[4]) + "/" + cell.name + ".cpp";
            fontgen::write_table_source(table, path, "velatrix::fonts::kMonoCodePoints");
            std::fprintf(stderr, "wrote %s (%zu glyphs)\n", path.c_str(), table.glyphs.size());
        }
        return 0;
    }
    if (command == "derive-default" && argc == 4) {
        fontgen::write_text_form(fontgen::derive_default_face(library, argv[2]), argv[3]);
        return 0;
    }
    if (command == "default" && argc == 4) {
        const fontgen::FontTable table = fontgen::default_face_table(fontgen::read_text_form(argv[2]));
        fontgen::write_table_source(table, argv[3]);
        std::fprintf(stderr, "wrote %s (%zu glyphs)\n", argv[3], table.glyphs.size());
        return 0;
    }
    return usage();
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "fontgen: %s\n", e.what());
        return 1;
    }
}
