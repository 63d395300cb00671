#include "text/VXWinFontData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include "text/VXFontPublishManager.h"
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
    std::set<std::string> names;
    int zeros = 0;
    int seconds = 0;
    int largestFirst = 0;
    int smallestFirst = 0;
    int largestSecond = 0;
    for (const VXWinFontRow& row : VXGetWinFontTable()) {
        names.insert(row.fontName);
        if (row.metricA == 0 && row.metricB == 0) ++zeros;
        if (row.metricB != 0) ++seconds;
        largestFirst = std::max<int>(largestFirst, row.metricA);
        smallestFirst = std::min<int>(smallestFirst, row.metricA);
        largestSecond = std::max<int>(largestSecond, row.metricB);
    }
    EXPECT_EQ(VXGetWinFontTable().size(), 232u);
    EXPECT_EQ(names.size(), 232u) << "no name occurs twice";
    EXPECT_EQ(zeros, 19);
    EXPECT_EQ(seconds, 81);
    EXPECT_EQ(largestFirst, 840);
    EXPECT_EQ(smallestFirst, -547);
    EXPECT_EQ(largestSecond, 247);
}

TEST(VXWinFontData, RowsThatAreKnown) {
    const struct {
        const char* name;
        float first;
        float second;
    } rows[] = {
        {"System", 107, 30},
        {"Terminal", 120, 0},
        {"Roman", 99, 39},
        {"Script", 87, 27},
        {"Courier", 120, 0},
        {"MS Sans Serif", 107, 30},
        {"Orrin Pi Std", 22, 0},
        {"Minion Pro", 265, 0},
        {"Myriad Pro", 172, 0},
        {"ZWOrrinF", -547, 236},
        {"PagesmithSmallFont", -547, 236},
        {"Gautami", 434, 100},
        {"Latha", 278, 215},
        {"FrankRuehl", -77, 77},
        {"Palace Script MT", -82, 0},
        {"Forte", 88, 247},
        {"Goudy Old Style", 103, 81},
        {"Gulim", 0, 152},
        {"Batang", 0, 152},
        {"Euro Sign", 239, 0},
        {"VisualUI", 1, 0},
    };
    for (int round = 0; round < 2; ++round) {
        for (const auto& row : rows) {
            EXPECT_EQ(MetricsOf(row.name), (Metrics{true, row.first, row.second})) << row.name;
        }
        VXFontPublishManager::DoCleanUp();
    }
}

TEST(VXWinFontData, MetricsFollowTheSize) {
    const Metrics none{false, 0.0f, 0.0f};
    EXPECT_EQ(MetricsOf("System", 512.0f), (Metrics{true, 53.5f, 15.0f}));
    EXPECT_EQ(MetricsOf("System", 0.0f), none);
    EXPECT_EQ(MetricsOf("System", -1024.0f), none);
    EXPECT_EQ(MetricsOf("System", std::nanf("")), none);
    EXPECT_EQ(MetricsOf("system"), none) << "names are compared exactly";
    EXPECT_EQ(MetricsOf(""), none);
    EXPECT_TRUE(MetricsOf("@Gulim").isThere);
    EXPECT_FALSE(MetricsOf("@System").isThere) << "only some names have a row for vertical writing";
}

}  // namespace
