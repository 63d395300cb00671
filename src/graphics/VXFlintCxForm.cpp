#include "graphics/VXFlintCxForm.h"

#include <algorithm>

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

VXFlintCxForm::~VXFlintCxForm() = default;

VXErrorCodeEnum VXFlintCxForm::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasAddTerms));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasMultTerms));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NBits));
    if (HasMultTerms != 0) {
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, RedMultTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, GreenMultTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, BlueMultTerm));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(in.ReadSBits(NBits, AlphaMultTerm));
    }
    if (HasAddTerms != 0) {
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, RedAddTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, GreenAddTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, BlueAddTerm));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(in.ReadSBits(NBits, AlphaAddTerm));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintCxForm::DumpToStream(VXBitStream& out) const {
    unsigned int width = 0;
    if (HasMultTerms != 0) {
        width = VXFieldWidth(RedMultTerm, GreenMultTerm, BlueMultTerm, HasAlpha != 0 ? AlphaMultTerm : 0);
    }
    if (HasAddTerms != 0) {
        width = std::max(
            width, VXFieldWidth(RedAddTerm, GreenAddTerm, BlueAddTerm, HasAlpha != 0 ? AlphaAddTerm : 0));
    }
    VX_RETURN_IF_FAILED(out.FlushBits());
    VXBitRun run(out);
    run.AddFlag(HasAddTerms);
    run.AddFlag(HasMultTerms);
    run.Add(width, 4);
    if (HasMultTerms != 0) {
        run.AddSigned(RedMultTerm, width);
        run.AddSigned(GreenMultTerm, width);
        run.AddSigned(BlueMultTerm, width);
        if (HasAlpha != 0) run.AddSigned(AlphaMultTerm, width);
    }
    if (HasAddTerms != 0) {
        run.AddSigned(RedAddTerm, width);
        run.AddSigned(GreenAddTerm, width);
        run.AddSigned(BlueAddTerm, width);
        if (HasAlpha != 0) run.AddSigned(AlphaAddTerm, width);
    }
    VX_RETURN_IF_FAILED(run.Finish());
    return out.FlushBits();
}
