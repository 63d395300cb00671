#include "framework/VXDependencyWalk_p.h"

#include "framework/VXSwfTag.h"

namespace {

constexpr std::size_t kNumIds = 65536;

}  // namespace

void VXDependencyWalk::FromTag(VXSwfTag* tag) {
    Visit(AddTag(tag));
    VisitRanges();
}

void VXDependencyWalk::FromSprite(VXSwfTag* sprite, VXSwfTagSet& tags) {
    AddSprite(sprite, tags);
    VisitRanges();
}

void VXDependencyWalk::FromTags(VXSwfTagSet& tags) {
    m_Ranges.push_back({tags.begin(), tags.end()});
    VisitRanges();
}

void VXDependencyWalk::VisitRanges() {
    while (!m_Ranges.empty()) {
        Range& range = m_Ranges.back();
        if (range.isHereVisited) ++range.here;
        range.isHereVisited = true;
        if (range.here == range.last) {
            m_Ranges.pop_back();
        } else {
            Visit(*range.here);
        }
    }
}

void VXDependencyWalk::Visit(VXSwfTag* tag) {
    while (tag != nullptr) {
        if (!tag->m_IsFromFactory) {
            tag->BuildDependencyList(m_List, m_Set);
            m_Held.clear();
            m_First.clear();
            m_HasSearched = false;
            return;
        }
        if (auto* tags = dynamic_cast<VXSwfTagSet*>(tag)) return AddSprite(tag, *tags);
        tag = AddTag(tag);
    }
}

void VXDependencyWalk::AddSprite(VXSwfTag* sprite, VXSwfTagSet& tags) {
    if (const unsigned short id = sprite->GetCharacterId(); !Holds(id)) Add(sprite, id);
    m_Ranges.push_back({tags.begin(), tags.end()});
}

VXSwfTag* VXDependencyWalk::AddTag(VXSwfTag* tag) {
    if (const unsigned short id = tag->GetCharacterId(); id != 0) {
        if (!Holds(id)) Add(tag, id);
        return nullptr;
    }
    const unsigned short reference = tag->GetReferencedID();
    if (reference == 0 || Holds(reference)) return nullptr;
    VXSwfTag* found = Find(reference);
    if (found != nullptr) Add(found, reference);
    return found;
}

bool VXDependencyWalk::Holds(unsigned short id) {
    if (m_Held.empty()) {
        m_Held.resize(kNumIds);
        for (const VXSwfTag* tag : m_List) {
            if (tag != nullptr) m_Held[tag->GetCharacterId()] = true;
        }
    }
    return m_Held[id];
}

void VXDependencyWalk::Add(VXSwfTag* tag, unsigned short id) {
    m_List.push_front(tag);
    m_Held[id] = true;
}

VXSwfTag* VXDependencyWalk::Find(unsigned short id) {
    if (m_Set == nullptr) return nullptr;
    if (!m_HasSearched) {  // often the only time
        m_HasSearched = true;
        return m_Set->FindTagByID(id);
    }
    if (m_First.empty()) {
        m_First.resize(kNumIds);
        m_Next = m_Set->begin();
    }
    while (m_First[id] == nullptr && m_Next != m_Set->end()) {
        VXSwfTag* tag = *m_Next++;
        if (tag == nullptr) continue;
        VXSwfTag*& first = m_First[tag->GetCharacterId()];
        if (first == nullptr) first = tag;
    }
    return m_First[id];
}
