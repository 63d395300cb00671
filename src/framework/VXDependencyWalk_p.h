#pragma once

#include <list>
#include <memory>

#include "framework/VXSwfTagSet.h"

/// The part that one call of `BuildDependencyList` has in collecting what a character needs.
///
/// The calls of one collection share an index of the list and of the set, which the outermost call makes and
/// ends. A call that the library makes only leaves behind what is to be visited next: the outermost call
/// visits it, in the order in which calls inside calls would, so that a chain of placements takes no stack. A
/// call that comes from a host's own tag class visits everything before it returns, since that class may look
/// at the list then. Such a class may also have changed the list or the set, so the index is made anew after
/// it.
///
/// `Visit` is the last thing that a call does.
class VXDependencyWalk {
public:
    VXDependencyWalk(std::list<VXSwfTag*>& list, VXSwfTagSet* set);
    ~VXDependencyWalk();
    VXDependencyWalk(const VXDependencyWalk&) = delete;
    VXDependencyWalk& operator=(const VXDependencyWalk&) = delete;

    /// Whether a tag with that character ID is in the list.
    bool Holds(unsigned short id);
    /// Puts `tag`, which has that character ID, at the front of the list.
    void Add(VXSwfTag* tag, unsigned short id);
    /// The first tag of the set with that ID, or null.
    VXSwfTag* FindTagByID(unsigned short id);
    void Visit(VXSwfTag* tag);
    void Visit(VXSwfTagSet::TagIter first, VXSwfTagSet::TagIter last);

private:
    struct Shared;

    Shared& GetShared();
    void VisitAll();
    void CallTag(VXSwfTag* tag);

    std::list<VXSwfTag*>& m_List;
    VXSwfTagSet* m_Set;
    Shared* m_Shared;               // of the call around this one, or of this one; null until it is of use
    std::unique_ptr<Shared> m_Own;  // when this call is the outermost one
    std::size_t m_Floor = 0;        // what is left to visit below it belongs to calls around this one
    bool m_IsFromLibrary = false;   // a call around this one visits what is left
    bool m_IsInHostClass = false;   // a host's class stands between that call and this one
};
