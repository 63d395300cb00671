#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <gmock/gmock.h>

#include <cmath>
#include <string>
#include <vector>

#include "EngineFixture.h"
#include "graphics/VXFlintShape.h"
#include "shapes/BezierLib2.h"

using namespace BND_NT_NMT;

namespace {

class VXTypeEngineGlyphs : public EngineFixture {};

struct Edges {
    int straight = 0;
    int curved = 0;
    int Count() const { return straight + curved; }
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

/// What is wrong with the order of a path's entries; empty when nothing is.
std::string FaultOf(const Path& path) {
    float startX = 0, startY = 0;
    bool isOpen = false;
    for (unsigned int i = 0; i < path.count; ++i) {
        const float x = path.points[2 * i], y = path.points[2 * i + 1];
        switch (path.kinds[i]) {
            case kKVMMove:
                if (isOpen) return "a move inside a contour";
                isOpen = true;
                startX = x;
                startY = y;
                break;
            case kKVMLine:
                if (!isOpen) return "a line outside of contours";
                break;
            case kKVMCurve:
                if (!isOpen || i + 2 >= path.count) return "a curve outside of contours";
                if (path.kinds[i + 1] != kKVMCurve || path.kinds[i + 2] != kKVMCurve) return "half a curve";
                i += 2;
                break;
            case kKVMClose:
                if (!isOpen || x != startX || y != startY) return "a close elsewhere than at the start";
                if (path.kinds[i - 1] != kKVMLine || path.points[2 * i - 2] != x ||
                    path.points[2 * i - 1] != y) {
                    return "no line to the start";
                }
                isOpen = false;
                break;
        }
    }
    return isOpen ? "a contour without end" : "";
}

constexpr char16_t kLatin1End = 0x100;

}  // namespace

TEST_F(VXTypeEngineGlyphs, ContoursOfEveryGlyphAreWhole) {
    const CTYFontInstance plain = Instance(Font("DejaVu Serif"));
    const CTYFontInstance imitated =
        Instance(TYFontDictNewSyntheticFont(Font("DejaVu Serif"), kTYBoldItalic));
    for (const CTYFontInstance& instance : {plain, imitated}) {
        for (char16_t character = 0x21; character < kLatin1End; ++character) {
            Path path;
            ASSERT_TRUE(path.Append(instance, character));
            EXPECT_EQ(FaultOf(path), "") << int{character};
        }
    }
}

TEST_F(VXTypeEngineGlyphs, AGlyphHasNoMoreEdgesThanSegments) {
    const std::pair<const char*, char16_t> fonts[] = {
        {"DejaVu Sans", 0x2C00}, {"DejaVu Serif", kLatin1End}, {"DejaVu Sans Mono", kLatin1End}};
    for (const auto& [name, end] : fonts) {
        const FontFile file(FileOf(name));
        const CTYFontInstance instance = Instance(Font(name));
        Edges edges, segments;
        for (char16_t character = 0x20; character < end; ++character) {
            Path path;
            ASSERT_TRUE(path.Append(instance, character));
            const Edges here = EdgesOf(path);
            const Edges inFile = file.CountSegments(character);
            EXPECT_LE(here.Count(), inFile.Count()) << name << ' ' << int{character};
            edges.straight += here.straight;
            edges.curved += here.curved;
            segments.straight += inFile.straight;
            segments.curved += inFile.curved;
        }
        // Nothing is missing but what has become too short or too flat to be drawn.
        EXPECT_GT(segments.curved, 1000) << name;
        EXPECT_GT(edges.curved, segments.curved * 9 / 10) << name;
        EXPECT_GT(edges.straight, segments.straight * 9 / 10) << name;
    }
}

TEST_F(VXTypeEngineGlyphs, CurvesComeBackAsTheQuadraticsTheyWere) {
    Path path;
    ASSERT_TRUE(path.Append(Instance(Font("DejaVu Sans")), u'o'));
    int curves = 0;
    for (unsigned int i = 1; i < path.count; ++i) {
        if (path.kinds[i] != kKVMCurve) continue;
        const float* at = path.points + 2 * i;
        const double cubic[8] = {at[-2], at[-1], at[0], at[1], at[2], at[3], at[4], at[5]};
        const auto pieces = BezierLib2::ConvertCubicToShapes(cubic, 0.01);
        ASSERT_EQ(pieces.size(), 1U);
        const auto* curve = dynamic_cast<const BezierLib2::BezCurve*>(pieces.front().get());
        ASSERT_NE(curve, nullptr);
        // Controls of this font lie on half units at 1024 to the em.
        EXPECT_NEAR(curve->ControlX * 2, std::round(curve->ControlX * 2), 0.02);
        EXPECT_NEAR(curve->ControlY * 2, std::round(curve->ControlY * 2), 0.02);
        EXPECT_EQ(std::trunc(curve->ControlY), std::trunc(std::round(curve->ControlY * 2) / 2))
            << "cutting the fraction off does not reach the next unit";
        ++curves;
        i += 2;
    }
    EXPECT_GE(curves, 16);
}

TEST_F(VXTypeEngineGlyphs, PathsHaveArraysAlsoWhenTheyAreEmpty) {
    for (const std::int32_t capacity : {1024, 0, -1, 0x7FFFFFFF}) {
        float* points = nullptr;
        KVMPointType* kinds = nullptr;
        unsigned int count = 9;
        GFMSharedBezierPathGetState(GFMNewSharedBezierPath(capacity), count, points, kinds);
        EXPECT_NE(points, nullptr);
        EXPECT_NE(kinds, nullptr);
        EXPECT_EQ(count, 0U);
    }
    Path path;
    EXPECT_TRUE(path.Append(Instance(Font("DejaVu Sans")), u' ')) << "without outlines, and well";
    EXPECT_EQ(path.count, 0U);
    EXPECT_NE(path.points, nullptr);
}

TEST_F(VXTypeEngineGlyphs, PathsGrowBeyondTheirCapacity) {
    const CTYFontInstance instance = Instance(Font("DejaVu Sans"));
    Path path;
    path.handle = GFMNewSharedBezierPath(1);
    ASSERT_TRUE(path.Append(instance, u'A'));
    const std::vector<float> first(path.points, path.points + 2 * path.count);
    const unsigned int once = path.count;
    for (int i = 0; i < 99; ++i) ASSERT_TRUE(path.Append(instance, u'A'));
    ASSERT_EQ(path.count, once * 100);
    EXPECT_THAT(std::vector<float>(path.points + 2 * (path.count - once), path.points + 2 * path.count),
                testing::ElementsAreArray(first));
    EXPECT_EQ(FaultOf(path), "");
}
