#include "whole/VXWholeMovie.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "memory/VXMemoryLimit_p.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "whole/VXCarriedTag_p.h"
#include "whole/VXMoviePacking_p.h"

namespace {

constexpr unsigned int kPlainHeaderSize = 8;
constexpr unsigned int kLengthOffset = 4;
constexpr unsigned int kLzmaHeaderSize = 12;  // with the length of the stream
constexpr unsigned int kLzmaLengthOffset = 8;
constexpr unsigned int kRateAndCountSize = 4;
constexpr unsigned int kChunk = 65536;
constexpr unsigned char kDeepest = 64;
constexpr unsigned char kHasAS3 = 0x08;
constexpr unsigned char kEndTag[] = {0, 0};

// What a compressed movie may become.
constexpr std::uint64_t kLzmaRoom = std::uint64_t{64} << 20;
constexpr std::uint64_t kMostInflation = 1032;

const unsigned char* Here(VXBitStream& in) { return in.GetBuffer() + in.GetPosition(); }

/// Fills `sprite` with what `carried` holds.
VXErrorCodeEnum OpenSprite(VXSwfTag& carried, VXSwfDefineSpriteTag& sprite) {
    // The sprite itself reads its ID and its frame count alone, so that no tag inside is parsed.
    constexpr unsigned int kIdAndCount = 4;
    constexpr unsigned char kHeader[] = {0xC4, 0x09};  // type 39, 4 bytes
    VXBitStream body = carried.GetDataStream();
    if (body.GetRemaining() < kIdAndCount) return kVXFailure;
    VXBitStream alone;
    VX_RETURN_IF_FAILED(alone.Write(kHeader, sizeof kHeader));
    VX_RETURN_IF_FAILED(alone.Write(body.GetBuffer(), kIdAndCount));
    alone.SetPosition(0);
    VX_RETURN_IF_FAILED(sprite.LoadFromStream(alone));
    body.SetPosition(kIdAndCount);
    for (;;) {
        const VXTagHeader header(Here(body), body.GetRemaining());
        if (header.size == 0 || header.type == VXSwfTagFactory::TAG_END) return kVXSuccess;
        VXTagOwner tag = VXMakeCarriedTag(carried.GetFLVersion());
        if (tag->LoadFromStream(body) != kVXSuccess) return kVXSuccess;  // no byte of its body is there
        sprite.IncludeTag(tag.release(), -1);
    }
}

}  // namespace

VXWholeMovie::VXWholeMovie() : m_Tail(VXByteView(VXByteBlock::CopyOf(kEndTag, sizeof kEndTag))) {}

VXWholeMovie::~VXWholeMovie() = default;

bool VXWholeMovie::HasLzma() { return VXHasLzma(); }

void VXWholeMovie::SetPacking(Packing packing) {
    SetCompression(packing != Packing::kNone ? 1 : 0);
    if (packing != Packing::kNone) m_Packing = packing;
}

void VXWholeMovie::SetPackingLevel(int level) { m_Level = std::clamp(level, 0, 9); }

template <typename Step>
VXErrorCodeEnum VXWholeMovie::Run(const Step& step) {
    try {
        m_ErrorText.clear();
        return step();
    } catch (const std::bad_alloc&) {
        m_ErrorText = "out of memory";  // short enough to take none
        return kVXFailure;
    }
}

VXErrorCodeEnum VXWholeMovie::Fail(std::string text, VXErrorCodeEnum code) {
    m_ErrorText = std::move(text);
    return code;
}

VXErrorCodeEnum VXWholeMovie::LoadFromStream(VXBitStream& in) {
    return Run([&] { return Load(in); });
}

VXErrorCodeEnum VXWholeMovie::LoadFromStream(IVXStream* stream) {
    return Run([&] {
        if (stream == nullptr) return Fail("no stream");
        VXBitStream in;
        if (in.LoadFromStream(stream) == 0) return Fail("the stream could not be read");
        in.m_HasOnlyViews = true;
        return Load(in);
    });
}

VXErrorCodeEnum VXWholeMovie::Load(VXBitStream& in) {
    if (GetNumTags() != 0) return Fail("the movie that is to take the load has tags");
    const unsigned int given = in.GetRemaining();
    const unsigned int start = in.GetPosition();
    const unsigned char* header = Here(in);
    // NOLINTNEXTLINE(bugprone-not-null-terminated-result): a search among three bytes
    if (given < 3 || std::memchr("FCZ", header[0], 3) == nullptr || header[1] != 'W' || header[2] != 'S') {
        return Fail("not an SWF movie");
    }
    if (given < kPlainHeaderSize) return Fail("the header ends early");
    m_StatedLength = VXDWordAt(header + kLengthOffset);
    if (header[0] == 'F') {
        in.SetPosition(start + kPlainHeaderSize);
        SetPacking(Packing::kNone);
        return LoadBody(in, given);
    }
    if (header[0] == 'C') {
        SetPacking(Packing::kDeflate);
        // The stated length would bound what inflates; what deflate can do bounds it as well.
        VXBitStream body;
        body.LoadFromAllocedMem(header, given);
        body.m_HasOnlyViews = true;
        if (body.UnCompress(kPlainHeaderSize, ~0u) == 0) return Fail("what is compressed does not inflate");
        in.SetPosition(start + given);
        return LoadBody(body, given);
    }
    if (!VXHasLzma()) return Fail("compressed with LZMA (ZWS), which this build cannot read");
    if (given < kLzmaHeaderSize) return Fail("the header ends early");
    SetPacking(Packing::kLzma);
    VXBitStream body;
    body.m_HasOnlyViews = true;
    VX_RETURN_IF_FAILED(body.Write(header, kPlainHeaderSize));
    const std::uint64_t stated = m_StatedLength < kPlainHeaderSize ? 0 : m_StatedLength - kPlainHeaderSize;
    const std::uint64_t most = std::min<std::uint64_t>(kLzmaRoom + kMostInflation * given, ~0u - kChunk);
    if (VXUnpackLzma(header + kLzmaHeaderSize, given - kLzmaHeaderSize, stated, most, body) != kVXSuccess) {
        return Fail("what is compressed with LZMA does not unpack");
    }
    in.SetPosition(start + given);
    body.SetPosition(kPlainHeaderSize);
    return LoadBody(body, given);
}

VXErrorCodeEnum VXWholeMovie::LoadBody(VXBitStream& body, std::size_t given) {
    m_CameLength = kPlainHeaderSize + body.GetRemaining();
    const unsigned char* info = Here(body);
    if (body.GetRemaining() == 0) return Fail("the header ends early");
    m_FrameInfoSize = (5 + 4 * (info[0] >> 3) + 7) / 8 + kRateAndCountSize;
    if (body.GetRemaining() < m_FrameInfoSize) return Fail("the header ends early");
    std::copy_n(info, m_FrameInfoSize, m_FrameInfo.begin());

    // The fields take their values from a plain header of these bytes.
    unsigned char header[kPlainHeaderSize + std::tuple_size_v<decltype(m_FrameInfo)>] = {'F', 'W', 'S'};
    std::copy_n(info - kPlainHeaderSize + 3, kPlainHeaderSize - 3 + m_FrameInfoSize, header + 3);
    VXBitStream fields;
    fields.LoadFromAllocedMem(header, kPlainHeaderSize + m_FrameInfoSize);
    const Packing packing = GetPacking();
    VX_RETURN_IF_FAILED(GetFrameInfoFromHeader(fields, nullptr, nullptr));
    SetPacking(packing);
    m_CameRect = GetFrameRect();
    m_CameRate = GetFrameRate();

    const VXMemoryLimit limit(VXMemoryLimit::RoomForMovie(given, body.GetRemaining()));
    body.MovePosition(static_cast<int>(m_FrameInfoSize));
    body.ShareBuffer();
    for (;;) {
        const unsigned int left = body.GetRemaining();
        const VXTagHeader tagHeader(Here(body), left);
        if (!tagHeader.IsWhole(left) || tagHeader.type == VXSwfTagFactory::TAG_END) break;
        VXTagOwner tag = VXMakeCarriedTag(GetFlintVersion());
        VX_RETURN_IF_FAILED(tag->LoadFromStream(body));
        IncludeTag(tag.release(), -1);
    }
    m_Tail = body.ReadView(body.GetRemaining());
    return kVXSuccess;
}

bool VXWholeMovie::IsLastTagCut() const {
    return m_Tail.GetSize() >= 2 &&
           VXTagHeader(m_Tail.GetBytes(), m_Tail.GetSize()).type != VXSwfTagFactory::TAG_END;
}

std::string VXWholeMovie::DescribeTail() const {
    const unsigned int size = m_Tail.GetSize();
    const VXTagHeader header(m_Tail.GetBytes(), size);
    const std::string bytes = std::to_string(size);
    if (size == 0) return "there is no end tag";
    if (size == 1) return "there is no end tag, and a byte that is no tag";
    if (IsLastTagCut()) {
        return "the last tag, of type " + std::to_string(header.type) + ", is cut: " + bytes +
               " bytes of it are there";
    }
    if (size != sizeof kEndTag) return std::to_string(size - sizeof kEndTag) + " bytes follow the end tag";
    return header.length == 0 ? "" : "the end tag states a length";
}

VXErrorCodeEnum VXWholeMovie::DumpToStream(VXBitStream& out) {
    return Run([&] { return Dump(out); });
}

VXErrorCodeEnum VXWholeMovie::DumpToStream(IVXStream* target) {
    return Run([&] {
        if (target == nullptr) return Fail("no stream");
        if (auto* both = dynamic_cast<IVXReadWriteStream*>(target)) both->SetMode(IVXStream::kWrite);
        VXBitStream out;
        out.SetOutputStream(target);
        const VXErrorCodeEnum result = Dump(out);
        target->SetEndOfStream();
        return result;
    });
}

VXErrorCodeEnum VXWholeMovie::Dump(VXBitStream& out) {
    const Packing packing = GetPacking();
    if (packing == Packing::kLzma && !VXHasLzma()) {
        return Fail("this build cannot compress with LZMA (ZWS)", kVXCompressionFailed);
    }
    out.ForgetFailure();
    out.SetPosition(0);
    const char signature = packing == Packing::kNone ? 'F' : packing == Packing::kDeflate ? 'C' : 'Z';
    const unsigned char header[kLzmaHeaderSize] = {static_cast<unsigned char>(signature), 'W', 'S',
                                                   GetFlintVersion()};
    VX_RETURN_IF_FAILED(out.Write(header, packing == Packing::kLzma ? kLzmaHeaderSize : kPlainHeaderSize));
    unsigned int length = kPlainHeaderSize;
    VX_RETURN_IF_FAILED(DumpPacked(out, length));

    const unsigned int end = out.GetPosition();
    out.SetPosition(kLengthOffset);
    VXIgnore(out.WriteDWord(length == m_CameLength ? m_StatedLength : length));  // these bytes are there
    if (packing == Packing::kLzma) {
        out.SetPosition(kLzmaLengthOffset);
        VXIgnore(out.WriteDWord(end - kLzmaHeaderSize - kVXLzmaProperties));
    }
    out.SetPosition(end);
    // Writes to an output stream answer 0 whatever it takes.
    return out.HasFailed() ? Fail("the target did not take all bytes") : kVXSuccess;
}

VXErrorCodeEnum VXWholeMovie::DumpPacked(VXBitStream& out, unsigned int& length) {
    const Packing packing = GetPacking();
    std::unique_ptr<VXPacker> packer;
    if (packing == Packing::kNone) packer = VXPacker::MakePlain(out);
    if (packing == Packing::kDeflate) packer = VXPacker::MakeDeflate(out, m_Level);
    if (packing == Packing::kLzma) {
        std::uint64_t size = m_Tail.GetSize();
        for (VXSwfTag* tag : *this) {
            if (tag != nullptr) size += tag->GetTagLen();
        }
        packer = VXPacker::MakeLzma(out, m_Level, size);
    }
    if (packer == nullptr) throw std::bad_alloc();
    VXBitStream stage;
    const auto put = [&](bool isLast) {
        const unsigned int count = stage.GetPosition();
        stage.SetPosition(0);
        length += count;
        if (stage.HasFailed()) throw std::bad_alloc();
        if (packer->Put(stage.GetBuffer(), count, isLast)) return kVXSuccess;
        return packing == Packing::kNone ? Fail("the target did not take all bytes")
                                         : Fail("packing failed", kVXCompressionFailed);
    };
    VX_RETURN_IF_FAILED(DumpFrameInfo(stage));
    for (VXSwfTag* tag : *this) {
        if (tag == nullptr) continue;
        if (const VXErrorCodeEnum code = tag->DumpToStream(stage); code != kVXSuccess) {
            return Fail("a tag of type " + std::to_string(tag->GetTagType()) + " cannot be written", code);
        }
        if (stage.GetPosition() >= kChunk) VX_RETURN_IF_FAILED(put(false));
    }
    if (m_Tail) VX_RETURN_IF_FAILED(stage.Write(m_Tail.GetBytes(), m_Tail.GetSize()));
    return put(true);
}

VXErrorCodeEnum VXWholeMovie::DumpFrameInfo(VXBitStream& out) {
    VXFlintRectangle rect = GetFrameRect();
    const unsigned int rectSize = m_FrameInfoSize - kRateAndCountSize;
    if (m_FrameInfoSize != 0 && rect.XMin == m_CameRect.XMin && rect.XMax == m_CameRect.XMax &&
        rect.YMin == m_CameRect.YMin && rect.YMax == m_CameRect.YMax) {
        VX_RETURN_IF_FAILED(out.Write(m_FrameInfo.data(), rectSize));
    } else {
        VX_RETURN_IF_FAILED(rect.DumpToStream(out));
    }
    const bool isRateAsCame = m_FrameInfoSize != 0 && GetFrameRate() == m_CameRate;
    VX_RETURN_IF_FAILED(out.WriteByte(isRateAsCame ? m_FrameInfo[rectSize] : 0));
    VX_RETURN_IF_FAILED(out.WriteByte(static_cast<unsigned char>(GetFrameRate())));
    return out.WriteWord(GetFrameCount());
}

VXErrorCodeEnum VXWholeMovie::Parse(VXSwfTagSet& set, TagIter place) {
    return Run([&] { return ParseTag(set, place); });
}

VXErrorCodeEnum VXWholeMovie::ParseTag(VXSwfTagSet& set, TagIter place) {
    VXSwfTag* carried = *place;
    if (carried == nullptr || !VXIsCarried(*carried)) return kVXSuccess;
    const enuTagType type = carried->GetTagType();
    const unsigned char version = carried->GetFLVersion();
    VXTagOwner parsed(VXSwfTagFactory::CreateTagOfType(type, 1, 0), &VXSwfTagFactory::DeleteTag);
    if (VXIsCarried(*parsed)) return kVXSuccess;
    parsed->SetFLVersion(version);

    const unsigned int length = carried->GetTagLen();
    const VXMemoryLimit limit(VXMemoryLimit::RoomForMovie(length, length));
    VXErrorCodeEnum code = kVXFailure;
    if (auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(parsed.get())) {
        if (set.m_Level >= kDeepest) return Fail("a sprite lies inside 64 others");
        static_cast<VXSwfTagSet*>(sprite)->m_Level = static_cast<unsigned char>(set.m_Level + 1);
        code = OpenSprite(*carried, *sprite);
    } else {
        VXBitStream wire;
        VX_RETURN_IF_FAILED(carried->DumpToStream(wire));
        if (wire.HasFailed()) throw std::bad_alloc();
        wire.SetPosition(0);
        code = parsed->LoadFromStream(wire);
    }
    if (code != kVXSuccess) {
        return Fail("the fields of a tag of type " + std::to_string(type) + " cannot be read", code);
    }

    std::list<VXSwfTag*>* list = nullptr;
    if (&set == this) VX_RETURN_IF_FAILED(GetTagListOfType(type, &list));
    if (list != nullptr) std::replace(list->begin(), list->end(), carried, parsed.get());
    Hold(parsed.get());
    *place = parsed.release();
    Release(carried);
    return kVXSuccess;
}

unsigned char VXWholeMovie::GetActionScriptVersion() const {
    const TagIter tag = FindNthTagOfType(VXSwfTagFactory::TAG_FILEATTRIBUTES, 1);
    if (tag == end() || !VXIsCarried(**tag)) return VXFlintFile::GetActionScriptVersion();
    return (*tag)->GetTagLen() != 0 && ((*tag)->GetData()[0] & kHasAS3) != 0 ? 3 : 2;
}
