// Reads and builds shapes.
//
//     u8     what to do in the low two bits, the version of the shape in the next two, then flags
//     bytes  a body to read, or what to draw

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

constexpr int kMostSteps = 64;
constexpr std::size_t kMostEntries = 256;
/// Pixels. A dash every few of them, and every edge still fits its field.
constexpr double kFarthest = 500.0;

constexpr unsigned int kTypes[] = {VXSwfTagFactory::TAG_DEFINESHAPE, VXSwfTagFactory::TAG_DEFINESHAPE2,
                                   VXSwfTagFactory::TAG_DEFINESHAPE3, VXSwfTagFactory::TAG_DEFINESHAPE4};

void ReadTag(Input& input, unsigned int version) {
    VXBitStream body = input.Rest();
    ExerciseTag(*MakeTag(kTypes[version], 1), body, 8);
}

/// Styles and outlines by themselves, with flags that do not fit each other.
void ReadParts(Input& input, unsigned int flags) {
    const short isLine2 = (flags & 4) != 0, useAlpha = (flags & 8) != 0, is255Plus = (flags & 16) != 0;
    VXBitStream in = input.Rest();
    VXBitStream out;
    VXFlintFillStyleArray fills;
    fills.SetAlpha(useAlpha);
    fills.SetSupports255Plus(is255Plus);
    VXIgnore(fills.LoadFromStream(in));
    VXIgnore(fills.DumpToStream(out));
    VXFlintLineStyleArray lines;
    lines.SetAlpha(useAlpha);
    lines.SetSupports255Plus(is255Plus);
    lines.SetIsLineStyle2(isLine2);
    VXIgnore(lines.LoadFromStream(in));
    VXIgnore(lines.DumpToStream(out));
    VXFlintShape glyph;
    glyph.SetAlpha(useAlpha);
    VXIgnore(glyph.LoadFromStream(in));
    const VXFlintShape copy = glyph;
    VXIgnore(glyph.DumpToStream(out));
}

void BuildGlyph(Input& input) {
    std::vector<KVMPointType> kinds;
    std::vector<float> points;
    while (!input.IsEmpty() && kinds.size() < kMostEntries) {
        // One kind more than there are.
        kinds.push_back(static_cast<KVMPointType>(input.Byte() % 5));
        points.push_back(input.Real());
        points.push_back(input.Real());
    }
    VXFlintShape shape;
    shape.AddChangeToGlyphShape(0.0f, 0.0f, true);
    shape.CreateShapeFromPathData(static_cast<unsigned int>(kinds.size()), points.data(), kinds.data());
    shape.AddEndShapeRecord();
    VXBitStream out;
    Require(shape.DumpToStream(out) == kVXSuccess);
}

/// Draws with coordinates of any kind, except those that are merely far: their edges have dashes by the
/// million.
class Drawing {
public:
    Drawing(Input& input, unsigned int version)
        : m_Input(input), m_Version(version), m_Tag(MakeTag(kTypes[version], 0)) {}

    void Run(VXStrokeStyleEnum stroke) {
        auto* shape = dynamic_cast<VXSwfDefineShapeTag*>(m_Tag.get());
        Require(shape != nullptr);
        VXFlintFillStyle fill;
        fill.SetAlpha(shape->IsUseAlpha());
        shape->SetFillStyle(fill);
        const int width = m_Input.Byte();
        shape->SetLineStyle(VXFlintRGB(), width, 0, stroke, m_Input.Byte() & 1, kVXJoinMiter);
        for (int step = 0; step < kMostSteps && !m_Input.IsEmpty(); ++step) Draw(*shape);
        shape->EndPath();
        shape->EndShape();
        const auto bounds = Places<4>();
        shape->SetBounds(VXRect{bounds[0], bounds[1], bounds[2], bounds[3]}, 5);
        VXBitStream out;
        const VXErrorCodeEnum written = shape->DumpToStream(out);
        out.SetPosition(0);
        const TagPtr again = MakeTag(kTypes[m_Version], 1);
        const VXErrorCodeEnum loaded = again->LoadFromStream(out);
        // The lines are of the kind that the last version has, and only near places fit their fields.
        if (m_Version != 3 || !m_IsPlain) return;
        Require(written == kVXSuccess && loaded == kVXSuccess);
        VXBitStream second;
        Require(again->DumpToStream(second) == kVXSuccess);
        Require(AreEqual(out, second));
    }

private:
    VXReal Place() {
        const float value = m_Input.Real();
        if (std::isfinite(value) && std::fabs(value) < 1e30f) return std::fmod(VXReal{value}, kFarthest);
        m_IsPlain = false;
        return value;
    }

    template <std::size_t N>
    std::array<VXReal, N> Places() {
        std::array<VXReal, N> places;
        for (VXReal& place : places) place = Place();
        return places;
    }

    template <std::size_t N>
    std::array<int, N> Wholes() {
        std::array<int, N> numbers;
        for (int& number : numbers) number = static_cast<int>(m_Input.DWord());
        return numbers;
    }

    void Draw(VXSwfDefineShapeTag& shape) {
        // In arrays, since arguments are worked out in any order.
        switch (m_Input.Byte() % 8) {
            case 0: {
                const auto p = Places<2>();
                shape.StartPath(p[0], p[1], m_Input.Byte() & 1);
                break;
            }
            case 1: {
                const auto p = Places<2>();
                shape.AddStraightEdge(0.0, 0.0, p[0], p[1]);
                break;
            }
            case 2: {
                const auto p = Places<4>();
                shape.AddCurvedEdge(0.0, 0.0, p[0], p[1], p[2], p[3]);
                break;
            }
            case 3: {
                const auto p = Places<6>();
                shape.AddCurvedEdge(0.0, 0.0, p[0], p[1], p[2], p[3], p[4], p[5]);
                break;
            }
            case 4:
                shape.EndPath();
                break;
            case 5:
                shape.GetStrokePattern().SetOffset(m_Input.Real());
                shape.GetStrokePattern().SetCurIndex(Wholes<1>()[0]);
                break;
            case 6: {
                m_IsPlain = false;
                const auto n = Wholes<5>();
                shape.CreateRoundedRectangle(n[0], n[1], n[2], n[3], VXFlintRGB(), n[4]);
                shape.StartPath(0.0, 0.0, 1);  // the pen comes back from wherever it is
                break;
            }
            default: {
                m_IsPlain = false;
                const auto n = Wholes<6>();
                shape.CreateTriangle(n[0], n[1], n[2], n[3], n[4], n[5], VXFlintRGB());
                shape.CreateShapeForImage(1, n[5], n[4], n[3], n[2], n[1], n[0], 0);
                shape.StartPath(0.0, 0.0, 1);
            }
        }
    }

    Input& m_Input;
    unsigned int m_Version;
    TagPtr m_Tag;
    bool m_IsPlain = true;  // nothing was drawn that no field can hold
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int flags = input.Byte();
    const unsigned int version = flags >> 2 & 3u;
    switch (flags & 3u) {
        case 0:
            ReadTag(input, version);
            break;
        case 1:
            ReadParts(input, flags);
            break;
        case 2:
            BuildGlyph(input);
            break;
        default:
            Drawing(input, version).Run(static_cast<VXStrokeStyleEnum>(flags >> 4 & 7u));
    }
    return 0;
}
