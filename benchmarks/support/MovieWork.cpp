#include "support/MovieWork.h"

#include "vxswf.h"

ColdWork CopyOf(const MovieFile& movie) {
    return [&movie](ColdClock& clock) {
        const std::vector<unsigned char> bytes = movie.Read();
        clock.Start();
        benchmark::DoNotOptimize(TagCopy(bytes.data(), bytes.size()));
        clock.Stop();
    };
}

namespace {

template <typename Movie>
ColdWork WorkOf(const MovieFile& movie, From from, bool isDumped) {
    return [&movie, from, isDumped](ColdClock& clock) {
        Movie file;
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
        // Nothing is lost; a dump takes the long header where the movie had the short one.
        Require(!isDumped || dumped.GetSize() >= movie.GetSize());
    };
}

}  // namespace

ColdWork LoadOf(const MovieFile& movie, From from, bool isDumped) {
    return WorkOf<VXFlintFile>(movie, from, isDumped);
}

ColdWork WholeLoadOf(const MovieFile& movie, From from, bool isDumped) {
    return WorkOf<VXWholeMovie>(movie, from, isDumped);
}

void CompareWithCopy(benchmark::State& state, const MovieFile& movie, From from, bool isDumped) {
    CompareCold(state, CopyOf(movie), LoadOf(movie, from, isDumped), movie.GetSize());
}
