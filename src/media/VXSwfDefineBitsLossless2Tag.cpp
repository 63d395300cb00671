#include "media/VXSwfDefineBitsLossless2Tag.h"

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "media/CQuantizer.h"
#include "memory/VXPool.h"
#include "platform/VXAssert.h"

namespace {

constexpr unsigned int kPaletteFormat = 3;
constexpr unsigned int kFifteenBitFormat = 4;
constexpr unsigned int kTrueColorFormat = 5;

constexpr std::size_t kPixelSize = 4;
constexpr std::size_t kPixelSize16 = 2;

/// The uncompressed block, written from front to back. Without memory, and beyond what deflate takes, it has no
/// bytes, and that is reported as deflate reports its failures.
class Block {
public:
    Block(std::size_t stride, std::size_t height, std::size_t tableSize)
        : m_Padding((0 - stride) & 3), m_Size((stride + m_Padding) * std::uint64_t{height} + tableSize) {
        if (m_Size <= UINT_MAX) m_Bytes.reset(new (std::nothrow) unsigned char[m_Size]);
        m_Next = m_Bytes.get();
        if (m_Next != nullptr) {
            VXPool::PreferHugePages(m_Next, m_Size);
        } else {
            VXAssertFail("compress2 returned failure");
        }
    }

    explicit operator bool() const { return m_Bytes != nullptr; }
    const unsigned char* GetBytes() const { return m_Bytes.get(); }
    unsigned int GetSize() const { return static_cast<unsigned int>(m_Size); }
    /// Room for the next so many bytes.
    unsigned char* Take(std::size_t count) {
        unsigned char* room = m_Next;
        m_Next += count;
        return room;
    }
    void EndRow() { std::memset(Take(m_Padding), 0, m_Padding); }

private:
    std::size_t m_Padding;
    std::uint64_t m_Size;
    std::unique_ptr<unsigned char[]> m_Bytes;
    unsigned char* m_Next = nullptr;
};

static_assert(std::endian::native == std::endian::little, "pixels are taken as little-endian words");

/// Of each word the first and the third byte in one product, the second in another; of a product the upper
/// byte stays, one place further up, where the target has it behind alpha.
void PremultiplyRow(const unsigned char* pixels, std::size_t width, unsigned char* target) {
    for (std::size_t x = 0; x < width; ++x, pixels += kPixelSize, target += kPixelSize) {
        std::uint32_t pixel;
        std::memcpy(&pixel, pixels, sizeof pixel);
        const std::uint32_t alpha = pixel >> 24;
        const std::uint32_t outer = (pixel & 0x00FF00FFu) * alpha & 0xFF00FF00u;
        const std::uint32_t inner = (pixel & 0x0000FF00u) * alpha & 0x00FF0000u;
        const std::uint32_t product = alpha | outer | inner;
        std::memcpy(target, &product, sizeof product);
    }
}

}  // namespace

VXSwfDefineBitsLossless2Tag::VXSwfDefineBitsLossless2Tag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineBitsLossless2Tag::~VXSwfDefineBitsLossless2Tag() = default;

VXErrorCodeEnum VXSwfDefineBitsLossless2Tag::CreateImage(const VXImage& image, VXBitmapQualityEnum quality) {
    SetSize(image.GetWidth(), image.GetHeight());
    ZlibBitmapData = VXByteBlock();
    const unsigned char* pixels = image.GetBuffer();
    // A picture of no size has nothing to read, and a block of nothing.
    static constexpr unsigned char kNoPixels = 0;
    if (pixels == nullptr && (BitmapWidth == 0 || BitmapHeight == 0)) pixels = &kNoPixels;
    const std::size_t sourceStride = std::size_t{image.GetWidth()} * kPixelSize;
    const auto rowAt = [=](std::size_t y) { return pixels + y * sourceStride; };
    CQuantizer quantizer;
    std::vector<CQuantizer::Color> palette;
    BitmapFormat = kTrueColorFormat;
    if (quality == kVXBitmapQualityPalette) {
        for (std::size_t y = 0; pixels != nullptr && y < BitmapHeight; ++y) {
            quantizer.AddPixels(rowAt(y), BitmapWidth);
        }
        palette = quantizer.MakePalette();
        BitmapColorTableSize = static_cast<unsigned char>(palette.size() - 1);
        BitmapFormat = kPaletteFormat;
    }
    if (pixels == nullptr) return kVXSuccess;
    const std::size_t tableSize = palette.size() * kPixelSize;
    Block block(palette.empty() ? BitmapWidth * kPixelSize : BitmapWidth, BitmapHeight, tableSize);
    if (!block) return kVXSuccess;
    for (const CQuantizer::Color& color : palette)
        std::memcpy(block.Take(kPixelSize), color.data(), kPixelSize);
    for (std::size_t y = 0; y < BitmapHeight; ++y) {
        if (palette.empty()) {
            PremultiplyRow(rowAt(y), BitmapWidth, block.Take(BitmapWidth * kPixelSize));
        } else {
            quantizer.MapPixels(rowAt(y), BitmapWidth, block.Take(BitmapWidth));
        }
        block.EndRow();
    }
    Deflate(block.GetBytes(), block.GetSize());
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineBitsLossless2Tag::CreateImage(const VXImage16BPP& image) {
    SetSize(image.GetWidth(), image.GetHeight());
    BitmapFormat = kFifteenBitFormat;
    ZlibBitmapData = VXByteBlock();
    const unsigned char* pixels = image.GetBuffer();
    if (pixels == nullptr) return kVXFailure;
    const std::size_t stride = BitmapWidth * kPixelSize16;
    Block block(stride, BitmapHeight, 0);
    if (!block) return kVXFailure;
    for (std::size_t y = 0; y < BitmapHeight; ++y) {
        unsigned char* row = block.Take(stride);
        std::memcpy(row, pixels + y * image.GetWidth() * kPixelSize16, stride);
        for (std::size_t x = 0; x < stride; x += kPixelSize16) row[x] &= 0x7F;
        block.EndRow();
    }
    Deflate(block.GetBytes(), block.GetSize());
    return kVXSuccess;
}

void VXSwfDefineBitsLossless2Tag::SetSize(unsigned int width, unsigned int height) {
    BitmapWidth = static_cast<unsigned short>(width);
    BitmapHeight = static_cast<unsigned short>(height);
}

void VXSwfDefineBitsLossless2Tag::Deflate(const unsigned char* plain, unsigned int size) {
    VXBitStream stream;
    stream.LoadFromAllocedMem(plain, size);
    unsigned char* deflated = nullptr;
    unsigned int length = 0;
    if (stream.Compress(0, 1, &deflated, &length) == 0) return;
    // The array has the length of the worst case; what stays has its own.
    const std::unique_ptr<unsigned char[]> owner(deflated);
    ZlibBitmapData = VXByteBlock::CopyOf(deflated, length);
}

VXErrorCodeEnum VXSwfDefineBitsLossless2Tag::DumpToStream(VXBitStream& out) {
    SetIsLongTag(1);
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteByte(static_cast<unsigned char>(BitmapFormat)));
        VX_RETURN_IF_FAILED(body.WriteWord(BitmapWidth));
        VX_RETURN_IF_FAILED(body.WriteWord(BitmapHeight));
        if (BitmapFormat == kPaletteFormat) VX_RETURN_IF_FAILED(body.WriteByte(BitmapColorTableSize));
        return body.Write(ZlibBitmapData.GetBytes(), ZlibBitmapData.GetSize());
    });
}

void VXSwfDefineBitsLossless2Tag::GetTextInfo(VXString& text) {
    VXSwfDefinitionTag::GetTextInfo(text);
    const char* format = "***Unknown";
    if (BitmapFormat == kPaletteFormat) format = "8Bit";
    if (BitmapFormat == kFifteenBitFormat) format = "15Bit";
    if (BitmapFormat == kTrueColorFormat) format = "24Bit";
    const std::string description = std::string(" - Format=") + format +                           //
                                    " - Width=" + std::to_string(BitmapWidth) +                    //
                                    " - Height=" + std::to_string(BitmapHeight) +                  //
                                    " - ColorTableSize=" + std::to_string(BitmapColorTableSize) +  //
                                    " - BitmapDataSize=" + std::to_string(ZlibBitmapData.GetSize());
    text += VXString(description.c_str());
}
