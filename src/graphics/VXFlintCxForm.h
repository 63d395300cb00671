#pragma once

#include "bitstream/VXBitStream.h"
#include "platform/VXExport.h"

/// A colour transform, the format's CXFORM and CXFORMWITHALPHA in one class:
///
///     HasAddTerms ub[1], HasMultTerms ub[1], NBits ub[4]
///     RedMultTerm, GreenMultTerm, BlueMultTerm sb[NBits]    when HasMultTerms
///     AlphaMultTerm sb[NBits]                               and HasAlpha
///     RedAddTerm, GreenAddTerm, BlueAddTerm sb[NBits]       when HasAddTerms
///     AlphaAddTerm sb[NBits]                                and HasAlpha
///
/// `HasAlpha` is not on the wire; whoever embeds the transform sets it. A multiplier of 256 leaves a colour
/// as it is. Terms are not checked: a magnitude of 16384 takes 16 bits, which `NBits` cannot say, and spoils
/// the bits in front of it.
class VXSWF_API VXFlintCxForm {
public:
    /// Multipliers are 0, not 256; they mean nothing until `HasMultTerms` is set.
    VXFlintCxForm() = default;
    VXFlintCxForm(const VXFlintCxForm&) = default;
    VXFlintCxForm& operator=(const VXFlintCxForm&) = default;
    virtual ~VXFlintCxForm();

    /// Terms of an absent group keep their values.
    ///
    /// Kept: it starts at the bit where the stream stands and ends behind its last bit, while a dump starts
    /// and ends on a byte.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Does not touch `NBits`.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    short HasAddTerms = 0;
    short HasMultTerms = 0;
    unsigned int NBits = 0;  ///< as loaded; a dump works out its own
    int RedMultTerm = 0;
    int GreenMultTerm = 0;
    int BlueMultTerm = 0;
    int AlphaMultTerm = 0;
    int RedAddTerm = 0;
    int GreenAddTerm = 0;
    int BlueAddTerm = 0;
    int AlphaAddTerm = 0;
    short HasAlpha = 1;
};
