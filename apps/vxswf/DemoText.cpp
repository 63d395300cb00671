#include "DemoStage.h"

namespace {

constexpr unsigned short kSize = 28;  // pixels

struct Line {
    const char* text;
    const char* fontName;  // null for the one that was asked for
    short isBold;
    short isItalic;
};

constexpr Line kLines[] = {
    {"Plain text, 0 to 9", nullptr, 0, 0},
    {"Bold text", nullptr, 1, 0},
    {"Italic text", nullptr, 0, 1},
    {"A second font", "DejaVu Serif", 0, 0},
};

/// Lays a line out glyph by glyph and places it with its top at `y`.
void AddLine(DemoStage& stage, const VXString& fontName, const Line& line, double y) {
    const VXString text(line.text);
    VXSwfDefineFont2Tag* font = VXFontPublishManager::GetDefineFontTag(
        fontName, line.isBold, line.isItalic, &stage.GetIds(), &stage.GetMovie(), true);
    if (font == nullptr) return;
    for (const char16_t unit : text) font->AddGlyphText(unit);
    font->UpdateForGlyphFont();  // settles the order of the glyphs

    auto instance =
        VXFontPublishManager::GetFontInstance(fontName, line.isBold != 0, line.isItalic != 0, float{kSize});
    auto& tag = stage.Define<VXSwfDefineTextTag>(VXSwfTagFactory::TAG_DEFINETEXT);
    int x = 0;
    for (const char16_t unit : text) {
        const int advance = VXFontPublishManager::CharWidth(unit, instance) * 20;
        VXSwfTextStyleChangeRecord record;
        record.m_FontId = font->GetCharacterId();
        record.m_Color = VXFlintRGB(0x22, 0x22, 0x22, 0, 0);
        record.m_XOffset = static_cast<unsigned short>(x);
        record.m_YOffset = kSize * 20;
        record.m_TextHeight = kSize;
        record.m_ExtentY = kSize * 4 / 3;
        record.m_Font = font;
        record.m_Character = unit;
        record.m_GlyphCount = 1;
        record.m_GlyphEntries.push_back({static_cast<unsigned int>(font->GetIndexOfChar(unit)), advance});
        tag.m_TextRecords.push_back(record);
        x += advance;
    }
    stage.Place(tag, 60, y);
}

/// A field to type in, with a font of the player's.
void AddField(DemoStage& stage) {
    auto& font = stage.Define<VXSwfDefineFont2Tag>(VXSwfTagFactory::TAG_DEFINEFONT3);
    VXIgnore(font.CreateDeviceFont("_sans", 0, 0));  // always good
    auto& field = stage.Define<VXSwfDefineEditTextTag>(VXSwfTagFactory::TAG_DEFINEEDITTEXT);
    field.SetRect(VXFlintRectangle(0, 0, 200, 30));
    field.SetFont(font.GetCharacterId());
    field.SetFontSize(18);
    field.SetColor(VXFlintRGB(0x1D, 0x35, 0x57, 1, 255));
    field.SetBorder(1);
    field.SetText("Type here");
    stage.Place(field, 60, 300);
}

}  // namespace

void AddDemoText(DemoStage& stage, const VXString& fontName) {
    // A veil over the first frame.
    auto& veil = stage.Define<VXSwfDefineShapeTag>(VXSwfTagFactory::TAG_DEFINESHAPE3);
    veil.CreateRectangle(0, 0, 640, 400, VXFlintRGB(0xF4, 0xF1, 0xE8, 1, 0xE0));
    stage.Place(veil, 0, 0);
    double y = 50;
    for (const Line& line : kLines) {
        AddLine(stage, line.fontName == nullptr ? fontName : VXString(line.fontName), line, y);
        y += kSize * 1.6;
    }
    AddField(stage);
    stage.AddScript({DemoStage::kStop});
    stage.EndFrame();
}
