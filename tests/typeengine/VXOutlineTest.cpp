#include "platform/typeengine/VXOutline_p.h"

#include <gmock/gmock.h>

#include <vector>

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

constexpr char kOn = FT_CURVE_TAG_ON;
constexpr char kConic = FT_CURVE_TAG_CONIC;
constexpr char kCubic = FT_CURVE_TAG_CUBIC;

/// Takes the contours of a font's outline, given as FreeType does, into a path.
VXPathEntries PathOf(std::vector<FT_Vector> points, std::vector<char> tags, std::vector<short> ends,
                     int flags = 0, const VXTransform& transform = {}) {
    FT_Outline outline{};
    outline.n_points = static_cast<short>(points.size());
    outline.n_contours = static_cast<short>(ends.size());
    outline.points = points.data();
    outline.tags = reinterpret_cast<decltype(outline.tags)>(tags.data());
    outline.contours = reinterpret_cast<decltype(outline.contours)>(ends.data());
    outline.flags = flags;
    VXOutline loaded;
    EXPECT_TRUE(loaded.Load(outline));
    VXPathEntries path;
    loaded.AppendTo(path, transform);
    EXPECT_EQ(path.points.size(), path.kinds.size() * 2);
    return path;
}

}  // namespace

TEST(VXOutline, AContourIsMovedToDrawnAndClosed) {
    const VXPathEntries path = PathOf({{0, 0}, {10, 0}, {10, 20}}, {kOn, kOn, kOn}, {2});
    EXPECT_THAT(path.kinds, ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMLine, kKVMClose));
    EXPECT_THAT(path.points, ElementsAre(0, 0, 10, 0, 10, 20, 0, 0, 0, 0));
}

TEST(VXOutline, ALineClosesWhatEndsInACurve) {
    const VXPathEntries path = PathOf({{0, 0}, {90, 0}, {90, 90}, {0, 90}}, {kOn, kOn, kOn, kConic}, {3});
    EXPECT_THAT(path.kinds, ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMCurve, kKVMCurve, kKVMCurve,
                                        kKVMLine, kKVMClose));
    EXPECT_THAT(path.points, ElementsAre(0, 0, 90, 0, 90, 90,                                    //
                                         30, 90 + 2.0F / 3 / 512, 0, 60 + 2.0F / 3 / 512, 0, 0,  //
                                         0, 0, 0, 0));
}

TEST(VXOutline, AMatrixTurnsTheOutlineBeforeItIsRaised) {
    const VXTransform flip{2, 0, 0, -1, 5, 0};
    const VXPathEntries path = PathOf({{0, 0}, {30, 96}, {60, 0}}, {kOn, kConic, kOn}, {2}, 0, flip);
    EXPECT_THAT(path.points, ElementsAre(5, 0,                                                        //
                                         45, -64 - 2.0F / 3 / 512, 85, -64 - 2.0F / 3 / 512, 125, 0,  //
                                         5, 0, 5, 0))
        << "the control is kept from the whole unit in the direction away from the baseline";
    const VXTransform twice = flip.Then({0, 1, 1, 0, 0, 7});
    EXPECT_THAT(PathOf({{1, 2}, {3, 4}}, {kOn, kOn}, {1}, 0, twice).points,
                ElementsAre(-2, 14, -4, 18, -2, 14, -2, 14));
}

TEST(VXOutline, QuadraticsNextToTheirChordAreLines) {
    const auto kinds = [](double scale, FT_Vector control) {
        return PathOf({{0, 0}, control, {6400, 0}}, {kOn, kConic, kOn}, {2}, 0, {scale, 0, 0, scale, 0, 0})
            .kinds;
    };
    const auto isLine = ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMClose);
    const auto isCurve = ElementsAre(kKVMMove, kKVMCurve, kKVMCurve, kKVMCurve, kKVMLine, kKVMClose);
    EXPECT_THAT(kinds(1.0 / 64, {3200, 4}), isLine) << "1/16 unit";
    EXPECT_THAT(kinds(1.0 / 64, {3200, -5}), isCurve);
    EXPECT_THAT(kinds(1.0 / 32, {3200, 4}), isCurve) << "the unit is that of the result";
    EXPECT_THAT(kinds(1.0 / 64, {9600, 0}), isCurve) << "a curve may run beyond its end and come back";
}

TEST(VXOutline, ContoursOfNoExtentAreLeftOut) {
    const VXPathEntries path = PathOf({{7, 7}, {0, 0}, {9, 0}, {9, 9}, {3, 3}, {3, 3}},
                                      {kOn, kOn, kOn, kOn, kOn, kConic}, {0, 3, 5});
    EXPECT_THAT(path.kinds, ElementsAre(kKVMMove, kKVMLine, kKVMLine, kKVMLine, kKVMClose));
    EXPECT_TRUE(PathOf({}, {}, {}).kinds.empty());
}

TEST(VXOutline, PostScriptContoursAreTurned) {
    // The same drop, wound for each of the two kinds of font; the start stays the start.
    const VXPathEntries given =
        PathOf({{0, 0}, {10, 0}, {20, 40}, {-20, 50}}, {kOn, kOn, kCubic, kCubic}, {3});
    EXPECT_THAT(given.kinds,
                ElementsAre(kKVMMove, kKVMLine, kKVMCurve, kKVMCurve, kKVMCurve, kKVMLine, kKVMClose));
    EXPECT_THAT(given.points, ElementsAre(0, 0, 10, 0, 20, 40, -20, 50, 0, 0, 0, 0, 0, 0));
    const VXPathEntries turned = PathOf({{0, 0}, {10, 0}, {20, 40}, {-20, 50}}, {kOn, kOn, kCubic, kCubic},
                                        {3}, FT_OUTLINE_REVERSE_FILL);
    EXPECT_THAT(turned.kinds, ElementsAre(kKVMMove, kKVMCurve, kKVMCurve, kKVMCurve, kKVMLine, kKVMClose));
    EXPECT_THAT(turned.points, ElementsAre(0, 0, -20, 50, 20, 40, 10, 0, 0, 0, 0, 0));
}

TEST(VXOutline, DamageIsReported) {
    std::vector<FT_Vector> points{{0, 0}, {1, 1}};
    std::vector<char> tags{kCubic, kOn};
    std::vector<short> ends{1};
    FT_Outline outline{};
    outline.n_points = 2;
    outline.n_contours = 1;
    outline.points = points.data();
    outline.tags = reinterpret_cast<decltype(outline.tags)>(tags.data());
    outline.contours = reinterpret_cast<decltype(outline.contours)>(ends.data());
    EXPECT_FALSE(VXOutline().Load(outline)) << "a contour cannot begin inside a cubic";
}
