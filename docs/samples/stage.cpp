// The timeline: a sprite, placements and what can be said of them, labels, exports.
#include "kit.h"

namespace {

VXSwfDefineSpriteTag& AddSprite(VXFlintFile& movie, Ids& ids) {
    // A sprite defines nothing itself: what it shows is defined by the movie, in front of it.
    auto& dot = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE3);
    dot.CreateRectangle(0, 0, 20, 20, VXFlintRGB(0x3A, 0x7C, 0xA5, 1, 255));

    auto& sprite = Define<VXSwfDefineSpriteTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESPRITE);
    sprite.PlaceObject(&dot, -1, VXString("dot"), 0.0, 0.0, 1, {});
    sprite.IncludeShowFrameTags(1, -1);
    // The same object, moved: no character, and the flag.
    sprite.PlaceObject(0, -1, VXString(), 10.0, 0.0, 1, {})->SetMoveFlag(1);
    sprite.IncludeShowFrameTags(1, -1);
    return sprite;
}

void PlaceWithShadow(VXFlintFile& movie, VXSwfDefinitionTag& character) {
    const VXColor dark(0x00202020);
    // Blur x and y in pixels, angle in degrees, distance in pixels, strength, inner, knockout, drawn, passes.
    auto* shadow = new VXFlintFilterShadow(dark, 4, 4, 45, 3, 255, false, false, true, 1);
    movie.PlaceObject(&character, -1, VXString("shaded"), 40.0, 40.0, 0, {shadow});  // takes the filter over
}

void PlaceTurnedAndFaded(VXFlintFile& movie, VXSwfDefinitionTag& character) {
    VXSwfPlaceObject2Tag* placement = movie.PlaceObject(&character, -1, VXString(), 0.0, 0.0, 0, {});
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.Rotate(30.0);
    matrix.Translate(120.0, 40.0);
    placement->SetMatrix(matrix);
    VXFlintCxForm transform;
    transform.HasMultTerms = 1;
    transform.RedMultTerm = transform.GreenMultTerm = transform.BlueMultTerm = 256;  // 1.0
    transform.AlphaMultTerm = 128;
    placement->SetCxForm(&transform);
}

/// A tag without a class of its own is built from its bytes.
void AddLabel(VXFlintFile& movie) {
    const unsigned char label[] = {0xC6, 0x0A, 's', 't', 'a', 'r', 't', 0};  // type 43, 6 bytes
    VXBitStream bytes;
    bytes.LoadFromAllocedMem(label, sizeof label);
    VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_FRAMELABEL, 0, 0);
    VXIgnore(tag->LoadFromStream(bytes));  // the bytes are all there
    movie.IncludeTag(tag, -1);
}

void Export(VXFlintFile& movie, const VXSwfDefinitionTag& character, const VXString& name) {
    auto& exports = Add<VXSwfExportAssetsTag>(movie, VXSwfTagFactory::TAG_EXPORTASSETS);
    if (exports.AddCharacterIdnName(character.GetCharacterId(), name) != kVXSuccess)
        return;  // the table is full
}

}  // namespace

int main() {
    VXFlintFile movie;
    Ids ids;
    Begin(movie);
    auto& sprite = AddSprite(movie, ids);
    PlaceWithShadow(movie, sprite);
    PlaceTurnedAndFaded(movie, sprite);
    AddLabel(movie);
    Export(movie, sprite, "blinker");

    VXFlintFile loaded;
    Finish(movie, "stage.swf", loaded);
    Expect(loaded.FindSpriteIdByExportName("blinker") == 2, "the export is found by its name");
    const auto* copy = dynamic_cast<VXSwfDefineSpriteTag*>(loaded.FindTagByID(2));
    Expect(copy != nullptr && copy->GetNumShowFrameTags() == 2, "the sprite has two frames");
    auto place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_PLACEOBJECT3, 1);
    Expect(place != loaded.end(), "a placement with a filter is of type 70");
    auto label = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_FRAMELABEL, 1);
    Expect(label != loaded.end() && (*label)->GetTagLen() == 6, "the label is there");
    return 0;
}
