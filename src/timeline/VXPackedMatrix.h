#pragma once

#include "graphics/VXFlintMatrix.h"
#include "platform/VXExport.h"

/// A matrix in half the bytes, for placements. It holds what a file can say: flags of 0 and 1, whole twips.
class VXSWF_API VXPackedMatrix {
public:
    /// Exactly what `Set` took.
    VXFlintMatrix Get() const;
    /// False, and nothing changes, when a host made the matrix into one that does not fit.
    bool Set(const VXFlintMatrix& matrix);
    /// Takes over nothing but the three widths, as a dump of the matrix leaves them.
    void SetWidths(const VXFlintMatrix& matrix);

private:
    int m_ScaleX = 0;
    int m_ScaleY = 0;
    int m_RotateSkew0 = 0;
    int m_RotateSkew1 = 0;
    int m_TwipsX = 0;
    int m_TwipsY = 0;
    unsigned char m_NScaleBits = 0;
    unsigned char m_NRotateBits = 0;
    unsigned char m_NTranslateBits = 0;
    bool m_HasScale : 1 = false;
    bool m_HasRotate : 1 = false;
};
