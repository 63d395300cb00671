// Makes pictures of pixels, and reads back what was made of them.
//
//     u8     what is made, by its place in kEncoders
//     u8     width, u8 height
//     u8     a number that the maker has its own use for
//     bytes  pixels, repeated as far as the size asks for; or bytes of a JPEG

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

using Bytes = std::vector<unsigned char>;

struct Picture {
    Bytes Pixels(std::size_t bytesPerPixel) const {
        Bytes pixels(std::size_t{width} * height * bytesPerPixel);
        for (std::size_t i = 0; i < pixels.size() && !bytes.empty(); ++i) pixels[i] = bytes[i % bytes.size()];
        return pixels;
    }

    unsigned int width;
    unsigned int height;
    unsigned int number;
    Bytes bytes;
};

template <typename Tag>
std::unique_ptr<Tag, void (*)(VXSwfTag*)> Make(unsigned int type) {
    auto* tag = dynamic_cast<Tag*>(MakeTag(type, 0).release());
    Require(tag != nullptr);
    return {tag, &VXSwfTagFactory::DeleteTag};
}

/// What a zlib stream holds, which must be `size` bytes.
Bytes Inflate(const unsigned char* data, unsigned int dataSize, std::size_t size) {
    constexpr unsigned int kHeader = 8;
    VXBitStream stream;
    Bytes header(kHeader);
    Require(stream.Write(header.data(), kHeader) == kVXSuccess);
    Require(stream.Write(data, dataSize) == kVXSuccess);
    Require(stream.UnCompress(kHeader, static_cast<unsigned int>(size + kHeader)) != 0);
    Require(stream.GetSize() == size + kHeader);
    return Bytes(stream.GetBuffer() + kHeader, stream.GetBuffer() + stream.GetSize());
}

/// The body that a dump writes behind a long header.
Bytes BodyOf(VXSwfTag& tag) {
    tag.SetIsLongTag(1);
    VXBitStream out;
    Require(DumpTwice(tag, out) == kVXSuccess);
    constexpr unsigned int kHeader = 6;
    Require(out.GetSize() >= kHeader);
    return Bytes(out.GetBuffer() + kHeader, out.GetBuffer() + out.GetSize());
}

constexpr std::size_t PaddedRow(std::size_t bytes) { return (bytes + 3) / 4 * 4; }

void EncodeTrueColor(const Picture& picture) {
    const Bytes pixels = picture.Pixels(4);
    const auto tag = Make<VXSwfDefineBitsLossless2Tag>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    Require(tag->CreateImage(VXImage(picture.width, picture.height, pixels), kVXBitmapQualityTrueColor) ==
            kVXSuccess);
    BodyOf(*tag);
    if (pixels.empty()) return;
    Require(tag->BitmapFormat == 5);
    const Bytes plain = Inflate(tag->GetZlibBitmapData(), tag->GetZlibBitmapDataSize(), pixels.size());
    for (std::size_t i = 0; i < plain.size(); i += 4) Require(plain[i] == pixels[i + 3]);
}

void EncodePalette(const Picture& picture) {
    const Bytes pixels = picture.Pixels(4);
    const auto tag = Make<VXSwfDefineBitsLossless2Tag>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    Require(tag->CreateImage(VXImage(picture.width, picture.height, pixels), kVXBitmapQualityPalette) ==
            kVXSuccess);
    BodyOf(*tag);
    if (pixels.empty()) return;
    Require(tag->BitmapFormat == 3);
    const std::size_t colors = tag->BitmapColorTableSize + std::size_t{1};
    const std::size_t row = PaddedRow(picture.width);
    const Bytes plain =
        Inflate(tag->GetZlibBitmapData(), tag->GetZlibBitmapDataSize(), colors * 4 + row * picture.height);
    for (std::size_t i = colors * 4; i < plain.size(); ++i) Require(plain[i] < colors);
}

void Encode16(const Picture& picture) {
    const Bytes pixels = picture.Pixels(2);
    const auto tag = Make<VXSwfDefineBitsLossless2Tag>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    const VXErrorCodeEnum result = tag->CreateImage(VXImage16BPP(picture.width, picture.height, pixels));
    BodyOf(*tag);
    Require((result == kVXSuccess) == !pixels.empty());
    if (pixels.empty()) return;
    const std::size_t row = PaddedRow(picture.width * std::size_t{2});
    const Bytes plain = Inflate(tag->GetZlibBitmapData(), tag->GetZlibBitmapDataSize(), row * picture.height);
    for (std::size_t y = 0; y < picture.height; ++y) {
        for (std::size_t x = 0; x < picture.width * std::size_t{2}; ++x) {
            const unsigned int mask = x % 2 == 0 ? 0x7F : 0xFF;
            Require(plain[y * row + x] == (pixels[y * picture.width * 2 + x] & mask));
        }
    }
}

/// Palettes of every size, where the library itself wants one of 256.
void Quantize(const Picture& picture) {
    const Bytes pixels = picture.Pixels(4);
    const unsigned int most = picture.number + 1;
    CQuantizer quantizer(most);
    const std::size_t count = pixels.size() / 4;
    const std::size_t first = count / 2;
    quantizer.AddPixels(pixels.data(), first);
    quantizer.AddPixels(pixels.data() + first * 4, count - first);
    const std::size_t colors = quantizer.MakePalette().size();
    Require(colors == quantizer.GetLeafCount() && colors <= std::max(most, 1u));
    Bytes indices(count);
    quantizer.MapPixels(pixels.data(), count, indices.data());
    for (const unsigned char index : indices) Require(index < std::max<std::size_t>(colors, 1));
}

void WrapJpeg(const Picture& picture) {
    const bool hasAlpha = picture.number % 2 != 0;
    const auto tag = Make<VXSwfDefineBitsJpegTag>(hasAlpha ? VXSwfTagFactory::TAG_DEFINEBITSJPEG3
                                                           : VXSwfTagFactory::TAG_DEFINEBITSJPEG2);
    const auto size = static_cast<unsigned int>(picture.bytes.size());
    if ((picture.number & 2) != 0) {
        auto array = std::make_unique<unsigned char[]>(size);
        std::copy(picture.bytes.begin(), picture.bytes.end(), array.get());
        Require(tag->SetJpegData(array.release(), size) == kVXSuccess);
    } else {
        CVXStreamReadWrite stream(picture.bytes.data(), size);
        stream.Seek(static_cast<int>(picture.number >> 2), kVXSeekFromStart);
        Require(tag->SetJpegData(&stream) == kVXSuccess);
    }
    Require(tag->GetJpegDataSize() == size);
    const Bytes alpha = picture.Pixels(1);
    Require(tag->SetAlphaData(alpha.data(), static_cast<unsigned int>(alpha.size())) == kVXSuccess ||
            alpha.empty());
    Bytes body = BodyOf(*tag);
    const std::size_t offset = hasAlpha ? 6 : 2;
    Require(body.size() >= offset + size);
    Require(size == 0 || std::memcmp(body.data() + offset, tag->GetJpegData(), size) == 0);
    if (!hasAlpha || alpha.empty()) return;
    body.erase(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(offset + size));
    Require(Inflate(body.data(), static_cast<unsigned int>(body.size()), alpha.size()) == alpha);
}

/// Pictures that share tables, which stand in front of them, come out of a merge with tables of their own.
void JoinTables(const Picture& picture) {
    VXFlintFile source;
    const std::size_t tablesSize = std::min<std::size_t>(picture.number, picture.bytes.size());
    const auto begin = picture.bytes.begin();
    const auto split = begin + static_cast<std::ptrdiff_t>(tablesSize);
    const auto append = [&source](unsigned int type, unsigned int id, Bytes::const_iterator from,
                                  Bytes::const_iterator to) {
        Bytes body(from, to);
        if (id != 0) body.insert(body.begin(), {static_cast<unsigned char>(id), 0});
        VXBitStream in;
        VXIgnore(in.WriteWord(static_cast<unsigned short>(type << 6 | 63)));
        VXIgnore(in.WriteDWord(static_cast<unsigned int>(body.size())));
        VXIgnore(in.Write(body.data(), static_cast<unsigned int>(body.size())));
        in.SetPosition(0);
        TagPtr tag = MakeTag(type, 1);
        VXIgnore(tag->LoadFromStream(in));  // 1 for a body without a byte
        source.AppendTag(tag.release());
    };
    if (picture.width % 4 != 0) append(VXSwfTagFactory::TAG_JPEGTABLES, 0, begin, split);
    for (unsigned int id = 1; id <= picture.height % 4 + 1; ++id) {
        append(VXSwfTagFactory::TAG_DEFINEBITS, id, split, picture.bytes.end());
    }
    VXFlintFile movie;
    VXBucketSWFIDGenerator generator(movie);
    std::map<VXString, VXSwfExportAssetsTag*> exports;
    Require(movie.IncludeTagSetAsSprite(&source, 1, &generator, &exports, 0, nullptr, 0, 1) != nullptr);
    unsigned int pictures = 0;
    for (VXSwfTag* tag : movie) {
        Require(tag->GetTagType() != VXSwfTagFactory::TAG_DEFINEBITS);
        Require(tag->GetTagType() != VXSwfTagFactory::TAG_JPEGTABLES);
        if (tag->GetTagType() == VXSwfTagFactory::TAG_DEFINEBITSJPEG2) ++pictures;
    }
    Require(pictures == picture.height % 4 + 1);
    VXBitStream out;
    Require(DumpTwice(movie, out) == kVXSuccess);
}

constexpr std::array kEncoders = {EncodeTrueColor, EncodePalette, Encode16, Quantize, WrapJpeg, JoinTables};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int which = input.Byte();
    Picture picture{input.Byte(), input.Byte(), input.Byte(), {}};
    VXBitStream rest = input.Rest();
    picture.bytes.assign(rest.GetBuffer(), rest.GetBuffer() + rest.GetSize());
    kEncoders[which % kEncoders.size()](picture);
    return 0;
}
