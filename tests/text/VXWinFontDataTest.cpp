#include "text/VXWinFontData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "text/VXWinFontTable_p.h"

namespace {

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

}  // namespace
