// Editing: change a header, change what is placed, insert, take out, copy, and write.
//
//     edit IN.swf OUT.swf
#include <iterator>
#include <memory>

#include "expect.h"

namespace {

void ChangeHeader(VXFlintFile& movie) {
    movie.SetFrameRate(30);
    movie.SetWidth(640);  // pixels, from an edge at 0
    movie.SetHeight(480);
    movie.SetCompression(1);
}

/// Moves whatever is placed under a name. Answers how many placements that were.
int MoveAll(VXFlintFile& movie, const VXString& name, double x, double y) {
    int count = 0;
    for (VXSwfTag* tag : movie) {
        auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(tag);
        if (placement == nullptr || placement->GetName() != name) continue;
        VXFlintMatrix matrix = placement->GetMatrix();
        matrix.TranslateX += x;
        matrix.TranslateY += y;
        placement->SetMatrix(matrix);
        ++count;
    }
    return count;
}

/// Takes every tag of a type out of the movie and deletes it.
void Remove(VXFlintFile& movie, VXSwfTagFactory::enuTagType type) {
    for (auto place = movie.begin(); place != movie.end();) {
        const auto next = std::next(place);
        if (*place != nullptr && (*place)->GetTagType() == type) movie.EraseAndDeleteTags(place, next);
        place = next;
    }
}

/// Puts a copy of a character behind it, under a new ID.
VXSwfTag* Duplicate(VXFlintFile& movie, unsigned short id) {
    for (auto place = movie.begin(); place != movie.end(); ++place) {
        if (*place == nullptr || (*place)->GetCharacterId() != id) continue;
        VXSwfTag* copy = (*place)->Copy();  // goes through the wire form; the caller owns it
        VXBucketSWFIDGenerator ids(movie);  // knows the IDs that are taken
        copy->SetCharacterId(ids.GetId(kVXSwfOrdinaryId));
        movie.IncludeTag(copy, std::next(place));  // now the movie does
        return copy;
    }
    return nullptr;
}

/// A tag that is taken out without being deleted belongs to whoever took it.
std::unique_ptr<VXSwfTag, void (*)(VXSwfTag*)> TakeFirst(VXFlintFile& movie,
                                                         VXSwfTagFactory::enuTagType type) {
    const auto place = movie.FindNthTagOfType(type, 1);
    VXSwfTag* tag = place == movie.end() ? nullptr : *place;
    if (tag != nullptr) movie.EraseTags(place, std::next(place));
    return {tag, &VXSwfTagFactory::DeleteTag};
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 3, "a movie and a place for the result are given");
    VXFlintFile movie;
    VXMovieIO files;
    Expect(files.Load(movie, argv[1]) == kVXSuccess, "the movie loads");
    const unsigned int numTags = movie.GetNumTags();

    ChangeHeader(movie);
    Expect(MoveAll(movie, "card", 5.0, 0.0) == 1, "the card is found by its name");
    const VXSwfTag* copy = Duplicate(movie, 1);
    Expect(copy != nullptr && movie.FindTagByID(copy->GetCharacterId()) == copy,
           "the copy has an ID of its own");
    Expect(movie.GetNumTags() == numTags + 1, "the movie has one tag more");
    Remove(movie, VXSwfTagFactory::TAG_FILEATTRIBUTES);
    Expect(TakeFirst(movie, VXSwfTagFactory::TAG_SHOWFRAME) != nullptr, "a tag can be taken out");
    Expect(movie.GetNumTags() == numTags - 1, "and two less");

    Expect(files.Save(movie, argv[2]) == kVXSuccess, "the movie can be saved");
    VXFlintFile loaded;
    Expect(files.Load(loaded, argv[2]) == kVXSuccess, "the movie loads");
    Expect(loaded.GetFrameRate() == 30 && loaded.GetWidth() == 640, "the header is new");
    const auto place = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_PLACEOBJECT2, 1);
    Expect(dynamic_cast<VXSwfPlaceObject2Tag&>(**place).GetMatrix().TranslateX == 25.0, "the card has moved");
    return 0;
}
