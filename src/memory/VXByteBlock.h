#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "platform/VXExport.h"

/// Raw bytes that copies may share: a part of a tag that is carried unread. Copying shares the bytes, the last
/// holder frees them. The block knows how many bytes there really are, so that every view of it can be cut to
/// that, whatever a length field says. An empty block owns nothing. It is used like the pointer that it
/// converts to.
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

    /// Null when empty.
    unsigned char* GetBytes() const;
    operator unsigned char*() const { return GetBytes(); }
    unsigned int GetSize() const;
    explicit operator bool() const { return m_Head != nullptr; }
    /// Gives this holder bytes of its own, before it changes them.
    void Detach();

private:
    friend class VXByteView;
    struct Head;
    struct Buffer;

    void Drop() noexcept;

    Head* m_Head = nullptr;
};

/// A part of a block or of a buffer, which lives as long as a view of it: the body of a tag. Copying shares
/// the bytes. An empty view holds nothing.
///
/// A buffer of 1 MiB or more, as whole movies have, counts the views of every 256 KiB of it, and gives each
/// such piece back to the system when no view is left there. So a single tag of a large movie that outlives
/// the rest keeps no more than the pieces that it lies in. Bytes that a host shares stay until the last view
/// of any part goes.
///
/// Holders may live in different threads; the bytes themselves are not guarded.
class VXSWF_API VXByteView {
public:
    VXByteView() = default;
    explicit VXByteView(VXByteBlock block) noexcept;
    VXByteView(const VXByteView& other) noexcept;
    VXByteView(VXByteView&& other) noexcept
        : m_Head(std::exchange(other.m_Head, nullptr)),
          m_Offset(std::exchange(other.m_Offset, 0)),
          m_Size(std::exchange(other.m_Size, 0)) {}
    VXByteView& operator=(VXByteView other) noexcept {
        std::swap(m_Head, other.m_Head);
        std::swap(m_Offset, other.m_Offset);
        std::swap(m_Size, other.m_Size);
        return *this;
    }
    ~VXByteView() {
        if (m_Head != nullptr) Drop();
    }

    /// The whole of a buffer that `VXPool::Resize` gave for `reserved` bytes, which the views own from now on;
    /// the caller keeps it when this throws. `size` is not 0.
    [[nodiscard]] static VXByteView TakeOver(unsigned char* buffer, unsigned int size, unsigned int reserved);
    /// The whole of a host's bytes, of which the last view lets go. Views never change them.
    [[nodiscard]] static VXByteView Share(std::shared_ptr<const unsigned char[]> bytes, unsigned int size);
    /// What of `size` bytes from `offset` on there is.
    [[nodiscard]] VXByteView Part(unsigned int offset, unsigned int size) const noexcept;

    /// Null when empty.
    unsigned char* GetBytes() const;
    operator unsigned char*() const { return GetBytes(); }
    unsigned int GetSize() const { return m_Size; }
    explicit operator bool() const { return m_Head != nullptr; }
    /// Gives this holder bytes of its own, before it changes them.
    void Detach();

private:
    using Head = VXByteBlock::Head;
    using Buffer = VXByteBlock::Buffer;

    void Hold() const noexcept;
    void Drop() noexcept;

    Head* m_Head = nullptr;
    unsigned int m_Offset = 0;
    unsigned int m_Size = 0;
};
