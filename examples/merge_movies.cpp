// Puts one movie into another as a sprite that plays from the first frame on.
//
//     merge_movies INTO.swf FROM.swf OUT.swf

#include <iostream>
#include <map>

#include "vxswf.h"

namespace {

bool Load(const char* path, VXFlintFile& movie) {
    CVXStreamReadWrite in(path, CVXStreamReadWrite::kOpenExisting);
    const VXErrorCodeEnum result = movie.LoadFromStream(&in);
    if (result != kVXSuccess) std::cerr << path << " does not load: " << result << '\n';
    return result == kVXSuccess;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: merge_movies INTO.swf FROM.swf OUT.swf\n";
        return 2;
    }
    VXFlintFile into;
    VXFlintFile from;
    if (!Load(argv[1], into) || !Load(argv[2], from)) return 1;

    // Both last over any number of merges: no character ID and no script package comes twice.
    VXBucketSWFIDGenerator generator(into);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    short hasFreeCharacter = 0;
    VXSwfDefineSpriteTag* sprite =
        into.IncludeTagSetAsSprite(&from, 1, &generator, &exports, 1, &hasFreeCharacter, 0, 1);
    // At (20, 10), above everything that the movie shows by depths below 1000.
    into.PlaceObject(sprite, 1, VXString("merged"), 20.0, 10.0, 1000, {});

    CVXStreamReadWrite out(argv[3], CVXStreamReadWrite::kCreateOrEmpty);
    out.SetMode(IVXStream::kWrite);
    if (const VXErrorCodeEnum result = into.DumpToStream(&out); result != kVXSuccess) {
        std::cerr << argv[3] << " cannot be written: " << result << '\n';
        return 1;
    }
    out.Flush();
    return out.GetStreamState() == kVXStreamFailed ? 1 : 0;
}
