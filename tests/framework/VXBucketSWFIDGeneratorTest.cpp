#include "framework/VXBucketSWFIDGenerator.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <random>

#include "framework/VXFlintFile.h"
#include "support/TagSets.h"

using testing::ElementsAre;

namespace {

std::vector<int> IdRange(int first, int last) {
    std::vector<int> ids;
    for (int id = first; id <= last; ++id) ids.push_back(id);
    return ids;
}

void Define(VXFlintFile& movie, const std::vector<int>& ids) {
    Bytes tags;
    for (const int id : ids) {
        const Bytes tag = Bitmap(static_cast<unsigned int>(id));
        tags.insert(tags.end(), tag.begin(), tag.end());
    }
    LoadTags(movie, tags);
}

std::vector<int> Take(IVXSwfIdGenerator& generator, int count) {
    std::vector<int> ids;
    for (; count != 0; --count) ids.push_back(generator.GetId(kVXSwfOrdinaryId));
    return ids;
}

/// The IDs that a generator over a movie with these IDs hands out.
std::vector<int> IdsBeside(const std::vector<int>& taken, int count) {
    VXFlintFile movie;
    Define(movie, taken);
    VXBucketSWFIDGenerator generator(movie);
    return Take(generator, count);
}

/// The same rules told plainly: every change of bucket sorts, and every request walks.
class PlainGenerator {
public:
    explicit PlainGenerator(const std::vector<int>& taken) {
        for (const int id : taken) m_Buckets[(id - 1) / 9362].push_back(id);
        Refresh();
        m_Index = 0;
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
        std::vector<int>& ids = m_Buckets[m_Bucket];
        if (!std::is_sorted(ids.begin(), ids.end())) std::sort(ids.begin(), ids.end());
        m_Index = 0;
        m_Next = static_cast<std::uint16_t>(9362 * m_Bucket + 1);
        return true;
    }
    bool IsFree() {
        for (; m_Index < m_Buckets[m_Bucket].size() && m_Buckets[m_Bucket][m_Index] == m_Next; ++m_Index)
            ++m_Next;
        return m_Next <= m_Limit;
    }

    std::vector<int> m_Buckets[8];
    int m_Bucket = 0;
    std::uint16_t m_Index = 0;
    std::uint16_t m_Next = 0;
    std::uint16_t m_Limit = 0;
};

TEST(VXBucketSWFIDGenerator, FirstIds) {
    EXPECT_THAT(IdsBeside({}, 3), ElementsAre(1, 3, 5));
    EXPECT_THAT(IdsBeside({1, 2}, 2), ElementsAre(9363, 9365)) << "the second bucket measures freer";
    EXPECT_THAT(IdsBeside({2, 9364, 1, 9363}, 3), ElementsAre(3, 5, 7))
        << "as full as the second, so the first";
    EXPECT_THAT(IdsBeside({1, 2, 5, 9363, 9364, 9365}, 5), ElementsAre(3, 4, 6, 7, 8))
        << "5 is met late, and 4, which was noted behind it, never is";
    EXPECT_THAT(IdsBeside({65535}, 2), ElementsAre(1, 3));
}

TEST(VXBucketSWFIDGenerator, AChangeOfBucketCostsOneRequest) {
    const std::vector<int> ids = IdsBeside({}, 4684);
    for (int i = 0; i < 4681; ++i) EXPECT_EQ(ids[static_cast<std::size_t>(i)], 2 * i + 1);
    EXPECT_EQ(ids[4681], 65535);
    EXPECT_EQ(ids[4682], 9363);
    EXPECT_EQ(ids[4683], 9365);
}

TEST(VXBucketSWFIDGenerator, AFullMovieMayNeverGetAnId) {
    for (const int id : IdsBeside(IdRange(1, 50000), 5)) EXPECT_EQ(id, 65535);
}

TEST(VXBucketSWFIDGenerator, FollowsThePlainRules) {
    std::mt19937 random(1);
    std::vector<std::vector<int>> movies{{}, IdRange(1, 9361), IdRange(2, 9362), IdRange(1, 65535)};
    movies.push_back(IdRange(1, 9362));
    for (int i = 2; i < 9; ++i) {
        std::vector<int> ids = IdRange(1, 65535);
        std::shuffle(ids.begin(), ids.end(), random);
        ids.resize(ids.size() / static_cast<std::size_t>(i * i));
        ids.push_back(ids.front());  // defined twice
        movies.push_back(ids);
    }
    for (const std::vector<int>& taken : movies) {
        SCOPED_TRACE(testing::Message() << taken.size() << " IDs are taken");
        PlainGenerator plain(taken);
        std::vector<int> expected;
        for (int i = 0; i < 10000; ++i) expected.push_back(plain.GetId());
        EXPECT_TRUE(IdsBeside(taken, 10000) == expected);
    }
}

TEST(VXBucketSWFIDGenerator, SeesTheTopLevelAsItWas) {
    VXFlintFile movie;
    LoadTags(movie, Join({Sprite(2, 0, Join({Bitmap(1)})), kShowFrame}));
    movie.AppendTag(nullptr);
    VXBucketSWFIDGenerator generator(movie);
    LoadTags(movie, Bitmap(9363));
    EXPECT_THAT(Take(generator, 2), ElementsAre(9363, 9365)) << "2 is seen, 1 and what came later are not";

    VXBucketSWFIDGenerator copy(generator);
    unsigned short id = 0;
    EXPECT_EQ(copy.GetId(id, kVXSwfButtonId), kVXSuccess);
    EXPECT_EQ(id, 9367) << "what it is for changes nothing";
    EXPECT_THAT(Take(generator, 1), ElementsAre(9367)) << "copies count for themselves over shared notes";
    EXPECT_THAT(Take(generator, 1), ElementsAre(9369));
}

}  // namespace
