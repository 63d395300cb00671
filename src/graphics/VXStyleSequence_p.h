#pragma once

#include <algorithm>
#include <vector>

#include "bitstream/VXBitStream.h"
#include "bitstream/VXReadField_p.h"
#include "memory/VXMemoryLimit_p.h"

// What arrays of fills and arrays of lines have in common: a count in a byte, or in a word behind 0xFF, and
// as many styles.

inline VXErrorCodeEnum VXLoadStyleCount(VXBitStream& in, short supports255Plus, unsigned short& count) {
    unsigned char shortCount = 0;
    VX_RETURN_IF_FAILED(in.ReadByte(shortCount));
    if (supports255Plus != 0 && shortCount == 0xFF) return VXReadWord(in, count);
    count = shortCount;
    return kVXSuccess;
}

// Kept: the long form does not ask whether a load will understand it.
inline VXErrorCodeEnum VXDumpStyleCount(VXBitStream& out, unsigned short count) {
    if (count < 0xFF) return out.WriteByte(static_cast<unsigned char>(count));
    VX_RETURN_IF_FAILED(out.WriteByte(0xFF));
    return out.WriteWord(count);
}

template <typename Style>
VXErrorCodeEnum VXLoadStyles(VXBitStream& in, unsigned int count, short useAlpha,
                             std::vector<Style>& styles) {
    // The array keeps its new size when the data ends early, as far as a short count reaches. A long one may
    // lie: a style takes at least a byte, so the first one that finds no place finds no byte either.
    const std::size_t room = std::max<std::size_t>({styles.size(), in.GetRemaining(), 0xFF});
    const std::size_t size = std::min<std::size_t>(count, room);
    if (size > styles.size()) VXMemoryLimit::Charge((size - styles.size()) * sizeof(Style));
    styles.resize(size);
    for (Style& style : styles) {
        style.SetAlpha(useAlpha);
        VX_RETURN_IF_FAILED(style.LoadFromStream(in));
    }
    return styles.size() == count ? kVXSuccess : kVXFailure;
}

template <typename Styles>
VXErrorCodeEnum VXDumpStyles(VXBitStream& out, unsigned int count, Styles& styles) {
    for (unsigned int i = 0; i < count; ++i) {
        if (i >= styles.size()) return kVXFailure;
        VX_RETURN_IF_FAILED(styles[i].DumpToStream(out));
    }
    return kVXSuccess;
}
