#pragma once

#include <cstddef>

#include "platform/VXExport.h"

/// Raw bytes that copies may share: the body of a tag, or a part of one that is carried unread. Copying
/// shares the bytes, the last holder frees them. The block knows how many bytes there really are, so that
/// every view of it can be cut to that, whatever a length field says. An empty block owns nothing. It is used
/// like the pointer that it converts to.
///
/// Holders may live in different threads; the bytes themselves are not guarded.
class VXSWF_API VXByteBlock {
public:
    VXByteBlock() = default;
    VXByteBlock(const VXByteBlock& other) noexcept;
    VXByteBlock(VXByteBlock&& other) noexcept : m_Head(other.m_Head) { other.m_Head = nullptr; }
    VXByteBlock& operator=(const VXByteBlock& other) noexcept;
    VXByteBlock& operator=(VXByteBlock&& other) noexcept;
    ~VXByteBlock() { Drop(); }

    /// `size` bytes that nobody has written yet; empty for 0.
    [[nodiscard]] static VXByteBlock Allocate(unsigned int size);
    [[nodiscard]] static VXByteBlock CopyOf(const unsigned char* data, unsigned int size);
    /// Takes over an array made with `new[]`, also when it throws; empty for null.
    [[nodiscard]] static VXByteBlock Adopt(unsigned char* array, unsigned int size);
    /// Hands the bytes over as an array that the caller deletes with `delete[]`, null when empty. They are
    /// copied when somebody else still holds them or when they did not come as an array. The block is empty
    /// afterwards.
    [[nodiscard]] unsigned char* Release();

    /// Null when empty.
    unsigned char* GetBytes() const;
    operator unsigned char*() const { return GetBytes(); }
    unsigned int GetSize() const;
    explicit operator bool() const { return m_Head != nullptr; }
    /// Gives this holder bytes of its own, before it changes them.
    void Detach();

private:
    struct Head;

    void Drop() noexcept;

    Head* m_Head = nullptr;
};
