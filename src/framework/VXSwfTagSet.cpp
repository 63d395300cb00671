#include "framework/VXSwfTagSet.h"

#include <utility>

#include "framework/VXSwfTag.h"

/// What the sprites of one load may still take, together.
struct VXSwfTagSet::LoadLimits {
    static constexpr unsigned int kDeepest = 64;
    static constexpr std::uint64_t kNestedShare = 16;

    std::uint64_t nestedBytesLeft;

    /// Whether a sprite of that length, inside `level` others, is still to be opened.
    bool Admit(unsigned int level, unsigned int length) {
        if (level >= kDeepest) return false;
        if (level != 0 && nestedBytesLeft < length) return false;
        nestedBytesLeft -= nestedBytesLeft < length ? nestedBytesLeft : length;
        return true;
    }
};

VXSwfTagSet::VXSwfTagSet() = default;

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
    TagList tags = other.m_Tags;
    for (VXSwfTag* tag : tags) Hold(tag);
    ReleaseAll();
    m_Tags = std::move(tags);
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

void VXSwfTagSet::Release(VXSwfTag* tag) {
    if (tag != nullptr && --tag->m_Holders == 0) VXSwfTagFactory::DeleteTag(tag);
}

void VXSwfTagSet::ReleaseAll() {
    for (VXSwfTag* tag : m_Tags) Release(tag);
    m_Tags.clear();
}

VXErrorCodeEnum VXSwfTagSet::UpdateTagLists(VXSwfTag*) { return kVXSuccess; }

void VXSwfTagSet::BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) {
    for (VXSwfTag* tag : m_Tags) {
        if (tag != nullptr) tag->BuildDependencyList(list, set);
    }
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
        VXSwfTag* tag = nullptr;
        VXSwfTagSet* nested = nullptr;
        unsigned int length = 0;
        if (type != VXSwfTagFactory::TAG_DEFINESPRITE) {
            tag = VXSwfTagFactory::CreateTagOfType(type, 1, m_ParsingMode);
        } else if (VXSwfTag::PeepTagLength(in, length) == kVXSuccess && !limits.Admit(m_Level, length)) {
            tag = VXSwfTagFactory::MakeRaw(type);
        } else {
            tag = VXSwfTagFactory::CreateTagOfType(type, 1, m_ParsingMode);
            nested = dynamic_cast<VXSwfTagSet*>(tag);
        }
        if (tag != nullptr) {
            tag->SetFLVersion(version);
            if (nested != nullptr) {
                nested->m_ParsingMode = m_ParsingMode;
                nested->m_Level = static_cast<unsigned char>(m_Level + 1);
                nested->m_LoadLimits = &limits;
            }
            const VXErrorCodeEnum result = tag->LoadFromStream(in);
            if (nested != nullptr) nested->m_LoadLimits = nullptr;
            if (result != kVXSuccess) {
                VXSwfTagFactory::DeleteTag(tag);
                return result;
            }
        }
        IncludeTag(tag, -1);
    }
}

VXErrorCodeEnum VXSwfTagSet::DumpToStream(VXBitStream& out) {
    for (VXSwfTag* tag : m_Tags) {
        if (tag != nullptr) VX_RETURN_IF_FAILED(tag->DumpToStream(out));
    }
    return kVXSuccess;
}
