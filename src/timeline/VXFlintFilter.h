#pragma once

#include <cstddef>

#include "bitstream/VXBitStream.h"
#include "memory/VXHeld.h"
#include "platform/IVXStream.h"
#include "platform/VXColor.h"
#include "platform/VXExport.h"

/// The first byte of a filter on the wire.
enum VXFlintFilterID : int {
    kVXFlintFilterShadow = 0,
};

/// A graphic effect of a placement, made by a host with `new` and handed to `VXSwfPlaceObject3Tag`, which
/// owns it from then on, along with every other tag that got it. Filters are written and never parsed: a
/// loaded placement keeps those bytes as they are.
class VXSWF_API VXFlintFilter {
public:
    explicit VXFlintFilter(const VXFlintFilterID& filterID) : FilterID(filterID) {}

    // The virtual operations stand in slot order.

    virtual ~VXFlintFilter();
    /// Writes the filter as it stands in a movie, its ID first.
    virtual VXErrorCodeEnum DumpToStream(VXBitStream& out) const = 0;
    /// The filter in a host's own stream, which has no ID in it. 1 for null, else 0, whatever the stream took
    /// or gave.
    virtual VXErrorCodeEnum WriteToStream(IVXStream* stream) = 0;
    virtual VXErrorCodeEnum ReadFromStream(IVXStream* stream) = 0;
    /// Bytes to set aside for the filter in a host's stream.
    virtual int GetStreamTransferSize() const = 0;

    VXFlintFilterID GetFilterID() const { return FilterID; }

    // In this library, so that a host built with another allocator may make what a tag deletes.
    static void* operator new(std::size_t size);
    static void operator delete(void* filter, std::size_t size) noexcept;

protected:
    VXFlintFilter(const VXFlintFilter&) = default;
    VXFlintFilter& operator=(const VXFlintFilter&) = default;

private:
    template <typename T>
    friend class VXHeld;

    VXFlintFilterID FilterID;
    VXHolderCount m_Holders;
};

/// A drop shadow.
///
///     ID u8 (0)
///     red u8, green u8, blue u8, alpha u8 (0xFF)
///     BlurX, BlurY 16.16, Angle 16.16 in radians, Distance 16.16
///     Strength u16
///     InnerShadow ub[1], Knockout ub[1], CompositeSource ub[1], Passes ub[5]
///
/// In a host's stream: the colour's word, the five numbers, the three booleans, `Passes`. Numbers there are
/// 32-bit integers.
class VXSWF_API VXFlintFilterShadow : public VXFlintFilter {
public:
    VXFlintFilterShadow();
    VXFlintFilterShadow(const VXColor& color, const int& blurX, const int& blurY, const int& angle,
                        const int& distance, const int& strength, const bool& innerShadow,
                        const bool& knockout, const bool& compositeSource, const int& passes);
    ~VXFlintFilterShadow() override;

    /// Kept: the colour's alpha goes out as 0xFF. `Strength` is cut to 16 bits, and a `Passes` of more than
    /// five spoils the flags in front of it.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const override;
    VXErrorCodeEnum WriteToStream(IVXStream* stream) override;
    /// What the stream does not give stays as it was.
    VXErrorCodeEnum ReadFromStream(IVXStream* stream) override;
    /// Kept: 38, though the transfers take 31 bytes in a plain stream.
    int GetStreamTransferSize() const override;

    VXColor Color{0};
    int BlurX = 3;  ///< pixels, as is `BlurY`
    int BlurY = 3;
    int Angle = 45;      ///< degrees
    int Distance = 10;   ///< pixels
    int Strength = 255;  ///< 8.8 on the wire, so that 256 is full strength
    bool InnerShadow = false;
    bool Knockout = false;
    bool CompositeSource = true;  ///< whether the object itself is drawn too
    int Passes = 1;

private:
    void TransferRest(IVXStream& stream);
};
