#pragma once

#include "platform/VXExport.h"
#include "platform/VXString.h"

/// What is known of a font without looking at it: two metrics on an em of 1024 units. Rows are ordered by
/// their names alone, and a name that begins with "@" is a font of its own.
class VXSWF_API VXWinFontData {
public:
    VXString m_FontName;
    int m_MetricA = 0;  ///< may be negative
    int m_MetricB = 0;  ///< the leading of a glyph font

    friend bool operator<(const VXWinFontData& left, const VXWinFontData& right) {
        return left.m_FontName < right.m_FontName;
    }
};
