// Loads a movie as it came, writes it packed in every way, parses its tags, and takes another movie in.
//
//     u16    length of the first movie in the low 13 bits, and the flags below
//     bytes  the movie that takes the other in, then that other

#include <algorithm>
#include <cstdint>

#include "Support.h"
#include "vxswf.h"

namespace {

using Packing = VXWholeMovie::Packing;

constexpr unsigned int kLengthMask = 0x1FFF;
constexpr unsigned int kIsParsed = 0x2000;  // the movie that takes the other in
constexpr unsigned int kHasOptions = 0x4000;
constexpr unsigned int kIsInSecondFrame = 0x8000;

void Dump(VXWholeMovie& movie, Packing packing, VXBitStream& out) {
    movie.SetPacking(packing);
    Require(movie.DumpToStream(out) == kVXSuccess);
    out.SetPosition(0);
}

/// The movie is the same after each way of packing.
void RequirePacked(VXWholeMovie& movie, VXBitStream& plain) {
    for (const Packing packing : {Packing::kDeflate, Packing::kLzma}) {
        if (packing == Packing::kLzma && !VXWholeMovie::HasLzma()) continue;
        VXBitStream packed;
        Dump(movie, packing, packed);
        VXWholeMovie again;
        Require(again.LoadFromStream(packed) == kVXSuccess && again.GetPacking() == packing);
        VXBitStream out;
        Dump(again, Packing::kNone, out);
        Require(AreEqual(plain, out));
    }
}

void ParseAll(VXWholeMovie& movie, VXSwfTagSet& set) {
    for (auto tag = set.begin(); tag != set.end(); ++tag) {
        VXIgnore(movie.Parse(set, tag));  // one that cannot be parsed stays
        Require(movie.Parse(set, tag) == kVXSuccess || !movie.GetErrorText().empty());
        if (auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(*tag)) ParseAll(movie, *sprite);
    }
}

void TakeIn(VXWholeMovie& movie, VXBitStream source, unsigned int flags) {
    VXBitStream before;
    Dump(movie, Packing::kNone, before);
    VXMovieCombiner combiner(movie);
    VXMovieCombiner::Options options;
    options.Frame = (flags & kIsInSecondFrame) != 0 ? 2 : 1;
    options.LocksRoot = options.TakesCutSource = (flags & kHasOptions) != 0;
    if ((flags & kHasOptions) != 0) options.Name = "name";
    const unsigned int start = source.GetPosition();
    for (unsigned int i = 0; i < 2; ++i) {
        source.SetPosition(start);
        const bool isTaken = combiner.Combine(source, options) == kVXSuccess;
        Require(isTaken == combiner.GetErrorText().empty());
        VXBitStream after;
        Dump(movie, Packing::kNone, after);
        if (!isTaken) {
            Require(AreEqual(before, after));
            return;
        }
        VXWholeMovie again;
        Require(again.LoadFromStream(after) == kVXSuccess);
        Require(again.GetNumTags() == movie.GetNumTags());
        before.Clean();
        Dump(again, Packing::kNone, before);
        Require(AreEqual(before, after));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int flags = input.Word();
    VXBitStream first = input.Stream(flags & kLengthMask);
    VXBitStream given(first);
    VXWholeMovie movie;
    if (movie.LoadFromStream(first) != kVXSuccess) {
        Require(!movie.GetErrorText().empty());
        return 0;
    }
    const bool isPlain = movie.GetPacking() == Packing::kNone;
    VXBitStream plain;
    Dump(movie, Packing::kNone, plain);
    if (isPlain) Require(AreEqual(plain, given));
    RequirePacked(movie, plain);
    if ((flags & kIsParsed) != 0) {
        ParseAll(movie, movie);
        VXBitStream parsed;
        movie.SetPacking(Packing::kNone);
        if (movie.DumpToStream(parsed) != kVXSuccess) return 0;  // a field that no body holds
    }
    TakeIn(movie, input.Rest(), flags);
    return 0;
}
