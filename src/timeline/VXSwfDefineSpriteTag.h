#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "framework/VXSwfTagSet.h"

/// A character whose body is a timeline of its own, and so both a tag and a tag set. It owns its tags.
///
///     type 39:  CharacterId u16, frame count u16, tags, the last of type 0
///
/// The frame count is ignored by a load; a dump writes the number of ShowFrame tags that were counted.
class VXSWF_API VXSwfDefineSpriteTag : public VXSwfDefinitionTag, public VXSwfTagSet {
public:
    using enuTagType = VXSwfTagFactory::enuTagType;
    using VXSwfDefinitionTag::DumpToStream;
    using VXSwfDefinitionTag::LoadFromStream;

    /// Regenerates the timeline, always under a long header. The first failure of a nested tag comes back,
    /// and nothing of the sprite is written then.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Lets each nested tag replace its references; the sprite's own ID stays.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineSpriteTag() override;
    /// Puts the sprite at the front of `list`, once, and then what its tags need from `set` in front of it.
    void BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) override;
    /// 1 when there is no frame count.
    ///
    /// Kept: a nested tag that fails ends the nested list and is not reported.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineSpriteTag(enuTagType type);
};
