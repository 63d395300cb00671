// A button: a character for each state, and what it does.
#include "kit.h"

namespace {

unsigned short AddFace(VXFlintFile& movie, Ids& ids, unsigned char red) {
    auto& face = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE3);
    face.CreateRoundedRectangle(0, 0, 120, 40, VXFlintRGB(red, 0x6F, 0x51, 1, 255), 12);
    return face.GetCharacterId();
}

void AddButton(VXFlintFile& movie, Ids& ids) {
    const unsigned short up = AddFace(movie, ids, 0xE7);
    const unsigned short over = AddFace(movie, ids, 0xF4);
    const unsigned short down = AddFace(movie, ids, 0x9C);

    auto& button = Define<VXSwfDefineButton2Tag>(movie, ids, VXSwfTagFactory::TAG_DEFINEBUTTON2);
    button.CreateButtonRecord(1, 0, 0, 1, up, 1);  // up, over, down, hit: the states that show it; depth
    button.CreateButtonRecord(0, 1, 0, 0, over, 1);
    button.CreateButtonRecord(0, 0, 1, 0, down, 1);

    auto* released = new VXFlintButtonCondAction;  // the button takes it over, as the list takes the action
    released->CondOverDownToOverUp = 1;
    released->Actions.PushActionRecord(new VXFlintActionRecord(kVXActionNextFrame));
    button.AddButtonAction(released);
    movie.PlaceObject(&button, -1, VXString("next"), 100.0, 100.0, 0, {});
}

}  // namespace

int main() {
    VXFlintFile movie;
    Ids ids;
    Begin(movie);
    AddButton(movie, ids);

    VXFlintFile loaded;
    Finish(movie, "buttons.swf", loaded);
    const auto* button = dynamic_cast<VXSwfDefineButton2Tag*>(loaded.FindTagByID(4));
    Expect(button != nullptr && button->ButtonRecords.size() == 3, "three states are drawn");
    Expect(button->ButtonActions.size() == 1 && button->ButtonActions[0]->Actions.size() == 1,
           "the action is there");
    return 0;
}
