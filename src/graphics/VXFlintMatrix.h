#pragma once

#include "bitstream/VXBitStream.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// A placement, the format's MATRIX:
///
///     HasScale ub[1]
///     NScaleBits ub[5], ScaleX sb[NScaleBits], ScaleY sb[NScaleBits]                     when HasScale
///     HasRotate ub[1]
///     NRotateBits ub[5], RotateSkew0 sb[NRotateBits], RotateSkew1 sb[NRotateBits]        when HasRotate
///     NTranslateBits ub[5], TranslateX sb[NTranslateBits], TranslateY sb[NTranslateBits]
///
/// It starts and ends on a byte. Scale and skew are 16.16 numbers, 65536 for 1.0, in memory as on the wire;
/// the translation is in pixels in memory and in twips on the wire. The two flags go out as they stand,
/// whatever the values: the identity of `ToUnitMatrix` takes its scale pair along.
///
/// The three widths are a record of the last load, dump or change, and steer nothing. No value is checked: a
/// magnitude that takes more than 31 bits spoils the bits in front of its width.
class VXSWF_API VXFlintMatrix {
public:
    /// All zero, which goes out as one zero byte.
    VXFlintMatrix() = default;
    VXFlintMatrix(const VXFlintMatrix&) = default;
    VXFlintMatrix& operator=(const VXFlintMatrix&) = default;
    virtual ~VXFlintMatrix();

    /// Kept: without a scale pair both scales become the integer 1, not 65536.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Stores the width of each group that it writes.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    // What follows changes the matrix in place; an absent pair counts as the identity. The widths of what
    // changed become 32.

    void Set(const VXFlintMatrix& other) { *this = other; }
    /// Turns the translation too. Sets both flags.
    void Rotate(const VXReal& degrees);
    /// Pixels.
    void Translate(const VXReal& x, const VXReal& y);
    /// Sets `HasScale`; a clear `HasRotate` stays clear.
    ///
    /// Kept: the translation is cut to whole pixels, even by a factor of 1.
    void Scale(const VXReal& x, const VXReal& y);
    void Scale(const VXReal& factor) { Scale(factor, factor); }
    void ToUnitMatrix();

    short HasScale = 0;
    short HasRotate = 0;
    unsigned int NScaleBits = 0;
    int ScaleX = 0;
    int ScaleY = 0;
    unsigned int NRotateBits = 0;
    int RotateSkew0 = 0;
    int RotateSkew1 = 0;
    unsigned int NTranslateBits = 0;
    VXReal TranslateX = 0.0;
    VXReal TranslateY = 0.0;
};
