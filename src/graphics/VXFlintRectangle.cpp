#include "graphics/VXFlintRectangle.h"

#include "bitstream/VXBitRun_p.h"
#include "graphics/VXTwips.h"

VXFlintRectangle::VXFlintRectangle(int left, int top, int right, int bottom) {
    Set(left, top, right, bottom);
}

VXFlintRectangle::~VXFlintRectangle() = default;

void VXFlintRectangle::Set(int left, int top, int right, int bottom) {
    Set(static_cast<VXReal>(left), static_cast<VXReal>(top), static_cast<VXReal>(right),
        static_cast<VXReal>(bottom));
}

void VXFlintRectangle::Set(VXReal left, VXReal top, VXReal right, VXReal bottom) {
    XMin = left;
    XMax = right;
    YMin = top;
    YMax = bottom;
}

int VXFlintRectangle::GetWidth() const { return VXTruncate(XMax - XMin); }

int VXFlintRectangle::GetHeight() const { return VXTruncate(YMax - YMin); }

VXErrorCodeEnum VXFlintRectangle::LoadFromStream(VXBitStream& in) {
    in.ByteAlignSBits();
    unsigned int width = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(5, width));
    VX_RETURN_IF_FAILED(VXReadTwips(in, width, XMin));
    VX_RETURN_IF_FAILED(VXReadTwips(in, width, XMax));
    VX_RETURN_IF_FAILED(VXReadTwips(in, width, YMin));
    VX_RETURN_IF_FAILED(VXReadTwips(in, width, YMax));
    in.ByteAlignSBits();
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintRectangle::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.FlushBits());
    const int xMin = VXToTwips(XMin);
    const int xMax = VXToTwips(XMax);
    const int yMin = VXToTwips(YMin);
    const int yMax = VXToTwips(YMax);
    const unsigned int width = VXFieldWidth(xMin, xMax, yMin, yMax);
    VXBitRun run(out);
    run.Add(width, 5);
    run.AddSigned(xMin, width);
    run.AddSigned(xMax, width);
    run.AddSigned(yMin, width);
    run.AddSigned(yMax, width);
    VX_RETURN_IF_FAILED(run.Finish());
    return out.FlushBits();
}
