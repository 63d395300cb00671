#pragma once

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

#include "memory/VXByteBlock.h"
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

/// Writes `length` bytes and answers how many went. A stream that reads would put its own bytes there instead,
/// so it gets none.
inline unsigned int VXSend(IVXStream& stream, const unsigned char* data, unsigned int length) {
    // The interface takes bytes without const; a stream that writes only reads them.
    return stream.IsReading() ? 0 : VXTransfer(stream, const_cast<unsigned char*>(data), length);
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

/// `head` zeros and then `length` bytes from where the stream stands on. What does not come is zero. A stream
/// may promise more than it has, so the block grows as the bytes come: beyond 16 MiB it ends at the latest
/// with twice what came.
inline VXByteBlock VXReadBytes(IVXStream& stream, unsigned int length, unsigned int head = 0) {
    constexpr unsigned int kFirst = 16u << 20;
    const unsigned int size = head + length;
    VXByteBlock bytes = VXByteBlock::Allocate(std::min(size, kFirst));
    if (head != 0) std::memset(bytes, 0, head);
    unsigned int count = head;
    for (;;) {
        count += VXTransfer(stream, bytes + count, bytes.GetSize() - count);
        if (count < bytes.GetSize() || count == size) break;
        VXByteBlock larger = VXByteBlock::Allocate(count < size / 2 ? 2 * count : size);
        std::memcpy(larger, bytes, count);
        bytes = std::move(larger);
    }
    if (count < bytes.GetSize()) std::memset(bytes + count, 0, bytes.GetSize() - count);
    return bytes;
}

/// As many bytes as the whole stream is long, from where it stands on.
inline VXByteBlock VXReadStream(IVXStream& stream) {
    const unsigned int here = stream.Tell();
    const unsigned int length = VXSeekToEnd(stream);
    VXSeekTo(stream, here);
    return VXReadBytes(stream, length);
}
