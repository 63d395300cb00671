#pragma once

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"
#include "memory/VXByteBlock.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"

/// What a button shows in some of its states.
///
///     ub[2] = 0, HasBlendMode ub[1], HasFilterList ub[1]
///     StateHitTest ub[1], StateDown ub[1], StateOver ub[1], StateUp ub[1]
///     CharacterId u16, PlaceDepth u16, Matrix, CxForm with alpha
///     filter list                                   when HasFilterList
///     BlendMode u8                                  when HasBlendMode
///
/// Filters are not understood, only measured, and carried as bytes, the count in front included.
class VXSWF_API VXFlintButtonRecord : public VXPooled {
public:
    /// The filter list cannot fail: what of it is there is kept.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// Takes every field of another record; the filter bytes are shared.
    void Set(const VXFlintButtonRecord& other) { *this = other; }

    unsigned int ReservedBits = 0;  ///< as loaded; written as 0
    short HasBlendMode = 0;
    short HasFilterList = 0;
    short StateHitTest = 0;
    short StateDown = 0;
    short StateOver = 0;
    short StateUp = 0;
    unsigned short CharacterId = 0;
    unsigned short PlaceDepth = 0xFFFF;
    VXFlintMatrix Matrix;
    VXFlintCxForm CxForm;
    VXByteBlock RawFilterList;
    unsigned char BlendMode = 0;
    short HasCxForm = 1;  ///< always 1 in this tag, since its records have the transform on the wire

private:
    void ReadFilterList(VXBitStream& in);
};
