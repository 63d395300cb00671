#include "framework/VXSwfTagSet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "framework/VXDependencyWalk_p.h"
#include "framework/VXSwfTag.h"

/// What the sprites of one load may still take, together.
struct VXSwfTagSet::LoadLimits {
    static constexpr unsigned int kDeepest = 64;
    static constexpr std::uint64_t kNestedShare = 16;

    std::uint64_t nestedBytesLeft;

    /// Whether a sprite of so many bytes, inside `level` others, is still to be opened.
    bool Admit(unsigned int level, unsigned int length) {
        if (level >= kDeepest) return false;
        if (level == 0) return true;
        if (nestedBytesLeft < length) return false;
        nestedBytesLeft -= length;
        return true;
    }
};

VXSwfTagSet::VXSwfTagSet() = default;

VXSwfTagSet::VXSwfTagSet(unsigned char level) : m_Level(level) {}

VXSwfTagSet::VXSwfTagSet(const VXSwfTagSet& other)
    : IVXSwfTagHolder(other),
      m_ParsingMode(other.m_ParsingMode),
      m_Tags(other.m_Tags),
      m_NextDepth(other.m_NextDepth),
      m_TopDepth(other.m_TopDepth),
      m_NumShowFrames(other.m_NumShowFrames),
      m_IdMap(other.m_IdMap) {
    for (VXSwfTag* tag : m_Tags) Hold(tag);
}

VXSwfTagSet& VXSwfTagSet::operator=(const VXSwfTagSet& other) {
    if (this == &other) return *this;
    if (std::any_of(other.begin(), other.end(), [this](VXSwfTag* tag) { return IsIn(tag); })) return *this;
    TagList tags = other.m_Tags;
    for (VXSwfTag* tag : tags) Hold(tag);
    ReleaseAll();
    m_Tags = std::move(tags);
    ForgetFrameEnd();
    m_ParsingMode = other.m_ParsingMode;
    m_NextDepth = other.m_NextDepth;
    m_TopDepth = other.m_TopDepth;
    m_NumShowFrames = other.m_NumShowFrames;
    m_IdMap = other.m_IdMap;
    return *this;
}

VXSwfTagSet::~VXSwfTagSet() { ReleaseAll(); }

void VXSwfTagSet::Hold(VXSwfTag* tag) {
    if (tag != nullptr) ++tag->m_Holders;
}

void VXSwfTagSet::Drop(VXSwfTag* tag) {
    // A tag that a host wrote through an iterator was never counted.
    if (tag != nullptr && tag->m_Holders != 0) --tag->m_Holders;
}

void VXSwfTagSet::Release(VXSwfTag* tag) {
    Drop(tag);
    if (tag != nullptr && tag->m_Holders == 0) VXSwfTagFactory::DeleteTag(tag);
}

void VXSwfTagSet::ReleaseAll() {
    for (VXSwfTag* tag : m_Tags) Release(tag);
    m_Tags.clear();
}

VXErrorCodeEnum VXSwfTagSet::UpdateTagLists(VXSwfTag*) { return kVXSuccess; }

void VXSwfTagSet::BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) {
    VXDependencyWalk(list, set).FromTags(*this);
}

void VXSwfTagSet::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    for (VXSwfTag* tag : m_Tags) {
        if (tag != nullptr) tag->UpdateReferenceIDs(map);
    }
}

VXErrorCodeEnum VXSwfTagSet::LoadFromStream(VXBitStream& in, unsigned char version) {
    if (m_LoadLimits != nullptr) return LoadTags(in, version, *m_LoadLimits);
    LoadLimits limits{LoadLimits::kNestedShare * in.GetRemaining()};
    return LoadTags(in, version, limits);
}

VXErrorCodeEnum VXSwfTagSet::LoadTags(VXBitStream& in, unsigned char version, LoadLimits& limits) {
    while (true) {
        in.ByteAlignSBits();
        if (in.GetRemaining() < 2) return kVXSuccess;
        enuTagType type = VXSwfTagFactory::TAG_END;
        VX_RETURN_IF_FAILED(VXSwfTag::PeepTagType(in, type));
        if (type == VXSwfTagFactory::TAG_END) return kVXSuccess;
        TagOwner tag;
        if (type == VXSwfTagFactory::TAG_DEFINESPRITE) {
            VX_RETURN_IF_FAILED(LoadSprite(in, version, limits, tag));
        } else {
            tag.reset(VXSwfTagFactory::CreateTagOfType(type, 1, m_ParsingMode));
            tag->SetFLVersion(version);
            VX_RETURN_IF_FAILED(tag->LoadFromStream(in));
        }
        IncludeTag(tag.release(), -1);
    }
}

VXErrorCodeEnum VXSwfTagSet::LoadSprite(VXBitStream& in, unsigned char version, LoadLimits& limits,
                                        TagOwner& tag) {
    unsigned int length = 0;
    VX_RETURN_IF_FAILED(VXSwfTag::PeepTagLength(in, length));
    // What the header claims beyond the end of the data takes nothing.
    if (!limits.Admit(m_Level, std::min(length, in.GetRemaining()))) {
        tag.reset(VXSwfTagFactory::MakeRaw(VXSwfTagFactory::TAG_DEFINESPRITE));
        tag->SetFLVersion(version);
        return tag->LoadFromStream(in);
    }
    tag.reset(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_DEFINESPRITE, 1, m_ParsingMode));
    tag->SetFLVersion(version);
    auto* nested = dynamic_cast<VXSwfTagSet*>(tag.get());
    if (nested == nullptr) return tag->LoadFromStream(in);
    nested->m_ParsingMode = m_ParsingMode;
    nested->m_Level = static_cast<unsigned char>(m_Level + 1);
    nested->m_LoadLimits = &limits;
    const VXErrorCodeEnum result = tag->LoadFromStream(in);
    nested->m_LoadLimits = nullptr;
    return result;
}

VXErrorCodeEnum VXSwfTagSet::DumpToStream(VXBitStream& out) {
    for (VXSwfTag* tag : m_Tags) {
        if (tag != nullptr) VX_RETURN_IF_FAILED(tag->DumpToStream(out));
    }
    return kVXSuccess;
}
