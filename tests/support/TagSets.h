#pragma once

#include <string>
#include <vector>

#include "framework/VXFlintFile.h"
#include "support/TagSweep.h"

/// A lossless bitmap, which stays raw, with nothing but its ID.
inline Bytes Bitmap(unsigned int id) { return TagBytes(36, Word(id)); }

/// A placement of a character at a depth in the long form that dumps give it, without anything else.
inline Bytes Placement(unsigned int id, unsigned int depth = 1) {
    return LongTagBytes(26, Join({Hex("02"), Word(depth), Word(id)}));
}

/// A sprite as a dump writes it. `numFrames` are the ShowFrame tags in `tags`.
inline Bytes Sprite(unsigned int id, unsigned int numFrames, const Bytes& tags) {
    return LongTagBytes(39, Join({Word(id), Word(numFrames), tags, Hex("00 00")}));
}

inline const Bytes kShowFrame = {0x40, 0x00};

inline void LoadTags(VXSwfTagSet& set, const Bytes& tags, unsigned int parsingMode = 0) {
    VXBitStream in = StreamOver(tags);
    set.SetParsingMode(parsingMode);
    EXPECT_EQ(set.LoadFromStream(in, 8), kVXSuccess);
}

/// A name as it stands on the wire.
inline Bytes Text(const char* text) { return {text, text + std::char_traits<char>::length(text) + 1}; }

inline std::vector<unsigned int> TypesOf(const VXSwfTagSet& set) {
    std::vector<unsigned int> types;
    for (const VXSwfTag* tag : set) types.push_back(tag->GetTagType());
    return types;
}
