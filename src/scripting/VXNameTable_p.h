#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "bitstream/VXBitStream.h"

// The body of `VXSwfExportAssetsTag` and of `VXSwfSymbolClassTag`: a count and two parallel sequences, whose
// fields a host may set to anything.
//
//     count u16, (ids u16, names str) ...

/// Appends what it reads. 1 when the table ends early; what was read by then stays, and `count` is as stated.
inline VXErrorCodeEnum VXLoadNames(VXBitStream& in, unsigned short& count, std::vector<unsigned short>& ids,
                                   std::vector<VXString>& names) {
    constexpr unsigned int kLeastEntry = 3;  // bytes of an entry with an empty name
    VX_RETURN_IF_FAILED(in.ReadWord(count));
    const std::size_t room = std::min<unsigned int>(count, in.GetRemaining() / kLeastEntry);
    ids.reserve(ids.size() + room);
    names.reserve(names.size() + room);
    for (unsigned int i = 0; i < count; ++i) {
        unsigned short id = 0;
        VX_RETURN_IF_FAILED(in.ReadWord(id));
        ids.push_back(id);
        VXString name;
        VX_RETURN_IF_FAILED(in.ReadVXString(name));
        names.push_back(std::move(name));
    }
    return kVXSuccess;
}

/// Writes the entries that are there, `count` of them at the most.
inline VXErrorCodeEnum VXDumpNames(VXBitStream& body, unsigned short count,
                                   const std::vector<unsigned short>& ids,
                                   const std::vector<VXString>& names) {
    const std::size_t size = std::min<std::size_t>({count, ids.size(), names.size()});
    VX_RETURN_IF_FAILED(body.WriteWord(static_cast<unsigned short>(size)));
    for (std::size_t i = 0; i < size; ++i) {
        VX_RETURN_IF_FAILED(body.WriteWord(ids[i]));
        VX_RETURN_IF_FAILED(body.WriteVXString(names[i]));
    }
    return kVXSuccess;
}

/// 1 for a 65,536th entry, which is not added.
inline VXErrorCodeEnum VXAppendName(unsigned short& count, std::vector<unsigned short>& ids,
                                    std::vector<VXString>& names, unsigned short id, const VXString& name) {
    if (count == 0xFFFF) return kVXFailure;
    names.resize(ids.size());  // a table that was cut may lack the last name
    names.push_back(name);
    ids.push_back(id);
    ++count;
    return kVXSuccess;
}
