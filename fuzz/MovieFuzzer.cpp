// Loads a movie in both parsing modes and takes it through everything that a host does with one it only reads and
// writes: descriptions, dumps, a second load, a copy, compression.

#include <cstdint>
#include <memory>
#include <typeinfo>

#include "Support.h"
#include "vxswf.h"

namespace {

// Each compressed dump goes through a temporary file.
constexpr std::size_t kLargestForCompression = 4096;

/// Asks every tag for what it tells of itself. Answers whether a dump that is loaded and dumped again must give the
/// same bytes: that holds for raw tags and for classes that lose nothing they wrote. It does not hold for a sprite
/// that a limit left raw, nor for classes that add a value to a field too narrow for it.
bool Visit(const VXSwfTagSet& set) {
    bool isStable = true;
    for (VXSwfTag* tag : set) {
        VXString text;
        tag->GetTextInfo(text);
        Require(!text.empty());
        tag->GetDataStream();
        tag->GetCharacterIdFromData();
        tag->GetReferencedID();
        const VXSwfTag& known = *tag;
        if (const auto* sprite = dynamic_cast<const VXSwfDefineSpriteTag*>(tag)) {
            isStable = Visit(*sprite) && isStable;
        } else if (typeid(known) == typeid(VXSwfTag)) {
            isStable = isStable && tag->GetTagType() != VXSwfTagFactory::TAG_DEFINESPRITE;
        } else {
            isStable = isStable && typeid(known) == typeid(VXSwfFileAttributesTag);
        }
    }
    return isStable;
}

/// A frame whose fields take 32 bits cannot say so in five.
bool FitsItsFields(const VXFlintRectangle& rectangle) {
    return VXFieldWidth(VXToTwips(rectangle.XMin), VXToTwips(rectangle.XMax), VXToTwips(rectangle.YMin),
                        VXToTwips(rectangle.YMax)) < 32;
}

void CheckCompression(VXFlintFile& file, VXBitStream& plain, unsigned int parsingMode, bool isStable) {
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    file.SetCompression(1);
    Require(file.DumpToStream(&target) == kVXSuccess);
    file.SetCompression(0);
    target.SetMode(IVXStream::kRead);
    VXFlintFile again;
    again.SetParsingMode(parsingMode);
    const VXErrorCodeEnum loaded = again.LoadFromStream(&target);
    if (!isStable) return;
    Require(loaded == kVXSuccess);
    again.SetCompression(0);
    VXBitStream dumped;
    Require(again.DumpToStream(dumped) == kVXSuccess);
    Require(AreEqual(dumped, plain));
}

void CheckMovie(const std::uint8_t* data, std::size_t size, unsigned int parsingMode) {
    VXBitStream in;
    in.LoadFromAllocedMem(data, static_cast<unsigned int>(size));
    VXFlintFile file;
    file.SetParsingMode(parsingMode);
    VXIgnore(file.LoadFromStream(in));  // what was loaded before a failure is a movie too
    // A signature that is not one stays in the header, and no load takes it back.
    const bool isMovie = size >= 3 && data[1] == 'W' && data[2] == 'S';
    const bool isStable = Visit(file) && isMovie && FitsItsFields(file.GetFrameRect());
    file.SetCompression(0);
    VXBitStream first;
    if (file.DumpToStream(first) != kVXSuccess) return;

    VXFlintFile again;
    again.SetParsingMode(parsingMode);
    first.SetPosition(0);
    const VXErrorCodeEnum loaded = again.LoadFromStream(first);
    VXBitStream second;
    const VXErrorCodeEnum dumped = again.DumpToStream(second);
    if (isStable) {
        Require(loaded == kVXSuccess && dumped == kVXSuccess);
        Require(AreEqual(first, second));
    }

    const std::unique_ptr<VXFlintFile> copy(file.Copy());
    VXBitStream copied;
    if (copy->DumpToStream(copied) == kVXSuccess && isStable && parsingMode == 0)
        Require(AreEqual(first, copied));

    if (parsingMode != 0 && size <= kLargestForCompression)
        CheckCompression(file, first, parsingMode, isStable);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    CheckMovie(data, size, 0);
    CheckMovie(data, size, 1);
    return 0;
}
