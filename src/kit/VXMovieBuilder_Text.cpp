#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "kit/VXInstalledFonts.h"
#include "kit/VXMovieBuilder_p.h"
#include "text/VXFontPublishManager.h"

namespace {

constexpr double kEm = 1024;              // units of an instance
constexpr std::size_t kLongestRun = 255;  // glyphs
constexpr double kLineHeight = 1.25;      // of the greatest size in a line
constexpr int kFurthest = 29000;  // twips: places have 15 bits, and the glyphs stand apart from theirs

/// Glyphs stand a tenth of the em further left than their advances say.
int GlyphShift(unsigned short size) { return size * 2; }

/// Measures characters of a style.
class Ruler {
public:
    explicit Ruler(const VXTextStyle& style)
        : m_Instance(VXFontPublishManager::GetFontInstance(style.font, style.isBold, style.isItalic)),
          m_TwipsPerUnit(style.size * 20 / kEm) {}
    int Measure(char16_t unit) {
        return static_cast<int>(
            std::lround(VXFontPublishManager::CharWidth(unit, m_Instance) * m_TwipsPerUnit));
    }

private:
    BND_NT_NMT::CTYFontInstance m_Instance;
    double m_TwipsPerUnit;
};

/// A part of a line in one style.
struct Piece {
    const VXTextStyle* style;
    VXSwfDefineFont2Tag* font;
    VXString text;
    std::vector<int> advances;
};

struct Line {
    std::vector<Piece> pieces;
    std::int64_t width = 0;   // twips
    unsigned short size = 0;  // the greatest
};

std::string NamesOf(const std::vector<VXString>& names) {
    std::string text;
    for (const VXString& name : names) text += (text.empty() ? "\"" : ", \"") + name.GetUTF8String() + '"';
    return text;
}

bool IsClear(const VXTextStyle& style) { return style.color.UseAlpha != 0 && style.color.Alpha != 255; }

}  // namespace

double VXMovieBuilder::MeasureText(const VXString& text, const VXTextStyle& style) {
    Ruler ruler(style);
    double twips = 0;
    for (const char16_t unit : text) twips += ruler.Measure(unit);
    return twips / 20;
}

VXSwfDefineFont2Tag* VXMovieBuilder::GetFont(const VXTextStyle& style) {
    constexpr unsigned int kNumNearest = 3;
    VXSwfDefineFont2Tag*& font = m_Fonts[{style.font, style.isBold, style.isItalic}];
    if (font != nullptr) return font;
    if (!VXInstalledFonts::Has(style.font)) {
        const std::string nearest = NamesOf(VXInstalledFonts::FindNearest(style.font, kNumNearest));
        Fail("no font \"" + style.font.GetUTF8String() + "\" is installed; " +
             (nearest.empty() ? "there are none, or no VXTypeEngineSession was begun"
                              : "the nearest are " + nearest));
        return nullptr;
    }
    // Not one that other movies of this process share.
    font = VXFontPublishManager::GetTemporaryDefineFontTag(style.font, style.isBold ? 1 : 0,
                                                           style.isItalic ? 1 : 0, &m_Ids);
    m_Movie.IncludeTag(font, -1);
    auto* settings = VXCreateTag<TAG_CSMTEXTSETTINGS>();
    settings->m_TextId = font->GetCharacterId();
    m_Movie.IncludeTag(settings, -1);
    auto* name = VXCreateTag<TAG_DEFINEFONTNAME>();
    VXIgnore(name->AddFontInfo(font->GetCharacterId(), style.font, ""));  // always good
    m_Movie.IncludeTag(name, -1);
    return font;
}

VXSwfDefineTextTag* VXMovieBuilder::DefineText(const std::vector<VXTextRun>& runs, VXTextAlign align,
                                               double width) {
    std::vector<Line> lines(1);
    for (const auto& [text, style] : runs) {
        VXSwfDefineFont2Tag* font = GetFont(style);
        if (font == nullptr) return nullptr;
        Ruler ruler(style);
        const auto begin = [&lines, font, &style = style] {
            lines.back().pieces.push_back({&style, font, {}, {}});
            lines.back().size = std::max(lines.back().size, style.size);
        };
        begin();
        for (const char16_t unit : text) {
            if (unit == u'\n') {
                lines.emplace_back();
                begin();
                continue;
            }
            if (lines.back().pieces.back().text.length() == kLongestRun) begin();
            Piece& piece = lines.back().pieces.back();
            font->AddGlyphText(unit);
            piece.text.push_back(unit);
            piece.advances.push_back(ruler.Measure(unit));
            lines.back().width += piece.advances.back();
        }
    }

    std::int64_t widest = 0;
    double height = 0;
    for (const Line& line : lines) {
        widest = std::max(widest, line.width);
        height += line.size * kLineHeight;
    }
    if (widest > kFurthest || std::max(width, height) * 20 > kFurthest) {
        Fail("a text is wider or higher than 1450 pixels");
        return nullptr;
    }
    const int room = static_cast<int>(width > 0 ? std::lround(width * 20) : widest);
    const bool hasAlpha =
        std::any_of(runs.begin(), runs.end(), [](const VXTextRun& run) { return IsClear(run.style); });
    auto& tag = hasAlpha ? Define<TAG_DEFINETEXT2>() : Define<TAG_DEFINETEXT>();
    Text known{&tag, {}};
    double top = 0;  // pixels
    int left = kFurthest;
    int right = -kFurthest;
    int greatest = 0;
    unsigned short size = 0;
    for (Line& line : lines) {
        const int slack = room - static_cast<int>(line.width);
        int x = align == VXTextAlign::kLeft ? 0 : align == VXTextAlign::kRight ? slack : slack / 2;
        const int baseline = static_cast<int>(std::lround((top + line.size) * 20));
        left = std::min(left, x);
        size = std::max(size, line.size);
        top += line.size * kLineHeight;
        for (Piece& piece : line.pieces) {
            if (piece.text.empty()) continue;
            VXSwfTextStyleChangeRecord run;
            run.m_FontId = piece.font->GetCharacterId();
            run.m_Color = piece.style->color;
            if (piece.style->color.UseAlpha == 0) run.m_Color.Alpha = 255;
            run.SetAlpha(hasAlpha ? 1 : 0);
            run.m_XOffset = static_cast<unsigned short>(GlyphShift(piece.style->size) + x);
            run.m_YOffset = static_cast<unsigned short>(baseline);
            run.m_TextHeight = piece.style->size;
            for (const int advance : piece.advances) {
                run.m_GlyphEntries.push_back({0, advance});
                greatest = std::max(greatest, advance);
                x += advance;
            }
            run.m_GlyphCount = static_cast<unsigned char>(piece.advances.size());
            tag.m_TextRecords.push_back(std::move(run));
            known.runs.push_back({piece.font, std::move(piece.text)});
        }
        right = std::max(right, x);
    }
    tag.m_AdvanceBits =
        static_cast<unsigned char>(VXBitStream::MinBits(static_cast<unsigned int>(greatest), 1));
    // Glyphs may reach beyond their advances.
    tag.m_Bounds.XMin = left / 20.0 - size / 10.0;
    tag.m_Bounds.XMax = right / 20.0 + size / 10.0;
    tag.m_Bounds.YMax = top;
    m_Texts.push_back(std::move(known));
    return &tag;
}

void VXMovieBuilder::SettleTexts() {
    for (const auto& [key, font] : m_Fonts) {
        if (font != nullptr) font->UpdateForGlyphFont();
    }
    for (const Text& text : m_Texts) {
        unsigned int greatest = 0;
        for (std::size_t i = 0; i < text.runs.size(); ++i) {
            const auto& [font, units] = text.runs[i];
            auto unit = units.begin();
            for (VXFlintGlyphEntry& glyph : text.tag->m_TextRecords[i].m_GlyphEntries) {
                glyph.m_GlyphIndex = static_cast<unsigned int>(font->GetIndexOfChar(*unit++));
                greatest = std::max(greatest, glyph.m_GlyphIndex);
            }
        }
        text.tag->m_GlyphBits = static_cast<unsigned char>(VXBitStream::MinBits(greatest, 0));
    }
}
