#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/VXExport.h"

/// How the bytes handed to a `VXString` are understood.
enum VXCharEncodingType : int {
    kVXEncodingUTF8 = 1,
};

/// Text as a sequence of 16-bit units, UTF-16 where it is well-formed, with UTF-8 at the edges.
///
/// Decoding loses nothing: a byte that is not part of valid UTF-8 becomes the single unit U+DC80 to U+DCFF
/// with that byte in its low eight bits, and `GetUTF8String` turns such a unit back into the byte. Old movies
/// keep their names in 8-bit code pages, and come through unchanged that way. Characters beyond the Basic
/// Multilingual Plane are two units and four bytes. A surrogate that has lost its partner, and is not such a
/// byte, encodes to the three bytes of its value.
///
/// A string takes the size of one pointer, and an empty one owns nothing, since nearly every tag of a movie
/// holds some. Up to 2^32 − 1 units; what would be longer fails like an allocation, with `std::bad_alloc`.
class VXPLATFORM_API VXString {
public:
    using value_type = char16_t;
    using size_type = std::size_t;
    using iterator = char16_t*;
    using const_iterator = const char16_t*;

    static constexpr size_type npos = static_cast<size_type>(-1);

    VXString() = default;
    /// Decodes UTF-8 up to the first NUL. A null pointer gives the empty string.
    VXString(const char* text, VXCharEncodingType encoding = kVXEncodingUTF8);
    /// Decodes `size` bytes, or up to the first NUL among them.
    VXString(const char* text, size_type size, VXCharEncodingType encoding = kVXEncodingUTF8);
    VXString(std::u16string_view units) { append(units); }
    VXString(const VXString& other) { append(other.GetUnits()); }
    VXString(VXString&& other) noexcept : m_Text(std::exchange(other.m_Text, nullptr)) {}
    VXString& operator=(const VXString& other);
    VXString& operator=(VXString&& other) noexcept;
    ~VXString() { clear(); }

    /// Counts 16-bit units.
    size_type length() const { return m_Text == nullptr ? 0 : m_Text->size; }
    size_type size() const { return length(); }
    bool empty() const { return m_Text == nullptr; }
    /// Gives the memory back.
    void clear() {
        if (m_Text != nullptr) Release();
    }

    /// The unit at `index`, which must be below `length()`.
    char16_t operator[](size_type index) const { return begin()[index]; }
    char16_t& operator[](size_type index) { return begin()[index]; }
    /// Iterators hold until the string is next assigned to, cut, or made longer.
    iterator begin() { return m_Text == nullptr ? nullptr : UnitsOf(m_Text); }
    iterator end() { return begin() + length(); }
    const_iterator begin() const { return m_Text == nullptr ? nullptr : UnitsOf(m_Text); }
    const_iterator end() const { return begin() + length(); }

    /// Index of the first unit that equals `unit`, from `from` on; `npos` when there is none.
    size_type find(char16_t unit, size_type from = 0) const { return GetUnits().find(unit, from); }
    size_type find(const VXString& text, size_type from = 0) const {
        return GetUnits().find(text.GetUnits(), from);
    }
    /// At most `count` units; empty for a `from` behind the end.
    VXString substr(size_type from, size_type count = npos) const;

    void push_back(char16_t unit) { append({&unit, 1}); }
    /// The units may lie in this very string.
    VXString& append(std::u16string_view units);
    /// Cuts to the first `count` units; a greater count changes nothing.
    void truncate(size_type count);
    VXString& operator+=(const VXString& other) { return append(other.GetUnits()); }
    friend VXString operator+(VXString left, const VXString& right) { return std::move(left += right); }

    /// The UTF-8 form. Strings that were decoded from bytes give those bytes again.
    std::string GetUTF8String() const;
    /// Valid for as long as the iterators are.
    std::u16string_view GetUnits() const { return {begin(), length()}; }

    /// Compares unit by unit, by value.
    friend bool operator==(const VXString& left, const VXString& right) {
        return left.GetUnits() == right.GetUnits();
    }
    friend auto operator<=>(const VXString& left, const VXString& right) {
        return left.GetUnits() <=> right.GetUnits();
    }

private:
    /// Head of the one heap block; the units follow it.
    struct Text {
        std::uint32_t size;
        std::uint32_t capacity;
    };

    static char16_t* UnitsOf(Text* text) { return reinterpret_cast<char16_t*>(text + 1); }
    static Text* Allocate(size_type capacity);
    void Release();

    /// Null exactly when the string is empty.
    Text* m_Text = nullptr;
};
