#include "framework/VXFlintFile.h"

#include <algorithm>
#include <climits>
#include <new>

#include "framework/VXCopyLimit_p.h"
#include "framework/VXSwfTag.h"
#include "graphics/VXTwips.h"
#include "memory/VXMemoryLimit_p.h"
#include "platform/CVXTempFileStreamReadWrite.h"
#include "timeline/VXSwfFileAttributesTag.h"

namespace {

constexpr unsigned int kPlainHeaderSize = 8;
constexpr unsigned int kLengthOffset = 4;
constexpr unsigned int kEndTagSize = 2;

/// What `step` answers, and 1 where it runs out of memory.
template <typename Step>
VXErrorCodeEnum FailWithoutMemory(VXBitStream& stream, const Step& step) {
    try {
        return step();
    } catch (const std::bad_alloc&) {
        stream.NoteLackOfMemory();
        return kVXFailure;
    }
}

}  // namespace

VXFlintFile::VXFlintFile() : m_EndTag(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_END, 0, 0)) {}

VXFlintFile::VXFlintFile(const VXFlintFile& other) = default;

VXFlintFile& VXFlintFile::operator=(const VXFlintFile& other) = default;

VXFlintFile::~VXFlintFile() = default;

VXErrorCodeEnum VXFlintFile::LoadFromStream(VXBitStream& in) {
    return FailWithoutMemory(in, [&] {
        const std::size_t given = in.GetRemaining();
        VX_RETURN_IF_FAILED(LoadHdrFromStream(in));
        in.ShareBuffer();
        const VXMemoryLimit limit(VXMemoryLimit::RoomForMovie(given, in.GetRemaining()));
        return LoadFromStream(in, m_Version);
    });
}

VXErrorCodeEnum VXFlintFile::LoadFromStream(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    VXBitStream in;
    // A stream that could not be read whole leaves an empty buffer, and the header fails on that.
    in.LoadFromStream(stream);
    in.m_HasOnlyViews = true;
    return LoadFromStream(in);
}

VXErrorCodeEnum VXFlintFile::LoadHdrFromStream(VXBitStream& in) {
    unsigned int count = sizeof m_Signature;
    VX_RETURN_IF_FAILED(in.Read(m_Signature, count));
    if (m_Signature[0] != 'C' && m_Signature[0] != 'F') return kVXFailure;
    if (m_Signature[1] != 'W' || m_Signature[2] != 'S') return kVXFailure;
    VX_RETURN_IF_FAILED(in.ReadByte(m_Version));
    unsigned char length[4] = {};
    count = sizeof length;
    VX_RETURN_IF_FAILED(in.Read(length, count));
    m_FileLength = 0;
    for (unsigned int i = 0; i < sizeof length; ++i) m_FileLength |= unsigned{length[i]} << 8 * i;
    if (m_Signature[0] == 'C' && in.UnCompress(kPlainHeaderSize, m_FileLength) == 0) return kVXFailure;
    VX_RETURN_IF_FAILED(m_FrameRect.LoadFromStream(in));
    // Kept: the fraction of the frame rate, which comes first, is dropped.
    unsigned char rate[2] = {};
    count = sizeof rate;
    VX_RETURN_IF_FAILED(in.Read(rate, count));
    m_FrameRate = rate[1];
    unsigned char frames[2] = {};
    count = sizeof frames;
    VX_RETURN_IF_FAILED(in.Read(frames, count));
    m_FrameCount = static_cast<unsigned short>(frames[0] | frames[1] << 8);
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintFile::DumpHdrToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.Write(m_Signature, static_cast<unsigned int>(sizeof m_Signature)));
    VX_RETURN_IF_FAILED(out.WriteByte(m_Version));
    VX_RETURN_IF_FAILED(out.WriteDWord(m_FileLength));
    VX_RETURN_IF_FAILED(m_FrameRect.DumpToStream(out));
    VX_RETURN_IF_FAILED(out.WriteWord(static_cast<unsigned short>(m_FrameRate << 8)));
    return out.WriteWord(m_FrameCount);
}

VXErrorCodeEnum VXFlintFile::DumpEndTagToStream(VXBitStream& out) { return m_EndTag->DumpToStream(out); }

VXErrorCodeEnum VXFlintFile::DumpToStream(VXBitStream& out) {
    return FailWithoutMemory(out, [&] { return DumpWhole(out); });
}

VXErrorCodeEnum VXFlintFile::DumpWhole(VXBitStream& out) {
    out.ForgetFailure();
    out.SetPosition(0);
    VX_RETURN_IF_FAILED(DumpHdrToStream(out));
    VX_RETURN_IF_FAILED(VXSwfTagSet::DumpToStream(out));
    out.SetPosition(out.GetSize());
    VXIgnore(DumpEndTagToStream(out));  // answers 0 also when it is lost, which fails the dump below
    const unsigned int length = out.GetSize();
    out.SetPosition(0);
    out.MovePosition(kLengthOffset);
    VXIgnore(out.WriteDWord(length));  // these bytes are there already
    out.SetPosition(length);
    const bool isCompressed = m_Signature[0] == 'C';
    // Writes to an output stream answer 0 whatever it takes.
    if (out.HasFailed()) return isCompressed ? kVXCompressionFailed : kVXFailure;
    if (!isCompressed) return kVXSuccess;
    return out.StreamedCompress(kPlainHeaderSize) != 0 ? kVXSuccess : kVXCompressionFailed;
}

VXErrorCodeEnum VXFlintFile::DumpToStream(IVXStream* target) {
    if (target == nullptr) return kVXFailure;
    const bool isCompressed = m_Signature[0] == 'C';
    // Only a compressed dump switches the mode, of a stream that can be switched.
    const bool isSwitched = isCompressed && dynamic_cast<IVXReadWriteStream*>(target) != nullptr;
    if (target->IsReading() && !isSwitched) return kVXFailure;
    VXErrorCodeEnum result = kVXSuccess;
    if (isCompressed) {
        CVXTempFileStreamReadWrite plain;
        plain.SetMode(IVXStream::kWrite);
        plain.Seek(0, kVXSeekFromStart);
        VXBitStream out;
        out.SetOutputStream(&plain);
        out.SetCompressionStream(target);
        result = DumpToStream(out);
    } else {
        VXBitStream out;
        out.SetOutputStream(target);
        result = DumpToStream(out);
    }
    target->SetEndOfStream();
    return result;
}

VXErrorCodeEnum VXFlintFile::GetFrameInfoFromHeader(VXBitStream& in, unsigned int* frameCount,
                                                    unsigned int* frameRate) {
    VX_RETURN_IF_FAILED(LoadHdrFromStream(in));
    if (frameCount != nullptr) *frameCount = m_FrameCount;
    if (frameRate != nullptr) *frameRate = m_FrameRate;
    return kVXSuccess;
}

void VXFlintFile::SetWidth(unsigned int width) {
    m_FrameRect.XMin = 0.0;
    m_FrameRect.XMax = width;
}

void VXFlintFile::SetHeight(unsigned int height) {
    m_FrameRect.YMin = 0.0;
    m_FrameRect.YMax = height;
}

unsigned int VXFlintFile::GetWidth() const {
    return VXTruncateToUnsigned(m_FrameRect.XMax - m_FrameRect.XMin);
}

unsigned int VXFlintFile::GetHeight() const {
    return VXTruncateToUnsigned(m_FrameRect.YMax - m_FrameRect.YMin);
}

VXErrorCodeEnum VXFlintFile::UpdateTagLists(VXSwfTag* tag) {
    if (tag == nullptr) return kVXSuccess;
    const enuTagType type = tag->GetTagType();
    const auto count = std::count(m_ListsToMaintain.begin(), m_ListsToMaintain.end(), type);
    if (count == 0) return kVXSuccess;
    std::shared_ptr<std::list<VXSwfTag*>>& list = m_TagLists[type];
    if (list == nullptr) list = std::make_shared<std::list<VXSwfTag*>>();
    list->insert(list->end(), static_cast<std::size_t>(count), tag);
    return kVXSuccess;
}

void VXFlintFile::Unlist(const std::vector<VXSwfTag*>& tags) {
    for (auto& [type, list] : m_TagLists) {
        if (list == nullptr) continue;
        for (auto tag = tags.rbegin(); tag != tags.rend(); ++tag) {
            while (!list->empty() && list->back() == *tag) list->pop_back();
        }
    }
}

VXErrorCodeEnum VXFlintFile::SetListsTobeMaintained(std::list<enuTagType>& types) {
    m_ListsToMaintain = types;
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintFile::GetTagListOfType(enuTagType type, std::list<VXSwfTag*>** list) {
    *list = m_TagLists[type].get();
    return kVXSuccess;
}

unsigned char VXFlintFile::GetActionScriptVersion() const {
    const TagIter tag = FindNthTagOfType(VXSwfTagFactory::TAG_FILEATTRIBUTES, 1);
    if (tag == end()) return 2;
    const auto* attributes = dynamic_cast<const VXSwfFileAttributesTag*>(*tag);
    return attributes != nullptr && attributes->GetHasAS3() != 0 ? 3 : 2;
}

short VXFlintFile::CanSupportAS3Version() const {
    if (GetNumTags() == 0 || GetActionScriptVersion() == 3) return 1;
    return FindNthTagOfType(VXSwfTagFactory::TAG_DOACTION, 1) == end() ? 1 : 0;
}

VXErrorCodeEnum VXFlintFile::DumpPlain(VXBitStream& out) {
    struct Restored {
        unsigned char& mark;
        const unsigned char old = mark;
        ~Restored() { mark = old == 'C' ? 'C' : 'F'; }
    } const restored{m_Signature[0]};
    m_Signature[0] = 'F';
    return DumpWhole(out);
}

VXFlintFile* VXFlintFile::Copy() {
    auto copy = std::make_unique<VXFlintFile>();
    const VXCopyLimit limit;
    VXBitStream wire;
    const VXErrorCodeEnum dumped = DumpPlain(wire);  // a copy holds as much as came through
    if (wire.IsOutOfMemory()) throw std::bad_alloc();
    VXCopyLimit::Admit(wire.GetSize());
    wire.SetPosition(0);
    wire.ShareBuffer();
    wire.m_HasOnlyViews = true;
    if (copy->LoadHdrFromStream(wire) == kVXSuccess) {
        VXIgnore(copy->LoadFromStream(wire, copy->m_Version));  // a tag that fails ends it
    }
    // Kept: the room for the copy is the length that this header states, so its end tag lies no earlier than
    // that and its own length says so. The gap itself would only ever hold zeros, which nothing reads.
    const std::uint64_t stated = std::uint64_t{m_FileLength} + kEndTagSize;
    if (dumped == kVXSuccess && stated > wire.GetSize()) {
        copy->m_FileLength = static_cast<unsigned int>(std::min<std::uint64_t>(stated, UINT_MAX));
    }
    return copy.release();
}
