#pragma once

#include <span>

#include "support/Test.h"

/// A tag as it stands in a movie, which must outlive it.
struct TagView {
    unsigned int type;
    std::span<const unsigned char> bytes;  // header and body
    std::span<const unsigned char> body;
};
using TagViews = std::vector<TagView>;

/// A movie before compression with zlib.
Bytes PlainMovie(Bytes file);
/// The tags of a plain movie, and those inside a sprite, without the end tag.
TagViews TagsOfMovie(std::span<const unsigned char> movie);
TagViews TagsOfSprite(const TagView& sprite);
/// What is new in `result` when one run of tags was put into `destination`. Clears `isUnchanged` when that is
/// not all that was done to it.
TagViews InsertedTags(const TagViews& destination, const TagViews& result, bool& isUnchanged);

/// Finds the tags of a movie again in what was made of it with other IDs. It does not know where IDs stand,
/// but for the first word of some types and the entries of imports. A byte that differs must be part of two that
/// were one old ID and are its new one, and the parsed classes, as far as they have references, must make the
/// same of the new tag as of the old one once they have given it the new IDs.
class TagMatcher {
public:
    explicit TagMatcher(unsigned char version) : m_Version(version) {}

    /// Takes over which ID became which: the definitions and imports of `found` are those of `source` in the
    /// same order, more may follow. No new ID may be one that `taken` defines.
    void LearnIds(const TagViews& source, const TagViews& found, const TagViews& taken);
    /// Looks for each tag of `source`, in order, in the first of the lists that has it. Returns the tags of the
    /// lists that are none of them.
    TagViews Match(const TagViews& source, const std::vector<TagViews>& lists);
    /// 0 where the symbol classes of a source name its main timeline.
    void SetMainTimeline(unsigned short id) { m_MainTimeline = id; }

    std::vector<std::string> Faults;

private:
    unsigned short NewId(unsigned short id) const;
    void Learn(unsigned short oldId, unsigned short newId);
    bool DiffersInIds(const TagView& source, const TagView& found) const;
    bool IsToldAlike(const TagView& source, const TagView& found);

    unsigned char m_Version;
    unsigned short m_MainTimeline = 0;
    VXFlintIDMap m_Ids;
    VXFlintIDMap m_OldIds;
};
