#include "framework/VXSwfTag.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "framework/VXDependencyWalk_p.h"
#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfTagNames_p.h"
#include "framework/VXSwfTagSet.h"

/// One body that is lent, and the loan below it.
struct VXSwfTag::Loan : VXPooled {
    unsigned char* data;
    Loan* below;
};

VXSwfTag::VXSwfTag(enuTagType type, short parsing) : m_TagType(type), m_Parsing(parsing) {}

VXSwfTag::VXSwfTag(const VXSwfTag& other)
    : m_TagType(other.m_TagType),
      m_TagLen(other.GetLengthWithoutLoans()),
      m_Data(other.m_Data),
      m_IsLongTag(other.m_IsLongTag),
      m_Parsing(other.m_Parsing),
      m_FLVersion(other.m_FLVersion) {}

VXSwfTag& VXSwfTag::operator=(const VXSwfTag& other) {
    if (this == &other) return *this;
    DropLoans();
    m_TagType = other.m_TagType;
    m_TagLen = other.GetLengthWithoutLoans();
    m_Data = other.m_Data;
    m_IsLongTag = other.m_IsLongTag;
    m_Parsing = other.m_Parsing;
    m_FLVersion = other.m_FLVersion;
    return *this;
}

VXSwfTag::~VXSwfTag() { DropLoans(); }

/// A loan has the length that the tag states, so none may outlive a change of it.
void VXSwfTag::DropLoans() {
    while (m_DataStack != nullptr) SetData(nullptr);
}

VXErrorCodeEnum VXSwfTag::LoadFromStream(VXBitStream& in) {
    unsigned short header = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(header));
    m_TagType = static_cast<enuTagType>(header >> 6);
    m_TagLen = header & 0x3Fu;
    DropLoans();
    // The stream may lie over the old body.
    const VXByteBlock old = std::exchange(m_Data, VXByteBlock());
    if (m_TagLen == kLongLength) {
        m_IsLongTag = 1;
        VX_RETURN_IF_FAILED(in.ReadDWord(m_TagLen));
    }
    if (m_TagLen == 0) return kVXSuccess;
    m_TagLen = std::min(m_TagLen, in.GetRemaining());
    if (m_TagLen == 0) return kVXFailure;
    m_Data = VXByteBlock::Allocate(m_TagLen);
    unsigned int count = m_TagLen;
    VX_RETURN_IF_FAILED(in.Read(m_Data.GetBytes(), count));
    if (m_HasFields == 0) return kVXSuccess;
    VXBitStream fields = GetDataStream();
    return LoadDataFromStream(fields);
}

VXErrorCodeEnum VXSwfTag::DumpToStream(VXBitStream& out) { return DumpHdrAndData(out); }

VXErrorCodeEnum VXSwfTag::DumpHdrAndData(VXBitStream& out) {
    // A header that stated more than is there would swallow the tags behind it.
    const unsigned int length = std::min(m_TagLen, GetBodySize());
    VX_RETURN_IF_FAILED(DumpHdr(length, out));
    return length == 0 ? kVXSuccess : out.Write(GetBody(), length);
}

VXErrorCodeEnum VXSwfTag::DumpHdrToStream(VXBitStream& out) { return DumpHdr(m_TagLen, out); }

VXErrorCodeEnum VXSwfTag::DumpHdr(unsigned int length, VXBitStream& out) {
    const auto type = static_cast<unsigned short>(m_TagType << 6);
    const bool isLong = m_IsLongTag != 0 || length >= kLongLength;
    // Kept: the word is not examined.
    VXIgnore(out.WriteWord(static_cast<unsigned short>(type | (isLong ? kLongLength : length))));
    return isLong ? out.WriteDWord(length) : kVXSuccess;
}

VXErrorCodeEnum VXSwfTag::GenerateTagHdr(unsigned char length, VXBitStream& out) {
    return out.WriteWord(static_cast<unsigned short>(static_cast<unsigned int>(m_TagType) << 6 | length));
}

VXSwfTag* VXSwfTag::Copy() { return CopyThroughWire(VXSwfTagFactory::CreateTagOfType(m_TagType, 1, 0)); }

VXSwfTag* VXSwfTag::CopyThroughWire(VXSwfTag* copy) {
    if (copy == nullptr) return nullptr;
    std::unique_ptr<VXSwfTag, void (*)(VXSwfTag*)> owner(copy, &VXSwfTagFactory::DeleteTag);
    const unsigned int refusals = VXBitStream::GetNumRefusals();
    VXBitStream wire;
    VXIgnore(DumpToStream(wire));  // a copy holds as much as came through
    wire.SetPosition(0);
    VXIgnore(copy->LoadFromStream(wire));
    if (VXBitStream::GetNumRefusals() != refusals) throw std::bad_alloc();
    return owner.release();
}

unsigned char* VXSwfTag::GetBody() const {
    return m_DataStack != nullptr ? m_DataStack->data : m_Data.GetBytes();
}

/// The length without what is lent now, which a copy does not take over.
unsigned int VXSwfTag::GetLengthWithoutLoans() const {
    return m_DataStack != nullptr ? m_Data.GetSize() : m_TagLen;
}

unsigned int VXSwfTag::GetBodySize() const {
    // Whoever lends a body sets the length to what it has.
    return m_DataStack != nullptr ? m_TagLen : m_Data.GetSize();
}

unsigned char* VXSwfTag::GetFirstWord() const {
    return std::min(m_TagLen, GetBodySize()) >= 2 ? GetBody() : nullptr;
}

void VXSwfTag::SetData(unsigned char* data) {
    if (data != nullptr) {
        auto* loan = new Loan;
        loan->data = data;
        loan->below = m_DataStack;
        m_DataStack = loan;
    } else if (m_DataStack != nullptr) {
        Loan* loan = m_DataStack;
        m_DataStack = loan->below;
        delete loan;
    } else {
        m_Data = VXByteBlock();
    }
}

void VXSwfTag::SetCharacterId(unsigned short id) {
    if (unsigned char* word = GetFirstWord(); word != nullptr) {
        word[0] = static_cast<unsigned char>(id);
        word[1] = static_cast<unsigned char>(id >> 8);
    }
}

namespace {

unsigned short WordAt(const unsigned char* word) {
    return word == nullptr ? 0 : static_cast<unsigned short>(word[0] | word[1] << 8);
}

}  // namespace

unsigned short VXSwfTag::GetCharacterId() const {
    switch (m_TagType) {
        case VXSwfTagFactory::TAG_SHOWFRAME:
        case VXSwfTagFactory::TAG_FREECHARACTER:
        case VXSwfTagFactory::TAG_REMOVEOBJECT2:
        case VXSwfTagFactory::TAG_FRAMELABEL:
        case VXSwfTagFactory::TAG_EXPORTASSETS:
        case VXSwfTagFactory::TAG_DOINITACTION:
        case VXSwfTagFactory::TAG_VIDEOFRAME:
        case VXSwfTagFactory::TAG_DEFINEFONTALIGNZONES:
        case VXSwfTagFactory::TAG_CSMTEXTSETTINGS:
        case VXSwfTagFactory::TAG_SYMBOLCLASS:
        case VXSwfTagFactory::TAG_DEFINESCALINGGRID:
        case VXSwfTagFactory::TAG_DOABC:
        case VXSwfTagFactory::TAG_DEFINEFONTNAME:
            return 0;
        default:
            return WordAt(GetFirstWord());
    }
}

unsigned short VXSwfTag::GetCharacterIdFromData() const {
    const unsigned char* word = GetFirstWord();
    return m_TagType == VXSwfTagFactory::TAG_DEFINEFONTALIGNZONES && word != nullptr ? WordAt(word)
                                                                                     : GetCharacterId();
}

short VXSwfTag::HasReferencedID() const {
    switch (m_TagType) {
        case VXSwfTagFactory::TAG_FREECHARACTER:
        case VXSwfTagFactory::TAG_STARTSOUND:
        case VXSwfTagFactory::TAG_VIDEOFRAME:
        case VXSwfTagFactory::TAG_DEFINEFONTALIGNZONES:
        case VXSwfTagFactory::TAG_CSMTEXTSETTINGS:
        case VXSwfTagFactory::TAG_DEFINESCALINGGRID:
        case VXSwfTagFactory::TAG_DEFINEFONTNAME:
            return 1;
        default:
            return 0;
    }
}

unsigned short VXSwfTag::GetReferencedID() const {
    return HasReferencedID() != 0 ? WordAt(GetFirstWord()) : 0;
}

void VXSwfTag::SetReferencedID(unsigned short id) {
    if (HasReferencedID() != 0) VXSwfTag::SetCharacterId(id);
}

void VXSwfTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    const unsigned short id = GetReferencedID();
    if (id == 0 || map == nullptr) return;
    const unsigned short newId = map->GetNewId(id);
    if (newId != 0) SetReferencedID(newId);
}

void VXSwfTag::BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set) {
    VXDependencyWalk walk(list, set);
    if (const unsigned short id = GetCharacterId(); id != 0) {
        if (!walk.Holds(id)) walk.Add(this, id);
        return;
    }
    const unsigned short reference = GetReferencedID();
    if (reference == 0 || walk.Holds(reference)) return;
    VXSwfTag* tag = walk.FindTagByID(reference);
    if (tag == nullptr) return;
    walk.Add(tag, reference);
    walk.Visit(tag);
}

void VXSwfTag::GetTextInfo(VXString& text) {
    std::string info = VXSwfTagName(m_TagType);
    info.append("(").append(std::to_string(static_cast<unsigned int>(m_TagType))).append(")");
    text += VXString(info.c_str());
}

void VXSwfTag::SetFLVersion(unsigned char version) { m_FLVersion = version; }

unsigned char VXSwfTag::GetFLVersion() const { return m_FLVersion; }

unsigned char* VXSwfTag::GetData() { return GetBody(); }

unsigned int VXSwfTag::GetTagLen() { return m_TagLen; }

VXErrorCodeEnum VXSwfTag::LoadDataFromStream(VXBitStream&) { return kVXSuccess; }

VXBitStream VXSwfTag::GetDataStream() {
    VXBitStream stream;
    const unsigned char* data = GetData();
    unsigned int size = data == nullptr ? 0 : GetTagLen();
    // The body may be shorter than its length says. What a host's own class gives instead is its own affair.
    const auto skipped = reinterpret_cast<std::uintptr_t>(data) - reinterpret_cast<std::uintptr_t>(GetBody());
    if (skipped <= GetBodySize()) size = std::min(size, GetBodySize() - static_cast<unsigned int>(skipped));
    stream.LoadFromAllocedMem(data, size);
    return stream;
}

VXErrorCodeEnum VXSwfTag::PeepTagLength(VXBitStream& in, unsigned int& length) {
    length = 0;
    const unsigned int here = in.GetPosition();
    unsigned short header = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(header));
    length = header & 0x3Fu;
    if (length == kLongLength) VX_RETURN_IF_FAILED(in.ReadDWord(length));
    in.SetPosition(here);
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfTag::PeepTagType(VXBitStream& in, enuTagType& type) {
    unsigned short header = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(header));
    type = static_cast<enuTagType>(header >> 6);
    in.MovePosition(-2);
    return kVXSuccess;
}
