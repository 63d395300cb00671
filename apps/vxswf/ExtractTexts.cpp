#include "Extraction.h"

void ExtractText(const FramedTag& tag, Extraction& extraction) {
    const unsigned short id = tag.GetCharacterId();
    if (tag.type == 37) {
        const EditText text = ReadEditText(tag.body);
        Json item = {{"id", id}, {"variable", text.variable}, {"html", text.isHtml}};
        if (!text.text.empty()) extraction.SaveText("texts", extraction.StemOf(id), item, text.text);
    } else if (tag.type == 11 || tag.type == 33) {
        const std::string text = ReadStaticText(tag, extraction.fonts);
        if (!text.empty()) extraction.SaveText("texts", extraction.StemOf(id), {{"id", id}}, text);
    }
}

void ExtractFonts(Extraction& extraction) {
    for (const auto& [id, font] : extraction.fonts) {
        std::string characters;
        for (const unsigned short code : font.codes) AppendUtf8(characters, code);
        extraction.Add("fonts", {{"id", id},
                                 {"name", font.name},
                                 {"fullName", font.fullName},
                                 {"copyright", font.copyright},
                                 {"bold", font.isBold},
                                 {"italic", font.isItalic},
                                 {"glyphs", font.numGlyphs},
                                 {"characters", characters}});
    }
}
