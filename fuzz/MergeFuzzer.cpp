// Brings one movie into another in every way that a host has, then writes the result and reads it again.
//
//     u16    length of the first movie in the low 13 bits, and the flags below
//     bytes  the movie that takes the other in, then that other
//
// The same input must give the same movie, and the movie that was taken in must not have changed.

#include <cstdint>
#include <map>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

constexpr unsigned int kLengthMask = 0x1FFF;
constexpr unsigned int kIsItself = 0x2000;  // the movie takes itself in
constexpr unsigned int kHasOptions = 0x4000;
constexpr unsigned int kIsRaw = 0x8000;

void Load(VXFlintFile& movie, VXBitStream bytes, unsigned int flags) {
    movie.SetParsingMode((flags & kIsRaw) != 0 ? 1 : 0);
    VXIgnore(movie.LoadFromStream(bytes));  // what was loaded before a failure is a movie too
    movie.SetCompression(0);
}

VXErrorCodeEnum Dump(VXFlintFile& movie, VXBitStream& out) {
    const VXErrorCodeEnum result = movie.DumpToStream(out);
    out.SetPosition(0);
    return result;
}

/// The name that the first placement with one gives.
VXString FirstName(const VXSwfTagSet& set) {
    for (VXSwfTag* tag : set) {
        const auto* placement = dynamic_cast<const VXSwfPlaceObject2Tag*>(tag);
        if (placement != nullptr && placement->GetHasName() != 0) return placement->GetName();
    }
    return VXString();
}

unsigned short FirstCharacter(const VXSwfTagSet& set) {
    for (const VXSwfTag* tag : set) {
        if (tag->GetCharacterId() != 0) return tag->GetCharacterId();
    }
    return 0;
}

void TakeIn(VXFlintFile& movie, VXFlintFile& source, unsigned int flags) {
    const short option = (flags & kHasOptions) != 0 ? 1 : 0;
    // Names and IDs as they stand in the source, which may be the movie itself.
    const VXString name = FirstName(source);
    const unsigned short id = FirstCharacter(source);
    VXBucketSWFIDGenerator generator(movie);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    short hasFreeCharacter = 0;
    VXSwfDefineSpriteTag* sprite = movie.IncludeTagSetAsSprite(&source, option, &generator, &exports, option,
                                                               &hasFreeCharacter, option, option);
    Require(sprite != nullptr);

    unsigned short ignoredId = 0;
    // 0 asks for the first tag without an ID, which is a character when it is a sprite.
    VXSwfTag* character = movie.IncludeCharacter(&source, id, ignoredId, &generator, 1);
    Require(character == nullptr || id != 0 || dynamic_cast<VXSwfDefineSpriteTag*>(character) != nullptr);
    movie.IncludeSpriteByName(&source, name, &generator, 2);
    movie.FindSprite(name);
    movie.FindSpriteIdByExportName(name);

    const std::vector<VXFlintFilter*> noFilters;
    Require(movie.PlaceObject(sprite, 1, "sprite", 1.5, -20.0, 0, noFilters) != nullptr);
    Require(movie.PlaceAndRemoveObject(dynamic_cast<VXSwfDefinitionTag*>(character), 1, 2, name, 1e9, 0.0,
                                       0xFFFF) != nullptr);
    movie.AddFreeCharacterAtEnd();
}

/// Answers whether the movie could be written.
bool Merge(VXBitStream first, VXBitStream second, unsigned int flags, VXBitStream& out) {
    VXFlintFile movie;
    Load(movie, first, flags);
    if ((flags & kIsItself) != 0) {
        TakeIn(movie, movie, flags);
        return Dump(movie, out) == kVXSuccess;
    }
    VXFlintFile source;
    Load(source, second, flags);
    VXBitStream before;
    const VXErrorCodeEnum written = Dump(source, before);
    TakeIn(movie, source, flags);
    VXBitStream after;
    Require(Dump(source, after) == written);
    Require(AreEqual(before, after));
    return Dump(movie, out) == kVXSuccess;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int flags = input.Word();
    const VXBitStream first = input.Stream(flags & kLengthMask);
    const VXBitStream second = input.Rest();
    VXBitStream merged;
    VXBitStream again;
    const bool isWritten = Merge(first, second, flags, merged);
    Require(Merge(first, second, flags, again) == isWritten);
    Require(AreEqual(merged, again));

    VXFlintFile movie;
    Load(movie, merged, flags);
    VXBitStream out;
    VXIgnore(Dump(movie, out));  // a field that is too narrow for its value spoils what follows
    return 0;
}
