#include "framework/VXDependencyWalk_p.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <vector>

#include "framework/VXSwfTag.h"

namespace {

using TagIter = VXSwfTagSet::TagIter;

constexpr unsigned int kNumIds = 65536;

/// Tags that are still to be visited: one, or a range.
struct Visits {
    VXSwfTag* tag;
    TagIter here;
    TagIter last;
    bool isHereVisited = false;
};

/// First tag with each ID, read from a set only as far as it was asked for.
class TagIndex {
public:
    explicit TagIndex(const VXSwfTagSet& set) : m_Next(set.begin()), m_End(set.end()) {}

    VXSwfTag* Find(unsigned short id) {
        VXSwfTag*& found = At(id);
        while (found == nullptr && m_Next != m_End) {
            VXSwfTag* tag = *m_Next++;
            if (tag == nullptr) continue;
            VXSwfTag*& first = At(tag->GetCharacterId());
            if (first == nullptr) first = tag;
        }
        return found;
    }

private:
    static constexpr unsigned int kPageSize = 256;
    using Page = std::array<VXSwfTag*, kPageSize>;

    VXSwfTag*& At(unsigned short id) {
        std::unique_ptr<Page>& page = m_Pages[id / kPageSize];
        if (page == nullptr) page = std::make_unique<Page>();
        return (*page)[id % kPageSize];
    }

    std::array<std::unique_ptr<Page>, kNumIds / kPageSize> m_Pages;
    TagIter m_Next;
    TagIter m_End;
};

}  // namespace

struct VXDependencyWalk::Shared {
    Shared(std::list<VXSwfTag*>& ofList, VXSwfTagSet* ofSet) : list(ofList), set(ofSet), around(s_Innermost) {
        s_Innermost = this;
    }
    ~Shared() { s_Innermost = around; }

    void Forget() {
        isIndexed = false;
        index.reset();
    }
    void IndexList() {
        if (isIndexed) return;
        held.reset();
        for (const VXSwfTag* tag : list) {
            if (tag != nullptr) held.set(tag->GetCharacterId());
        }
        isIndexed = true;
    }

    static constinit thread_local Shared* s_Innermost;

    std::list<VXSwfTag*>& list;
    VXSwfTagSet* set;
    Shared* around;
    std::bitset<kNumIds> held;        // IDs in the list, once it is indexed
    std::unique_ptr<TagIndex> index;  // of the set
    std::vector<Visits> visits;       // the last one comes first
    bool isIndexed = false;
    bool isInHostClass = false;
};

constinit thread_local VXDependencyWalk::Shared* VXDependencyWalk::Shared::s_Innermost = nullptr;

VXDependencyWalk::VXDependencyWalk(std::list<VXSwfTag*>& list, VXSwfTagSet* set)
    : m_List(list), m_Set(set), m_Shared(Shared::s_Innermost) {
    if (m_Shared != nullptr && (&m_Shared->list != &list || m_Shared->set != set)) m_Shared = nullptr;
    if (m_Shared == nullptr) return;
    m_IsInHostClass = m_Shared->isInHostClass;
    m_IsFromLibrary = !m_IsInHostClass;
    if (m_IsInHostClass) m_Shared->Forget();
    m_Shared->isInHostClass = false;
    m_Floor = m_Shared->visits.size();
}

VXDependencyWalk::~VXDependencyWalk() {
    if (!m_IsInHostClass) return;
    m_Shared->isInHostClass = true;
    m_Shared->visits.resize(m_Floor);  // more only when memory ran out
}

VXDependencyWalk::Shared& VXDependencyWalk::GetShared() {
    if (m_Shared == nullptr) {
        m_Own = std::make_unique<Shared>(m_List, m_Set);
        m_Shared = m_Own.get();
    }
    return *m_Shared;
}

bool VXDependencyWalk::Holds(unsigned short id) {
    if (m_Shared == nullptr) {
        return std::any_of(m_List.begin(), m_List.end(), [id](const VXSwfTag* tag) {
            return tag != nullptr && tag->GetCharacterId() == id;
        });
    }
    m_Shared->IndexList();
    return m_Shared->held.test(id);
}

void VXDependencyWalk::Add(VXSwfTag* tag, unsigned short id) {
    m_List.push_front(tag);
    if (m_Shared != nullptr) m_Shared->held.set(id);
}

VXSwfTag* VXDependencyWalk::FindTagByID(unsigned short id) {
    if (m_Set == nullptr) return nullptr;
    if (m_Shared == nullptr) return m_Set->FindTagByID(id);
    if (m_Shared->index == nullptr) m_Shared->index = std::make_unique<TagIndex>(*m_Set);
    return m_Shared->index->Find(id);
}

void VXDependencyWalk::Visit(VXSwfTag* tag) {
    GetShared().visits.push_back({tag, {}, {}});
    if (!m_IsFromLibrary) VisitAll();
}

void VXDependencyWalk::Visit(TagIter first, TagIter last) {
    GetShared().visits.push_back({nullptr, first, last});
    if (!m_IsFromLibrary) VisitAll();
}

void VXDependencyWalk::VisitAll() {
    std::vector<Visits>& visits = m_Shared->visits;
    while (visits.size() > m_Floor) {
        Visits& top = visits.back();
        VXSwfTag* tag = top.tag;
        if (top.isHereVisited) ++top.here;
        if (tag == nullptr && top.here != top.last) {
            tag = *top.here;
            top.isHereVisited = true;
        } else {
            visits.pop_back();
        }
        if (tag != nullptr) CallTag(tag);
    }
}

void VXDependencyWalk::CallTag(VXSwfTag* tag) {
    if (tag->m_IsFromFactory) return tag->BuildDependencyList(m_List, m_Set);
    m_Shared->isInHostClass = true;
    tag->BuildDependencyList(m_List, m_Set);
    m_Shared->isInHostClass = false;
    m_Shared->Forget();
}
