#include "timeline/VXSwfDefineSpriteTag.h"

#include <memory>

#include "framework/VXDependencyWalk_p.h"

VXSwfDefineSpriteTag::VXSwfDefineSpriteTag(enuTagType type)
    : VXSwfDefinitionTag(type), VXSwfTagSet(static_cast<unsigned char>(1)) {}

VXSwfDefineSpriteTag::~VXSwfDefineSpriteTag() = default;

VXErrorCodeEnum VXSwfDefineSpriteTag::LoadDataFromStream(VXBitStream& in) {
    unsigned short frameCount = 0;  // the nested tags say it better
    VX_RETURN_IF_FAILED(in.ReadWord(frameCount));
    VXIgnore(VXSwfTagSet::LoadFromStream(in, GetFLVersion()));  // a tag that fails only ends the list
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineSpriteTag::DumpToStream(VXBitStream& out) {
    SetIsLongTag(1);
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(static_cast<unsigned short>(GetNumShowFrameTags())));
        VX_RETURN_IF_FAILED(VXSwfTagSet::DumpToStream(body));
        const std::unique_ptr<VXSwfTag> endTag(
            VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_END, 0, 0));
        return endTag->DumpToStream(body);
    });
}

void VXSwfDefineSpriteTag::UpdateReferenceIDs(VXFlintIDMap* map) { VXSwfTagSet::UpdateReferenceIDs(map); }

void VXSwfDefineSpriteTag::BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) {
    VXDependencyWalk(list, set).FromSprite(this, *this);
}
