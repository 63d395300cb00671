#include "robustness/Memory.h"
#include "support/GoldenMovie.h"
#include "support/Test.h"

namespace {

/// A movie that is loaded, and what a dump of it gives as long as nothing happens to it.
struct Loaded {
    explicit Loaded(unsigned int version) {
        EXPECT_TRUE(LoadInto(movie, GoldenMovie(version)) == kVXSuccess);
        bytes = DumpOf(movie);
    }
    void ExpectUnchanged() { EXPECT_TRUE(DumpOf(movie) == bytes); }

    VXFlintFile movie;
    Bytes bytes;
};

/// Refuses one allocation after the other, alone and with all that follow, until `attempt` gets through.
/// `attempt` takes the function that runs a step under the refusal and answers whether it came to its end.
template <typename Attempt>
void RefuseEach(const Attempt& attempt) {
    for (const bool allLater : {false, true}) {
        bool wasRefused = true;
        for (unsigned int n = 1; wasRefused && !testing::Test::HasFailure(); ++n) {
            SCOPED_TRACE(testing::Message() << "allocation " << n << (allLater ? " and all later ones" : ""));
            const auto refuse = [&](const auto& step) {
                return Memory::Refuse(n, allLater, wasRefused, step);
            };
            const std::size_t before = Memory::GetLive();
            attempt(refuse);
            if (n > 1) {
                EXPECT_EQ(Memory::GetLive(), before);
            }  // the first attempt fills what lasts for the program
            ASSERT_LT(n, 100000u);
        }
    }
}

class AllocationFault : public testing::TestWithParam<unsigned int> {
    const SilentAsserts m_Silence;
};

TEST_P(AllocationFault, Load) {
    const Bytes bytes = GoldenMovie(GetParam());
    const Bytes whole = Loaded(GetParam()).bytes;
    std::list<VXSwfTagFactory::enuTagType> types = {VXSwfTagFactory::TAG_SHOWFRAME};
    RefuseEach([&](const auto& refuse) {
        VXFlintFile movie;
        VXIgnore(movie.SetListsTobeMaintained(types));
        const bool isDone = refuse([&] { return LoadInto(movie, bytes) == kVXSuccess; });
        EXPECT_TRUE(!isDone || DumpOf(movie) == whole);
    });
}

TEST_P(AllocationFault, Dump) {
    Loaded loaded(GetParam());
    RefuseEach([&](const auto& refuse) {
        VXBitStream out;
        if (refuse([&] { return loaded.movie.DumpToStream(out) == kVXSuccess; })) {
            EXPECT_TRUE(BytesOf(out) == loaded.bytes);
        }
        loaded.ExpectUnchanged();
    });
}

TEST_P(AllocationFault, CompressedDumpAndLoad) {
    Loaded loaded(GetParam());
    VXFlintFile again;
    ASSERT_TRUE(LoadInto(again, loaded.bytes) == kVXSuccess);
    const Bytes whole = DumpOf(again);
    loaded.movie.SetCompression(1);
    RefuseEach([&](const auto& refuse) {
        CVXStreamReadWrite target;
        target.SetMode(IVXStream::kWrite);
        VXFlintFile copy;
        const bool isDone = refuse([&] {
            if (loaded.movie.DumpToStream(&target) != kVXSuccess) return false;
            target.SetMode(IVXStream::kRead);
            return copy.LoadFromStream(&target) == kVXSuccess;
        });
        copy.SetCompression(0);
        EXPECT_TRUE(!isDone || DumpOf(copy) == whole);
    });
}

TEST_P(AllocationFault, Copy) {
    Loaded loaded(GetParam());
    const Bytes whole = DumpOf(*std::unique_ptr<VXFlintFile>(loaded.movie.Copy()));
    RefuseEach([&](const auto& refuse) {
        std::unique_ptr<VXFlintFile> copy;
        loaded.movie.SetCompression(1);
        const bool isDone = refuse([&] {
            copy.reset(loaded.movie.Copy());
            return true;
        });
        EXPECT_TRUE(!isDone || DumpOf(*copy) == whole);
        EXPECT_EQ(loaded.movie.GetCompression(), 1);
        loaded.movie.SetCompression(0);
        loaded.ExpectUnchanged();
    });
}

/// Everything that can be asked for by those that copy into a movie.
bool Include(int how, VXFlintFile& target, VXFlintFile& source,
             std::map<VXString, VXSwfExportAssetsTag*>& exports) {
    VXBucketSWFIDGenerator ids(target);
    short frees = 0;
    unsigned short ignored = 0;
    return how == 0 ? target.IncludeTagSetAsSprite(&source, 2, &ids, &exports, 1, &frees, 1, 1) != nullptr
                    : target.IncludeCharacter(&source, 30, ignored, &ids, static_cast<unsigned int>(-how)) !=
                          nullptr;
}

TEST_P(AllocationFault, Include) {
    Loaded source(GetParam());
    for (const int how : {0, 1, -1}) {
        Bytes whole;
        const auto attempt = [&](const auto& refuse) {
            Loaded target(GetParam());
            std::map<VXString, VXSwfExportAssetsTag*> exports;
            const bool isDone = refuse([&] { return Include(how, target.movie, source.movie, exports); });
            if (whole.empty()) whole = DumpOf(target.movie);
            EXPECT_TRUE(DumpOf(target.movie) == (isDone ? whole : target.bytes));
            EXPECT_EQ(exports.size(), isDone && how == 0 ? 1u : 0u);
            source.ExpectUnchanged();
        };
        attempt([](const auto& step) { return step(); });
        RefuseEach(attempt);
    }
}

TEST_P(AllocationFault, EditsLoseNothing) {
    Loaded source(GetParam());
    RefuseEach([&](const auto& refuse) {
        Loaded target(GetParam());
        const std::vector<VXSwfTag*> tags(target.movie.begin(), target.movie.end());
        refuse([&] {
            VXBucketSWFIDGenerator ids(target.movie);
            target.movie.AddFreeCharacterAtEnd();
            BuildTags(target.movie);
            return true;
        });
        const std::set<VXSwfTag*> left(target.movie.begin(), target.movie.end());
        for (VXSwfTag* tag : tags) EXPECT_TRUE(left.contains(tag));
        source.ExpectUnchanged();
    });
}

// A movie of version 5 that takes one of version 8 in has its own clip events changed.
TEST_P(AllocationFault, CombinationsAndParsedTags) {
    const Bytes source = GoldenMovie(GetParam() == 5 ? 8 : 5);
    const Bytes plain = GoldenMovie(GetParam());
    for (const bool isParsed : {false, true}) {
        RefuseEach([&](const auto& refuse) {
            VXWholeMovie movie;
            ASSERT_TRUE(LoadInto(movie, plain) == kVXSuccess);
            VXBitStream in = StreamOver(source);
            VXMovieCombiner combiner(movie);
            const bool isDone = refuse([&] {
                if (isParsed) return movie.Parse(std::next(movie.begin(), 30)) == kVXSuccess;
                return combiner.Combine(in) == kVXSuccess;
            });
            EXPECT_TRUE(isDone || BytesOfRecord(movie) == plain);
        });
    }
}

TEST_P(AllocationFault, WholeMovies) {
    const Bytes plain = GoldenMovie(GetParam());
    for (const auto packing : {VXWholeMovie::Packing::kDeflate, VXWholeMovie::Packing::kLzma}) {
        if (packing == VXWholeMovie::Packing::kLzma && !VXWholeMovie::HasLzma()) continue;
        RefuseEach([&](const auto& refuse) {
            VXWholeMovie movie;
            VXWholeMovie again;
            CVXStreamReadWrite target;
            const bool isDone = refuse([&] {
                if (LoadInto(movie, plain) != kVXSuccess) return false;
                movie.SetPacking(packing);
                if (movie.DumpToStream(&target) != kVXSuccess) return false;
                target.SetMode(IVXStream::kRead);
                return again.LoadFromStream(&target) == kVXSuccess;
            });
            again.SetPacking(VXWholeMovie::Packing::kNone);
            EXPECT_TRUE(!isDone || BytesOfRecord(again) == plain);
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, AllocationFault, testing::Values(5u, 8u),
                         testing::PrintToStringParamName());

}  // namespace
