// Loads and dumps of a movie that is all shapes, each in a process of its own, against `TagCopy`; and the
// drawing of a shape against that of its first half.

#include <memory>
#include <vector>

#include "support/MovieWork.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kNumShapes = 20000;
constexpr unsigned int kNumEdges = 58;

struct TagDeleter {
    void operator()(VXSwfTag* tag) const { VXSwfTagFactory::DeleteTag(tag); }
};
using Shape = std::unique_ptr<VXSwfDefineShapeTag, TagDeleter>;

Shape MakeShape(VXSwfTagFactory::enuTagType type) {
    return Shape(static_cast<VXSwfDefineShapeTag*>(VXSwfTagFactory::CreateTagOfType(type, 0, 0)));
}

void AppendShape(std::vector<unsigned char>& tags, VXSwfDefineShapeTag& shape) {
    VXBitStream dumped;
    Require(shape.DumpToStream(dumped) == kVXSuccess);
    tags.insert(tags.end(), dumped.GetBuffer(), dumped.GetBuffer() + dumped.GetSize());
}

/// 60 records each: a move, straight and curved edges by turns, and the end.
std::vector<unsigned char> MakeShapes() {
    std::vector<unsigned char> tags;
    for (unsigned int i = 0; i < kNumShapes; ++i) {
        const Shape shape = MakeShape(VXSwfTagFactory::TAG_DEFINESHAPE);
        shape->SetCharacterId(static_cast<unsigned short>(1 + i));
        shape->SetBounds({0, 0, 400, 400}, 0);
        shape->SetFillStyle(VXFlintFillStyle());
        shape->StartPath(0, 0, 0);
        for (unsigned int edge = 0; edge < kNumEdges; ++edge) {
            const VXReal x = (i + 37 * edge) % 400;
            const VXReal y = (i + 53 * edge) % 400;
            if (edge % 2 == 0) {
                shape->AddStraightEdge(0, 0, x, y);
            } else {
                shape->AddCurvedEdge(0, 0, y, x, x, y);
            }
        }
        shape->EndShape();
        AppendShape(tags, *shape);
    }
    return tags;
}

void Shapes(benchmark::State& state, From from, bool isDumped) {
    CompareWithCopy(state, MovieFile(MakeShapes), from, isDumped);
}

enum class Edges { kDashed, kCubic };

/// A path of edges that are all alike, to and fro.
Shape DrawShape(Edges edges, unsigned int numEdges) {
    Shape shape = MakeShape(VXSwfTagFactory::TAG_DEFINESHAPE4);
    const VXStrokeStyleEnum stroke = edges == Edges::kDashed ? kVXStrokeDashDot : kVXStrokeSolid;
    shape->SetLineStyle(VXFlintRGB(), 2, 0, stroke, 0, kVXJoinRound);
    shape->StartPath(0, 0, 1);
    for (unsigned int i = 0; i < numEdges; ++i) {
        const VXReal from = i % 2 == 0 ? 0 : 100;
        const VXReal to = 100 - from;
        if (edges == Edges::kDashed) {
            shape->AddStraightEdge(from, from, to, to);
        } else {
            shape->AddCurvedEdge(from, from, from, to, to, from, to, to);
        }
    }
    shape->EndShape();
    return shape;
}

void Drawing(benchmark::State& state, Edges edges) {
    const auto numEdges = static_cast<unsigned int>(state.range(0));
    const auto drawing = [edges](unsigned int count) {
        return [edges, count](ColdClock& clock) {
            clock.Start();
            const Shape shape = DrawShape(edges, count);
            clock.Stop();
        };
    };
    const MovieFile drawn([edges, numEdges] {
        std::vector<unsigned char> tag;
        AppendShape(tag, *DrawShape(edges, numEdges));
        return tag;
    });
    CompareCold(state, drawing(numEdges / 2), drawing(numEdges), drawn.GetSize());
}

}  // namespace

// The bounds: 20 to load and 35 to load and dump, with 22 times the movie in memory.
BENCHMARK_CAPTURE(Shapes, load, From::kFile, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Shapes, load_from_memory, From::kMemory, false)->Apply(ColdRuns);
BENCHMARK_CAPTURE(Shapes, load_and_dump, From::kFile, true)->Apply(ColdRuns);
// Twice the edges take twice the time: a ratio of 2.
BENCHMARK_CAPTURE(Drawing, dashed, Edges::kDashed)->Apply(ColdRuns)->Arg(100000);
BENCHMARK_CAPTURE(Drawing, cubic, Edges::kCubic)->Apply(ColdRuns)->Arg(100000);
