#pragma once

class VXSwfDefineFont2Tag;

/// Knows which font tags exist. A font tag belongs to its movie, while texts and the publish manager keep
/// bare pointers to it; they ask here before they follow one. For the one thread of the publish manager.
class VXFontTagRegistry {
public:
    static void Add(const VXSwfDefineFont2Tag* tag);
    /// The publish manager hands `tag` out.
    static void Share(const VXSwfDefineFont2Tag* tag);
    static void Remove(const VXSwfDefineFont2Tag* tag) noexcept;
    /// False for null.
    static bool IsLive(const VXSwfDefineFont2Tag* tag);
    /// Whether it exists and was handed out; a tag that lies where a shared one lay is another.
    static bool IsShared(const VXSwfDefineFont2Tag* tag);
};
