#include "DemoStage.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned char kVersion = 9;
constexpr unsigned short kFramesPerSecond = 12;
constexpr int kTurnWidth = 90;
constexpr int kTurnHeight = 28;
constexpr double kTurnTop = 440;
constexpr unsigned short kTileSide = 16;

/// Glyphs stand a tenth of the em further left than their advances say.
unsigned short GlyphShift(unsigned short size) { return static_cast<unsigned short>(size * 2); }

VXImage16BPP MakeTile() {
    std::vector<unsigned char> pixels;
    for (unsigned int i = 0; i < kTileSide * kTileSide; ++i) {
        const bool isDark = (i / 8 + i / kTileSide / 8) % 2 != 0;
        pixels.insert(pixels.end(), isDark ? std::initializer_list<unsigned char>{0x63, 0x18}
                                           : std::initializer_list<unsigned char>{0x77, 0xBD});
    }
    return VXImage16BPP(kTileSide, kTileSide, std::move(pixels));
}

}  // namespace

VXFlintRGB Rgb(unsigned int color) {
    return VXFlintRGB(static_cast<unsigned char>(color >> 16), static_cast<unsigned char>(color >> 8),
                      static_cast<unsigned char>(color), 0, 0);
}

VXFlintRGB Rgba(unsigned int color, unsigned char alpha) {
    VXFlintRGB rgba = Rgb(color);
    rgba.UseAlpha = 1;
    rgba.Alpha = alpha;
    return rgba;
}

VXFlintFillStyle SolidFill(unsigned int color, unsigned char alpha) {
    VXFlintFillStyle fill;
    fill.Color = Rgba(color, alpha);
    return fill;
}

DemoStage::DemoStage(const DemoAssets& assets, unsigned int numPages)
    : m_Assets(assets),
      m_NumPages(numPages),
      m_Builder(m_Movie, kWidth, kHeight, kFramesPerSecond, kVersion) {
    m_Builder.Add<TAG_ENABLEDEBUGGER2>();
    m_Builder.SetBackground(Rgb(kPaper));

    VXSwfDefineShapeTag& rule = m_Builder.Define<TAG_DEFINESHAPE3>();
    rule.CreateRectangle(0, 0, kWidth - 40, 1, Rgba(kNavy));
    m_Rule = &rule;
    auto& tile = m_Builder.Define<TAG_DEFINEBITSLOSSLESS2>();
    VXIgnore(tile.CreateImage(MakeTile()));  // there are pixels
    m_Tile = &tile;
    m_Back = &DefineTurn("Back", kVXKeyPageUp, VXActionWriter().Do(kVXActionPreviousFrame));
    m_Next = &DefineTurn("Next", kVXKeyPageDown, VXActionWriter().Do(kVXActionNextFrame));
    m_First = &DefineTurn("First", kVXKeyPageDown, VXActionWriter().GotoLabel("page1"));
}

VXSwfDefineButton2Tag& DemoStage::DefineTurn(const char* text, unsigned int key,
                                             const VXActionWriter& script) {
    VXSwfDefineButton2Tag& button = DefineButton(text, kTurnWidth, kTurnHeight);
    m_Builder.AddAction(&button, script, key);
    return button;
}

void DemoStage::BeginPage(const char* title) {
    for (const unsigned short depth : m_PageDepths) m_Movie.RemoveObject(depth, -1);
    m_PageDepths.clear();
    const unsigned int page = m_Movie.GetNumShowFrameTags() + 1;
    m_Builder.AddLabel(("page" + std::to_string(page)).c_str());
    m_Builder.Stop();
    Write(title, 20, 12, {.size = 24, .widest = 600, .color = kNavy});
    Place(*m_Rule, 20, 48);
    Place(*m_Rule, 20, 432);
    Write("Page " + std::to_string(page) + " of " + std::to_string(m_NumPages) +
              ". Page Up and Page Down turn the pages too.",
          20, 447, {.widest = 400});
    if (page > 1) Place(*m_Back, kWidth - 30 - 2 * kTurnWidth, kTurnTop);
    Place(page < m_NumPages ? *m_Next : *m_First, kWidth - 20 - kTurnWidth, kTurnTop);
}

void DemoStage::EndPage() { m_Builder.ShowFrame(); }

void DemoStage::Finish() {
    VXIgnore(m_Builder.Finish());  // all that can be missing was checked
    for (VXSwfDefineTextTag* line : m_MeasuredLines) {
        for (VXSwfTextStyleChangeRecord& run : line->m_TextRecords) {
            run.m_GlyphEntries.front().m_GlyphIndex =
                static_cast<unsigned int>(run.m_Font->GetIndexOfChar(run.m_Character));
        }
    }
    m_Movie.AddFreeCharacterAtEnd();
}

VXTextStyle DemoStage::StyleOf(const std::string& text, const DemoTextStyle& style) const {
    constexpr unsigned short kEm = 1024;  // pixels: the exact widths
    VXTextStyle result{.font = style.font == nullptr ? m_Assets.font : VXString(style.font),
                       .size = kEm,
                       .isBold = style.isBold != 0,
                       .isItalic = style.isItalic != 0,
                       .color = Rgba(style.color, style.alpha)};
    const double width = VXMovieBuilder::MeasureText(text.c_str(), result);
    result.size = static_cast<unsigned short>(
        std::min<double>(style.size, std::floor(style.widest * kEm / std::max(width, 1.0))));
    return result;
}

VXSwfDefineTextTag& DemoStage::DefineLine(const std::string& text, const DemoTextStyle& style) {
    const VXTextStyle fitted = StyleOf(text, style);
    return style.isMeasuredByLibrary ? DefineMeasuredLine(text, fitted)
                                     : *m_Builder.DefineText(text.c_str(), fitted);
}

VXSwfDefineTextTag& DemoStage::DefineMeasuredLine(const std::string& text, const VXTextStyle& style) {
    VXSwfDefineFont2Tag& font = *m_Builder.GetFont(style);
    auto instance =
        VXFontPublishManager::GetFontInstance(style.font, style.isBold, style.isItalic, style.size);
    auto& tag = m_Builder.Define<TAG_DEFINETEXT>();
    VXSwfTextStyleChangeRecord run;
    run.m_Font = &font;
    run.m_FontId = font.GetCharacterId();
    run.m_Color = style.color;
    run.SetAlpha(0);
    run.m_XOffset = GlyphShift(style.size);
    run.m_YOffset = static_cast<unsigned short>(style.size * 20);
    run.m_TextHeight = style.size;
    run.m_ExtentY = style.size * 5 / 4;
    run.m_GlyphCount = 1;
    for (const char16_t unit : VXString(text.c_str())) {
        font.AddGlyphText(unit);
        const int advance = VXFontPublishManager::CharWidth(unit, instance) * 20;
        run.m_Character = unit;
        run.m_GlyphEntries = {{0, advance}};
        tag.m_TextRecords.push_back(run);
        run.m_XOffset = static_cast<unsigned short>(run.m_XOffset + advance);
    }
    m_MeasuredLines.push_back(&tag);
    return tag;
}

double DemoStage::WidthOf(const VXSwfDefineTextTag& line) {
    int twips = 0;
    for (const VXSwfTextStyleChangeRecord& run : line.m_TextRecords) {
        for (const VXFlintGlyphEntry& glyph : run.m_GlyphEntries) twips += glyph.m_GlyphAdvance;
    }
    return twips / 20.0;
}

VXSwfDefineButton2Tag& DemoStage::DefineButton(const char* text, int width, int height) {
    const VXTextStyle style = StyleOf(text, {.size = 14, .widest = width - 16.0, .color = 0xFFFFFF});
    return *m_Builder.DefineTextButton(text, style, width, height, Rgba(kBlue), Rgba(kGreen), Rgba(kRed));
}

VXSwfDefineEditTextTag& DemoStage::DefineField(int width, int height) {
    if (m_FieldFont == nullptr) {
        auto& font = m_Builder.Define<TAG_DEFINEFONT3>();
        VXIgnore(font.CreateDeviceFont("_sans", 0, 0));  // always good
        m_FieldFont = &font;
    }
    auto& field = m_Builder.Define<TAG_DEFINEEDITTEXT>();
    field.SetRect(VXFlintRectangle(0, 0, width, height));
    field.SetFont(m_FieldFont->GetCharacterId());
    field.SetFontSize(16);
    field.SetColor(Rgba(kNavy));
    field.SetBorder(1);
    return field;
}

VXSwfDefineSpriteTag& DemoStage::GetBadge() {
    if (m_Badge != nullptr) return *m_Badge;
    VXSwfDefineShapeTag& tile = m_Builder.Define<TAG_DEFINESHAPE3>();
    tile.CreateRoundedRectangle(-40, -28, 40, 28, Rgba(kAmber), 12);
    VXSwfDefineShapeTag& triangle = m_Builder.Define<TAG_DEFINESHAPE3>();
    triangle.CreateTriangle(-20, 16, 0, -18, 20, 16, Rgba(kNavy));
    m_Badge = &m_Builder.Define<TAG_DEFINESPRITE>();
    m_Badge->PlaceObject(&tile, -1, "", 0, 0, 0, {});
    m_Badge->PlaceObject(&triangle, -1, "", 0, 0, 0, {});
    m_Badge->IncludeShowFrameTags(1, -1);
    return *m_Badge;
}

VXSwfDefineShapeTag& DemoStage::DefineChecks(int width, int height) {
    VXSwfDefineShapeTag& checks = m_Builder.Define<TAG_DEFINESHAPE3>();
    checks.CreateShapeForImage(m_Tile->GetCharacterId(), 0, 0, kTileSide, kTileSide, width, height, 1);
    return checks;
}

VXSwfPlaceObject2Tag& DemoStage::Place(const VXSwfDefinitionTag& character, double x, double y,
                                       const std::vector<VXFlintFilter*>& filters, const char* name) {
    VXSwfPlaceObject2Tag* place = m_Movie.PlaceObject(character.GetCharacterId(), -1, name, x, y, 0, filters);
    m_PageDepths.push_back(place->GetDepth());
    return *place;
}

VXSwfPlaceObject2Tag& DemoStage::PlaceInCell(const VXSwfDefinitionTag& character, int column, int row,
                                             const std::string& caption,
                                             const std::vector<VXFlintFilter*>& filters, double dx,
                                             double dy) {
    Write(caption, CellLeft(column), CellTop(row) + kCellHeight + 8);
    return Place(character, CellLeft(column) + dx, CellTop(row) + dy, filters);
}
