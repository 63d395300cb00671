// The timeline: a sprite, placements and what can be said of them, labels, exports.
#include "expect.h"

namespace {

VXSwfDefineSpriteTag& AddSprite(VXMovieBuilder& builder) {
    builder.BeginSprite();
    // A sprite defines nothing itself: what it shows is defined by the movie, in front of it.
    auto& dot = builder.Define<TAG_DEFINESHAPE3>();
    dot.CreateRectangle(0, 0, 20, 20, VXFlintRGB(0x3A, 0x7C, 0xA5, 1, 255));
    const unsigned short depth = builder.Place(dot, 0, 0, "dot")->GetDepth();
    builder.ShowFrame();
    auto& move = builder.Add<TAG_PLACEOBJECT2>();  // the same object, moved: no character, and the flag
    VXFlintMatrix matrix;
    matrix.Translate(10.0, 0.0);
    move.SetMatrix(matrix);
    move.SetDepth(depth, 0);
    move.SetMoveFlag(1);
    builder.ShowFrame();
    return *builder.EndSprite();
}

void PlaceWithScript(VXMovieBuilder& builder, const VXSwfDefineSpriteTag& sprite) {
    const VXActionWriter script = VXActionWriter().CallMethod("this", "gotoAndStop", 1).Do(kVXActionPop);
    builder.AddEvent(builder.Place(sprite, 200, 40), &VXFlintClipEventFlags::ClipEventPress, script);
}

void PlaceWithShadow(VXMovieBuilder& builder, const VXSwfTag& character) {
    const VXColor dark(0x00202020);
    // Blur x and y in pixels, angle in degrees, distance in pixels, strength, inner, knockout, drawn, passes.
    auto* shadow = new VXFlintFilterShadow(dark, 4, 4, 45, 3, 255, false, false, true, 1);
    builder.Place(character, 40, 40, "shaded", 0, {shadow});  // takes the filter over
}

void PlaceTurnedAndFaded(VXMovieBuilder& builder, const VXSwfTag& character) {
    VXSwfPlaceObject2Tag* placement = builder.Place(character, 0.0, 0.0);
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
void AddProtection(VXFlintFile& movie) {
    const unsigned char protect[] = {0x00, 0x06};  // type 24, no bytes
    VXBitStream bytes;
    bytes.LoadFromAllocedMem(protect, sizeof protect);
    VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(TAG_PROTECT, 0, 0);
    VXIgnore(tag->LoadFromStream(bytes));  // the bytes are all there
    movie.IncludeTag(tag, -1);
}

void Export(VXMovieBuilder& builder, const VXSwfDefinitionTag& character, const VXString& name) {
    auto& exports = builder.Add<TAG_EXPORTASSETS>();
    if (exports.AddCharacterIdnName(character.GetCharacterId(), name) != kVXSuccess)
        return;  // the table is full
}

}  // namespace

int main() {
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    auto& sprite = AddSprite(builder);
    PlaceWithShadow(builder, sprite);
    PlaceTurnedAndFaded(builder, sprite);
    PlaceWithScript(builder, sprite);
    builder.AddLabel("start");
    AddProtection(movie);
    Export(builder, sprite, "blinker");

    VXFlintFile loaded;
    SaveAndLoad(builder, "stage.swf", loaded);
    Expect(loaded.FindSpriteIdByExportName("blinker") == 2, "the export is found by its name");
    const auto* copy = dynamic_cast<VXSwfDefineSpriteTag*>(loaded.FindTagByID(2));
    Expect(copy != nullptr && copy->GetNumShowFrameTags() == 2, "the sprite has two frames");
    auto place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_PLACEOBJECT3, 1);
    Expect(place != loaded.end(), "a placement with a filter is of type 70");
    auto label = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_FRAMELABEL, 1);
    Expect(label != loaded.end() && (*label)->GetTagLen() == 6, "the label is there");
    return 0;
}
