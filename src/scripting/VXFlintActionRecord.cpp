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

/// Index behind the first hit of `text` that begins at `start` or later; `npos` without one.
std::size_t FindEnd(std::string_view payload, std::string_view text, std::size_t start) {
    std::size_t count = 0;
    for (std::size_t i = start; i < payload.size(); ++i) {
        // Kept: the byte that ends a partial match is not tried as the start of the next.
        count = payload[i] == text[count] ? count + 1 : 0;
        if (count == text.size()) return i + 1;
    }
    return std::string_view::npos;
}

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
    std::size_t end = FindEnd(payload, oldText, 0);
    if (end == std::string_view::npos) return 0;  // as most actions

    const bool bringsItself = newText.find(oldText) != std::string::npos;
    const std::size_t missing = m_Length - payload.size();
    std::string text(payload);
    std::size_t firstHit = std::string::npos;  // of the pass
    bool isChanged = false;
    while (end != std::string::npos) {
        if (text.size() - oldText.size() + newText.size() + missing > kGreatestLength) break;
        const std::size_t hit = end - oldText.size();
        text.replace(hit, oldText.size(), newText);
        isChanged = true;
        if (bringsItself) {
            end = FindEnd(text, oldText, hit + newText.size());
            continue;
        }
        firstHit = std::min(firstHit, hit);
        // Kept: the byte behind a replacement, counted in the old length, only ends the match. A zero is taken
        // for the one that ends `from`, and leaves that to the next byte.
        const bool isZero = end < text.size() && text[end] == '\0';
        end = FindEnd(text, oldText, end + (isZero ? 2 : 1));
        // The next pass. In front of the first replacement it would find what this one found, which is nothing.
        if (end == std::string::npos) end = FindEnd(text, oldText, std::exchange(firstHit, end));
    }
    if (!isChanged) return 0;
    const std::size_t length = text.size() + missing;
    delta = static_cast<int>(length) - static_cast<int>(m_Length);
    m_ActionData = VXFlintActionData(reinterpret_cast<const unsigned char*>(text.data()),
                                     static_cast<unsigned short>(text.size()));
    m_Length = static_cast<unsigned short>(length);
    return 1;
}
