#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "platform/system/VXSystemFile_p.h"

/// Where a `CVXStreamReadWrite` keeps its bytes, with the one position that reading and writing share.
///
/// Every medium shows a window: a block of memory that mirrors the bytes from `m_WindowStart` on. A transfer
/// inside the window is a copy and needs no virtual call; what leaves it goes to the derived class. Memory is
/// all window; a file moves a window of fixed size and remembers which part of it the file does not have yet.
class VXStreamMedium {
public:
    /// Positions answer to a 32-bit unsigned int, so nothing lies beyond.
    static constexpr std::uint64_t kMaxSize = std::numeric_limits<std::uint32_t>::max();

    VXStreamMedium() = default;
    VXStreamMedium(const VXStreamMedium&) = delete;
    VXStreamMedium& operator=(const VXStreamMedium&) = delete;
    virtual ~VXStreamMedium();

    virtual bool IsOpen() const = 0;
    /// Gives up the file, if there is one. A failure that comes to light here stays to be seen.
    virtual void Close() {}
    /// Cuts at the position, which lies before the end.
    virtual void Cut() = 0;
    virtual void Flush() {}
    /// The bytes of a medium that is all in memory.
    virtual const unsigned char* GetMemory() const { return nullptr; }

    /// Answers how many bytes were moved; fewer than `count`, which is positive, at the end or after an
    /// error.
    std::size_t Read(unsigned char* data, std::size_t count) {
        const std::uint64_t offset = m_Position - m_WindowStart;
        // A position before the window wraps round to a huge offset.
        if (offset > m_Valid || count > m_Valid - offset) return ReadOutside(data, count);
        std::memcpy(data, m_Window + offset, count);
        m_Position += count;
        return count;
    }

    /// Answers how many bytes were taken; fewer than `count`, which is positive, marks the medium as failed.
    std::size_t Write(const unsigned char* data, std::size_t count) {
        const std::uint64_t offset = m_Position - m_WindowStart;
        if (offset > m_Valid || offset > m_Room || count > m_Room - offset) return WriteOutside(data, count);
        std::memcpy(m_Window + offset, data, count);
        m_Position += count;
        const std::size_t end = static_cast<std::size_t>(offset) + count;
        m_Valid = std::max(m_Valid, end);
        m_Size = std::max(m_Size, m_Position);
        m_DirtyBegin = std::min(m_DirtyBegin, static_cast<std::size_t>(offset));
        m_DirtyEnd = std::max(m_DirtyEnd, end);
        return count;
    }

    std::uint64_t GetPosition() const { return m_Position; }
    /// At most `kMaxSize`.
    void SetPosition(std::uint64_t position) { m_Position = position; }
    std::uint64_t GetSize() const { return m_Size; }
    /// What lies between the position and the end, as far as positions reach.
    std::uint64_t GetRemaining() const {
        const std::uint64_t end = std::min(m_Size, kMaxSize);
        return m_Position < end ? end - m_Position : 0;
    }
    bool HasFailed() const { return m_Failed; }

protected:
    /// A transfer that the window does not serve. `count` is positive, and neither the size, for a read, nor
    /// `kMaxSize` ends before it; so a medium that is all window is never asked to read.
    virtual std::size_t ReadThrough(unsigned char*, std::size_t) { return 0; }
    virtual std::size_t WriteThrough(const unsigned char* data, std::size_t count) = 0;

    unsigned char* m_Window = nullptr;
    std::uint64_t m_WindowStart = 0;
    std::size_t m_Valid = 0;  ///< bytes of the window that mirror the contents
    std::size_t m_Room = 0;   ///< bytes of the window that a write may use, 0 when nothing may be written
    /// The changes that the file behind the window has not seen; empty when the end is 0.
    std::size_t m_DirtyBegin = kNoDirt;
    std::size_t m_DirtyEnd = 0;
    std::uint64_t m_Size = 0;
    std::uint64_t m_Position = 0;
    bool m_Failed = false;

    static constexpr std::size_t kNoDirt = std::numeric_limits<std::size_t>::max();

private:
    std::size_t ReadOutside(unsigned char* data, std::size_t count);
    std::size_t WriteOutside(const unsigned char* data, std::size_t count);
};

/// One block that doubles when it is full. Memory for a gap behind the end is taken when something is written
/// there.
class VXMemoryMedium final : public VXStreamMedium {
public:
    bool IsOpen() const override { return true; }
    void Cut() override;
    const unsigned char* GetMemory() const override { return m_Window; }

private:
    bool Reserve(std::uint64_t size);
    std::size_t WriteThrough(const unsigned char* data, std::size_t count) override;

    struct Free {
        void operator()(unsigned char* block) const { std::free(block); }
    };
    std::unique_ptr<unsigned char, Free> m_Block;
};

/// A file behind one window for both directions. The window follows the position without reading ahead of a
/// write, so the file is read only when a read asks for bytes that the window lacks.
class VXFileMedium final : public VXStreamMedium {
public:
    static constexpr std::size_t kWindowSize = std::size_t{1} << 16;

    /// Not open afterwards when the file is not, is a directory, or cannot seek. Its size is taken here;
    /// whatever others append later is not seen.
    explicit VXFileMedium(VXSystemFile file);
    ~VXFileMedium() override;

    bool IsOpen() const override { return m_File.IsOpen(); }
    void Close() override;
    void Cut() override;
    void Flush() override { WriteOut(); }

private:
    std::size_t ReadThrough(unsigned char* data, std::size_t count) override;
    std::size_t WriteThrough(const unsigned char* data, std::size_t count) override;

    bool IsWritable() const { return m_File.IsOpen() && m_File.IsWritable(); }
    /// Brings the dirty part to the file. What the file does not take stays in the window, for a later
    /// attempt.
    bool WriteOut();
    /// Shows an empty window at the position; nothing in it may be dirty.
    void MoveWindow();

    VXSystemFile m_File;
    std::unique_ptr<unsigned char[]> m_Buffer;
};
