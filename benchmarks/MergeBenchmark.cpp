// Merges beside a load and a dump of the movie that is merged, each in a process of its own.

#include <vector>

#include "support/ColdRun.h"
#include "support/MovieFile.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kSpriteId = 65535;

void AppendWord(std::vector<unsigned char>& bytes, unsigned int word) {
    bytes.push_back(static_cast<unsigned char>(word));
    bytes.push_back(static_cast<unsigned char>(word >> 8));
}

/// Four placements for each character, every tenth with a frame behind it.
std::vector<unsigned char> MakeTimeline(unsigned int numCharacters) {
    std::vector<unsigned char> tags;
    for (unsigned int i = 0; i < 4 * numCharacters; ++i) {
        std::vector<unsigned char> body{0x26};  // a character, a matrix and a name
        AppendWord(body, i % 60000);
        AppendWord(body, 1 + i % numCharacters);
        for (const unsigned int word : {0x3414u, 0x6910u, 0x6574u, 0x006Du}) AppendWord(body, word);
        AppendTag(tags, VXSwfTagFactory::TAG_PLACEOBJECT2, body.data(), body.size());
        if (i % 10 == 9) AppendTag(tags, VXSwfTagFactory::TAG_SHOWFRAME, nullptr, 0);
    }
    return tags;
}

/// Characters of 22 bytes and a timeline that places them, in the movie itself or in a sprite.
std::vector<unsigned char> MakeMovie(unsigned int numCharacters, bool isInSprite) {
    std::vector<unsigned char> tags;
    for (unsigned int id = 1; id <= numCharacters; ++id) {
        std::vector<unsigned char> body;
        AppendWord(body, id);
        body.resize(22, 7);
        AppendTag(tags, VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, body.data(), body.size());
    }
    const std::vector<unsigned char> timeline = MakeTimeline(numCharacters);
    if (!isInSprite) {
        tags.insert(tags.end(), timeline.begin(), timeline.end());
        return tags;
    }
    std::vector<unsigned char> sprite;
    AppendWord(sprite, kSpriteId);
    AppendWord(sprite, 0);
    sprite.insert(sprite.end(), timeline.begin(), timeline.end());
    AppendWord(sprite, 0);
    AppendTag(tags, VXSwfTagFactory::TAG_DEFINESPRITE, sprite.data(), sprite.size());
    return tags;
}

void Load(VXFlintFile& movie, const MovieFile& file) {
    CVXStreamReadWrite source(file.GetPath(), CVXStreamReadWrite::kOpenExisting);
    Require(movie.LoadFromStream(&source) == kVXSuccess);
}

void LoadWhole(VXWholeMovie& movie, const MovieFile& file) {
    CVXStreamReadWrite source(file.GetPath(), CVXStreamReadWrite::kOpenExisting);
    Require(movie.LoadFromStream(&source) == kVXSuccess);
}

void Merge(benchmark::State& state, bool isInSprite) {
    const auto numCharacters = static_cast<unsigned int>(state.range(0));
    const MovieFile file([numCharacters, isInSprite] { return MakeMovie(numCharacters, isInSprite); });
    const auto loadAndDump = [&file](ColdClock& clock) {
        VXFlintFile movie;
        VXBitStream dumped;
        clock.Start();
        Load(movie, file);
        Require(movie.DumpToStream(dumped) == kVXSuccess);
        clock.Stop();
    };
    const auto merge = [&file, isInSprite](ColdClock& clock) {
        VXFlintFile source;
        Load(source, file);
        VXFlintFile target;
        target.IncludeShowFrameTags(1, -1);
        VXBucketSWFIDGenerator generator(target);
        clock.Start();
        if (isInSprite) {
            unsigned short ignoredId = 0;
            Require(target.IncludeCharacter(&source, kSpriteId, ignoredId, &generator, 1) != nullptr);
        } else {
            Require(target.IncludeTagSetAsSprite(&source, 1, &generator, nullptr, 1, nullptr, 1, 1) !=
                    nullptr);
        }
        clock.Stop();
    };
    CompareCold(state, loadAndDump, merge, file.GetSize());
}

/// A combination, beside a load and a dump of both movies as bytes.
void Combine(benchmark::State& state) {
    const auto numCharacters = static_cast<unsigned int>(state.range(0));
    const MovieFile file([numCharacters] { return MakeMovie(numCharacters, false); });
    const auto loadAndDump = [&file](ColdClock& clock) {
        clock.Start();
        for (unsigned int i = 0; i < 2; ++i) {
            VXWholeMovie movie;
            VXBitStream dumped;
            LoadWhole(movie, file);
            Require(movie.DumpToStream(dumped) == kVXSuccess);
        }
        clock.Stop();
    };
    const auto combine = [&file](ColdClock& clock) {
        VXWholeMovie movie;
        VXBitStream dumped;
        clock.Start();
        LoadWhole(movie, file);
        VXMovieCombiner combiner(movie);
        CVXStreamReadWrite source(file.GetPath(), CVXStreamReadWrite::kOpenExisting);
        Require(combiner.Combine(&source) == kVXSuccess);
        Require(movie.DumpToStream(dumped) == kVXSuccess);
        clock.Stop();
    };
    CompareCold(state, loadAndDump, combine, 2 * file.GetSize());
}

}  // namespace

// The bound: a ratio of 4. Twice the characters take twice the time.
BENCHMARK_CAPTURE(Merge, movie, false)->Apply(ColdRuns)->Arg(25000)->Arg(50000);
BENCHMARK_CAPTURE(Merge, character, true)->Apply(ColdRuns)->Arg(25000)->Arg(50000);
// The bound: 1.5.
BENCHMARK(Combine)->Apply(ColdRuns)->Arg(12500)->Arg(25000);
