#pragma once

#include <algorithm>
#include <climits>
#include <cstring>

#include "bitstream/VXByteBlock.h"
#include "platform/IVXStream.h"

/// Moves up to `length` bytes in the direction of the stream's mode and answers how many went. A transfer
/// takes a signed count, so what is larger goes in pieces.
inline unsigned int VXTransfer(IVXStream& stream, unsigned char* data, unsigned int length) {
    unsigned int done = 0;
    while (done < length) {
        const auto piece = static_cast<int>(std::min<unsigned int>(length - done, INT_MAX));
        const int count = stream.XferByte(data + done, piece);
        if (count > 0) done += static_cast<unsigned int>(count);
        if (count != piece) break;
    }
    return done;
}

/// Goes to a position counted from the start; the offset of a seek is signed, so a far one takes several.
/// False when the stream is not there afterwards.
inline bool VXSeekTo(IVXStream& stream, unsigned int position) {
    unsigned int done = std::min<unsigned int>(position, INT_MAX);
    stream.Seek(static_cast<int>(done), kVXSeekFromStart);
    while (done < position) {
        const unsigned int step = std::min<unsigned int>(position - done, INT_MAX);
        stream.Seek(static_cast<int>(step), kVXSeekFromCurrent);
        done += step;
    }
    return stream.Tell() == position;
}

/// Length of the whole stream; the position is at its end afterwards.
inline unsigned int VXSeekToEnd(IVXStream& stream) {
    stream.Seek(0, kVXSeekFromEnd);
    return stream.Tell();
}

/// Fills `data` from where the stream stands on; what does not come is zero.
inline void VXReadOrZero(IVXStream& stream, unsigned char* data, unsigned int length) {
    const unsigned int count = VXTransfer(stream, data, length);
    if (count < length) std::memset(data + count, 0, length - count);
}

/// Bytes from where the stream stands on, as many as the whole stream is long; what does not come is zero.
inline VXByteBlock VXReadStream(IVXStream& stream) {
    const unsigned int here = stream.Tell();
    const unsigned int length = VXSeekToEnd(stream);
    VXSeekTo(stream, here);
    VXByteBlock bytes = VXByteBlock::Allocate(length);
    VXReadOrZero(stream, bytes.GetBytes(), length);
    return bytes;
}
