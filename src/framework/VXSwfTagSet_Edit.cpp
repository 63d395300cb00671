#include "framework/VXSwfTag.h"
#include "framework/VXSwfTagSet.h"

void VXSwfTagSet::IncludeTag(VXSwfTag* tag, int frame) {
    if (frame == -1) {
        AppendTag(tag);
    } else if (frame == 0) {
        IncludeTag(tag, begin());
    } else {
        IncludeTag(tag, FindFrameEnd(static_cast<unsigned int>(frame)));
    }
    if (tag != nullptr && tag->GetTagType() == VXSwfTagFactory::TAG_SHOWFRAME) ++m_NumShowFrames;
}

void VXSwfTagSet::IncludeTag(VXSwfTag* tag, TagIter before) {
    m_Tags.insert(before, tag);
    Hold(tag);
}

void VXSwfTagSet::AppendTag(VXSwfTag* tag) {
    IncludeTag(tag, end());
    VXIgnore(UpdateTagLists(tag));  // a list that was not kept changes nothing for the tag
}

VXSwfTagSet::TagIter VXSwfTagSet::FindFrameEnd(unsigned int frame) const {
    return FindNthTagOfType(VXSwfTagFactory::TAG_SHOWFRAME, frame);
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
