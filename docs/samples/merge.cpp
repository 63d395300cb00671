// Merging: a whole movie as a sprite, and single characters.
//
//     merge INTO.swf FROM.swf OUT.swf
#include <map>

#include "expect.h"

namespace {

/// Without loss: what comes stays bytes, under new IDs where the old ones are taken.
bool CombineFiles(const char* into, const char* from, const char* to) {
    VXWholeMovie movie;
    VXMovieIO files;
    if (files.Load(movie, into) != kVXSuccess) return false;
    VXMovieCombiner combiner(movie);  // for any number of sources
    VXMovieCombiner::Options options;
    options.Name = "merged";
    options.Matrix.Translate(20.0, 10.0);
    if (files.Combine(combiner, from, options) != kVXSuccess) {
        std::cerr << files.GetErrorText() << '\n';
        return false;
    }
    return files.Save(movie, to) == kVXSuccess;
}

VXSwfDefineSpriteTag* MergeWhole(VXFlintFile& into, VXFlintFile& from) {
    // Both serve any number of merges into one movie: no ID and no script package comes twice.
    VXBucketSWFIDGenerator ids(into);
    std::map<VXString, VXSwfExportAssetsTag*> packages;

    VXSwfDefineSpriteTag* sprite = into.IncludeTagSetAsSprite(&from, 1, &ids, &packages, 1, nullptr, 0, 1);
    into.PlaceObject(sprite, 1, VXString("merged"), 20.0, 10.0, 1000, {});
    return sprite;
}

/// Brings one character, and whatever it needs, under new IDs. Null when there is none of that name.
VXSwfTag* MergeOne(VXFlintFile& into, VXFlintFile& from, const VXString& exportName) {
    const unsigned short id = from.FindSpriteIdByExportName(exportName);
    if (id == 0) return nullptr;
    VXBucketSWFIDGenerator ids(into);
    unsigned short unused = 0;
    return into.IncludeCharacter(&from, id, unused, &ids, 1);
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 4, "two movies and a place for the result are given");
    Expect(CombineFiles(argv[1], argv[2], argv[3]), "the movies are combined");
    VXFlintFile into;
    VXFlintFile from;
    VXMovieIO files;
    Expect(files.Load(into, argv[1]) == kVXSuccess && files.Load(from, argv[2]) == kVXSuccess,
           "the movies load");
    const unsigned int numFrom = from.GetNumTags();

    VXSwfDefineSpriteTag* sprite = MergeWhole(into, from);
    Expect(sprite->GetCharacterId() != 0 && sprite->GetNumTags() > 0, "the timeline is in the sprite");
    VXSwfTag* character = MergeOne(into, from, "blinker");
    Expect(character != nullptr && into.FindTagByID(character->GetCharacterId()) == character,
           "the copy is part of the movie");
    Expect(MergeOne(into, from, "nobody") == nullptr, "an unknown name brings nothing");
    Expect(from.GetNumTags() == numFrom, "the source stays as it is");

    Expect(files.Save(into, argv[3]) == kVXSuccess, "the movie can be saved");
    VXFlintFile loaded;
    Expect(files.Load(loaded, argv[3]) == kVXSuccess, "the movie loads");
    Expect(loaded.FindSpriteId("merged", nullptr) == sprite->GetCharacterId(), "the sprite is placed");
    return 0;
}
