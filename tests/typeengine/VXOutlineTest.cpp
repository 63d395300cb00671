#include "platform/typeengine/VXOutline_p.h"
#include "support/Test.h"

using testing::ElementsAre;

namespace {

constexpr char kOn = FT_CURVE_TAG_ON;
constexpr char kConic = FT_CURVE_TAG_CONIC;
constexpr char kCubic = FT_CURVE_TAG_CUBIC;

/// The contours of a font's outline as FreeType gives them.
struct Outline {
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> ends;
    int flags = 0;

    bool LoadInto(VXOutline& loaded) {
        FT_Outline outline{};
        outline.n_points = static_cast<short>(points.size());
        outline.n_contours = static_cast<short>(ends.size());
        outline.points = points.data();
        outline.tags = reinterpret_cast<decltype(outline.tags)>(tags.data());
        outline.contours = reinterpret_cast<decltype(outline.contours)>(ends.data());
        outline.flags = flags;
        return loaded.Load(outline);
    }
};

VXPathEntries PathOf(Outline outline, const VXTransform& transform = {}) {
    VXOutline loaded;
    EXPECT_TRUE(outline.LoadInto(loaded));
    VXPathEntries path;
    loaded.AppendTo(path, transform);
    EXPECT_EQ(path.points.size(), path.kinds.size() * 2);
    return path;
}

}  // namespace

TEST(VXOutline, AContourIsMovedToDrawnAndClosed) {
    // Between two contours of no extent, which are left out.
    const VXPathEntries lines = PathOf(
        {{{7, 7}, {0, 0}, {10, 0}, {10, 20}, {3, 3}, {3, 3}}, {kOn, kOn, kOn, kOn, kOn, kConic}, {0, 3, 5}});
    EXPECT_THAT(lines.kinds, ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMLine, kKVMClose));
    EXPECT_THAT(lines.points, ElementsAre(0, 0, 10, 0, 10, 20, 0, 0, 0, 0));
    EXPECT_TRUE(PathOf({}).kinds.empty());

    // A line also closes what ends in a curve.
    const VXPathEntries path = PathOf({{{0, 0}, {90, 0}, {90, 90}, {0, 90}}, {kOn, kOn, kOn, kConic}, {3}});
    EXPECT_THAT(path.kinds, ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMCurve, kKVMCurve, kKVMCurve,
                                        kKVMLine, kKVMClose));
    EXPECT_THAT(path.points, ElementsAre(0, 0, 90, 0, 90, 90,                                    //
                                         30, 90 + 2.0F / 3 / 512, 0, 60 + 2.0F / 3 / 512, 0, 0,  //
                                         0, 0, 0, 0));
    VXOutline loaded;
    EXPECT_FALSE((Outline{{{0, 0}, {1, 1}}, {kCubic, kOn}, {1}}.LoadInto(loaded)))
        << "a contour cannot begin inside a cubic";
}

TEST(VXOutline, AMatrixTurnsTheOutlineBeforeItIsRaised) {
    const VXTransform flip{2, 0, 0, -1, 5, 0};
    EXPECT_THAT(PathOf({{{0, 0}, {30, 96}, {60, 0}}, {kOn, kConic, kOn}, {2}}, flip).points,
                ElementsAre(5, 0,                                                        //
                            45, -64 - 2.0F / 3 / 512, 85, -64 - 2.0F / 3 / 512, 125, 0,  //
                            5, 0, 5, 0))
        << "the control is kept from the whole unit in the direction away from the baseline";
}

TEST(VXOutline, QuadraticsNextToTheirChordAreLines) {
    const struct {
        const char* what;
        double scale;
        FT_Vector control;
        KVMPointType kind;
    } rows[] = {
        {"1/16 unit", 1.0 / 64, {3200, 4}, kKVMLine},
        {"more", 1.0 / 64, {3200, -5}, kKVMCurve},
        {"the unit is that of the result", 1.0 / 32, {3200, 4}, kKVMCurve},
        {"a curve may run beyond its end and come back", 1.0 / 64, {9600, 0}, kKVMCurve},
    };
    for (const auto& row : rows) {
        const VXPathEntries path = PathOf({{{0, 0}, row.control, {6400, 0}}, {kOn, kConic, kOn}, {2}},
                                          {row.scale, 0, 0, row.scale, 0, 0});
        EXPECT_EQ(path.kinds[1], row.kind) << row.what;
    }
}

TEST(VXOutline, PostScriptContoursAreTurned) {
    // The same drop, wound for each of the two kinds of font; the start stays the start.
    Outline drop{{{0, 0}, {10, 0}, {20, 40}, {-20, 50}}, {kOn, kOn, kCubic, kCubic}, {3}};
    const VXPathEntries given = PathOf(drop);
    EXPECT_THAT(given.kinds,
                ElementsAre(kKVMMove, kKVMLine, kKVMCurve, kKVMCurve, kKVMCurve, kKVMLine, kKVMClose));
    EXPECT_THAT(given.points, ElementsAre(0, 0, 10, 0, 20, 40, -20, 50, 0, 0, 0, 0, 0, 0));
    drop.flags = FT_OUTLINE_REVERSE_FILL;
    const VXPathEntries turned = PathOf(drop);
    EXPECT_THAT(turned.kinds, ElementsAre(kKVMMove, kKVMCurve, kKVMCurve, kKVMCurve, kKVMLine, kKVMClose));
    EXPECT_THAT(turned.points, ElementsAre(0, 0, -20, 50, 20, 40, 10, 0, 0, 0, 0, 0));
}
