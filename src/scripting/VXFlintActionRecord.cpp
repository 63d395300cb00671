#include "scripting/VXFlintActionRecord.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr unsigned char kFirstCodeWithPayload = 128;
constexpr unsigned int kGreatestLength = 65535;
constexpr unsigned int kHeaderSize = 3;
constexpr unsigned int kMostPerByte = 64;  // of a payload that is cut short, in memory for what is not there

void WriteZeros(VXBitStream& out, unsigned int count) {
    static constexpr unsigned char kZeros[512] = {};
    while (count != 0) {
        const unsigned int step = std::min<unsigned int>(count, sizeof kZeros);
        VXIgnore(out.Write(kZeros, step));  // dumps of actions do not report
        count -= step;
    }
}

/// Counts the bytes of `text` that have matched, looking at each byte once.
class Matcher {
public:
    explicit Matcher(std::string_view text) : m_Text(text) {}

    /// Whether a match ends with `byte`.
    bool Take(char byte) {
        // Kept: the byte that ends a partial match is not tried as the start of the next.
        m_Count = byte == m_Text[m_Count] ? m_Count + 1 : 0;
        return m_Count == m_Text.size();
    }
    void Reset() { m_Count = 0; }
    friend bool operator==(const Matcher& a, const Matcher& b) { return a.m_Count == b.m_Count; }

private:
    std::string_view m_Text;
    std::size_t m_Count = 0;
};

/// A payload that is being changed, with all its free room at one place, so that what lies behind a change
/// does not move.
class GapText {
public:
    explicit GapText(std::string_view text)
        : m_Bytes(std::make_unique_for_overwrite<char[]>(kGreatestLength)), m_Back(kGreatestLength) {
        PushBack(text);
    }

    std::size_t GetFrontSize() const { return m_Front; }
    std::size_t GetBackSize() const { return kGreatestLength - m_Back; }
    /// Moves a byte from the back to the front; there must be one.
    char Step() { return m_Bytes[m_Front++] = m_Bytes[m_Back++]; }
    /// Moves the end of the front to the back.
    void GoBackTo(std::size_t position) {
        const std::size_t count = m_Front - position;
        m_Front = position;
        m_Back -= count;
        std::memmove(&m_Bytes[m_Back], &m_Bytes[position], count);
    }
    /// Replaces the last bytes of the front by a text that comes next.
    void Replace(std::size_t count, std::string_view text) {
        m_Front -= count;
        PushBack(text);
    }
    std::string_view Join() {
        GoBackTo(0);
        return {&m_Bytes[m_Back], GetBackSize()};
    }

private:
    void PushBack(std::string_view text) {
        m_Back -= text.size();
        std::memcpy(&m_Bytes[m_Back], text.data(), text.size());
    }

    std::unique_ptr<char[]> m_Bytes;
    std::size_t m_Front = 0;
    std::size_t m_Back;
};

}  // namespace

VXFlintActionData::VXFlintActionData(unsigned short size) : m_Bytes(VXByteBlock::Allocate(size + 1u)) {
    m_Bytes.GetBytes()[size] = 0;
}

VXFlintActionData::VXFlintActionData(const unsigned char* data, unsigned short size)
    : VXFlintActionData(size) {
    if (data != nullptr) {
        std::memcpy(m_Bytes.GetBytes(), data, size);
    } else {
        std::memset(m_Bytes.GetBytes(), 0, size);
    }
}

VXFlintActionRecord::VXFlintActionRecord(const VXFlintActionRecord& other)
    : m_ActionData(other.m_ActionData), m_ActionCode(other.m_ActionCode), m_Length(other.m_Length) {}

VXFlintActionRecord& VXFlintActionRecord::operator=(const VXFlintActionRecord& other) {
    m_ActionData = other.m_ActionData;
    m_ActionCode = other.m_ActionCode;
    m_Length = other.m_Length;
    return *this;
}

VXFlintActionRecord::~VXFlintActionRecord() = default;

VXErrorCodeEnum VXFlintActionRecord::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(m_ActionCode));
    if (m_ActionCode < kFirstCodeWithPayload) {
        m_Length = 0;
        return kVXSuccess;
    }
    VX_RETURN_IF_FAILED(in.ReadWord(m_Length));
    unsigned int there = std::min<unsigned int>(m_Length, in.GetRemaining());
    const bool isAllHeld = m_Length <= kMostPerByte * (kHeaderSize + there);
    const unsigned int held = isAllHeld ? m_Length : there;
    m_ActionData = VXFlintActionData(static_cast<unsigned short>(held));
    if (there != 0) VXIgnore(in.Read(m_ActionData, there));
    std::memset(m_ActionData + there, 0, held - there);
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintActionRecord::DumpToStream(VXBitStream& out) const {
    VXIgnore(out.WriteByte(m_ActionCode));  // always good
    if (m_ActionCode < kFirstCodeWithPayload) return kVXSuccess;
    VXIgnore(out.WriteWord(m_Length));
    const unsigned int held = GetHeldLength();
    if (held != 0) VXIgnore(out.Write(m_ActionData, held));
    WriteZeros(out, m_Length - held);
    return kVXSuccess;
}

unsigned short VXFlintActionRecord::GetHeldLength() const {
    return static_cast<unsigned short>(std::min<unsigned int>(m_Length, m_ActionData.GetSize()));
}

void VXFlintActionRecord::SetData(const unsigned char* data, unsigned int length) {
    const auto cutLength = static_cast<unsigned short>(length);
    unsigned short present = cutLength;
    const unsigned char* old = m_ActionData;
    const unsigned char* oldEnd = old + m_ActionData.GetSize();
    const std::less_equal<const unsigned char*> notBehind;
    if (old != nullptr && notBehind(old, data) && notBehind(data, oldEnd)) {
        // A part of the present payload, whose length may promise more than is there.
        present = static_cast<unsigned short>(std::min<std::ptrdiff_t>(present, oldEnd - data));
    }
    VXFlintActionData copy(data, present);
    if (present < cutLength) {
        VXFlintActionData longer(nullptr, cutLength);
        std::memcpy(longer, copy, present);
        copy = longer;
    }
    m_ActionData = copy;
    m_Length = cutLength;
}

short VXFlintActionRecord::Parse(VXBitStream* in) {
    Clean();
    if (m_ActionCode < kFirstCodeWithPayload) return 1;
    unsigned short length = 0;
    if (in != nullptr) VXIgnore(in->ReadWord(length));  // what is missing counts as zero
    m_ActionData = VXFlintActionData(nullptr, length);
    m_Length = 0;
    return 1;
}

void VXFlintActionRecord::Clean() { m_ActionData = VXFlintActionData(); }

VXFlintActionRecord* VXFlintActionRecord::Copy() const {
    auto copy = std::make_unique<VXFlintActionRecord>(m_ActionCode);
    copy->m_Length = m_Length;
    copy->m_ActionData = VXFlintActionData(m_ActionData, GetHeldLength());
    return copy.release();
}

short VXFlintActionRecord::ReplaceString(const VXString& from, const VXString& to, int& delta) {
    delta = 0;
    if (from.empty() || from.length() > GetHeldLength()) return 0;
    const std::string oldText = from.GetUTF8String().substr(0, from.length());
    const std::string newText = to.GetUTF8String().substr(0, to.length());
    // Kept: bytes of `from` compare as signed ones and those of the payload as unsigned ones.
    const auto isAscii = [](char byte) { return (static_cast<unsigned char>(byte) & 0x80u) == 0; };
    if (!std::all_of(oldText.begin(), oldText.end(), isAscii)) return 0;
    const std::string_view payload(reinterpret_cast<const char*>(static_cast<unsigned char*>(m_ActionData)),
                                   GetHeldLength());
    // Most records hold no match.
    if (Matcher first(oldText);
        std::none_of(payload.begin(), payload.end(), [&](char byte) { return first.Take(byte); }))
        return 0;

    // A pass begins where the one before made its first replacement: up to there it would find the same.
    // Behind the last one, where so many bytes were left, that one found nothing, and no more will be found
    // once both have matched as much.
    const bool bringsItself = newText.find(oldText) != std::string::npos;
    const std::size_t passedOver = (bringsItself ? newText.size() : oldText.size()) + 1;
    GapText text(payload);
    std::size_t length = m_Length;
    std::size_t passStart = 0;
    std::size_t leftBehindLast = 0;
    bool isChanged = false;
    bool isFull = false;
    for (bool isAgain = true; isAgain && !isFull;) {
        isAgain = false;
        text.GoBackTo(passStart);
        std::size_t known = std::exchange(leftBehindLast, 0);
        Matcher before(oldText);
        Matcher now(oldText);
        const auto step = [&] {
            const bool isKnown = text.GetBackSize() <= known;
            const char byte = text.Step();
            if (isKnown) before.Take(byte);
            return byte;
        };
        while (text.GetBackSize() != 0 && !(text.GetBackSize() <= known && now == before)) {
            if (!now.Take(step())) continue;
            isFull = length - oldText.size() + newText.size() > kGreatestLength;
            if (isFull) break;
            known = std::min(known, text.GetBackSize());
            text.Replace(oldText.size(), newText);
            length = length - oldText.size() + newText.size();
            if (!isAgain) passStart = text.GetFrontSize();
            isAgain = !bringsItself;
            isChanged = true;
            // Kept: the byte behind a replacement, counted in the old length, only ends the match. A zero is
            // taken for the one that ends `from`, and leaves that to the next byte.
            char last = 1;
            for (std::size_t i = 0; i < passedOver && text.GetBackSize() != 0; ++i) last = step();
            if (last == 0 && text.GetBackSize() != 0) step();
            now.Reset();
            leftBehindLast = text.GetBackSize();
        }
    }
    if (!isChanged) return 0;
    const std::string_view changed = text.Join();
    delta = static_cast<int>(length) - static_cast<int>(m_Length);
    m_ActionData = VXFlintActionData(reinterpret_cast<const unsigned char*>(changed.data()),
                                     static_cast<unsigned short>(changed.size()));
    m_Length = static_cast<unsigned short>(length);
    return 1;
}
