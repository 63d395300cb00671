// Loads a movie in both parsing modes and takes it through everything that a host does with one it only reads
// and writes: descriptions, dumps, a second load, a copy, compression.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <typeinfo>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

// Each compressed dump goes through a temporary file.
constexpr std::size_t kLargestForCompression = 4096;

/// Whether a field as wide as `bits` holds each of the four.
bool Fit(unsigned int bits, int a, int b, int c, int d) { return VXFieldWidth(a, b, c, d) <= bits; }

bool FitsItsFields(const VXFlintRectangle& rectangle) {
    return Fit(31, VXToTwips(rectangle.XMin), VXToTwips(rectangle.XMax), VXToTwips(rectangle.YMin),
               VXToTwips(rectangle.YMax));
}

bool FitsItsFields(const VXFlintMatrix& matrix) {
    return Fit(31, matrix.ScaleX, matrix.ScaleY, matrix.RotateSkew0, matrix.RotateSkew1) &&
           Fit(31, VXToTwips(matrix.TranslateX), VXToTwips(matrix.TranslateY), 0, 0);
}

bool FitsItsFields(const VXFlintCxForm& form) {
    return Fit(15, form.RedMultTerm, form.GreenMultTerm, form.BlueMultTerm, form.AlphaMultTerm) &&
           Fit(15, form.RedAddTerm, form.GreenAddTerm, form.BlueAddTerm, form.AlphaAddTerm);
}

bool IsAscii(const VXString& text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

bool AreAscii(const std::vector<VXString>& texts) { return std::all_of(texts.begin(), texts.end(), IsAscii); }

/// Whether a dump that is loaded and dumped again must give the same bytes: for raw tags and for classes that
/// lose nothing they wrote. A sprite that a limit left raw may be within the limit the next time, a text
/// outside ASCII gets shorter each time, a value in a field too narrow for it spoils what stands in front,
/// and clip actions go out in the form of version 6.
bool IsStable(const VXSwfTag& tag) {
    if (typeid(tag) == typeid(VXSwfTag)) return tag.GetTagType() != VXSwfTagFactory::TAG_DEFINESPRITE;
    if (typeid(tag) == typeid(VXSwfPlaceObject2Tag)) {
        const auto& placement = static_cast<const VXSwfPlaceObject2Tag&>(tag);
        return FitsItsFields(placement.GetMatrix()) && FitsItsFields(placement.GetCxForm()) &&
               IsAscii(placement.GetName()) && (placement.HasClipActions == 0 || tag.GetFLVersion() >= 6);
    }
    if (const auto* exports = dynamic_cast<const VXSwfExportAssetsTag*>(&tag))
        return AreAscii(exports->m_Names);
    if (const auto* symbols = dynamic_cast<const VXSwfSymbolClassTag*>(&tag))
        return AreAscii(symbols->m_Names);
    return typeid(tag) == typeid(VXSwfFileAttributesTag) || typeid(tag) == typeid(VXSwfPlaceObject3Tag) ||
           typeid(tag) == typeid(VXSwfRemoveObjectTag) || typeid(tag) == typeid(VXSwfDoActionTag) ||
           typeid(tag) == typeid(VXSwfDoInitActionTag) || typeid(tag) == typeid(VXSwfDefineButtonSoundTag);
}

/// Asks every tag for what it tells of itself. Answers whether all of them are stable.
bool Visit(const VXSwfTagSet& set) {
    bool isStable = true;
    for (VXSwfTag* tag : set) {
        VXString text;
        tag->GetTextInfo(text);
        Require(!text.empty());
        tag->GetDataStream();
        tag->GetCharacterIdFromData();
        tag->GetReferencedID();
        const auto* sprite = dynamic_cast<const VXSwfDefineSpriteTag*>(tag);
        isStable = (sprite != nullptr ? Visit(*sprite) : IsStable(*tag)) && isStable;
    }
    return isStable;
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

    CVXStreamReadWrite stream;
    stream.SetMode(IVXStream::kWrite);
    Require(file.DumpToStream(&stream) == kVXSuccess && stream.GetMemorySize() == first.GetSize());
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
