#pragma once

class VXSwfDefineFont2Tag;

/// Knows which font tags exist. A font tag belongs to its movie, while texts and the publish manager keep
/// bare pointers to it; they ask here before they follow one. Tags of different threads may come and go at
/// once.
class VXFontTagRegistry {
public:
    static constexpr unsigned long long kNone = 0;

    static void Add(const VXSwfDefineFont2Tag* tag);
    static void Remove(const VXSwfDefineFont2Tag* tag) noexcept;
    /// Never the same for two tags, even when one lies where the other lay. `kNone` for null and for a tag
    /// that is gone.
    static unsigned long long GetSerial(const VXSwfDefineFont2Tag* tag);
    static bool IsLive(const VXSwfDefineFont2Tag* tag) { return GetSerial(tag) != kNone; }
};
