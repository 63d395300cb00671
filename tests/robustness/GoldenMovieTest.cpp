#include <typeindex>

#include "robustness/Memory.h"
#include "support/GoldenMovie.h"
#include "support/Test.h"

namespace {

void CollectClasses(const VXSwfTagSet& set, std::set<std::type_index>& classes) {
    for (VXSwfTag* tag : set) {
        classes.insert(typeid(*tag));
        if (const auto* sprite = dynamic_cast<const VXSwfDefineSpriteTag*>(tag))
            CollectClasses(*sprite, classes);
    }
}

TEST(GoldenMovie, HoldsEveryClassThatALoadMakes) {
    const Bytes bytes = GoldenMovie(5);
    EXPECT_LT(bytes.size(), 4000u);
    VXBitStream in = StreamOver(bytes);
    VXFlintFile movie;
    ASSERT_EQ(movie.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(in.GetRemaining(), 2u) << "the end tag";
    std::set<std::type_index> classes;
    CollectClasses(movie, classes);
    std::set<std::type_index> wanted;
    for (unsigned int type = 0; type < 1024; ++type) {
        const TagPtr made = MakeTag(type, 1);
        const VXSwfTag& tag = *made;
        wanted.insert(typeid(tag));
        if (typeid(tag) != typeid(VXSwfTag)) {
            EXPECT_NE(movie.FindNthTagOfType(tag.GetTagType(), 1), movie.end()) << "type " << type;
        }
    }
    EXPECT_EQ(classes, wanted);
}

struct Part {
    unsigned int parsingMode;
    unsigned int number;
};
constexpr unsigned int kParts = 4;

/// A share of the damage that can be done to a movie, so that the shares run side by side.
class DamagedMovie : public testing::TestWithParam<Part> {
protected:
    void Survive(const Bytes& bytes) {
        const std::size_t before = Memory::GetLive();
        Memory::ResetPeak();
        {
            VXFlintFile movie;
            movie.SetParsingMode(GetParam().parsingMode);
            VXIgnore(LoadInto(movie, bytes));
            VXBitStream out;
            VXIgnore(movie.DumpToStream(out));
        }
        ASSERT_EQ(Memory::GetLive(), before);
        ASSERT_LE(Memory::GetPeak() - before, 512 * bytes.size() + 4096);
    }
};

TEST_P(DamagedMovie, EveryTruncation) {
    for (const unsigned int version : {5u, 8u}) {
        const Bytes movie = GoldenMovie(version);
        for (std::size_t size = GetParam().number; size < movie.size(); size += kParts) {
            SCOPED_TRACE(size);
            Survive(Head(movie, size));
            if (HasFatalFailure()) return;
        }
    }
}

TEST_P(DamagedMovie, EveryFlippedBit) {
    Bytes movie = GoldenMovie(5);
    movie.shrink_to_fit();
    for (std::size_t bit = GetParam().number; bit < movie.size() * 8; bit += kParts) {
        SCOPED_TRACE(bit);
        const auto flip = static_cast<unsigned char>(0x80u >> bit % 8);
        movie[bit / 8] ^= flip;
        Survive(movie);
        movie[bit / 8] ^= flip;
        if (HasFatalFailure()) return;
    }
}

std::vector<Part> Parts() {
    std::vector<Part> parts;
    for (const unsigned int mode : {0u, 1u}) {
        for (unsigned int number = 0; number < kParts; ++number) parts.push_back({mode, number});
    }
    return parts;
}

INSTANTIATE_TEST_SUITE_P(Parts, DamagedMovie, testing::ValuesIn(Parts()), [](const auto& row) {
    return (row.param.parsingMode == 0 ? "Parsed" : "Raw") + std::to_string(row.param.number);
});

}  // namespace
