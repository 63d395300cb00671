// Builds a movie from nothing: a card that is a button, a line of text, and what a click does.
//
//     build_movie OUT.swf
#include <vxswf.h>

#include <iostream>

int main(int argc, char** argv) {
    const VXTypeEngineSession engine;  // for the text
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    builder.SetBackground(VXFlintRGB(0x20, 0x60, 0xA0, 0, 0));

    const VXTextStyle style{.font = "DejaVu Sans", .size = 24, .color = VXFlintRGB(0xF4, 0xF1, 0xE8, 1, 255)};
    builder.Place(builder.DefineText("Click the card", style, VXTextAlign::kCenter, 320), 0, 20);
    auto& card = builder.Define<TAG_DEFINESHAPE3>();
    card.CreateRoundedRectangle(0, 0, 160, 120, VXFlintRGB(0xF4, 0xF1, 0xE8, 1, 255), 16);
    VXSwfDefineButton2Tag* button = builder.DefineButton(&card, &card, &card);
    builder.AddAction(button, VXActionWriter().CallMethod("_root", "nextFrame").Do(kVXActionPop));
    builder.Place(button, 80, 80);
    builder.Stop();
    builder.ShowFrame();
    builder.Place(builder.DefineText("Thank you", style, VXTextAlign::kCenter, 320), 0, 120);

    if (builder.Save(argc > 1 ? argv[1] : "first.swf") == kVXSuccess) return 0;
    std::cerr << builder.GetErrorText() << '\n';
    return 1;
}
