#include "whole/VXCharacterIds.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

using Role = VXCharacterIds::Role;

/// Goes through the fields of one body. A field that is not there stops the walk: it and all that follow are 0
/// then, so that every loop ends.
class Walk {
public:
    Walk(const unsigned char* body, unsigned int length, unsigned int offset, unsigned int level,
         VXCharacterIds::Visitor visitor, void* context)
        : m_Body(body),
          m_NumBits(std::uint64_t{length} * 8),
          m_Offset(offset),
          m_Level(level),
          m_Visitor(visitor),
          m_Context(context) {}

    bool Run(unsigned int type);

    // What stands behind the first ID, or in a body without one, up to the last ID.

    template <unsigned int version>
    void Shape();
    template <unsigned int version>
    void MorphShape();
    template <unsigned int colorSize>
    void Text();
    void EditText();
    void Button();
    void Button2();
    void ButtonSound();
    void PlaceObject2();
    void PlaceObject3();
    void Sprite();
    void NamedEntries();
    void ImportAssets();
    void ImportAssets2();

private:
    void Stop() {
        m_HasFailed = true;
        m_Bit = m_NumBits;
    }

    // Fields. Those of whole bytes begin at a byte.

    unsigned int Bits(unsigned int count);  // up to 8
    void SkipBits(std::uint64_t count) {
        if (m_NumBits - m_Bit < count) return Stop();
        m_Bit += count;
    }
    void Align() { m_Bit = (m_Bit + 7) / 8 * 8; }
    unsigned int U8() {
        Align();
        const auto at = static_cast<std::size_t>(m_Bit / 8);
        SkipBits(8);
        return m_HasFailed ? 0 : m_Body[at];
    }
    unsigned int U16() {
        const unsigned int low = U8();
        return low | U8() << 8;
    }
    unsigned int U32() {
        const unsigned int low = U16();
        return low | U16() << 16;
    }
    void Skip(std::uint64_t bytes) {
        Align();
        SkipBits(bytes * 8);
    }
    void Str();
    unsigned int Id(Role role);

    // Records.

    void Rect();
    void Matrix();
    void CxFormWithAlpha();
    void SoundInfo();
    void FilterList();
    bool EndsWithoutClassName(unsigned int flags, unsigned int more) const;
    void ButtonRecords(bool isButton2);
    void Entries(Role role);
    unsigned int ColorSize() const { return m_ShapeVersion < 3 ? 3 : 4; }
    void Styles();
    void FillStyle();
    void LineStyle();
    void Matrices();
    void ShapeRecords();

    const unsigned char* m_Body;
    std::uint64_t m_Bit = 0;
    std::uint64_t m_NumBits;
    unsigned int m_Offset;  // of the body in the one that was given
    unsigned int m_Level;   // sprites around
    VXCharacterIds::Visitor m_Visitor;
    void* m_Context;
    bool m_HasFailed = false;
    bool m_HasFailedInside = false;
    unsigned int m_ShapeVersion = 0;  // 3: colours have alpha. 4: lines have caps and joins
    unsigned int m_States = 1;        // 2 in a morph shape, whose fields stand for the start and for the end
};

enum class Front : unsigned char { kNone, kOwn, kReference };
constexpr unsigned char kNoDepth = 0xFF;

struct Row {
    unsigned short type;
    Front front;                     // the first two bytes of the body
    void (Walk::*rest)() = nullptr;  // what else may have IDs
    unsigned char depth = kNoDepth;  // offset of the depth
};

// Every published type that has an ID or a depth, and NameCharacter, which movies had before. Those without a row
// have neither.
constexpr Row kRows[] = {
    {2, Front::kOwn, &Walk::Shape<1>},            // DefineShape
    {3, Front::kReference},                       // FreeCharacter
    {4, Front::kReference, nullptr, 2},           // PlaceObject
    {5, Front::kReference, nullptr, 2},           // RemoveObject
    {6, Front::kOwn},                             // DefineBits
    {7, Front::kOwn, &Walk::Button},              // DefineButton
    {10, Front::kOwn},                            // DefineFont
    {11, Front::kOwn, &Walk::Text<3>},            // DefineText
    {13, Front::kReference},                      // DefineFontInfo
    {14, Front::kOwn},                            // DefineSound
    {15, Front::kReference},                      // StartSound
    {17, Front::kReference, &Walk::ButtonSound},  // DefineButtonSound
    {20, Front::kOwn},                            // DefineBitsLossless
    {21, Front::kOwn},                            // DefineBitsJPEG2
    {22, Front::kOwn, &Walk::Shape<2>},           // DefineShape2
    {23, Front::kReference},                      // DefineButtonCxform
    {26, Front::kNone, &Walk::PlaceObject2, 1},   // PlaceObject2
    {28, Front::kNone, nullptr, 0},               // RemoveObject2
    {32, Front::kOwn, &Walk::Shape<3>},           // DefineShape3
    {33, Front::kOwn, &Walk::Text<4>},            // DefineText2
    {34, Front::kOwn, &Walk::Button2},            // DefineButton2
    {35, Front::kOwn},                            // DefineBitsJPEG3
    {36, Front::kOwn},                            // DefineBitsLossless2
    {37, Front::kOwn, &Walk::EditText},           // DefineEditText
    {39, Front::kOwn, &Walk::Sprite},             // DefineSprite
    {40, Front::kReference},                      // NameCharacter
    {46, Front::kOwn, &Walk::MorphShape<1>},      // DefineMorphShape
    {48, Front::kOwn},                            // DefineFont2
    {56, Front::kNone, &Walk::NamedEntries},      // ExportAssets
    {57, Front::kNone, &Walk::ImportAssets},      // ImportAssets
    {59, Front::kReference},                      // DoInitAction
    {60, Front::kOwn},                            // DefineVideoStream
    {61, Front::kReference},                      // VideoFrame
    {62, Front::kReference},                      // DefineFontInfo2
    {70, Front::kNone, &Walk::PlaceObject3, 2},   // PlaceObject3
    {71, Front::kNone, &Walk::ImportAssets2},     // ImportAssets2
    {73, Front::kReference},                      // DefineFontAlignZones
    {74, Front::kReference},                      // CSMTextSettings
    {75, Front::kOwn},                            // DefineFont3
    {76, Front::kNone, &Walk::NamedEntries},      // SymbolClass
    {78, Front::kReference},                      // DefineScalingGrid
    {83, Front::kOwn, &Walk::Shape<4>},           // DefineShape4
    {84, Front::kOwn, &Walk::MorphShape<2>},      // DefineMorphShape2
    {87, Front::kOwn},                            // DefineBinaryData
    {88, Front::kReference},                      // DefineFontName
    {90, Front::kOwn},                            // DefineBitsJPEG4
    {91, Front::kOwn},                            // DefineFont4
    {94, Front::kNone, &Walk::PlaceObject3, 2},   // PlaceObject4
};
static_assert(std::ranges::is_sorted(kRows, {}, &Row::type));

const Row* FindRow(unsigned int type) {
    // For every type the number of its row, from 1 on, since each tag of a movie asks for one.
    static constexpr auto kNumbers = [] {
        std::array<std::uint8_t, std::rbegin(kRows)->type + 1> numbers{};
        for (std::size_t i = 0; i < std::size(kRows); ++i)
            numbers[kRows[i].type] = static_cast<std::uint8_t>(i + 1);
        return numbers;
    }();
    return type < kNumbers.size() && kNumbers[type] != 0 ? &kRows[kNumbers[type] - 1] : nullptr;
}

unsigned int Walk::Bits(unsigned int count) {
    const auto inByte = static_cast<unsigned int>(m_Bit % 8);
    const auto at = static_cast<std::size_t>(m_Bit / 8);
    SkipBits(count);
    if (m_HasFailed) return 0;
    const unsigned int first = m_Body[at];
    const unsigned int second = inByte + count > 8 ? m_Body[at + 1] : 0;  // may lie behind the end
    return (first << 8 | second) >> (16 - inByte - count) & ((1u << count) - 1);
}

void Walk::Str() {
    Align();
    const auto left = static_cast<std::size_t>((m_NumBits - m_Bit) / 8);
    const unsigned char* text = m_Body + m_Bit / 8;
    const void* nul = left == 0 ? nullptr : std::memchr(text, 0, left);
    if (nul == nullptr) return Stop();
    Skip(static_cast<std::uint64_t>(static_cast<const unsigned char*>(nul) - text) + 1);
}

bool IsOfClassName(unsigned int unit) {
    return (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9') ||
           unit == '_' || unit == '$' || unit == '.' || unit == ':' || unit >= 0x80;
}

/// The ID as it was before the visitor saw it; 0 also when it is not there.
unsigned int Walk::Id(Role role) {
    Align();
    const auto at = static_cast<unsigned int>(m_Bit / 8);
    const unsigned int id = U16();
    if (!m_HasFailed) m_Visitor(m_Context, m_Offset + at, role);
    return id;
}

void Walk::Rect() {
    Align();
    SkipBits(4 * Bits(5));
}

void Walk::Matrix() {
    Align();
    if (Bits(1) != 0) SkipBits(2 * Bits(5));  // scale
    if (Bits(1) != 0) SkipBits(2 * Bits(5));  // rotation
    SkipBits(2 * Bits(5));                    // translation
}

void Walk::CxFormWithAlpha() {
    Align();
    const unsigned int terms = Bits(1) + Bits(1);  // added, multiplied
    SkipBits(4 * terms * Bits(4));
}

void Walk::SoundInfo() {
    const unsigned int flags = U8();
    if ((flags & 1) != 0) Skip(4);         // in point
    if ((flags & 2) != 0) Skip(4);         // out point
    if ((flags & 4) != 0) Skip(2);         // loops
    if ((flags & 8) != 0) Skip(8 * U8());  // envelope
}

void Walk::FilterList() {
    for (unsigned int left = U8(); left != 0 && !m_HasFailed; --left) {
        switch (U8()) {
            case 0:  // drop shadow
                Skip(23);
                break;
            case 1:  // blur
                Skip(9);
                break;
            case 2:  // glow
                Skip(15);
                break;
            case 3:  // bevel
                Skip(27);
                break;
            case 4:  // gradient glow
            case 7:  // gradient bevel
                Skip(5 * U8() + 19);
                break;
            case 5: {  // convolution
                const unsigned int columns = U8();
                Skip(8 + 4 * columns * U8() + 5);
                break;
            }
            case 6:  // colour matrix
                Skip(80);
                break;
            default:
                Stop();
        }
    }
}

void Walk::ButtonRecords(bool isButton2) {
    while (const unsigned int flags = U8()) {
        Id(Role::kReference);
        Skip(2);  // depth
        Matrix();
        if (!isButton2) continue;
        CxFormWithAlpha();
        if ((flags & 0x10) != 0) FilterList();
        if ((flags & 0x20) != 0) Skip(1);  // blend mode
    }
}

void Walk::Entries(Role role) {
    for (unsigned int left = U16(); left != 0 && !m_HasFailed; --left) {
        Id(role);
        Str();
    }
}

void Walk::Button() { ButtonRecords(false); }

void Walk::Button2() {
    Skip(3);  // flags, offset of the actions
    ButtonRecords(true);
}

void Walk::ButtonSound() {
    for (int sound = 0; sound < 4; ++sound) {
        if (Id(Role::kReference) != 0) SoundInfo();
    }
}

template <unsigned int colorSize>
void Walk::Text() {
    Rect();
    Matrix();
    const unsigned int glyphBits = U8();
    const unsigned int entryBits = glyphBits + U8();
    while (const unsigned int flags = U8()) {
        if ((flags & 8) != 0) Id(Role::kReference);  // font
        if ((flags & 4) != 0) Skip(colorSize);
        if ((flags & 1) != 0) Skip(2);  // x
        if ((flags & 2) != 0) Skip(2);  // y
        if ((flags & 8) != 0) Skip(2);  // height
        SkipBits(std::uint64_t{entryBits} * U8());
    }
}

void Walk::EditText() {
    Rect();
    const unsigned int flags = U8();
    Skip(1);                                     // more flags
    if ((flags & 1) != 0) Id(Role::kReference);  // font
}

void Walk::PlaceObject2() {
    const unsigned int flags = U8();
    Skip(2);  // depth
    if ((flags & 2) != 0) Id(Role::kReference);
}

void Walk::PlaceObject3() {
    const unsigned int flags = U8();
    const unsigned int more = U8();
    Skip(2);  // depth
    const bool hasCharacter = (flags & 2) != 0;
    const bool hasImage = (more & 0x10) != 0;
    const bool hasClassName = (more & 8) != 0;
    if (hasClassName || (hasImage && hasCharacter && !EndsWithoutClassName(flags, more))) Str();
    if (hasCharacter) Id(Role::kReference);
}

/// Whether the ID of an image stands here at once. The published text puts a class name in front of it, and
/// authoring tools do not write one. The name is one of at least two characters, or else the rest shows that it is
/// missing, since it ends with the body.
bool Walk::EndsWithoutClassName(unsigned int flags, unsigned int more) const {
    Walk name = *this;
    unsigned int length = 0;
    unsigned int unit = name.U8();
    for (; IsOfClassName(unit); unit = name.U8()) ++length;
    if (unit == 0 && length >= 2) return false;  // also where the body ends within it

    Walk rest = *this;
    rest.Skip(2);  // the ID
    if ((flags & 0x04) != 0) rest.Matrix();
    if ((flags & 0x08) != 0) rest.CxFormWithAlpha();
    if ((flags & 0x10) != 0) rest.Skip(2);  // ratio
    if ((flags & 0x20) != 0) rest.Str();    // instance name
    if ((flags & 0x40) != 0) rest.Skip(2);  // clip depth
    if ((more & 0x01) != 0) rest.FilterList();
    if ((more & 0x02) != 0) rest.Skip(1);                              // blend mode
    if ((more & 0x04) != 0) rest.Skip(1);                              // kept as a bitmap
    if ((more & 0x20) != 0) rest.Skip(1);                              // visible
    if ((more & 0x40) != 0) rest.Skip(4);                              // opaque background
    if ((flags & 0x80) != 0) return !rest.m_HasFailed && length == 0;  // clip events
    rest.Align();
    return !rest.m_HasFailed && rest.m_Bit == rest.m_NumBits;
}

void Walk::Sprite() {
    Skip(2);  // frame count
    while (!m_HasFailed) {
        const unsigned int header = U16();
        const unsigned int type = header >> 6;
        unsigned int length = header & 63;
        if (length == 63) length = U32();
        if (type == 0 || m_HasFailed) return;  // end
        const auto at = static_cast<unsigned int>(m_Bit / 8);
        const auto there =
            static_cast<unsigned int>(std::min(std::uint64_t{length}, (m_NumBits - m_Bit) / 8));
        Walk inside(m_Body + at, there, m_Offset + at, m_Level + 1, m_Visitor, m_Context);
        if (!inside.Run(type)) m_HasFailedInside = true;
        Skip(length);
    }
}

void Walk::NamedEntries() { Entries(Role::kNamedEntry); }

void Walk::ImportAssets() {
    Str();  // URL
    Entries(Role::kOwnEntry);
}

void Walk::ImportAssets2() {
    Str();    // URL
    Skip(2);  // reserved
    Entries(Role::kOwnEntry);
}

template <unsigned int version>
void Walk::Shape() {
    m_ShapeVersion = version;
    Rect();
    if (version == 4) {
        Rect();   // of the edges
        Skip(1);  // flags
    }
    Styles();
    ShapeRecords();
}

template <unsigned int version>
void Walk::MorphShape() {
    m_ShapeVersion = version + 2;
    m_States = 2;
    for (unsigned int rect = 0; rect != 2 * version; ++rect) Rect();
    if (version == 2) Skip(1);  // flags
    Skip(4);                    // offset of the end's edges
    Styles();                   // the edges have none of their own
}

void Walk::Styles() {
    unsigned int fills = U8();
    if (fills == 0xFF && m_ShapeVersion >= 2) fills = U16();
    for (; fills != 0 && !m_HasFailed; --fills) FillStyle();
    unsigned int lines = U8();
    if (lines == 0xFF) lines = U16();
    for (; lines != 0 && !m_HasFailed; --lines) LineStyle();
}

void Walk::FillStyle() {
    switch (const unsigned int type = U8()) {
        case 0x00:  // solid
            Skip(m_States * ColorSize());
            break;
        case 0x10:  // linear gradient
        case 0x12:  // radial gradient
        case 0x13:  // focal radial gradient
            Matrices();
            Skip((U8() & 15) * m_States * (1 + ColorSize()));
            if (type == 0x13) Skip(m_States * 2);
            break;
        case 0x40:  // bitmaps: repeated, clipped, and both not smoothed
        case 0x41:
        case 0x42:
        case 0x43:
            Id(Role::kReference);
            Matrices();
            break;
        default:
            Stop();
    }
}

void Walk::LineStyle() {
    Skip(m_States * 2);  // width
    if (m_ShapeVersion < 4) return Skip(m_States * ColorSize());
    const unsigned int flags = U8();
    Skip(1);                             // more flags
    if ((flags >> 4 & 3) == 2) Skip(2);  // limit of a mitred join
    if ((flags & 8) != 0) return FillStyle();
    Skip(m_States * ColorSize());
}

void Walk::Matrices() {
    for (unsigned int state = 0; state != m_States; ++state) Matrix();
}

void Walk::ShapeRecords() {
    Align();
    unsigned int fillBits = Bits(4);
    unsigned int lineBits = Bits(4);
    while (const unsigned int record = Bits(6)) {
        if ((record & 0x20) != 0) {
            const unsigned int numBits = (record & 15) + 2;
            if ((record & 0x10) == 0) {
                SkipBits(4 * numBits);  // curve
            } else if (Bits(1) != 0) {
                SkipBits(2 * numBits);  // straight line
            } else {
                SkipBits(1 + numBits);  // upright or level line
            }
            continue;
        }
        if ((record & 1) != 0) SkipBits(2 * Bits(5));  // move
        if ((record & 2) != 0) SkipBits(fillBits);
        if ((record & 4) != 0) SkipBits(fillBits);
        if ((record & 8) != 0) SkipBits(lineBits);
        if ((record & 0x10) != 0 && m_ShapeVersion >= 2) {
            Styles();
            Align();
            fillBits = Bits(4);
            lineBits = Bits(4);
        }
    }
}

bool Walk::Run(unsigned int type) {
    if (m_Level > VXCharacterIds::kDeepest) return false;
    if (const Row* row = FindRow(type); row != nullptr) {
        if (row->front != Front::kNone) Id(row->front == Front::kOwn ? Role::kOwn : Role::kReference);
        if (row->rest != nullptr) (this->*row->rest)();
    }
    return !m_HasFailed && !m_HasFailedInside;
}

}  // namespace

VXErrorCodeEnum VXCharacterIds::Visit(unsigned int type, const unsigned char* body, unsigned int length,
                                      Visitor visitor, void* context) {
    return Walk(body, length, 0, 0, visitor, context).Run(type) ? kVXSuccess : kVXFailure;
}

bool VXCharacterIds::DefinesCharacter(unsigned int type) {
    const Row* row = FindRow(type);
    return row != nullptr && row->front == Front::kOwn;
}

unsigned int VXCharacterIds::GetDepthOffset(unsigned int type) {
    const Row* row = FindRow(type);
    return row == nullptr || row->depth == ::kNoDepth ? kNoDepth : row->depth;
}
