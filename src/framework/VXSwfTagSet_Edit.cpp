#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "framework/VXMakeTag_p.h"
#include "framework/VXSwfDefinitionTag.h"
#include "framework/VXSwfTagSet.h"
#include "graphics/VXFlintMatrix.h"
#include "timeline/VXSwfPlaceObject3Tag.h"
#include "timeline/VXSwfRemoveObjectTag.h"

namespace {

constexpr unsigned short kNextDepth = 0;
constexpr unsigned short kNextTopDepth = 0xFFFF;
constexpr unsigned short kLastDepth = 0xFFFF;

unsigned short IdOf(const VXSwfDefinitionTag* character) {
    return character == nullptr ? 0 : character->GetCharacterId();
}

bool IsShowFrame(const VXSwfTag* tag) {
    return tag != nullptr && tag->GetTagType() == VXSwfTagFactory::TAG_SHOWFRAME;
}

}  // namespace

void VXSwfTagSet::IncludeTag(VXSwfTag* tag, int frame) {
    if (frame == -1) {
        AppendTag(tag);
    } else if (frame == 0) {
        IncludeTag(tag, begin());
    } else {
        Insert(tag, FindFrameEnd(static_cast<unsigned int>(frame)));  // behind the mark
    }
    if (IsShowFrame(tag)) ++m_NumShowFrames;
}

void VXSwfTagSet::IncludeTag(VXSwfTag* tag, TagIter before) {
    if (IsShowFrame(tag) && before != end()) ForgetFrameEnd();
    Insert(tag, before);
}

bool VXSwfTagSet::Insert(VXSwfTag* tag, TagIter before) {
    TagOwner owner(tag != nullptr && tag->m_Holders == 0 ? tag : nullptr);
    const bool isTaken = !IsIn(tag);
    if (isTaken) {
        m_Tags.insert(before, tag);
        Hold(tag);
    }
    static_cast<void>(owner.release());
    return isTaken;
}

bool VXSwfTagSet::IsIn(VXSwfTag* tag) const {
    const auto isSprite = [](const VXSwfTag* any) {
        return any != nullptr && any->GetTagType() == VXSwfTagFactory::TAG_DEFINESPRITE;
    };
    if (!isSprite(tag)) return false;
    const auto* self = dynamic_cast<const VXSwfTag*>(this);
    // A sprite that stands nowhere, as during a load, can be no other than the tag.
    if (self == nullptr || tag == self || self->m_Holders == 0) return tag == self;
    std::vector<VXSwfTag*> sprites{tag};
    std::unordered_set<const VXSwfTag*> seen{self};  // each once, however often it stands in others
    while (!sprites.empty()) {
        const auto* set = dynamic_cast<const VXSwfTagSet*>(sprites.back());
        sprites.pop_back();
        if (set == nullptr) continue;
        for (VXSwfTag* inner : set->m_Tags) {
            if (inner == self) return true;
            if (isSprite(inner) && seen.insert(inner).second) sprites.push_back(inner);
        }
    }
    return false;
}

void VXSwfTagSet::IncludeShowFrameTags(unsigned int count, int frame) {
    for (; count != 0; --count) {
        IncludeTag(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_SHOWFRAME, 0, 0), frame);
    }
}

void VXSwfTagSet::AppendTag(VXSwfTag* tag) {
    if (!Insert(tag, end())) return;
    VXIgnore(UpdateTagLists(tag));  // a list that was not kept changes nothing for the tag
}

void VXSwfTagSet::InsertTags(TagIter before, TagIter first, TagIter last) {
    if (std::any_of(first, last, [this](VXSwfTag* tag) { return IsIn(tag); })) return;
    TagList tags(first, last);  // of its own, since the range may be one of this list
    for (VXSwfTag* tag : tags) Hold(tag);
    m_Tags.splice(before, tags);
    ForgetFrameEnd();
}

VXSwfTagSet::TagIter VXSwfTagSet::EraseTags(TagIter first, TagIter last) {
    for (TagIter tag = first; tag != last; ++tag) Drop(*tag);
    ForgetFrameEnd();
    return m_Tags.erase(first, last);
}

VXSwfTagSet::TagIter VXSwfTagSet::EraseAndDeleteTags(TagIter first, TagIter last) {
    for (TagIter tag = first; tag != last; ++tag) Release(*tag);
    ForgetFrameEnd();
    return m_Tags.erase(first, last);
}

VXSwfTagSet::TagIter VXSwfTagSet::FindFrameEnd(unsigned int frame) const {
    if (frame == 0) return end();
    TagIter place = m_FrameMark;
    unsigned int count = m_NumFramesToMark;  // ShowFrames in front of `place`
    if (place == end()) {
        place = begin();
        count = 0;
    }
    while (count >= frame) {
        if (IsShowFrame(*--place)) --count;
    }
    for (; place != end(); ++place) {
        if (!IsShowFrame(*place)) continue;
        if (count + 1 == frame) break;
        ++count;
    }
    m_FrameMark = place;
    m_NumFramesToMark = count;
    if (place == m_Tags.begin()) {
        ForgetFrameEnd();
    } else if (IsShowFrame(*--m_FrameMark)) {
        --m_NumFramesToMark;
    }
    return place;
}

VXSwfTagSet::TagIter VXSwfTagSet::FindNthTagOfType(enuTagType type, unsigned int n) const {
    unsigned int count = 0;
    TagIter tag = begin();
    for (; tag != end(); ++tag) {
        if (*tag != nullptr && (*tag)->GetTagType() == type && ++count == n) break;
    }
    return tag;
}

VXSwfTag* VXSwfTagSet::FindTagByID(unsigned short id) const {
    for (VXSwfTag* tag : m_Tags) {
        if (tag != nullptr && tag->GetCharacterId() == id) return tag;
    }
    return nullptr;
}

VXSwfTag* VXSwfTagSet::FindNthTagOfTypeBeforeFrame(enuTagType type, unsigned int n, unsigned int frame,
                                                   short strict) const {
    TagIter tag = FindFrameEnd(frame);
    if (tag == end() && strict != 0) return nullptr;
    // Kept: the first tag is never looked at, so a frame that ends there or one further has nothing to find.
    if (tag == begin() || tag == std::next(begin())) return nullptr;
    unsigned int count = 0;
    while (--tag != begin()) {
        if (*tag == nullptr) continue;
        const enuTagType found = (*tag)->GetTagType();
        if (found == type) {
            if (++count == n) return *tag;
        } else if (found == VXSwfTagFactory::TAG_SHOWFRAME) {
            return nullptr;
        }
    }
    return nullptr;
}

bool VXSwfTagSet::IsUsedUp(unsigned short depth) const {
    return (depth == kNextDepth && m_NextDepth == kLastDepth) || (depth == kNextTopDepth && m_TopDepth <= 1);
}

unsigned short VXSwfTagSet::ReserveNextDepth() { return GetAbsTagDepth(kNextDepth); }

unsigned short VXSwfTagSet::GetAbsTagDepth(unsigned short depth) {
    if (IsUsedUp(depth)) return 0;
    if (depth == kNextDepth) return ++m_NextDepth;
    if (depth == kNextTopDepth) return --m_TopDepth;
    if (std::abs(depth - m_TopDepth) < std::abs(depth - m_NextDepth)) {
        m_TopDepth = depth;
    } else if (m_NextDepth < depth) {
        m_NextDepth = depth;
    }
    return depth;
}

VXSwfPlaceObject2Tag* VXSwfTagSet::CreateAndInitPlaceObjectTag(unsigned short id, const VXString& name,
                                                               double x, double y, unsigned short depth,
                                                               const std::vector<VXFlintFilter*>& filters) {
    if (IsUsedUp(depth)) return nullptr;
    const enuTagType type =
        filters.empty() ? VXSwfTagFactory::TAG_PLACEOBJECT2 : VXSwfTagFactory::TAG_PLACEOBJECT3;
    auto tag = VXMakeTag<VXSwfPlaceObject2Tag>(type);
    if (tag == nullptr) return nullptr;
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.TranslateX = x;
    matrix.TranslateY = y;
    tag->SetMatrix(matrix);
    tag->SetName(name);
    // The last step for which memory can be short, so that the filters are either taken over or the caller's.
    if (auto* filtered = dynamic_cast<VXSwfPlaceObject3Tag*>(tag.get()))
        filtered->SetStaticEffectVector(filters);
    tag->SetDepth(GetAbsTagDepth(depth), 0);
    tag->SetReferencedID(id);
    if (id == 0) tag->SetMoveFlag(1);
    return tag.release();
}

VXSwfPlaceObject2Tag* VXSwfTagSet::PlaceObject(unsigned short id, TagIter before, const VXString& name,
                                               double x, double y, unsigned short depth,
                                               const std::vector<VXFlintFilter*>& filters) {
    VXSwfPlaceObject2Tag* tag = CreateAndInitPlaceObjectTag(id, name, x, y, depth, filters);
    if (tag != nullptr) IncludeTag(tag, before);
    return tag;
}

VXSwfPlaceObject2Tag* VXSwfTagSet::PlaceObject(unsigned short id, int frame, const VXString& name, double x,
                                               double y, unsigned short depth,
                                               const std::vector<VXFlintFilter*>& filters) {
    VXSwfPlaceObject2Tag* tag = CreateAndInitPlaceObjectTag(id, name, x, y, depth, filters);
    if (tag != nullptr) IncludeTag(tag, frame);
    return tag;
}

VXSwfPlaceObject2Tag* VXSwfTagSet::PlaceObject(VXSwfDefinitionTag* character, int frame, const VXString& name,
                                               double x, double y, unsigned short depth,
                                               const std::vector<VXFlintFilter*>& filters) {
    return PlaceObject(IdOf(character), frame, name, x, y, depth, filters);
}

VXSwfPlaceObject2Tag* VXSwfTagSet::PlaceAndRemoveObject(unsigned short id, int placeFrame, int removeFrame,
                                                        const VXString& name, double x, double y,
                                                        unsigned short depth) {
    VXSwfPlaceObject2Tag* tag = PlaceObject(id, placeFrame, name, x, y, depth, {});
    if (tag != nullptr && removeFrame != 0) RemoveObject(tag->GetDepth(), removeFrame);
    return tag;
}

VXSwfPlaceObject2Tag* VXSwfTagSet::PlaceAndRemoveObject(VXSwfDefinitionTag* character, int placeFrame,
                                                        int removeFrame, const VXString& name, double x,
                                                        double y, unsigned short depth) {
    return PlaceAndRemoveObject(IdOf(character), placeFrame, removeFrame, name, x, y, depth);
}

VXSwfRemoveObjectTag* VXSwfTagSet::RemoveObject(unsigned short depth, int frame) {
    VXSwfRemoveObjectTag* tag = VXMakeTag<VXSwfRemoveObjectTag>(VXSwfTagFactory::TAG_REMOVEOBJECT2).release();
    if (tag == nullptr) return nullptr;
    tag->SetDepth(depth);
    IncludeTag(tag, frame);
    return tag;
}
