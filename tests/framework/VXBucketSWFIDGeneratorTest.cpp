#include "support/Test.h"

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

TEST(VXBucketSWFIDGenerator, FirstIds) {
    EXPECT_THAT(IdsBeside({1, 2}, 2), ElementsAre(9363, 9365)) << "the second bucket measures freer";
    EXPECT_THAT(IdsBeside({2, 9364, 1, 9363}, 2), ElementsAre(3, 5)) << "as full as the second, so the first";
    EXPECT_THAT(IdsBeside({1, 2, 5, 9363, 9364, 9365}, 5), ElementsAre(3, 4, 6, 7, 8))
        << "5 is met late, and 4, which was noted behind it, never is";
    EXPECT_THAT(IdsBeside({1, 1, 2, 9363, 9364, 9365}, 3), ElementsAre(2, 3, 4))
        << "an ID that is defined twice hides those behind it";
    EXPECT_THAT(IdsBeside(IdRange(1, 50000), 2), ElementsAre(65535, 65535)) << "as good as full";
    const Ids ids = IdsBeside({}, 28100);
    const auto from = [&ids](int first, int count) {
        return Ids(ids.begin() + first, ids.begin() + first + count);
    };
    EXPECT_THAT(from(0, 3), ElementsAre(1, 3, 5));
    EXPECT_THAT(from(4680, 4), ElementsAre(9361, 65535, 9363, 9365))
        << "a change of bucket costs one request";
    EXPECT_THAT(from(14044, 4), ElementsAre(28085, 65535, 9363, 9365)) << "successors alone count as taken";
    EXPECT_THAT(from(28090, 6), ElementsAre(28085, 65535, 9363, 9365, 9366, 9367)) << "in order again";
    const Ids full = IdsBeside(IdRange(1, 9362), 9366);
    EXPECT_THAT(Ids(full.end() - 4, full.end()), ElementsAre(28085, 65535, 9363, 9365));
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
