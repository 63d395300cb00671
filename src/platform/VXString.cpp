#include "platform/VXString.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kMaxLength = std::numeric_limits<std::uint32_t>::max();

/// A byte that is not text becomes this plus the byte: a low surrogate, which valid UTF-8 never decodes to by
/// itself.
constexpr char32_t kEscapeBase = 0xDC00;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
bool IsEscape(char32_t unit) { return unit >= kEscapeBase + 0x80 && unit <= kEscapeBase + 0xFF; }

/// One character, or one byte that is part of none.
struct Decoded {
    char32_t value;
    std::size_t bytes;
};

/// Follows table 3-7 of the Unicode standard: the lead byte gives the length and the range of the second
/// byte.
Decoded DecodeOne(const unsigned char* text, std::size_t remaining) {
    const unsigned char lead = text[0];
    if (lead < 0x80) return {lead, 1};

    const Decoded escape = {kEscapeBase + lead, 1};
    std::size_t bytes = 0;
    unsigned char least = 0x80;
    unsigned char greatest = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        bytes = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        bytes = 3;
        if (lead == 0xE0) least = 0xA0;     // below stand overlong forms
        if (lead == 0xED) greatest = 0x9F;  // above stand the surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        bytes = 4;
        if (lead == 0xF0) least = 0x90;
        if (lead == 0xF4) greatest = 0x8F;  // above U+10FFFF
    }
    if (bytes == 0 || remaining < bytes) return escape;

    char32_t value = lead & (0x7FU >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if (text[i] < least || text[i] > greatest) return escape;
        value = (value << 6) | (text[i] & 0x3FU);
        least = 0x80;
        greatest = 0xBF;
    }
    return {value, bytes};
}

void AppendUTF8(std::string& out, char32_t value) {
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    const auto trail = [&](unsigned shift) { put(0x80 | ((value >> shift) & 0x3F)); };
    if (value < 0x80) {
        put(value);
    } else if (value < 0x800) {
        put(0xC0 | (value >> 6));
        trail(0);
    } else if (value < 0x10000) {
        put(0xE0 | (value >> 12));
        trail(6);
        trail(0);
    } else {
        put(0xF0 | (value >> 18));
        trail(12);
        trail(6);
        trail(0);
    }
}

}  // namespace

VXString::VXString(const char* text, VXCharEncodingType encoding)
    : VXString(text, text == nullptr ? 0 : std::strlen(text), encoding) {}

VXString::VXString(const char* text, size_type size, VXCharEncodingType) {
    if (text == nullptr) return;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    size = strnlen(text, size);

    // Most text is ASCII, which needs no decoding; whatever follows is measured first, to take one block that
    // fits.
    const size_type ascii = static_cast<size_type>(
        std::find_if(bytes, bytes + size, [](unsigned char byte) { return byte >= 0x80; }) - bytes);
    size_type units = ascii;
    for (size_type i = ascii; i < size; ++units) {
        const Decoded decoded = DecodeOne(bytes + i, size - i);
        if (decoded.value > 0xFFFF) ++units;
        i += decoded.bytes;
    }
    if (units == 0) return;

    m_Text = Allocate(units);
    char16_t* unit = std::copy(bytes, bytes + ascii, UnitsOf(m_Text));
    for (size_type i = ascii; i < size;) {
        const Decoded decoded = DecodeOne(bytes + i, size - i);
        if (decoded.value > 0xFFFF) {
            *unit++ = static_cast<char16_t>(0xD7C0 + (decoded.value >> 10));
            *unit++ = static_cast<char16_t>(0xDC00 + (decoded.value & 0x3FF));
        } else {
            *unit++ = static_cast<char16_t>(decoded.value);
        }
        i += decoded.bytes;
    }
    m_Text->size = static_cast<std::uint32_t>(units);
}

VXString& VXString::operator=(const VXString& other) {
    if (this == &other) return *this;
    if (other.empty() || length() == 0 || m_Text->capacity < other.length()) return *this = VXString(other);
    std::copy(other.begin(), other.end(), begin());
    m_Text->size = other.m_Text->size;
    return *this;
}

VXString& VXString::operator=(VXString&& other) noexcept {
    Text* const text = std::exchange(other.m_Text, nullptr);
    clear();
    m_Text = text;
    return *this;
}

VXString VXString::substr(size_type from, size_type count) const {
    return from < length() ? VXString(GetUnits().substr(from, count)) : VXString();
}

VXString& VXString::append(std::u16string_view units) {
    if (units.empty()) return *this;
    const size_type oldSize = length();
    const size_type oldCapacity = empty() ? 0 : m_Text->capacity;
    if (units.size() > kMaxLength - oldSize) throw std::bad_alloc();
    const size_type newSize = oldSize + units.size();

    if (newSize > oldCapacity) {
        Text* const grown = Allocate(std::clamp(2 * oldCapacity, newSize, kMaxLength));
        std::copy(begin(), end(), UnitsOf(grown));
        // The old block goes last: the units may lie in it.
        std::copy(units.begin(), units.end(), UnitsOf(grown) + oldSize);
        clear();
        m_Text = grown;
    } else {
        std::copy(units.begin(), units.end(), begin() + oldSize);
    }
    m_Text->size = static_cast<std::uint32_t>(newSize);
    return *this;
}

void VXString::truncate(size_type count) {
    if (count == 0) {
        clear();
    } else if (count < length()) {
        m_Text->size = static_cast<std::uint32_t>(count);
    }
}

std::string VXString::GetUTF8String() const {
    const const_iterator last = end();
    const const_iterator ascii = std::find_if(begin(), last, [](char16_t unit) { return unit >= 0x80; });
    std::string out(begin(), ascii);
    for (const_iterator unit = ascii; unit != last; ++unit) {
        char32_t value = *unit;
        if (IsHighSurrogate(value) && unit + 1 != last && IsLowSurrogate(unit[1])) {
            value = 0x10000 + ((value - 0xD800) << 10) + (*++unit - 0xDC00U);
        } else if (IsEscape(value)) {
            out.push_back(static_cast<char>(value - kEscapeBase));
            continue;
        }
        AppendUTF8(out, value);
    }
    return out;
}

VXString::Text* VXString::Allocate(size_type capacity) {
    // Small blocks are rounded up to what the heap would give anyway.
    capacity = std::max<size_type>(capacity, 8);
    if (capacity > kMaxLength) throw std::bad_alloc();
    void* const block = ::operator new(sizeof(Text) + capacity * sizeof(char16_t));
    return new (block) Text{0, static_cast<std::uint32_t>(capacity)};
}

void VXString::Release() { ::operator delete(std::exchange(m_Text, nullptr)); }
