#include "framework/VXSwfTag.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "framework/VXCopyLimit_p.h"
#include "framework/VXDependencyWalk_p.h"
#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfTagNames_p.h"
#include "framework/VXSwfTagSet.h"

// Movies have hundreds of thousands.
static_assert(sizeof(void*) != 8 || sizeof(VXSwfTag) <= 40);

/// A body that is lent, and the one below it. It takes the place of the body, in a block.
struct VXSwfTag::Loan {
    unsigned char* data;
    VXByteView below;
    bool isBelowLent;
};

VXSwfTag::VXSwfTag(enuTagType type, short parsing) : m_TagType(type), m_Parsing(parsing) {}

VXSwfTag::VXSwfTag(const VXSwfTag& other) : m_TagType(other.m_TagType) { *this = other; }

VXSwfTag& VXSwfTag::operator=(const VXSwfTag& other) {
    if (this == &other) return *this;
    DropLoans();
    m_TagType = other.m_TagType;
    m_TagLen = other.m_TagLen;
    m_Body = other.m_Body;
    // A copy takes nothing over that is lent.
    if (other.m_IsLent != 0) {
        const Loan* loan = other.GetLoan();
        while (loan->isBelowLent) loan = reinterpret_cast<Loan*>(loan->below.GetBytes());
        m_Body = loan->below;
        m_TagLen = m_Body.GetSize();
    }
    m_IsLongTag = other.m_IsLongTag;
    m_IsOwnBody = other.m_IsOwnBody;
    m_Parsing = other.m_Parsing;
    m_FLVersion = other.m_FLVersion;
    return *this;
}

VXSwfTag::~VXSwfTag() { DropLoans(); }

VXSwfTag::Loan* VXSwfTag::GetLoan() const {
    return m_IsLent != 0 ? reinterpret_cast<Loan*>(m_Body.GetBytes()) : nullptr;
}

void VXSwfTag::DropLoans(const Loan* mark) {
    while (m_IsLent != 0 && GetLoan() != mark) SetData(nullptr);
}

VXErrorCodeEnum VXSwfTag::LoadFromStream(VXBitStream& in) {
    unsigned short header = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(header));
    m_TagType = static_cast<enuTagType>(header >> 6);
    m_TagLen = header & 0x3Fu;
    DropLoans();
    // The stream may lie over the old body.
    const VXByteView old = std::exchange(m_Body, VXByteView());
    if (m_TagLen == kLongLength) {
        m_IsLongTag = 1;
        VX_RETURN_IF_FAILED(in.ReadDWord(m_TagLen));
    }
    if (m_TagLen == 0) return kVXSuccess;
    m_IsOwnBody = in.HasOnlyViews() ? 1 : 0;
    m_Body = in.ReadView(m_TagLen);
    m_TagLen = m_Body.GetSize();
    if (m_TagLen == 0) return kVXFailure;
    if (m_HasFields == 0) return kVXSuccess;
    VXBitStream fields = GetDataStream();
    fields.ShareWith(in);
    return LoadDataFromStream(fields);
}

VXErrorCodeEnum VXSwfTag::DumpToStream(VXBitStream& out) { return DumpHdrAndData(out); }

VXErrorCodeEnum VXSwfTag::DumpHdrAndData(VXBitStream& out) {
    // A header that stated more than is there would swallow the tags behind it.
    return DumpHdrAndBytes(out, GetBody(), std::min(m_TagLen, GetBodySize()));
}

VXErrorCodeEnum VXSwfTag::DumpHdrAndBody(VXBitStream& out, VXBitStream& body) {
    m_TagLen = body.GetSize();
    return DumpHdrAndBytes(out, body.GetBuffer(), m_TagLen);
}

VXErrorCodeEnum VXSwfTag::DumpHdrAndBytes(VXBitStream& out, const unsigned char* body, unsigned int length) {
    constexpr unsigned int kSmall = 122;
    // Borrowed room may take the header and not the body, so both go by themselves.
    if (length == 0 || length > kSmall || out.IsBorrowed()) {
        VX_RETURN_IF_FAILED(DumpHdr(length, out));
        return length == 0 ? kVXSuccess : out.Write(body, length);
    }
    unsigned char bytes[kLongestHdr + kSmall];
    const unsigned int size = MakeHdr(length, bytes);
    std::memcpy(bytes + size, body, length);
    VXIgnore(out.FlushBits());  // a failed flush does not hold up the bytes
    return out.Write(bytes, size + length);
}

VXErrorCodeEnum VXSwfTag::DumpHdrToStream(VXBitStream& out) { return DumpHdr(m_TagLen, out); }

VXErrorCodeEnum VXSwfTag::DumpHdr(unsigned int length, VXBitStream& out) {
    unsigned char bytes[kLongestHdr];
    const unsigned int size = MakeHdr(length, bytes);
    // Kept: the word is not examined.
    VXIgnore(out.WriteWord(static_cast<unsigned short>(bytes[0] | bytes[1] << 8)));
    return size == kLongestHdr ? out.WriteDWord(length) : kVXSuccess;
}

/// Answers how many bytes the header for a body of `length` takes.
unsigned int VXSwfTag::MakeHdr(unsigned int length, unsigned char* bytes) const {
    const bool isLong = m_IsLongTag != 0 || length >= kLongLength;
    const auto word = static_cast<unsigned short>(m_TagType << 6 | (isLong ? kLongLength : length));
    std::memcpy(bytes, &word, sizeof word);
    if (!isLong) return sizeof word;
    std::memcpy(bytes + sizeof word, &length, sizeof length);
    return kLongestHdr;
}

VXErrorCodeEnum VXSwfTag::GenerateTagHdr(unsigned char length, VXBitStream& out) {
    return out.WriteWord(static_cast<unsigned short>(static_cast<unsigned int>(m_TagType) << 6 | length));
}

VXSwfTag* VXSwfTag::Copy() { return CopyThroughWire(VXSwfTagFactory::CreateTagOfType(m_TagType, 1, 0)); }

VXSwfTag* VXSwfTag::CopyThroughWire(VXSwfTag* copy) {
    if (copy == nullptr) return nullptr;
    std::unique_ptr<VXSwfTag> owner(copy);
    const VXCopyLimit limit;
    VXBitStream wire;
    VXIgnore(DumpToStream(wire));  // a copy holds as much as came through
    if (wire.IsOutOfMemory()) throw std::bad_alloc();
    const unsigned int kept = GetKeptBody().GetSize();
    VXCopyLimit::Admit(kept != 0 ? kept : wire.GetSize());
    wire.SetPosition(0);
    VXIgnore(copy->LoadFromStream(wire));
    return owner.release();
}

unsigned char* VXSwfTag::GetBody() const { return m_IsLent != 0 ? GetLoan()->data : m_Body.GetBytes(); }

unsigned int VXSwfTag::GetBodySize() const {
    // Whoever lends a body sets the length to what it has.
    return m_IsLent != 0 ? m_TagLen : m_Body.GetSize();
}

unsigned char* VXSwfTag::GetFirstWord() const {
    return std::min(m_TagLen, GetBodySize()) >= 2 ? GetBody() : nullptr;
}

void VXSwfTag::SetData(unsigned char* data) {
    if (data != nullptr) {
        VXByteView place(VXByteBlock::Allocate(sizeof(Loan)));
        new (place.GetBytes()) Loan{data, std::move(m_Body), m_IsLent != 0};
        m_Body = std::move(place);
        m_IsLent = 1;
    } else if (Loan* loan = GetLoan(); loan != nullptr) {
        VXByteView below = std::move(loan->below);
        m_IsLent = loan->isBelowLent ? 1 : 0;
        loan->~Loan();
        m_Body = std::move(below);
    } else {
        m_Body = VXByteView();
    }
}

unsigned char* VXSwfTag::GetOwnBody() {
    if (m_IsLent == 0 && m_IsOwnBody == 0) {
        m_Body.Detach();
        m_IsOwnBody = 1;
    }
    return GetBody();
}

void VXSwfTag::SetCharacterId(unsigned short id) {
    if (GetFirstWord() == nullptr) return;
    unsigned char* word = GetOwnBody();
    word[0] = static_cast<unsigned char>(id);
    word[1] = static_cast<unsigned char>(id >> 8);
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
    VXDependencyWalk(list, set).FromTag(this);
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
    // The body may be shorter than its length says. A subclass's own buffer is trusted.
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
