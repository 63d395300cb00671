#pragma once

#include <functional>
#include <map>
#include <utility>

#include "bitstream/VXPool.h"

/// Old to new character IDs, ordered by the old one.
class VXFlintIDMap {
public:
    using Map = std::map<unsigned short, unsigned short, std::less<unsigned short>,
                         VXPoolAllocator<std::pair<const unsigned short, unsigned short>>>;

    void Set(unsigned short oldId, unsigned short newId) {
        // Movies define most characters in ascending order.
        m_Ids.insert_or_assign(m_Ids.end(), oldId, newId);
    }
    /// Kept: asking for an unknown ID enters it with the value 0, and 0 is the answer.
    unsigned short GetNewId(unsigned short oldId) { return m_Ids[oldId]; }
    /// The same under the name that a map has for it.
    unsigned short& operator[](unsigned short oldId) { return m_Ids[oldId]; }

    /// A search that enters nothing.
    Map::const_iterator find(unsigned short oldId) const { return m_Ids.find(oldId); }
    Map::const_iterator begin() const { return m_Ids.begin(); }
    Map::const_iterator end() const { return m_Ids.end(); }
    Map::size_type size() const { return m_Ids.size(); }
    bool empty() const { return m_Ids.empty(); }
    void clear() { m_Ids.clear(); }

private:
    Map m_Ids;
};
