#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "EngineFixture.h"
#include "graphics/VXFlintShape.h"

using namespace BND_NT_NMT;

namespace {

class VXTypeEngineGlyphs : public EngineFixture {};

struct Edges {
    int straight = 0;
    int curved = 0;
};

/// The font's file itself, as FreeType reads it.
class FontFile {
public:
    explicit FontFile(const std::string& path) {
        EXPECT_EQ(FT_Init_FreeType(&m_Library), 0);
        EXPECT_EQ(FT_New_Face(m_Library, path.c_str(), 0, &m_Face), 0) << path;
    }
    FontFile(const FontFile&) = delete;
    FontFile& operator=(const FontFile&) = delete;
    ~FontFile() {
        FT_Done_Face(m_Face);
        FT_Done_FreeType(m_Library);
    }

    Edges CountSegments(char16_t character) const {
        Edges count;
        EXPECT_EQ(FT_Load_Char(m_Face, character, FT_LOAD_NO_SCALE), 0);
        FT_Outline_Funcs functions{};
        functions.move_to = [](const FT_Vector*, void*) { return 0; };
        functions.line_to = [](const FT_Vector*, void* to) { return ++static_cast<Edges*>(to)->straight, 0; };
        functions.conic_to = [](const FT_Vector*, const FT_Vector*, void* to) {
            return ++static_cast<Edges*>(to)->curved, 0;
        };
        functions.cubic_to = [](const FT_Vector*, const FT_Vector*, const FT_Vector*, void*) { return 1; };
        EXPECT_EQ(FT_Outline_Decompose(&m_Face->glyph->outline, &functions, &count), 0);
        return count;
    }

private:
    FT_Library m_Library = nullptr;
    FT_Face m_Face = nullptr;
};

struct Path {
    CGFMSharedBezierPath handle = GFMNewSharedBezierPath(1024);
    unsigned int count = 0;
    float* points = nullptr;
    KVMPointType* kinds = nullptr;

    bool Append(const CTYFontInstance& instance, char16_t character) {
        const CTYText text = TYNewTextFontInstanceCP(instance, character);
        const bool ok = TYTextGetOutlines(text, {}, TYTextGetBoundingBox(text, {}), handle);
        GFMSharedBezierPathGetState(handle, count, points, kinds);
        return ok;
    }
};

/// The edges that the outline of a glyph gets in a movie.
Edges EdgesOf(const Path& path) {
    std::vector<float> points(path.points, path.points + 2 * path.count);
    for (std::size_t i = 0; i < points.size(); i += 2) points[i] -= 102.4F;  // as in a font tag
    VXFlintShape shape;
    shape.CreateShapeFromPathData(path.count, points.data(), path.kinds);
    Edges edges;
    for (const auto& record : shape.ShapeRecords.Records) {
        edges.straight += record->Kind == VXFlintShapeRecord::kStraightEdge ? 1 : 0;
        edges.curved += record->Kind == VXFlintShapeRecord::kCurvedEdge ? 1 : 0;
    }
    return edges;
}

}  // namespace

TEST_F(VXTypeEngineGlyphs, AGlyphHasNoMoreEdgesThanSegments) {
    const std::pair<const char*, char16_t> fonts[] = {
        {"DejaVu Sans", 0x2C00}, {"DejaVu Serif", 0x100}, {"DejaVu Sans Mono", 0x100}};
    for (const auto& [name, end] : fonts) {
        const FontFile file(FileOf(name));
        const CTYFontInstance instance = Instance(Font(name));
        Edges edges, segments;
        for (char16_t character = 0x20; character < end; ++character) {
            Path path;
            ASSERT_TRUE(path.Append(instance, character));
            const Edges here = EdgesOf(path), inFile = file.CountSegments(character);
            EXPECT_LE(here.straight + here.curved, inFile.straight + inFile.curved) << int{character};
            edges = {edges.straight + here.straight, edges.curved + here.curved};
            segments = {segments.straight + inFile.straight, segments.curved + inFile.curved};
        }
        // Nothing is missing but what has become too short or too flat to be drawn.
        EXPECT_GT(segments.curved, 1000) << name;
        EXPECT_GT(edges.curved, segments.curved * 9 / 10) << name;
        EXPECT_GT(edges.straight, segments.straight * 9 / 10) << name;
    }
}

TEST_F(VXTypeEngineGlyphs, PathsGrowBeyondTheirCapacityAndAlwaysHaveArrays) {
    const CTYFontInstance instance = Instance(Font("DejaVu Sans"));
    for (const std::int32_t capacity : {1, 0, -1, 0x7FFFFFFF}) {
        Path path;
        path.handle = GFMNewSharedBezierPath(capacity);
        EXPECT_TRUE(path.Append(instance, u' ')) << "without outlines, and well";
        EXPECT_EQ(path.count, 0U);
        EXPECT_NE(path.points, nullptr);
        EXPECT_NE(path.kinds, nullptr);
        ASSERT_TRUE(path.Append(instance, u'A'));
        const std::vector<float> first(path.points, path.points + 2 * path.count);
        for (int i = 0; i < 99; ++i) ASSERT_TRUE(path.Append(instance, u'A'));
        ASSERT_EQ(path.count * 2, first.size() * 100);
        EXPECT_TRUE(std::equal(first.begin(), first.end(), path.points + 99 * first.size()));
    }
}
