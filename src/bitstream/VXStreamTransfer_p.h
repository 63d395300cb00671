#pragma once

#include <algorithm>
#include <climits>

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
inline void VXSeekTo(IVXStream& stream, unsigned int position) {
    unsigned int done = std::min<unsigned int>(position, INT_MAX);
    stream.Seek(static_cast<int>(done), kVXSeekFromStart);
    while (done < position) {
        const unsigned int step = std::min<unsigned int>(position - done, INT_MAX);
        stream.Seek(static_cast<int>(step), kVXSeekFromCurrent);
        done += step;
    }
}

/// Length of the whole stream; the position is at its end afterwards.
inline unsigned int VXSeekToEnd(IVXStream& stream) {
    stream.Seek(0, kVXSeekFromEnd);
    return stream.Tell();
}
