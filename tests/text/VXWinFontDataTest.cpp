#include "support/Test.h"
#include "text/VXWinFontTable_p.h"

namespace {

struct Metrics {
    bool isThere;
    float first;
    float second;

    friend bool operator==(const Metrics&, const Metrics&) = default;
};

Metrics MetricsOf(const char* name, float size = 1024.0f) {
    Metrics metrics{false, 9.0f, 9.0f};
    metrics.isThere = VXFontPublishManager::GetWinFontData(name, size, metrics.first, metrics.second);
    return metrics;
}

TEST(VXWinFontData, TheTableHasItsTotals) {
    const auto& table = VXGetWinFontTable();
    const auto count = [&table](auto condition) {
        return std::count_if(table.begin(), table.end(), condition);
    };
    std::set<std::string> names;
    for (const VXWinFontRow& row : table) {
        names.insert(row.fontName);
        EXPECT_TRUE(-547 <= row.metricA && row.metricA <= 840) << row.fontName;
        EXPECT_LE(row.metricB, 247) << row.fontName;
    }
    EXPECT_EQ(table.size(), 232u);
    EXPECT_EQ(names.size(), 232u) << "no name occurs twice";
    EXPECT_EQ(count([](const VXWinFontRow& row) { return row.metricA == 0 && row.metricB == 0; }), 19);
    EXPECT_EQ(count([](const VXWinFontRow& row) { return row.metricB != 0; }), 81);
    EXPECT_GE(count([](const VXWinFontRow& row) { return row.metricA == 840; }), 1);
}

TEST(VXWinFontData, RowsThatAreKnown) {
    const struct {
        const char* name;
        float first;
        float second;
    } rows[] = {
        {"System", 107, 30},     {"Orrin Pi Std", 22, 0}, {"ZWOrrinF", -547, 236},
        {"FrankRuehl", -77, 77}, {"Forte", 88, 247},      {"VisualUI", 1, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MetricsOf(row.name), (Metrics{true, row.first, row.second})) << row.name;
    }
    VXFontPublishManager::DoCleanUp();  // what follows fills the table again
}

TEST(VXWinFontData, MetricsFollowTheSize) {
    const Metrics none{false, 0.0f, 0.0f};
    EXPECT_EQ(MetricsOf("System", 512.0f), (Metrics{true, 53.5f, 15.0f}));
    EXPECT_EQ(MetricsOf("System", 0.0f), none);
    EXPECT_EQ(MetricsOf("System", std::nanf("")), none);
    EXPECT_EQ(MetricsOf("system"), none) << "names are compared exactly";
    EXPECT_TRUE(MetricsOf("@Gulim").isThere);
    EXPECT_FALSE(MetricsOf("@System").isThere) << "only some names have a row for vertical writing";
}

}  // namespace
