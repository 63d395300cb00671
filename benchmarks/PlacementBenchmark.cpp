// Loads and dumps of a movie that is mostly placements, each in a process of its own, against `TagCopy`.

#include <vector>

#include "support/MovieWork.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kNumTags = 600000;

/// A character with a matrix, every tenth with a name. Every fourth is scaled too.
void AppendPlacement(std::vector<unsigned char>& tags, unsigned int index) {
    const bool isNamed = index % 10 == 0;
    VXFlintMatrix matrix;
    matrix.TranslateX = index % 550;
    matrix.TranslateY = index % 400;
    if (index % 4 == 0) {
        matrix.HasScale = 1;
        matrix.ScaleX = 32768 + static_cast<int>(index % 65536);
        matrix.ScaleY = 65536;
    }
    VXBitStream body;
    Require(body.WriteByte(isNamed ? 0x26 : 0x06) == kVXSuccess);
    Require(body.WriteWord(static_cast<unsigned short>(1 + index % 60000)) == kVXSuccess);
    Require(body.WriteWord(static_cast<unsigned short>(1 + index % 500)) == kVXSuccess);
    Require(matrix.DumpToStream(body) == kVXSuccess);
    if (isNamed) Require(body.WriteVXString("clip") == kVXSuccess);
    AppendTag(tags, VXSwfTagFactory::TAG_PLACEOBJECT2, body.GetBuffer(), body.GetSize());
}

/// Five placements to a frame.
std::vector<unsigned char> MakePlacements() {
    std::vector<unsigned char> tags;
    for (unsigned int i = 0; i < kNumTags / 6; ++i) {
        for (unsigned int placement = 0; placement < 5; ++placement) AppendPlacement(tags, 5 * i + placement);
        AppendTag(tags, VXSwfTagFactory::TAG_SHOWFRAME, nullptr, 0);
    }
    return tags;
}

void Placements(benchmark::State& state, From from, bool isDumped) {
    CompareWithCopy(state, MovieFile(MakePlacements), from, isDumped);
}

}  // namespace

// The bounds: 5 to load and 8 to load and dump, with 16 times the movie in memory.
BENCHMARK_CAPTURE(Placements, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Placements, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Placements, load_and_dump, From::kFile, true)->Apply(ColdRuns);
