#include "whole/VXJpegTables_p.h"

#include <algorithm>

namespace {

using Bytes = std::vector<unsigned char>;
using View = std::span<const unsigned char>;

constexpr unsigned char kMark = 0xFF;
constexpr unsigned char kStart = 0xD8;
constexpr unsigned char kEnd = 0xD9;
constexpr unsigned char kScan = 0xDA;

/// Appends the segments up to a scan, without marks for start and end, and answers what follows them.
View TakeSegments(View bytes, Bytes& segments) {
    while (bytes.size() >= 2 && bytes[0] == kMark) {
        if (bytes[1] == kStart || bytes[1] == kEnd) {
            bytes = bytes.subspan(2);
            continue;
        }
        if (bytes[1] == kMark) {  // a mark may have any number of these in front
            bytes = bytes.subspan(1);
            continue;
        }
        if (bytes[1] == kScan || bytes.size() < 4) return bytes;
        const std::size_t size = 2 + (std::size_t{bytes[2]} << 8 | bytes[3]);
        if (size > bytes.size()) return bytes;
        segments.insert(segments.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        bytes = bytes.subspan(size);
    }
    return bytes;
}

}  // namespace

std::vector<unsigned char> VXJoinJpegTables(View tables, View picture) {
    Bytes joined;
    joined.reserve(tables.size() + picture.size() + 4);
    joined.assign({kMark, kStart});
    TakeSegments(tables, joined);
    const View scans = TakeSegments(picture, joined);
    joined.insert(joined.end(), scans.begin(), scans.end());
    // Inside a scan 0xFF is followed by 0 or the number of a restart.
    constexpr unsigned char kEndMark[] = {kMark, kEnd};
    if (std::search(scans.begin(), scans.end(), std::begin(kEndMark), std::end(kEndMark)) == scans.end()) {
        joined.insert(joined.end(), std::begin(kEndMark), std::end(kEndMark));
    }
    return joined;
}
