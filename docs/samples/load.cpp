// Loading: from a file and from memory, what failures mean, what a tag is, what lies inside sprites.
//
//     load IN.swf...
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "expect.h"

namespace {

bool LoadFile(VXFlintFile& movie, const char* path) {
    VXMovieIO files;
    if (files.Load(movie, path) == kVXSuccess) return true;
    std::cerr << files.GetErrorText() << '\n';  // the file, the place in it, the reason
    return false;
}

/// Stops a load when the user does.
bool LoadWithProgress(VXFlintFile& movie, const char* path, const bool& isCancelled) {
    VXMovieIO files;
    files.SetProgress([&](std::uint64_t done, std::uint64_t all) {
        std::cout << done << " of " << all << " bytes\n";
        return !isCancelled;
    });
    return files.Load(movie, path) == kVXSuccess;
}

bool LoadBytes(VXFlintFile& movie, const std::vector<unsigned char>& bytes) {
    CVXStreamReadWrite in(bytes.data(), bytes.size());  // copies them
    return movie.LoadFromStream(&in) == kVXSuccess;
}

bool LoadInPlace(VXFlintFile& movie, std::shared_ptr<const unsigned char[]> bytes, unsigned int size) {
    VXBitStream in;
    in.LoadFromSharedMem(std::move(bytes), size);
    return movie.LoadFromStream(in) == kVXSuccess;
}

void List(const VXSwfTagSet& set, const std::string& margin) {
    for (VXSwfTag* tag : set) {
        VXString text;
        tag->GetTextInfo(text);
        std::cout << margin << text.GetUTF8String() << ", " << tag->GetTagLen() << " bytes\n";
        if (const auto* sprite = dynamic_cast<const VXSwfDefineSpriteTag*>(tag))
            List(*sprite, margin + "    ");
    }
}

/// Bytes of the scripts of version 3, a type that loads raw.
unsigned int CountBytecode(const VXFlintFile& movie) {
    unsigned int size = 0;
    for (VXSwfTag* tag : movie) {
        if (tag->GetTagType() != VXSwfTagFactory::TAG_DOABC) continue;
        VXBitStream body = tag->GetDataStream();  // borrows what is there, whatever length the tag states
        unsigned int flags = 0;
        unsigned char unit = 1;
        VXErrorCodeEnum code = body.ReadDWord(flags);
        while (code == kVXSuccess && unit != 0) code = body.ReadByte(unit);  // a name, up to a NUL
        if (code == kVXSuccess) size += body.GetRemaining();
    }
    return size;
}

/// Nothing is parsed but what is asked for, so that all else comes out as it came in.
bool FadePlacements(const char* from, const char* to) {
    VXWholeMovie movie;
    VXMovieIO files;
    if (files.Load(movie, from) != kVXSuccess) return false;
    for (auto place = movie.begin(); place != movie.end(); ++place) {
        if ((*place)->GetTagType() != TAG_PLACEOBJECT2 || movie.Parse(place) != kVXSuccess) continue;
        dynamic_cast<VXSwfPlaceObject2Tag&>(**place).SetAlpha(128);
    }
    return files.Save(movie, to) == kVXSuccess;
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc > 1, "movies are given");
    for (int i = 1; i < argc; ++i) {
        VXFlintFile movie;
        Expect(LoadFile(movie, argv[i]), "the movie loads");
        List(movie, "");
        const bool hasBytecode = movie.FindNthTagOfType(VXSwfTagFactory::TAG_DOABC, 1) !=
                                 movie.end();  // four bytes, in scripts.swf
        Expect(CountBytecode(movie) == (hasBytecode ? 4u : 0u), "bytecode is what follows flags and name");
        Expect(FadePlacements(argv[i], "faded.swf"), "a movie of bytes is saved");
        VXFlintFile faded;
        Expect(LoadFile(faded, "faded.swf") && faded.GetNumTags() == movie.GetNumTags(), "tags are as many");
        VXFlintFile stopped;
        Expect(!LoadWithProgress(stopped, argv[i], true), "a load can be stopped");
    }

    VXFlintFile damaged;
    Expect(!LoadBytes(damaged, {'F', 'W', 'S', 9, 20, 0, 0, 0}), "a header that ends early is a failure");
    // A header, a rectangle of no size, and a tag (type 9) that ends before its length.
    VXFlintFile cut;
    Expect(LoadBytes(cut, {'F', 'W', 'S', 9, 20, 0, 0, 0, 0, 0, 24, 1, 0, 0x43, 0x02, 0xFF}),
           "a body that is cut short is none");
    VXFlintFile inPlace;
    const std::shared_ptr<const unsigned char[]> header(
        new unsigned char[]{'F', 'W', 'S', 9, 14, 0, 0, 0, 0, 0, 24, 1, 0});
    Expect(LoadInPlace(inPlace, header, 13), "a movie loads where it lies");
    Expect(cut.GetNumTags() == 1 && cut.GetFrameRate() == 24, "what is there was read");
    return 0;
}
