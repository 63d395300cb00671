#include "framework/VXBucketSWFIDGenerator.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <random>

#include "framework/VXFlintFile.h"
#include "support/TagSets.h"

using testing::ElementsAre;

namespace {

using Ids = std::vector<int>;

Ids IdRange(int first, int last) {
    Ids ids;
    for (int id = first; id <= last; ++id) ids.push_back(id);
    return ids;
}

Ids Take(IVXSwfIdGenerator& generator, int count) {
    Ids ids;
    for (; count != 0; --count) ids.push_back(generator.GetId(kVXSwfOrdinaryId));
    return ids;
}

/// The IDs that a generator over a movie with these IDs hands out.
Ids IdsBeside(const Ids& taken, int count) {
    Bytes tags;
    for (const int id : taken) {
        const Bytes tag = Bitmap(static_cast<unsigned int>(id));
        tags.insert(tags.end(), tag.begin(), tag.end());
    }
    VXFlintFile movie;
    LoadTags(movie, tags);
    VXBucketSWFIDGenerator generator(movie);
    return Take(generator, count);
}

/// The same rules told plainly: every change of bucket sorts, and every request walks.
class PlainGenerator {
public:
    explicit PlainGenerator(const Ids& taken) {
        for (const int id : taken) m_Buckets[(id - 1) / 9362].push_back(id);
        Refresh();
    }
    int GetId() {
        if (!IsFree() && (Refresh() || !IsFree())) return 65535;
        const int id = m_Next++;
        m_Buckets[m_Bucket].push_back(m_Next);
        return id;
    }

private:
    bool Refresh() {
        std::uint16_t best = 0;
        m_Bucket = 0;
        for (int i = 0; i < 8; ++i) {
            const auto free = static_cast<std::uint16_t>(m_Limit - static_cast<int>(m_Buckets[i].size()) +
                                                         9361 - (i + 1) * 9362);
            if (free <= best) continue;
            best = free;
            m_Limit = static_cast<std::uint16_t>(i == 7 ? 65535 : (i + 1) * 9362);
            m_Bucket = i;
        }
        if (best == 0) return false;
        std::sort(m_Buckets[m_Bucket].begin(), m_Buckets[m_Bucket].end());
        m_Index = 0;
        m_Next = static_cast<std::uint16_t>(9362 * m_Bucket + 1);
        return true;
    }
    bool IsFree() {
        const Ids& ids = m_Buckets[m_Bucket];
        for (; m_Index < ids.size() && ids[m_Index] == m_Next; ++m_Index) ++m_Next;
        return m_Next <= m_Limit;
    }

    Ids m_Buckets[8];
    int m_Bucket = 0;
    std::uint16_t m_Index = 0;
    std::uint16_t m_Next = 0;
    std::uint16_t m_Limit = 0;
};

TEST(VXBucketSWFIDGenerator, FirstIds) {
    EXPECT_THAT(IdsBeside({1, 2}, 2), ElementsAre(9363, 9365)) << "the second bucket measures freer";
    EXPECT_THAT(IdsBeside({2, 9364, 1, 9363}, 2), ElementsAre(3, 5)) << "as full as the second, so the first";
    EXPECT_THAT(IdsBeside({1, 2, 5, 9363, 9364, 9365}, 5), ElementsAre(3, 4, 6, 7, 8))
        << "5 is met late, and 4, which was noted behind it, never is";
    EXPECT_THAT(IdsBeside(IdRange(1, 50000), 2), ElementsAre(65535, 65535)) << "as good as full";
    const Ids ids = IdsBeside({}, 4684);
    EXPECT_THAT(Ids(ids.begin(), ids.begin() + 3), ElementsAre(1, 3, 5));
    EXPECT_THAT(Ids(ids.end() - 4, ids.end()), ElementsAre(9361, 65535, 9363, 9365))
        << "a change of bucket costs one request";
}

TEST(VXBucketSWFIDGenerator, FollowsThePlainRules) {
    std::mt19937 random(1);
    std::vector<Ids> movies{{}, IdRange(1, 9361), IdRange(1, 9362), IdRange(2, 9362), IdRange(1, 65535)};
    for (int i = 2; i < 9; ++i) {
        Ids ids = IdRange(1, 65535);
        std::shuffle(ids.begin(), ids.end(), random);
        ids.resize(ids.size() / static_cast<std::size_t>(i * i));
        ids.push_back(ids.front());  // defined twice
        movies.push_back(ids);
    }
    for (const Ids& taken : movies) {
        PlainGenerator plain(taken);
        Ids expected(10000);
        for (int& id : expected) id = plain.GetId();
        EXPECT_TRUE(IdsBeside(taken, 10000) == expected) << taken.size() << " IDs are taken";
    }
}

TEST(VXBucketSWFIDGenerator, SeesTheTopLevelAsItWas) {
    VXFlintFile movie;
    LoadTags(movie, Join({Sprite(2, 0, Bitmap(1)), kShowFrame}));
    movie.AppendTag(nullptr);
    VXBucketSWFIDGenerator generator(movie);
    LoadTags(movie, Bitmap(9363));
    EXPECT_THAT(Take(generator, 2), ElementsAre(9363, 9365)) << "2 is seen, 1 and what came later are not";

    VXBucketSWFIDGenerator copy(generator);
    unsigned short id = 0;
    EXPECT_EQ(copy.GetId(id, kVXSwfButtonId), kVXSuccess);
    EXPECT_EQ(id, 9367) << "what it is for changes nothing";
    EXPECT_THAT(Take(generator, 2), ElementsAre(9367, 9369))
        << "copies count for themselves, over shared notes";
}

}  // namespace
