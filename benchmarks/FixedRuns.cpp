// Small runs that do the same work every time, for scripts/instructions.py to count the instructions of. A
// run is chosen by its name; without one all names are listed. What feeds a run is made by the library too,
// and counts.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "vxswf.h"

namespace {

using Bytes = std::vector<unsigned char>;

void Require(bool holds) {
    if (!holds) std::abort();
}

struct TagDeleter {
    void operator()(VXSwfTag* tag) const { VXSwfTagFactory::DeleteTag(tag); }
};

template <typename Tag>
std::unique_ptr<Tag, TagDeleter> Make(VXSwfTagFactory::enuTagType type) {
    return std::unique_ptr<Tag, TagDeleter>(static_cast<Tag*>(VXSwfTagFactory::CreateTagOfType(type, 0, 0)));
}

void AppendWord(Bytes& bytes, unsigned int word) {
    bytes.push_back(static_cast<unsigned char>(word));
    bytes.push_back(static_cast<unsigned char>(word >> 8));
}

/// With the long header, which is told nothing about.
void AppendTag(Bytes& movie, unsigned int type, const Bytes& body) {
    AppendWord(movie, type << 6 | 63u);
    AppendWord(movie, static_cast<unsigned int>(body.size()));
    AppendWord(movie, static_cast<unsigned int>(body.size() >> 16));
    movie.insert(movie.end(), body.begin(), body.end());
}

Bytes MakeMovie() { return {'F', 'W', 'S', 8, 0, 0, 0, 0, 0x08, 0x00, 0, 12, 1, 0}; }

void Load(VXFlintFile& movie, Bytes& bytes) {
    AppendWord(bytes, 0);
    VXBitStream in;
    in.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    Require(movie.LoadFromStream(in) == kVXSuccess);
}

void LoadAndDump(Bytes bytes) {
    VXFlintFile movie;
    Load(movie, bytes);
    VXBitStream out;
    Require(movie.DumpToStream(out) == kVXSuccess && out.GetSize() >= bytes.size() / 2);
}

void RawTags() {
    Bytes movie = MakeMovie();
    for (unsigned int i = 0; i < 60000; ++i) AppendTag(movie, 77, Bytes(i % 21, 7));
    LoadAndDump(movie);
}

void AppendPlacements(Bytes& movie, unsigned int count, unsigned int numCharacters) {
    for (unsigned int i = 0; i < count; ++i) {
        Bytes body{0x26};  // a character, a matrix and a name
        AppendWord(body, i % 60000);
        AppendWord(body, 1 + i % numCharacters);
        for (const unsigned int word : {0x3414u, 0x6910u, 0x6574u, 0x006Du}) AppendWord(body, word);
        AppendTag(movie, VXSwfTagFactory::TAG_PLACEOBJECT2, body);
        if (i % 10 == 9) AppendTag(movie, VXSwfTagFactory::TAG_SHOWFRAME, {});
    }
}

void Placements() {
    Bytes movie = MakeMovie();
    AppendPlacements(movie, 20000, 500);
    LoadAndDump(movie);
}

void Scripts() {
    Bytes body;
    for (unsigned int i = 0; i < 100; ++i) {
        body.insert(body.end(), {0x96, 6, 0, 0, 'a', 0, 0, 'b', 0, 0x1C});
        body.insert(body.end(), {0x96, 5, 0, 7, 1, 0, 0, 0, 0x47, 0x1D});
    }
    body.push_back(0);
    Bytes movie = MakeMovie();
    for (unsigned int i = 0; i < 4000; ++i) AppendTag(movie, VXSwfTagFactory::TAG_DOACTION, body);
    LoadAndDump(movie);
}

void Shapes() {
    Bytes movie = MakeMovie();
    for (unsigned int i = 0; i < 500; ++i) {
        const auto shape = Make<VXSwfDefineShapeTag>(VXSwfTagFactory::TAG_DEFINESHAPE);
        shape->SetCharacterId(static_cast<unsigned short>(1 + i));
        shape->SetBounds({0, 0, 400, 400}, 0);
        shape->SetFillStyle(VXFlintFillStyle());
        shape->StartPath(0, 0, 0);
        for (unsigned int edge = 0; edge < 58; ++edge) {
            const VXReal x = (i + 37 * edge) % 400;
            const VXReal y = (i + 53 * edge) % 400;
            if (edge % 2 == 0) {
                shape->AddStraightEdge(0, 0, x, y);
            } else {
                shape->AddCurvedEdge(0, 0, y, x, x, y);
            }
        }
        shape->EndShape();
        VXBitStream dumped;
        Require(shape->DumpToStream(dumped) == kVXSuccess);
        movie.insert(movie.end(), dumped.GetBuffer(), dumped.GetBuffer() + dumped.GetSize());
    }
    LoadAndDump(movie);
}

void Strokes() {
    for (const VXStrokeStyleEnum stroke : {kVXStrokeSolid, kVXStrokeDashDot}) {
        const auto shape = Make<VXSwfDefineShapeTag>(VXSwfTagFactory::TAG_DEFINESHAPE4);
        shape->SetLineStyle(VXFlintRGB(), 2, 0, stroke, 0, kVXJoinRound);
        shape->StartPath(0, 0, 1);
        for (unsigned int i = 0; i < 2000; ++i) {
            const VXReal from = i % 2 == 0 ? 0 : 100;
            const VXReal to = 100 - from;
            shape->AddCurvedEdge(from, from, from, to, to, from, to, to);
            shape->AddStraightEdge(to, to, to, to + 1);
        }
        shape->EndShape();
        VXBitStream dumped;
        Require(shape->DumpToStream(dumped) == kVXSuccess);
    }
}

void Merge() {
    constexpr unsigned int kCharacters = 2500;
    Bytes bytes = MakeMovie();
    for (unsigned int id = 1; id <= kCharacters; ++id) {
        Bytes body;
        AppendWord(body, id);
        body.resize(22, 7);
        AppendTag(bytes, VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, body);
    }
    AppendPlacements(bytes, 4 * kCharacters, kCharacters);
    VXFlintFile source;
    Load(source, bytes);
    VXFlintFile target;
    target.IncludeShowFrameTags(1, -1);
    VXBucketSWFIDGenerator generator(target);
    Require(target.IncludeTagSetAsSprite(&source, 1, &generator, nullptr, 1, nullptr, 1, 1) != nullptr);
}

void Picture() {
    constexpr unsigned int kSide = 512;
    Bytes pixels;
    for (unsigned int y = 0; y < kSide; ++y) {
        for (unsigned int x = 0; x < kSide; ++x) {
            for (const unsigned int color : {x / 2, y / 2, x ^ y, 255u})
                pixels.push_back(static_cast<unsigned char>(color));
        }
    }
    CQuantizer quantizer;
    quantizer.AddPixels(pixels.data(), kSide * kSide);
    Require(!quantizer.MakePalette().empty());
    Bytes indices(kSide * kSide);
    quantizer.MapPixels(pixels.data(), kSide * kSide, indices.data());
}

struct FixedRun {
    const char* name;
    void (*run)();
};

constexpr FixedRun kRuns[] = {
    {"raw_tags", RawTags}, {"placements", Placements}, {"scripts", Scripts}, {"shapes", Shapes},
    {"strokes", Strokes},  {"merge", Merge},           {"picture", Picture},
};

}  // namespace

int main(int argc, char** argv) {
    for (const FixedRun& run : kRuns) {
        if (argc < 2) {
            std::puts(run.name);
        } else if (std::strcmp(argv[1], run.name) == 0) {
            run.run();
            return 0;
        }
    }
    return argc < 2 ? 0 : 1;
}
