// Text: glyphs of a font of this machine, laid out, and a field that the player lays out.
#include "expect.h"

namespace {

void AddLines(VXMovieBuilder& builder, const VXString& font) {
    const VXTextStyle plain{.font = font, .size = 28};
    const VXTextStyle red{
        .font = font, .size = 28, .isBold = true, .color = VXFlintRGB(0xC4, 0x4E, 0x3A, 1, 255)};
    VXSwfDefineTextTag* text = builder.DefineText(
        {{"Real ", plain}, {"outlines", red}, {"\nof a font", plain}}, VXTextAlign::kCenter, 280);
    builder.Place(text, 20, 20);  // nothing when the font is missing
}

void AddField(VXMovieBuilder& builder) {
    auto& font = builder.Define<TAG_DEFINEFONT3>();
    VXIgnore(font.CreateDeviceFont("_sans", 0, 0));  // always good
    auto& field = builder.Define<TAG_DEFINEEDITTEXT>();
    field.SetRect(VXFlintRectangle(0, 0, 200, 30));
    field.SetFont(font.GetCharacterId());
    field.SetFontSize(18);
    field.SetBorder(1);
    field.SetText("Type here");
    builder.Place(field, 20.0, 100.0, "field");
}

}  // namespace

int main() {
    const VXTypeEngineSession engine;  // connects the type engine
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    AddLines(builder, "DejaVu Sans");
    AddField(builder);

    VXFlintFile loaded;
    SaveAndLoad(builder, "text.swf", loaded);  // fetches the outlines
    const auto* text = dynamic_cast<VXSwfDefineTextTag*>(loaded.FindTagByID(3));
    Expect(text != nullptr && text->m_TextRecords.size() == 3, "every style has a run");
    const auto* field = dynamic_cast<VXSwfDefineEditTextTag*>(loaded.FindTagByID(5));
    Expect(field != nullptr && field->m_InitialText == VXString("Type here"), "the field has its text");

    builder.DefineText("x", {.font = "No Such Font"});
    Expect(builder.GetErrorText().find("the nearest are") != std::string::npos, "a missing font is an error");
    return 0;
}
