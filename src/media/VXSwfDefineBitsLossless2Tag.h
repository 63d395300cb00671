#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "memory/VXByteBlock.h"
#include "platform/VXImage.h"

/// How a picture is kept. Only the first value is told from the rest.
enum VXBitmapQualityEnum : int {
    kVXBitmapQualityTrueColor = 0,
    kVXBitmapQualityPalette = 1,  ///< at most 256 colours
};

/// A picture without loss, or with a palette.
///
///     type 36:  CharacterId u16, BitmapFormat u8, BitmapWidth u16, BitmapHeight u16
///               BitmapColorTableSize u8                   colours less one, when BitmapFormat is 3
///               ZlibBitmapData                            a zlib stream (RFC 1950)
///
/// The block holds rows from the top, each padded with zeros to a multiple of four bytes:
///
///     format 3  the colours as red, green, blue and alpha u8 each, then one index byte a pixel
///     format 4  two bytes a pixel, the top bit of the first one clear
///     format 5  alpha u8, then each colour byte × alpha >> 8
///
/// Built by code only: in a loaded movie the type stays raw. Copies share the block.
class VXSWF_API VXSwfDefineBitsLossless2Tag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;
    /// Always under a long header.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfDefineBitsLossless2Tag() override;
    void GetTextInfo(VXString& text) override;

    /// Format 3 for the palette, else format 5. Always 0; a block of 4 GiB or more, and one without memory, is
    /// reported and missing afterwards. Of a picture wider or higher than 65535 pixels the part in the upper
    /// left goes in that the 16-bit sizes leave.
    ///
    /// Kept: colours of format 5 are multiplied and shifted, not divided by 255, so an opaque 255 becomes
    /// 254.
    VXErrorCodeEnum CreateImage(const VXImage& image, VXBitmapQualityEnum quality);
    /// Format 4. 1 for an image without pixels and for a block that cannot be made; sizes and format are set
    /// then, and the old block is gone.
    VXErrorCodeEnum CreateImage(const VXImage16BPP& image);

    unsigned int BitmapFormat = 6;  ///< 6 for none yet
    unsigned short BitmapWidth = 0;
    unsigned short BitmapHeight = 0;
    unsigned char BitmapColorTableSize = 0;

    const unsigned char* GetZlibBitmapData() const { return ZlibBitmapData.GetBytes(); }
    unsigned int GetZlibBitmapDataSize() const { return ZlibBitmapData.GetSize(); }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineBitsLossless2Tag(enuTagType type);

    void SetSize(unsigned int width, unsigned int height);
    void Deflate(const unsigned char* plain, unsigned int size);

    VXByteBlock ZlibBitmapData;
};
