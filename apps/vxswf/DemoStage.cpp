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
    : m_Assets(assets), m_NumPages(numPages) {
    m_Movie.SetFlintVersion(kVersion);
    m_Movie.SetCompression(1);
    m_Movie.SetWidth(kWidth);
    m_Movie.SetHeight(kHeight);
    m_Movie.SetFrameRate(kFramesPerSecond);
    Add<VXSwfFileAttributesTag>(VXSwfTagFactory::TAG_FILEATTRIBUTES);
    Add<VXSwfEnableDebugger2Tag>(VXSwfTagFactory::TAG_ENABLEDEBUGGER2);
    Add<VXSwfSetBackgroundColorTag>(VXSwfTagFactory::TAG_SETBACKGROUNDCOLOR).SetRGBColor(Rgb(kPaper));

    VXSwfDefineShapeTag& rule = DefineShape();
    rule.CreateRectangle(0, 0, kWidth - 40, 1, Rgba(kNavy));
    m_Rule = &rule;
    auto& tile = Define<VXSwfDefineBitsLossless2Tag>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    VXIgnore(tile.CreateImage(MakeTile()));  // there are pixels
    m_Tile = &tile;
    m_Back = &DefineTurn("Back", kVXKeyPageUp, DemoScript().Do(kVXActionPreviousFrame));
    m_Next = &DefineTurn("Next", kVXKeyPageDown, DemoScript().Do(kVXActionNextFrame));
    m_First = &DefineTurn("First", kVXKeyPageDown, DemoScript().GoTo("page1"));
}

VXSwfDefineButton2Tag& DemoStage::DefineTurn(const char* text, unsigned int key, const DemoScript& script) {
    VXSwfDefineButton2Tag& button = DefineButton(text, kTurnWidth, kTurnHeight);
    AddAction(button, key, script);
    return button;
}

void DemoStage::BeginPage(const char* title) {
    for (const unsigned short depth : m_PageDepths) m_Movie.RemoveObject(depth, -1);
    m_PageDepths.clear();
    const unsigned int page = m_Movie.GetNumShowFrameTags() + 1;
    AddLabel("page" + std::to_string(page));
    AddScript(DemoScript().Do(kVXActionStop));
    Write(title, 20, 12, {.size = 24, .widest = 600, .color = kNavy});
    Place(*m_Rule, 20, 48);
    Place(*m_Rule, 20, 432);
    Write("Page " + std::to_string(page) + " of " + std::to_string(m_NumPages) +
              ". Page Up and Page Down turn the pages too.",
          20, 447, {.widest = 400});
    if (page > 1) Place(*m_Back, kWidth - 30 - 2 * kTurnWidth, kTurnTop);
    Place(page < m_NumPages ? *m_Next : *m_First, kWidth - 20 - kTurnWidth, kTurnTop);
}

void DemoStage::EndPage() {
    m_Movie.IncludeShowFrameTags(1, -1);
    m_Movie.SetFrameCount(static_cast<unsigned short>(m_Movie.GetNumShowFrameTags()));
}

void DemoStage::Finish() {
    for (const auto& [key, font] : m_Fonts) font->UpdateForGlyphFont();
    for (const Line& line : m_Lines) {
        auto unit = line.text.begin();
        unsigned int greatest = 0;
        for (VXSwfTextStyleChangeRecord& run : line.tag->m_TextRecords) {
            for (VXFlintGlyphEntry& glyph : run.m_GlyphEntries) {
                glyph.m_GlyphIndex = static_cast<unsigned int>(line.font->GetIndexOfChar(*unit++));
                greatest = std::max(greatest, glyph.m_GlyphIndex);
            }
        }
        line.tag->m_GlyphBits = static_cast<unsigned char>(VXBitStream::MinBits(greatest, 0));
    }
    m_Movie.AddFreeCharacterAtEnd();
}

VXString DemoStage::NameOf(const DemoTextStyle& style) const {
    return style.font == nullptr ? m_Assets.font : VXString(style.font);
}

VXSwfDefineFont2Tag& DemoStage::GetFont(const DemoTextStyle& style) {
    const VXString name = NameOf(style);
    // The manager answers for the first style of a name, so what it made is kept here.
    VXSwfDefineFont2Tag*& font = m_Fonts[{name.GetUTF8String(), style.isBold, style.isItalic}];
    if (font == nullptr) {
        font = VXFontPublishManager::GetDefineFontTag(name, style.isBold, style.isItalic, &m_Ids, &m_Movie,
                                                      true);
        VXIgnore(Add<VXSwfDefineFontNameTag>(VXSwfTagFactory::TAG_DEFINEFONTNAME)
                     .AddFontInfo(font->GetCharacterId(), name, ""));  // always good
    }
    return *font;
}

VXSwfDefineTextTag& DemoStage::DefineLine(const std::string& text, const DemoTextStyle& style) {
    constexpr double kEm = 1024;
    const VXString units(text.c_str());
    const VXString name = NameOf(style);
    VXSwfDefineFont2Tag& font = GetFont(style);
    auto instance = VXFontPublishManager::GetFontInstance(name, style.isBold != 0, style.isItalic != 0);
    int width = 0;
    for (const char16_t unit : units) {
        font.AddGlyphText(unit);
        width += VXFontPublishManager::CharWidth(unit, instance);
    }
    const auto size = static_cast<unsigned short>(
        std::min<double>(style.size, std::floor(style.widest * kEm / std::max(width, 1))));
    double twips = size * 20 / kEm;  // of a unit of the instance
    if (style.isMeasuredByLibrary) {
        instance = VXFontPublishManager::GetFontInstance(name, style.isBold != 0, style.isItalic != 0, size);
        twips = 20;
    }

    auto& tag = Define<VXSwfDefineTextTag>(style.alpha == 255 ? VXSwfTagFactory::TAG_DEFINETEXT
                                                              : VXSwfTagFactory::TAG_DEFINETEXT2);
    VXSwfTextStyleChangeRecord run;
    run.m_FontId = font.GetCharacterId();
    run.m_Color = style.alpha == 255 ? Rgb(style.color) : Rgba(style.color, style.alpha);
    run.m_XOffset = GlyphShift(size);
    run.m_YOffset = static_cast<unsigned short>(size * 20);
    run.m_TextHeight = size;
    run.m_ExtentY = size * 5 / 4;
    int x = 0;
    int greatest = 0;
    for (const char16_t unit : units) {
        const int advance =
            static_cast<int>(std::lround(VXFontPublishManager::CharWidth(unit, instance) * twips));
        run.m_GlyphEntries.push_back({0, advance});
        ++run.m_GlyphCount;
        greatest = std::max(greatest, advance);
        x += advance;
        if (!style.isMeasuredByLibrary) continue;
        run.m_Font = &font;
        run.m_Character = unit;
        tag.m_TextRecords.push_back(run);
        run.m_XOffset = static_cast<unsigned short>(GlyphShift(size) + x);
        run.m_GlyphEntries.clear();
        run.m_GlyphCount = 0;
    }
    if (!style.isMeasuredByLibrary) {
        tag.m_TextRecords.push_back(run);
        tag.m_AdvanceBits =
            static_cast<unsigned char>(VXBitStream::MinBits(static_cast<unsigned int>(greatest), 1));
        // Glyphs may reach beyond their advances.
        tag.m_Bounds.XMin = -size / 10.0;
        tag.m_Bounds.XMax = x / 20.0 + size / 10.0;
        tag.m_Bounds.YMax = size * 1.25;
    }
    m_Lines.push_back({&tag, &font, units});
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
    const VXSwfDefineTextTag& label =
        DefineLine(text, {.size = 14, .widest = width - 16.0, .color = 0xFFFFFF});
    unsigned short faces[3] = {};
    const unsigned int colors[] = {kBlue, kGreen, kRed};
    for (int i = 0; i < 3; ++i) {
        VXSwfDefineShapeTag& face = DefineShape();
        face.CreateRoundedRectangle(0, 0, width, height, Rgba(colors[i]), 8);
        faces[i] = face.GetCharacterId();
    }
    auto& button = Define<VXSwfDefineButton2Tag>(VXSwfTagFactory::TAG_DEFINEBUTTON2);
    button.CreateButtonRecord(1, 0, 0, 1, faces[0], 1);
    button.CreateButtonRecord(0, 1, 0, 0, faces[1], 1);
    button.CreateButtonRecord(0, 0, 1, 0, faces[2], 1);
    auto* record = new VXFlintButtonRecord;
    record->StateUp = record->StateOver = record->StateDown = 1;
    record->CharacterId = label.GetCharacterId();
    record->PlaceDepth = 2;
    record->Matrix.Translate((width - WidthOf(label)) / 2, (height - label.m_Bounds.YMax) / 2);
    button.AddButtonRecord(record);
    return button;
}

VXSwfDefineEditTextTag& DemoStage::DefineField(int width, int height) {
    if (m_FieldFont == nullptr) {
        auto& font = Define<VXSwfDefineFont2Tag>(VXSwfTagFactory::TAG_DEFINEFONT3);
        VXIgnore(font.CreateDeviceFont("_sans", 0, 0));  // always good
        m_FieldFont = &font;
    }
    auto& field = Define<VXSwfDefineEditTextTag>(VXSwfTagFactory::TAG_DEFINEEDITTEXT);
    field.SetRect(VXFlintRectangle(0, 0, width, height));
    field.SetFont(m_FieldFont->GetCharacterId());
    field.SetFontSize(16);
    field.SetColor(Rgba(kNavy));
    field.SetBorder(1);
    return field;
}

VXSwfDefineSpriteTag& DemoStage::GetBadge() {
    if (m_Badge != nullptr) return *m_Badge;
    VXSwfDefineShapeTag& tile = DefineShape();
    tile.CreateRoundedRectangle(-40, -28, 40, 28, Rgba(kAmber), 12);
    VXSwfDefineShapeTag& triangle = DefineShape();
    triangle.CreateTriangle(-20, 16, 0, -18, 20, 16, Rgba(kNavy));
    m_Badge = &Define<VXSwfDefineSpriteTag>(VXSwfTagFactory::TAG_DEFINESPRITE);
    m_Badge->PlaceObject(&tile, -1, "", 0, 0, 0, {});
    m_Badge->PlaceObject(&triangle, -1, "", 0, 0, 0, {});
    m_Badge->IncludeShowFrameTags(1, -1);
    return *m_Badge;
}

VXSwfDefineShapeTag& DemoStage::DefineChecks(int width, int height) {
    VXSwfDefineShapeTag& checks = DefineShape();
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

void DemoStage::AddScript(const DemoScript& script) {
    VXFlintActionRecords* actions = nullptr;
    Add<VXSwfDoActionTag>(VXSwfTagFactory::TAG_DOACTION).GetActionRecords(&actions);
    actions->Copy(script.GetActions(), 0);
}

void DemoStage::AddAction(VXSwfDefineButton2Tag& button, unsigned int key, const DemoScript& script) {
    auto* released = new VXFlintButtonCondAction;
    released->CondOverDownToOverUp = 1;
    released->Actions.Copy(script.GetActions(), 0);
    button.AddButtonAction(released);
    if (key == 0) return;
    auto* pressed = new VXFlintButtonCondAction;
    pressed->CondKeyPress = key;
    pressed->Actions.Copy(script.GetActions(), 0);
    button.AddButtonAction(pressed);
}

void DemoStage::AddLabel(const std::string& label) {
    // No class builds a label, so one is written and loaded.
    constexpr auto kType = VXSwfTagFactory::TAG_FRAMELABEL;
    VXBitStream bytes;
    VXIgnore(
        bytes.WriteWord(static_cast<unsigned short>(kType << 6 | (label.size() + 1))));  // memory takes all
    VXIgnore(bytes.WriteVXString(VXString(label.c_str())));
    bytes.SetPosition(0);
    VXIgnore(Add<VXSwfTag>(kType).LoadFromStream(bytes));
}
