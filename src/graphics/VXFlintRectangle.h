#pragma once

#include "bitstream/VXBitStream.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// A rectangle, the format's RECT. Pixels in memory, twips on the wire:
///
///     Width ub[5], XMin sb[Width], XMax sb[Width], YMin sb[Width], YMax sb[Width]
///
/// It starts and ends on a byte. Nothing keeps `XMin` at or below `XMax`.
class VXSWF_API VXFlintRectangle {
public:
    VXFlintRectangle() = default;
    VXFlintRectangle(int left, int top, int right, int bottom);
    VXFlintRectangle(const VXFlintRectangle&) = default;
    VXFlintRectangle& operator=(const VXFlintRectangle&) = default;
    virtual ~VXFlintRectangle();

    /// Pixels.
    void Set(int left, int top, int right, int bottom);
    void Set(VXReal left, VXReal top, VXReal right, VXReal bottom);
    /// Pixels, truncated toward zero.
    int GetWidth() const;
    int GetHeight() const;

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    VXReal XMin = 0.0;
    VXReal XMax = 0.0;
    VXReal YMin = 0.0;
    VXReal YMax = 0.0;
};
