#include "platform/typeengine/VXHandleTable_p.h"

#include <gtest/gtest.h>

#include <set>

namespace {

struct Counted : VXEngineObject {
    static constexpr VXObjectKind kKind = VXObjectKind::Text;
    explicit Counted(int& count) : VXEngineObject(kKind), alive(count) { ++alive; }
    ~Counted() override { --alive; }
    int& alive;
};

struct Other : VXEngineObject {
    static constexpr VXObjectKind kKind = VXObjectKind::Path;
};

}  // namespace

TEST(VXHandleTable, StaleHandlesAreNeverFollowed) {
    int alive = 0;
    VXHandleTable table;
    std::set<TYHandle> used;
    for (int i = 0; i < 300; ++i) {
        const TYHandle handle = table.Add(std::make_unique<Counted>(alive));
        EXPECT_TRUE(used.insert(handle).second) << "a handle came twice";
        EXPECT_EQ(table.Find<Other>(handle), nullptr) << "of another kind";
        EXPECT_TRUE(table.AddRef(handle) && table.Release(handle));
        if (i % 3 != 0) table.Release(handle);
    }
    EXPECT_EQ(alive, 100);
    EXPECT_EQ(table.GetLiveCount(), 100U);
    int found = 0;
    for (const TYHandle handle : used) found += table.Find<Counted>(handle) != nullptr ? 1 : 0;
    EXPECT_EQ(found, 100);

    VXHandleTable next;
    next.Add(std::make_unique<Counted>(alive));
    for (const TYHandle handle : used) {
        EXPECT_FALSE(next.AddRef(handle) || next.Release(handle)) << "of a table that is gone";
    }
    for (const TYHandle handle : {TYHandle{0}, TYHandle{1}, ~TYHandle{0}, TYHandle{1} << 24}) {
        EXPECT_FALSE(table.AddRef(handle) || table.Release(handle));
        EXPECT_EQ(table.Find<Counted>(handle), nullptr);
    }
}
