#include <algorithm>
#include <cstddef>

#include "binding/BNDTypeEngine.h"
#include "graphics/VXTwips.h"
#include "shapes/VXPathWalk_p.h"
#include "text/VXFontPublishManager.h"
#include "text/VXSwfDefineFont2Tag.h"

using namespace BND_NT_NMT;

namespace {

constexpr float kUnitsPerEm = 1024.0f;
constexpr int kPathCapacity = 1024;

/// Keeps the low 16 bits of what 32 bits hold.
short Truncate16(VXReal value) { return static_cast<short>(VXTruncate(value)); }

bool HasOutline(char16_t c) { return c != u'\n' && c != u'\r' && c != u'\t'; }

/// Moves every point to the right. Answers what is then around all of them, controls included; empty around
/// none.
VXFlintRectangle Shift(unsigned int count, float* points, const KVMPointType* kinds, float distance) {
    VXFlintRectangle bounds;
    if (count == 0) return bounds;
    VXWalkPath(count, points, kinds, [distance](unsigned int, float* step, unsigned int numPoints) {
        for (unsigned int i = 0; i < numPoints; ++i) step[i * 2] += distance;
    });
    float left = points[0];
    float right = left;
    float top = points[1];
    float bottom = top;
    VXWalkPath(count, points, kinds, [&](unsigned int, const float* step, unsigned int numPoints) {
        for (const float* const end = step + numPoints * 2; step != end; step += 2) {
            left = std::min(left, step[0]);
            right = std::max(right, step[0]);
            top = std::min(top, step[1]);
            bottom = std::max(bottom, step[1]);
        }
    });
    bounds.Set(VXReal{left}, VXReal{top}, VXReal{right}, VXReal{bottom});
    return bounds;
}

/// Appends the outline of a character at 1024 units to the em, and stores its bounds. Both stay as they are
/// where there is no engine.
void AddOutline(VXFlintShape& shape, unsigned short c, float em, const CTYFontDict& font, VXString& fontName,
                CGFMSharedBezierPath& path, VXFlintRectangle& bounds) {
    VXFontPublishManager::GetTextOutlines(c, 1.0f, 1.0f, path, font, fontName);
    unsigned int count = 0;
    float* points = nullptr;
    KVMPointType* kinds = nullptr;
    GFMSharedBezierPathGetState(path, count, points, kinds);
    if (points == nullptr || kinds == nullptr) return;
    // Kept: every glyph stands a tenth of the em further left than the font has it.
    bounds = Shift(count, points, kinds, static_cast<float>(em * -0.1));
    shape.ShapeRecords.Records.reserve(count / 2 + 2);  // three entries make a curve, one a line
    shape.CreateShapeFromPathData(count, points, kinds);
}

}  // namespace

void VXSwfDefineFont2Tag::UpdateForGlyphFont() {
    std::sort(m_GlyphText.begin(), m_GlyphText.end());
    const auto end = std::unique(m_GlyphText.begin(), m_GlyphText.end());
    m_GlyphText.truncate(static_cast<std::size_t>(end - m_GlyphText.begin()));
    m_NumGlyphs = static_cast<unsigned short>(m_GlyphText.size());
}

void VXSwfDefineFont2Tag::FillDefineFont2Tables() {
    const std::size_t count = m_GlyphText.size();
    CTYFontInstance instance = VXFontPublishManager::GetFontInstance(m_FontName, m_Bold == 1, m_Italic == 1);
    const CTYFontDict font = TYFontInstanceGetFont(instance);
    const float em = TYFontInstanceGetMatrix(instance).d;
    float rise = 0.0f;
    float fall = 0.0f;
    float gap = 0.0f;
    TYFontDictGetHorizontalMetrics(font, rise, fall, gap);
    float unused = 0.0f;
    float leading = 0.0f;
    VXFontPublishManager::GetWinFontData(m_FontName, kUnitsPerEm, unused, leading);
    // Kept: the ascent is the whole em, whatever the font's own.
    m_Ascent = Truncate16(em);
    m_Descent = Truncate16(em * fall);
    m_Leading = Truncate16(leading);

    VXFlintRectangle bounds;
    bounds.XMax = kUnitsPerEm;
    bounds.YMax = m_Ascent + m_Descent + Truncate16(em * gap);
    m_GlyphShapes.clear();
    m_OffsetTable.clear();
    m_BoundsTable.clear();
    // Kept: codes and advances stay and grow, so a dump after the first has the old entries in front.
    m_GlyphShapes.reserve(count);
    m_OffsetTable.reserve(count);
    m_BoundsTable.reserve(count);
    unsigned int offset = GetOffsetTableSize(count);
    for (const char16_t c : m_GlyphText) {
        VXFlintShape& shape = m_GlyphShapes.emplace_back();
        shape.NumFillBits = 1;
        shape.ShapeRecords.NumFillBits = 1;
        shape.AddChangeToGlyphShape(0.0f, 0.0f, true);
        m_AdvanceTable.push_back(static_cast<short>(VXToTwips(VXFontPublishManager::CharWidth(c, instance))));
        m_CodeTable.push_back(c);
        CGFMSharedBezierPath path = GFMNewSharedBezierPath(kPathCapacity);
        if (HasOutline(c)) AddOutline(shape, c, em, font, m_FontName, path, bounds);
        shape.AddEndShapeRecord();
        m_OffsetTable.push_back(offset);
        offset += DumpShape(shape);
        // Kept: a tab or a line break has the bounds of the glyph before it.
        m_BoundsTable.push_back(bounds);
    }
}
