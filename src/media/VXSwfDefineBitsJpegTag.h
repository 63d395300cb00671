#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "memory/VXByteBlock.h"

/// A picture as finished JPEG bytes, with an alpha plane for type 35. Nothing checks that they are a JPEG.
///
///     type 21:  CharacterId u16, JPEG bytes
///     type 35:  CharacterId u16, length of the JPEG bytes u32, JPEG bytes
///               alpha plane as a zlib stream (RFC 1950)
///
/// Built by code only: in a loaded movie these types stay raw. Copies share the bytes.
class VXSWF_API VXSwfDefineBitsJpegTag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfDefineBitsJpegTag() override;

    /// Takes as many bytes as the whole stream has, from where it stands on. What does not come is zero, up
    /// to 16 MiB or twice what came; beyond that it is left out. 1 for null, which changes nothing.
    VXErrorCodeEnum SetJpegData(IVXStream* stream);
    /// Takes over an array made with `new[]`. 1 for null, which changes nothing.
    VXErrorCodeEnum SetJpegData(unsigned char* array, unsigned int length);
    /// Deflates a plane of one byte a pixel, which stays the caller's. A type 21 tag keeps it and does not
    /// write it. Null with 0 bytes gives the empty zlib stream; 1 for null with a size, which changes
    /// nothing.
    VXErrorCodeEnum SetAlphaData(const unsigned char* alpha, unsigned int size);

    const unsigned char* GetJpegData() const { return JpegData.GetBytes(); }
    unsigned int GetJpegDataSize() const { return JpegData.GetSize(); }
    /// The zlib stream.
    const unsigned char* GetAlphaData() const { return AlphaData.GetBytes(); }
    unsigned int GetAlphaDataSize() const { return AlphaData.GetSize(); }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineBitsJpegTag(enuTagType type);

    short IsJpeg3Tag() const;

    VXByteBlock JpegData;
    VXByteBlock AlphaData;
};
