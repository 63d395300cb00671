#include "timeline/VXPackedMatrix.h"

#include <cmath>

#include "graphics/VXTwips.h"

namespace {

bool IsFlag(short value) { return value == 0 || value == 1; }

bool IsByte(unsigned int value) { return value <= 0xFF; }

/// Cheaper than a rounding, and the same for whole twips.
int NearestTwips(VXReal pixels) { return VXTruncate(pixels * kVXTwipsPerPixel + std::copysign(0.5, pixels)); }

bool IsWholeTwips(VXReal pixels, int twips) {
    return VXFromTwips(twips) == pixels && !(twips == 0 && std::signbit(pixels));
}

}  // namespace

VXFlintMatrix VXPackedMatrix::Get() const {
    VXFlintMatrix matrix;
    matrix.HasScale = m_HasScale ? 1 : 0;
    matrix.HasRotate = m_HasRotate ? 1 : 0;
    matrix.NScaleBits = m_NScaleBits;
    matrix.ScaleX = m_ScaleX;
    matrix.ScaleY = m_ScaleY;
    matrix.NRotateBits = m_NRotateBits;
    matrix.RotateSkew0 = m_RotateSkew0;
    matrix.RotateSkew1 = m_RotateSkew1;
    matrix.NTranslateBits = m_NTranslateBits;
    matrix.TranslateX = VXFromTwips(m_TwipsX);
    matrix.TranslateY = VXFromTwips(m_TwipsY);
    return matrix;
}

bool VXPackedMatrix::Set(const VXFlintMatrix& matrix) {
    const int x = NearestTwips(matrix.TranslateX);
    const int y = NearestTwips(matrix.TranslateY);
    const bool fits = IsFlag(matrix.HasScale) && IsFlag(matrix.HasRotate) && IsByte(matrix.NScaleBits) &&
                      IsByte(matrix.NRotateBits) && IsByte(matrix.NTranslateBits) &&
                      IsWholeTwips(matrix.TranslateX, x) && IsWholeTwips(matrix.TranslateY, y);
    if (!fits) return false;
    m_HasScale = matrix.HasScale != 0;
    m_HasRotate = matrix.HasRotate != 0;
    m_ScaleX = matrix.ScaleX;
    m_ScaleY = matrix.ScaleY;
    m_RotateSkew0 = matrix.RotateSkew0;
    m_RotateSkew1 = matrix.RotateSkew1;
    m_TwipsX = x;
    m_TwipsY = y;
    SetWidths(matrix);
    return true;
}

void VXPackedMatrix::SetWidths(const VXFlintMatrix& matrix) {
    m_NScaleBits = static_cast<unsigned char>(matrix.NScaleBits);
    m_NRotateBits = static_cast<unsigned char>(matrix.NRotateBits);
    m_NTranslateBits = static_cast<unsigned char>(matrix.NTranslateBits);
}
