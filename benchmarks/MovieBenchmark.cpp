// Loads and dumps of raw movies, each in a process of its own, against `TagCopy`.

#include <cstdlib>

#include "support/ColdRun.h"
#include "support/MovieFile.h"
#include "vxswf.h"

namespace {

enum class From { kFile, kMemory };

void Require(bool holds) {
    if (!holds) std::abort();
}

ColdWork CopyOf(const MovieFile& movie) {
    return [&movie](ColdClock& clock) {
        const std::vector<unsigned char> bytes = movie.Read();
        clock.Start();
        benchmark::DoNotOptimize(TagCopy(bytes.data(), bytes.size()));
        clock.Stop();
    };
}

/// A load, and a dump into memory where asked.
ColdWork LoadOf(const MovieFile& movie, From from, bool isDumped) {
    return [&movie, from, isDumped](ColdClock& clock) {
        VXFlintFile file;
        VXBitStream dumped;
        if (from == From::kFile) {
            clock.Start();
            CVXStreamReadWrite source(movie.GetPath(), CVXStreamReadWrite::kOpenExisting);
            Require(file.LoadFromStream(&source) == kVXSuccess);
        } else {
            const std::vector<unsigned char> bytes = movie.Read();
            VXBitStream in;
            in.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
            clock.Start();
            Require(file.LoadFromStream(in) == kVXSuccess);
        }
        if (isDumped) Require(file.DumpToStream(dumped) == kVXSuccess);
        clock.Stop();
        Require(!isDumped || dumped.GetSize() == movie.GetSize());
    };
}

void SmallTags(benchmark::State& state, From from, bool isDumped) {
    const MovieFile movie = MovieFile::OfSmallTags(600000);
    CompareCold(state, CopyOf(movie), LoadOf(movie, from, isDumped), movie.GetSize());
}

void LargeTags(benchmark::State& state, From from, bool isDumped) {
    const MovieFile movie = MovieFile::OfLargeTags(256, 256 * 1024, false);
    CompareCold(state, CopyOf(movie), LoadOf(movie, from, isDumped), movie.GetSize());
}

}  // namespace

// The bounds: small tags 3 to load and 4.5 to load and dump, with 10 times the movie in memory; large tags 2.1
// and 3.2, with 2.1 times the movie to load.
BENCHMARK_CAPTURE(SmallTags, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(SmallTags, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(SmallTags, load_and_dump, From::kFile, true)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load_and_dump, From::kFile, true)->Apply(ColdRuns);
