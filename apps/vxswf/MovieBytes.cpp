#include "MovieBytes.h"

#include <zlib.h>

#include <iterator>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kHeader = 8;
constexpr std::size_t kLongestMovie = std::size_t{1} << 30;

constexpr struct {
    unsigned int type;
    const char* name;
    bool defines;
} kTypes[] = {
    {0, "End", false},
    {1, "ShowFrame", false},
    {2, "DefineShape", true},
    {3, "FreeCharacter", false},
    {4, "PlaceObject", false},
    {5, "RemoveObject", false},
    {6, "DefineBits", true},
    {7, "DefineButton", true},
    {8, "JPEGTables", false},
    {9, "SetBackgroundColor", false},
    {10, "DefineFont", true},
    {11, "DefineText", true},
    {12, "DoAction", false},
    {13, "DefineFontInfo", false},
    {14, "DefineSound", true},
    {15, "StartSound", false},
    {17, "DefineButtonSound", false},
    {18, "SoundStreamHead", false},
    {19, "SoundStreamBlock", false},
    {20, "DefineBitsLossless", true},
    {21, "DefineBitsJPEG2", true},
    {22, "DefineShape2", true},
    {23, "DefineButtonCxform", false},
    {24, "Protect", false},
    {26, "PlaceObject2", false},
    {28, "RemoveObject2", false},
    {32, "DefineShape3", true},
    {33, "DefineText2", true},
    {34, "DefineButton2", true},
    {35, "DefineBitsJPEG3", true},
    {36, "DefineBitsLossless2", true},
    {37, "DefineEditText", true},
    {39, "DefineSprite", true},
    {41, "ProductInfo", false},
    {43, "FrameLabel", false},
    {45, "SoundStreamHead2", false},
    {46, "DefineMorphShape", true},
    {48, "DefineFont2", true},
    {56, "ExportAssets", false},
    {57, "ImportAssets", false},
    {58, "EnableDebugger", false},
    {59, "DoInitAction", false},
    {60, "DefineVideoStream", true},
    {61, "VideoFrame", false},
    {62, "DefineFontInfo2", false},
    {63, "DebugID", false},
    {64, "EnableDebugger2", false},
    {65, "ScriptLimits", false},
    {66, "SetTabIndex", false},
    {69, "FileAttributes", false},
    {70, "PlaceObject3", false},
    {71, "ImportAssets2", false},
    {72, "DoABC", false},
    {73, "DefineFontAlignZones", false},
    {74, "CSMTextSettings", false},
    {75, "DefineFont3", true},
    {76, "SymbolClass", false},
    {77, "Metadata", false},
    {78, "DefineScalingGrid", false},
    {82, "DoABC2", false},
    {83, "DefineShape4", true},
    {84, "DefineMorphShape2", true},
    {86, "DefineSceneAndFrameLabelData", false},
    {87, "DefineBinaryData", true},
    {88, "DefineFontName", false},
    {89, "StartSound2", false},
    {90, "DefineBitsJPEG4", true},
    {91, "DefineFont4", true},
    {93, "EnableTelemetry", false},
    {94, "PlaceObject4", false},
};

const auto* FindType(unsigned int type) {
    const auto* found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                     [type](const auto& known) { return known.type == type; });
    return found == std::end(kTypes) ? nullptr : found;
}

}  // namespace

Rectangle ReadRectangle(ByteReader& in) {
    const unsigned int width = in.Bits(5);
    Rectangle rectangle;
    for (std::int32_t* edge : {&rectangle.xMin, &rectangle.xMax, &rectangle.yMin, &rectangle.yMax})
        *edge = in.SignedBits(width);
    return rectangle;
}

std::string FramedTag::Describe() const {
    const char* const name = NameOfTagType(type);
    return std::string(*name != '\0' ? name : "Unknown") + '(' + std::to_string(type) + ')';
}

unsigned short FramedTag::GetCharacterId() const {
    const auto* known = FindType(type);
    return known != nullptr && known->defines ? ByteReader(body).U16() : static_cast<unsigned short>(0);
}

const char* NameOfTagType(unsigned int type) {
    const auto* known = FindType(type);
    return known != nullptr ? known->name : "";
}

std::optional<FramedTag> TagFrames::Next() {
    constexpr unsigned int kLong = 63;
    const std::size_t offset = m_Offset + m_In.GetPosition();
    const unsigned int header = m_In.U16();
    if (header >> 6 == 0) return std::nullopt;
    const std::size_t length = (header & kLong) == kLong ? m_In.U32() : header & kLong;
    const std::size_t bodyOffset = m_Offset + m_In.GetPosition();
    return FramedTag{header >> 6, offset, bodyOffset, length, m_In.Take(length)};
}

std::string RefuseSignature(ByteSpan bytes) {
    const bool isMovie = bytes.size() >= 3 && (bytes[0] == 'F' || bytes[0] == 'C' || bytes[0] == 'Z') &&
                         bytes[1] == 'W' && bytes[2] == 'S';
    return isMovie ? "" : "is not an SWF movie";
}

bool InflateTo(ByteSpan deflated, std::size_t longest, std::vector<unsigned char>& bytes, bool& isDamaged) {
    constexpr std::size_t kStep = 1 << 16;
    z_stream stream = {};
    stream.next_in = const_cast<unsigned char*>(deflated.data());
    stream.avail_in = static_cast<unsigned int>(deflated.size());
    isDamaged = false;
    if (inflateInit(&stream) != Z_OK) throw std::bad_alloc();
    struct End {
        z_stream* stream;
        ~End() { inflateEnd(stream); }
    } const end{&stream};
    int code = Z_OK;
    while (code == Z_OK && bytes.size() < longest) {
        const std::size_t size = bytes.size();
        const std::size_t room = std::min(kStep, longest - size);
        bytes.resize(size + room);
        stream.next_out = bytes.data() + size;
        stream.avail_out = static_cast<unsigned int>(room);
        code = inflate(&stream, Z_NO_FLUSH);
        bytes.resize(size + room - stream.avail_out);
    }
    if (code == Z_MEM_ERROR) throw std::bad_alloc();
    isDamaged = code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR;
    return code == Z_STREAM_END;
}

std::string MovieBytes::Inflate(ByteSpan deflated) {
    const std::size_t longest = std::min(std::max(m_StatedLength, kHeader), kLongestMovie);
    bool isDamaged = false;
    const bool isWhole = InflateTo(deflated, longest, m_Bytes, isDamaged);
    const std::string place = std::to_string(m_Bytes.size());
    if (isDamaged) return "is damaged: its compressed data are wrong behind byte " + place;
    if (!isWhole && m_Bytes.size() == longest)
        return "goes on behind byte " + place + ", where it has to end";
    return "";
}

std::string MovieBytes::Open(std::vector<unsigned char> file) {
    if (std::string refusal = RefuseSignature(file); !refusal.empty()) return refusal;
    if (file[0] == 'Z')
        return "is compressed with LZMA (ZWS), which copy turns into a plain movie with --plain";
    ByteReader head(file);
    head.Take(4);
    m_StatedLength = head.U32();
    m_IsCompressed = file[0] == 'C';
    if (m_IsCompressed && file.size() >= kHeader) {
        m_Bytes.assign(file.begin(), file.begin() + kHeader);
        m_Bytes[0] = 'F';
        if (std::string error = Inflate(ByteSpan(file).subspan(kHeader)); !error.empty()) return error;
    } else {
        m_Bytes = std::move(file);
    }
    ByteReader in(m_Bytes);
    in.Take(kHeader);
    m_Frame = ReadRectangle(in);
    m_FrameRate = in.U16() / 256.0;
    m_FrameCount = in.U16();
    m_TagsOffset = in.GetPosition();
    if (!in.HasFailed()) return "";
    const std::string shortness = DescribeShortness();
    return shortness.empty() ? "has no whole header" : shortness;
}

std::string DescribeEnd(std::size_t size, std::size_t stated) {
    return "ends at byte " + std::to_string(size) + " of the " + std::to_string(stated) +
           " that its header states";
}

std::string MovieBytes::DescribeShortness() const {
    return m_Bytes.size() < m_StatedLength ? DescribeEnd(m_Bytes.size(), m_StatedLength) : "";
}

std::string MovieBytes::DescribePlace(std::size_t index) const {
    TagFrames tags = GetTags();
    std::optional<FramedTag> tag = tags.Next();
    for (std::size_t i = 0; i < index && tag; ++i) tag = tags.Next();
    if (!tag) return "behind its last tag";
    return "inside tag " + std::to_string(index) + ", " + tag->Describe() + ", at byte " +
           std::to_string(tag->offset);
}
