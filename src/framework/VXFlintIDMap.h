#pragma once

#include <functional>
#include <map>
#include <utility>

#include "memory/VXPool.h"

/// Old to new character IDs, ordered by the old one.
class VXFlintIDMap : public std::map<unsigned short, unsigned short, std::less<unsigned short>,
                                     VXPoolAllocator<std::pair<const unsigned short, unsigned short>>> {
public:
    void Set(unsigned short oldId, unsigned short newId) {
        // Movies define most characters in ascending order.
        insert_or_assign(end(), oldId, newId);
    }
    /// Kept: asking for an unknown ID enters it with the value 0, and 0 is the answer.
    unsigned short GetNewId(unsigned short oldId) { return (*this)[oldId]; }
    /// Replaces an ID by its new one; an answer of 0 leaves it.
    void Renumber(unsigned short& id) {
        if (const unsigned short newId = GetNewId(id); newId != 0) id = newId;
    }
};
