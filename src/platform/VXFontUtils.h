#pragma once

#include "platform/VXExport.h"
#include "platform/VXString.h"

/// What a host tells of a font by its name alone.
struct VXFontInfo {
    /// Non-zero for a font whose text is in a double-byte encoding: one of Chinese, Japanese or Korean, and
    /// every font for vertical writing, whose name begins with "@".
    short m_IsDoubleByte = 0;
};

class VXPLATFORM_API VXFontUtils {
public:
    /// Fills in `info`; a null one is left alone. The font need not be installed: the answer comes from the
    /// name, so that it is the same on every machine, before the library is started too. A name is taken for
    /// one of Chinese, Japanese or Korean when it holds a character of their scripts, a word that marks such
    /// fonts ("CJK", "JP"), or the name of a family that is widely known.
    static void GetFontInfo(const VXString& name, VXFontInfo* info);
};
