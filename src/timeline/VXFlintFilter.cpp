#include "timeline/VXFlintFilter.h"

#include "memory/VXPool.h"

VXFlintFilter::~VXFlintFilter() = default;

void* VXFlintFilter::operator new(std::size_t size) { return VXPool::Allocate(size); }

void VXFlintFilter::operator delete(void* filter, std::size_t size) noexcept { VXPool::Free(filter, size); }

VXFlintFilterShadow::VXFlintFilterShadow() : VXFlintFilter(kVXFlintFilterShadow) {}

VXFlintFilterShadow::VXFlintFilterShadow(const VXColor& color, const int& blurX, const int& blurY,
                                         const int& angle, const int& distance, const int& strength,
                                         const bool& innerShadow, const bool& knockout,
                                         const bool& compositeSource, const int& passes)
    : VXFlintFilter(kVXFlintFilterShadow),
      Color(color),
      BlurX(blurX),
      BlurY(blurY),
      Angle(angle),
      Distance(distance),
      Strength(strength),
      InnerShadow(innerShadow),
      Knockout(knockout),
      CompositeSource(compositeSource),
      Passes(passes) {}

VXFlintFilterShadow::~VXFlintFilterShadow() = default;

VXErrorCodeEnum VXFlintFilterShadow::DumpToStream(VXBitStream& out) const {
    constexpr float kRadiansPerDegree = 0.017453292f;
    const float angle = static_cast<float>(Angle) * kRadiansPerDegree;
    const unsigned int color = Color.GetColorAsUI();
    VX_RETURN_IF_FAILED(out.WriteByte(static_cast<unsigned char>(GetFilterID())));
    VX_RETURN_IF_FAILED(out.WriteByte(static_cast<unsigned char>(color >> 16)));
    VX_RETURN_IF_FAILED(out.WriteByte(static_cast<unsigned char>(color >> 8)));
    VX_RETURN_IF_FAILED(out.WriteByte(static_cast<unsigned char>(color)));
    VX_RETURN_IF_FAILED(out.WriteByte(0xFF));
    VX_RETURN_IF_FAILED(out.WriteFixed(static_cast<float>(BlurX)));
    VX_RETURN_IF_FAILED(out.WriteFixed(static_cast<float>(BlurY)));
    VX_RETURN_IF_FAILED(out.WriteFixed(angle));
    VX_RETURN_IF_FAILED(out.WriteFixed(static_cast<float>(Distance)));
    VX_RETURN_IF_FAILED(out.WriteWord(static_cast<unsigned short>(Strength)));
    VX_RETURN_IF_FAILED(out.WriteBits(InnerShadow ? 1u : 0u, 1));
    VX_RETURN_IF_FAILED(out.WriteBits(Knockout ? 1u : 0u, 1));
    VX_RETURN_IF_FAILED(out.WriteBits(CompositeSource ? 1u : 0u, 1));
    return out.WriteBits(static_cast<unsigned int>(Passes), 5);
}

VXErrorCodeEnum VXFlintFilterShadow::WriteToStream(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    unsigned int color = Color.GetColorAsUI();
    stream->XferInt32(color);
    TransferRest(*stream);
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintFilterShadow::ReadFromStream(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    unsigned int color = 0;
    if (stream->XferInt32(color) != 0) Color = VXColor(color);
    TransferRest(*stream);
    return kVXSuccess;
}

// A transfer goes in the direction of the stream.
void VXFlintFilterShadow::TransferRest(IVXStream& stream) {
    stream.XferInt32(BlurX);
    stream.XferInt32(BlurY);
    stream.XferInt32(Angle);
    stream.XferInt32(Distance);
    stream.XferInt32(Strength);
    stream.XferBool(InnerShadow);
    stream.XferBool(Knockout);
    stream.XferBool(CompositeSource);
    stream.XferInt32(Passes);
}

int VXFlintFilterShadow::GetStreamTransferSize() const { return 38; }
