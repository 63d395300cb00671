#include <zlib.h>

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

TEST(VXWinFontData, TheTableIsWhole) {
    std::string rows;
    for (const auto& [name, first, second] : VXGetWinFontTable()) {
        rows += name + (' ' + std::to_string(first)) + ' ' + std::to_string(second) + '\n';
    }
    EXPECT_EQ(crc32(0, reinterpret_cast<const Bytef*>(rows.data()), static_cast<uInt>(rows.size())),
              0x19B2DD89u);
}

TEST(VXWinFontData, MetricsFollowTheSize) {
    const Metrics none{false, 0.0f, 0.0f};
    EXPECT_EQ(MetricsOf("System"), (Metrics{true, 107.0f, 30.0f}));
    VXFontPublishManager::DoCleanUp();  // what follows fills the table again
    EXPECT_EQ(MetricsOf("System", 512.0f), (Metrics{true, 53.5f, 15.0f}));
    EXPECT_EQ(MetricsOf("System", 0.0f), none);
    EXPECT_EQ(MetricsOf("System", std::nanf("")), none);
    EXPECT_EQ(MetricsOf("system"), none) << "names are compared exactly";
    EXPECT_TRUE(MetricsOf("@Gulim").isThere);
    EXPECT_FALSE(MetricsOf("@System").isThere) << "only some names have a row for vertical writing";
}

}  // namespace
