#include <cmath>

#include "DemoPages.h"

namespace {

constexpr const char* kSecondFont = "DejaVu Serif";

/// Each line over a rule that is as long as its advances together.
void AddLines(DemoStage& stage) {
    const struct {
        const char* text;
        DemoTextStyle style;
    } lines[] = {
        {"Plain, 0123456789", {}},
        {"Bold, 0123456789", {.isBold = 1}},
        {"Italic, 0123456789", {.isItalic = 1}},
        {"Bold italic, 0123456789", {.isBold = 1, .isItalic = 1}},
        {"Half clear", {.color = kRed, .alpha = 128}},
        {"In whole pixels", {.isMeasuredByLibrary = true}},
        {"A second font", {.font = kSecondFont}},
    };
    double top = DemoStage::kTop;
    for (auto [text, style] : lines) {
        if (style.font != nullptr && !VXInstalledFonts::Has(style.font)) continue;
        style.size = 24;
        style.widest = 360;
        const VXSwfDefineTextTag& line = stage.DefineLine(text, style);
        stage.Place(line, 20, top);
        VXSwfDefineShapeTag& rule = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
        rule.CreateRectangle(0, 0, static_cast<int>(std::lround(DemoStage::WidthOf(line))), 2, Rgba(kAmber));
        stage.Place(rule, 20, top + 34);
        top += 52;
    }
}

void AddFields(DemoStage& stage) {
    constexpr int kWidth = 200;
    double top = DemoStage::kTop;
    const auto add = [&](const char* caption, int height) -> VXSwfDefineEditTextTag& {
        VXSwfDefineEditTextTag& field = stage.DefineField(kWidth, height);
        stage.Write(caption, 420, top, {.widest = kWidth});
        stage.Place(field, 420, top + 18);
        top += height + 42;
        return field;
    };
    add("A field to type in", 26).SetText("Type here");

    VXSwfDefineEditTextTag& password = add("A password of 8 characters at most", 26);
    password.SetPassword(1);
    password.SetMaxLength(8);
    password.m_HasMaxLength = 1;
    password.SetText("secret");

    VXSwfDefineEditTextTag& lines = add("Several lines, in the middle", 48);
    lines.SetMultiLine(1);
    lines.SetWordWrap(1);
    lines.m_HasLayout = 1;
    lines.m_Align = 2;
    lines.SetText("Words that do not fit go to the next line");

    VXSwfDefineEditTextTag& html = add("Marked up, and not to be changed", 26);
    html.SetHTMLRendering(1);
    html.SetReadOnly(1);
    html.SetNoSelect(1);
    html.SetText("<b>Bold</b>, <i>italic</i>, <u>underlined</u>");

    // Its glyphs stand to the left of where they should, so that a margin brings them back. The first line
    // lies an em lower than with another font.
    const char* text = "Embedded glyphs";
    VXSwfDefineFont2Tag& font =
        *stage.GetBuilder().GetFont({.font = stage.GetAssets().font});  // it is installed
    for (const char* unit = text; *unit != '\0'; ++unit) font.AddGlyphText(static_cast<unsigned char>(*unit));
    VXSwfDefineEditTextTag& embedded = add("In the movie's own font", 44);
    embedded.SetFont(font.GetCharacterId());
    embedded.m_UseOutlines = 1;
    embedded.SetReadOnly(1);
    embedded.m_HasLayout = 1;
    embedded.m_LeftMargin = 40;
    embedded.SetText(text);
}

}  // namespace

void AddDemoText(DemoStage& stage) {
    AddLines(stage);
    AddFields(stage);
}
