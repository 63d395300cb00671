#include <map>

#include "Assets.h"
#include "DemoPages.h"

void AddDemoMerge(DemoStage& stage) {
    CVXStreamReadWrite bytes(kMovie.bytes, kMovie.size);
    VXFlintFile source;
    VXIgnore(source.LoadFromStream(&bytes));  // carried along, and loaded by the tests
    const int width = static_cast<int>(source.GetWidth());
    const int height = static_cast<int>(source.GetHeight());
    VXFlintFile& movie = stage.GetBuilder().GetMovie();

    stage.Write("A whole movie, as a sprite: its two frames go on.", 20, DemoStage::kTop, {.widest = 290});
    stage.Place(stage.DefineChecks(width, height), 20, 90);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    const VXSwfDefineSpriteTag* merged =
        movie.IncludeTagSetAsSprite(&source, 0, &stage.GetBuilder().GetIds(), &exports, 0, nullptr, 0, 1);
    stage.Place(*merged, 20, 90);

    // Of this page, which is the end of the movie: its ShowFrame is still to come.
    const unsigned int frame = movie.GetNumShowFrameTags() + 1;
    const auto* mover = dynamic_cast<VXSwfDefinitionTag*>(
        movie.IncludeSpriteByName(&source, "mover", &stage.GetBuilder().GetIds(), frame));
    stage.Write("Only the sprite that it calls mover.", 340, DemoStage::kTop, {.widest = 280});
    stage.Place(*mover, 340, 90);
    stage.Write("The same, half clear and twice as large.", 340, 200, {.widest = 280});
    VXSwfPlaceObject2Tag& large = stage.Place(*mover, 340, 226);
    large.Scale(1, 2, 1, 2);
    large.SetAlpha(128);
}
