// A compressed dump against plain deflate, level 9, over the same bytes.

#include <zlib.h>

#include <algorithm>
#include <cstdlib>

#include "support/ColdRun.h"
#include "support/MovieFile.h"
#include "vxswf.h"

namespace {

constexpr std::size_t kChunk = 1048576;
constexpr int kLevel = 9;

void Require(bool holds) {
    if (!holds) std::abort();
}

void Deflate(std::vector<unsigned char>& bytes) {
    std::vector<unsigned char> room(kChunk);
    z_stream stream{};
    Require(deflateInit(&stream, kLevel) == Z_OK);
    for (std::size_t at = 0; at < bytes.size(); at += kChunk) {
        stream.next_in = bytes.data() + at;
        stream.avail_in = static_cast<uInt>(std::min(kChunk, bytes.size() - at));
        const int flush = at + kChunk < bytes.size() ? Z_NO_FLUSH : Z_FINISH;
        do {
            stream.next_out = room.data();
            stream.avail_out = static_cast<uInt>(room.size());
            deflate(&stream, flush);
            benchmark::DoNotOptimize(room.data());
        } while (stream.avail_out == 0);
    }
    deflateEnd(&stream);
}

// The bounds: a ratio of 1.05, and 4 MiB grown.
void CompressedDump(benchmark::State& state) {
    const MovieFile movie = MovieFile::OfLargeTags(64, 256 * 1024, true);
    const auto reference = [&movie](ColdClock& clock) {
        std::vector<unsigned char> bytes = movie.Read();
        clock.Start();
        Deflate(bytes);
        clock.Stop();
    };
    const auto work = [&movie](ColdClock& clock) {
        VXFlintFile file;
        {
            CVXStreamReadWrite source(movie.GetPath(), CVXStreamReadWrite::kOpenExisting);
            Require(file.LoadFromStream(&source) == kVXSuccess);
        }
        file.SetCompression(1);
        CVXTempFileStreamReadWrite target;
        target.SetMode(IVXStream::kWrite);
        clock.Start();
        Require(file.DumpToStream(&target) == kVXSuccess);
        clock.Stop();
    };
    CompareCold(state, reference, work, movie.GetSize());
}

}  // namespace

BENCHMARK(CompressedDump)->Apply(ColdRuns)->Iterations(5);
