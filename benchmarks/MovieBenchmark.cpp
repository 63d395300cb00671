// Loads and dumps of raw movies, each in a process of its own, against `TagCopy`.

#include "support/MovieWork.h"

namespace {

void SmallTags(benchmark::State& state, From from, bool isDumped) {
    CompareWithCopy(state, MovieFile::OfSmallTags(600000), from, isDumped);
}

void LargeTags(benchmark::State& state, From from, bool isDumped) {
    CompareWithCopy(state, MovieFile::OfLargeTags(256, 256 * 1024, false), from, isDumped);
}

void WholeSmallTags(benchmark::State& state, From from, bool isDumped) {
    const MovieFile movie = MovieFile::OfSmallTags(600000);
    CompareCold(state, CopyOf(movie), WholeLoadOf(movie, from, isDumped), movie.GetSize());
}

}  // namespace

// The bounds: small tags 3 to load and 4.5 to load and dump, with 10 times the movie in memory; large tags
// 2.1 and 3.2, with 2.1 times the movie to load.
BENCHMARK_CAPTURE(SmallTags, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(SmallTags, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(SmallTags, load_and_dump, From::kFile, true)->Apply(ColdRuns);
// Carried as bytes: 1.2 to load and 2 to load and dump, with 6 times the movie in memory.
BENCHMARK_CAPTURE(WholeSmallTags, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(WholeSmallTags, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(WholeSmallTags, load_and_dump, From::kFile, true)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(LargeTags, load_and_dump, From::kFile, true)->Apply(ColdRuns);
