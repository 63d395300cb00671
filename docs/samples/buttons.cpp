// A button: a character for each state, and what it does.
#include "expect.h"

namespace {

const VXSwfTag* AddFace(VXMovieBuilder& builder, unsigned char red) {
    auto& face = builder.Define<TAG_DEFINESHAPE3>();
    face.CreateRoundedRectangle(0, 0, 120, 40, VXFlintRGB(red, 0x6F, 0x51, 1, 255), 12);
    return &face;
}

void AddButton(VXMovieBuilder& builder) {
    const VXSwfTag* up = AddFace(builder, 0xE7);
    const VXSwfTag* over = AddFace(builder, 0xF4);
    const VXSwfTag* down = AddFace(builder, 0x9C);
    VXSwfDefineButton2Tag* button = builder.DefineButton(up, over, down);
    builder.AddAction(button, VXActionWriter().Do(kVXActionNextFrame), kVXKeyPageDown);
    builder.Place(button, 100, 100, "next");
}

}  // namespace

int main() {
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    AddButton(builder);

    VXFlintFile loaded;
    SaveAndLoad(builder, "buttons.swf", loaded);
    const auto* button = dynamic_cast<VXSwfDefineButton2Tag*>(loaded.FindTagByID(4));
    Expect(button != nullptr && button->ButtonRecords.size() == 3, "three states are drawn");
    Expect(button->ButtonActions.size() == 2 && button->ButtonActions[1]->CondKeyPress == kVXKeyPageDown,
           "a click and a key do it");
    return 0;
}
