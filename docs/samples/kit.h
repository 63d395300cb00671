#pragma once

#include <cstdlib>
#include <iostream>

#include "vxswf.h"

/// A new tag at the end of a movie or a sprite, which owns it from then on.
template <typename Tag>
Tag& Add(VXSwfTagSet& set, VXSwfTagFactory::enuTagType type) {
    VXSwfTag* tag = VXSwfTagFactory::CreateTagOfType(type, 0, 0);
    set.IncludeTag(tag, -1);
    return dynamic_cast<Tag&>(*tag);
}

/// Character IDs of a movie that is built from nothing: 1, 2, 3 and so on.
class Ids : public IVXSwfIdGenerator {
public:
    unsigned short GetId(tVXSwfReservedIDEnum) override { return ++m_LastId; }
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
        id = GetId(reserved);
        return kVXSuccess;
    }

private:
    unsigned short m_LastId = 0;
};

/// The same for a character, which gets the next ID.
template <typename Tag>
Tag& Define(VXSwfTagSet& set, Ids& ids, VXSwfTagFactory::enuTagType type) {
    Tag& tag = Add<Tag>(set, type);
    tag.SetCharacterId(ids.GetId(kVXSwfOrdinaryId));
    return tag;
}

/// False when the library reports a failure, and when the file did not take every byte.
inline bool Write(VXFlintFile& movie, const char* path) {
    CVXStreamReadWrite out(path, CVXStreamReadWrite::kCreateOrEmpty);
    out.SetMode(IVXStream::kWrite);
    if (movie.DumpToStream(&out) != kVXSuccess) return false;
    out.Flush();
    return out.GetStreamState() != kVXStreamFailed;
}

inline bool Load(VXFlintFile& movie, const char* path) {
    CVXStreamReadWrite in(path, CVXStreamReadWrite::kOpenExisting);
    return movie.LoadFromStream(&in) == kVXSuccess;
}

/// The header of a movie of one frame.
inline void Begin(VXFlintFile& movie) {
    movie.SetFlintVersion(9);
    movie.SetCompression(1);
    movie.SetWidth(320);
    movie.SetHeight(240);
    movie.SetFrameRate(24);
    movie.SetFrameCount(1);
    Add<VXSwfFileAttributesTag>(movie, VXSwfTagFactory::TAG_FILEATTRIBUTES);
}

/// Ends the program when something is not as it is told.
inline void Expect(bool isTrue, const char* what) {
    if (isTrue) return;
    std::cerr << "not so: " << what << '\n';
    std::exit(1);
}

/// Ends the only frame, writes the movie and loads what was written.
inline void Finish(VXFlintFile& movie, const char* path, VXFlintFile& loaded) {
    movie.IncludeShowFrameTags(1, -1);
    Expect(Write(movie, path), "the movie can be written");
    Expect(Load(loaded, path), "the movie loads");
    Expect(loaded.GetNumTags() == movie.GetNumTags(), "no tag is lost on the way");
}
