// The dump of a glyph font beside FreeType alone reading the same outlines of the same font, each in a
// process of its own. The list of the system's fonts is there before the clock starts.

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include "binding/BNDInitialize.h"
#include "platform/GetVXBndAddressProc.h"
#include "support/ColdRun.h"
#include "vxswf.h"

namespace {

constexpr const char* kFontName = "DejaVu Sans";
constexpr unsigned int kFirstCharacter = 0x21;

void Require(bool holds) {
    if (!holds) std::abort();
}

std::string FindFontFile() {
    FcPattern* pattern = FcNameParse(reinterpret_cast<const FcChar8*>(kFontName));
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcChar8* file = nullptr;
    Require(match != nullptr && FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch);
    std::string path(reinterpret_cast<const char*>(file));
    FcPatternDestroy(match);
    FcPatternDestroy(pattern);
    return path;
}

/// The first characters that the font has.
std::vector<unsigned short> FindCharacters(const std::string& path, std::size_t count) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    Require(FT_Init_FreeType(&library) == 0 && FT_New_Face(library, path.c_str(), 0, &face) == 0);
    std::vector<unsigned short> characters;
    for (unsigned int c = kFirstCharacter; c <= 0xFFFF && characters.size() < count; ++c) {
        if (FT_Get_Char_Index(face, c) != 0) characters.push_back(static_cast<unsigned short>(c));
    }
    Require(characters.size() == count);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return characters;
}

using Points = std::vector<FT_Vector>;

void Add(void* points, const FT_Vector* point) { static_cast<Points*>(points)->push_back(*point); }

constexpr FT_Outline_Funcs kCollect = {
    [](const FT_Vector* to, void* points) { return Add(points, to), 0; },
    [](const FT_Vector* to, void* points) { return Add(points, to), 0; },
    [](const FT_Vector* control, const FT_Vector* to, void* points) {
        return Add(points, control), Add(points, to), 0;
    },
    [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* points) {
        return Add(points, first), Add(points, second), Add(points, to), 0;
    },
    0,
    0};

void DecodeAlone(const std::string& path, const std::vector<unsigned short>& characters) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    Require(FT_Init_FreeType(&library) == 0 && FT_New_Face(library, path.c_str(), 0, &face) == 0);
    Require(FT_Set_Char_Size(face, 0, 64 * 1024, 72, 72) == 0);
    Points points;
    for (const unsigned short c : characters) {
        Require(FT_Load_Glyph(face, FT_Get_Char_Index(face, c), FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) == 0);
        Require(FT_Outline_Decompose(&face->glyph->outline, &kCollect, &points) == 0);
    }
    benchmark::DoNotOptimize(points.data());
    FT_Done_Face(face);
    FT_Done_FreeType(library);
}

void GlyphFont(benchmark::State& state) {
    const auto numGlyphs = static_cast<std::size_t>(state.range(0));
    const std::string path = FindFontFile();
    const std::vector<unsigned short> characters = FindCharacters(path, numGlyphs);
    const auto decode = [&](ColdClock& clock) {
        clock.Start();
        DecodeAlone(path, characters);
        clock.Stop();
    };
    const auto dump = [&](ColdClock& clock) {
        BNDInitialize(GetVXBndAddressProc());
        BND_NT_NMT::CTYFontDict listed;
        Require(VXFontPublishManager::GetFontDict({kFontName, false, false, 0}, listed));
        const std::unique_ptr<VXSwfDefineFont2Tag> font(
            VXFontPublishManager::GetTemporaryDefineFontTag(kFontName, 0, 0, nullptr));
        for (const unsigned short c : characters) font->AddGlyphText(c);
        VXBitStream dumped;
        clock.Start();
        Require(font->DumpToStream(dumped) == kVXSuccess);
        clock.Stop();
        VXFontPublishManager::DoCleanUp();
        BNDTerminate();
    };
    CompareCold(state, decode, dump, static_cast<std::size_t>(std::filesystem::file_size(path)));
}
// The bound is a ratio of 3 for the many glyphs; ten times the glyphs take ten times the time.
BENCHMARK(GlyphFont)->Apply(ColdRuns)->Arg(500)->Arg(5000);

}  // namespace
