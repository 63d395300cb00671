#pragma once

#include <array>
#include <vector>

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintRGB.h"
#include "platform/VXExport.h"

/// One stop of a gradient: Ratio u8, Color VXFlintRGB. The ratio is the place of the stop, 0 at the start of
/// the gradient and 255 at its end.
class VXSWF_API VXFlintGradRecord {
public:
    VXFlintGradRecord() = default;
    VXFlintGradRecord(const VXFlintGradRecord&) = default;
    VXFlintGradRecord& operator=(const VXFlintGradRecord&) = default;
    virtual ~VXFlintGradRecord();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    unsigned char Ratio = 0;
    VXFlintRGB Color;
};

/// The colours that a gradient runs through, the format's GRADIENT:
///
///     SpreadMode ub[2], InterpolationMode ub[2], NumGradients ub[4]
///     NumGradients × VXFlintGradRecord
///
/// It stands behind a matrix, so on a byte, and aligns nothing itself. There is no operation that adds a
/// stop: a host appends to `GradientRecords` and keeps `NumGradients` equal to its size. Fields wider than on
/// the wire spoil the bits in front of them.
class VXSWF_API VXFlintGradient {
public:
    VXFlintGradient() = default;
    VXFlintGradient(const VXFlintGradient&) = default;
    VXFlintGradient(VXFlintGradient&&) noexcept = default;
    VXFlintGradient& operator=(const VXFlintGradient&) = default;
    VXFlintGradient& operator=(VXFlintGradient&&) noexcept = default;
    virtual ~VXFlintGradient();

    /// Appends the stops that were read whole.
    ///
    /// Kept: the stops that are there stay in front, and a dump writes the first `NumGradients` of them all.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Gives its `UseAlpha` to the colour of every stop that it writes. 1 when `NumGradients` runs past the
    /// list.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    /// Whether colours have an alpha byte: here and in every stop.
    void SetAlpha(short useAlpha);

    unsigned char SpreadMode = 0;
    unsigned char InterpolationMode = 0;
    unsigned char NumGradients = 0;
    short UseAlpha = 0;
    std::vector<VXFlintGradRecord> GradientRecords;
};

/// One stop of a gradient that changes shape; its colours always have an alpha byte:
///
///     StartRatio u8, StartColor VXFlintRGB, EndRatio u8, EndColor VXFlintRGB
class VXSWF_API VXFlintMorphGradRecord {
public:
    VXFlintMorphGradRecord() = default;
    VXFlintMorphGradRecord(const VXFlintMorphGradRecord&) = default;
    VXFlintMorphGradRecord& operator=(const VXFlintMorphGradRecord&) = default;
    virtual ~VXFlintMorphGradRecord();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);

    unsigned char StartRatio = 0;
    VXFlintRGB StartColor;
    unsigned char EndRatio = 0;
    VXFlintRGB EndColor;
};

/// The format's MORPHGRADIENT: NumRecords u8, NumRecords × VXFlintMorphGradRecord. Nothing in the library
/// reads one; it is here for hosts.
class VXSWF_API VXFlintMorphGradient {
public:
    VXFlintMorphGradient() = default;
    VXFlintMorphGradient(const VXFlintMorphGradient&) = default;
    VXFlintMorphGradient& operator=(const VXFlintMorphGradient&) = default;
    virtual ~VXFlintMorphGradient();

    /// 1 for more than eight records: the number is then stored and no record read.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);

    unsigned char NumRecords = 0;
    std::array<VXFlintMorphGradRecord, 8> Records;
};
