#pragma once

#include <list>
#include <vector>

#include "framework/VXSwfTagSet.h"

/// One call of `BuildDependencyList` with all that it leads to.
///
/// What the classes of this library do in their turn is written here, for a tag and for a sprite, so that a
/// chain of placements takes no stack. A host's own class is called. It may change the list and the set, so
/// both are indexed anew after it.
class VXDependencyWalk {
public:
    VXDependencyWalk(std::list<VXSwfTag*>& list, VXSwfTagSet* set) : m_List(list), m_Set(set) {}

    // The ways in, whatever class the host has derived.

    void FromTag(VXSwfTag* tag);
    void FromSprite(VXSwfTag* sprite, VXSwfTagSet& tags);
    void FromTags(VXSwfTagSet& tags);

private:
    using TagIter = VXSwfTagSet::TagIter;
    struct Range {
        TagIter here;
        TagIter last;
        bool isHereVisited = false;  // a host's class may change what follows while it is visited
    };

    void VisitRanges();
    /// Null is ignored.
    void Visit(VXSwfTag* tag);
    void AddSprite(VXSwfTag* sprite, VXSwfTagSet& tags);
    /// Answers what the tag brought into the list beside itself, to be visited, or null.
    VXSwfTag* AddTag(VXSwfTag* tag);
    bool Holds(unsigned short id);
    void Add(VXSwfTag* tag, unsigned short id);
    VXSwfTag* Find(unsigned short id);

    std::list<VXSwfTag*>& m_List;
    VXSwfTagSet* m_Set;
    std::vector<Range> m_Ranges;  // that are being visited, the innermost last
    std::vector<bool> m_Held;     // IDs in the list; empty before they are looked up
    std::vector<VXSwfTag*>
        m_First;  // tag of the set by ID, as far as `m_Next`; empty before the second search
    TagIter m_Next;
    bool m_HasSearched = false;
};
