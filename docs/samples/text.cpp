// Text: glyphs of a font of this machine, laid out, and a field that the player lays out.
#include "kit.h"

namespace {

constexpr unsigned short kSize = 28;  // pixels

VXSwfDefineTextTag& AddLine(VXFlintFile& movie, Ids& ids, const VXString& fontName, const VXString& text) {
    // One tag for all who ask for this font. It goes to the end of the movie when it is new.
    VXSwfDefineFont2Tag* font = VXFontPublishManager::GetDefineFontTag(fontName, 0, 0, &ids, &movie, true);
    for (const char16_t unit : text) font->AddGlyphText(unit);
    font->UpdateForGlyphFont();  // sorts the glyphs: what is added later moves the indices

    auto instance = VXFontPublishManager::GetFontInstance(fontName, false, false, float{kSize});
    auto& tag = Define<VXSwfDefineTextTag>(movie, ids, VXSwfTagFactory::TAG_DEFINETEXT);
    int x = 0;  // twips, of which a pixel has 20
    for (const char16_t unit : text) {
        const int advance = VXFontPublishManager::CharWidth(unit, instance) * 20;
        VXSwfTextStyleChangeRecord run;  // one character
        run.m_Font = font;
        run.m_FontId = font->GetCharacterId();
        run.m_Character = unit;
        run.m_GlyphCount = 1;
        run.m_GlyphEntries.push_back({static_cast<unsigned int>(font->GetIndexOfChar(unit)), advance});
        run.m_TextHeight = kSize;
        run.m_XOffset = static_cast<unsigned short>(x);
        run.m_YOffset = kSize * 20;     // of the baseline
        run.m_ExtentY = kSize * 4 / 3;  // the least bottom of the bounds, in pixels
        tag.m_TextRecords.push_back(run);
        x += advance;
    }
    return tag;
}

void AddField(VXFlintFile& movie, Ids& ids) {
    auto& font = Define<VXSwfDefineFont2Tag>(movie, ids, VXSwfTagFactory::TAG_DEFINEFONT3);
    VXIgnore(font.CreateDeviceFont("_sans", 0, 0));  // always good
    auto& field = Define<VXSwfDefineEditTextTag>(movie, ids, VXSwfTagFactory::TAG_DEFINEEDITTEXT);
    field.SetRect(VXFlintRectangle(0, 0, 200, 30));
    field.SetFont(font.GetCharacterId());
    field.SetFontSize(18);
    field.SetBorder(1);
    field.SetText("Type here");
    movie.PlaceObject(&field, -1, VXString("field"), 20.0, 100.0, 0, {});
}

}  // namespace

int main() {
    IVXComponent* component = GetSwfParserComponent();
    component->Startup();  // connects the type engine
    {
        VXFlintFile movie;
        Ids ids;
        Begin(movie);
        auto& line = AddLine(movie, ids, "DejaVu Sans", "Real outlines");
        movie.PlaceObject(&line, -1, VXString(), 20.0, 20.0, 0, {});
        AddField(movie, ids);

        VXFlintFile loaded;
        Finish(movie, "text.swf", loaded);  // fetches the outlines
        const auto* text = dynamic_cast<VXSwfDefineTextTag*>(loaded.FindTagByID(2));
        Expect(text != nullptr && text->m_TextRecords.size() == 13, "every character is a run");
        const auto* field = dynamic_cast<VXSwfDefineEditTextTag*>(loaded.FindTagByID(4));
        Expect(field != nullptr && field->m_InitialText == VXString("Type here"), "the field has its text");
    }
    component->Shutdown();
    return 0;
}
