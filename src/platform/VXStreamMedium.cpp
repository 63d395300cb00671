#include "platform/VXStreamMedium_p.h"

#include <utility>

VXStreamMedium::~VXStreamMedium() = default;

std::size_t VXStreamMedium::ReadOutside(unsigned char* data, std::size_t count) {
    count = static_cast<std::size_t>(std::min<std::uint64_t>(count, GetRemaining()));
    if (count == 0) return 0;
    const std::uint64_t offset = m_Position - m_WindowStart;
    return offset <= m_Valid && count <= m_Valid - offset ? Read(data, count) : ReadThrough(data, count);
}

std::size_t VXStreamMedium::WriteOutside(const unsigned char* data, std::size_t count) {
    const auto possible = static_cast<std::size_t>(std::min<std::uint64_t>(count, kMaxSize - m_Position));
    const std::size_t moved = possible == 0 ? 0 : WriteThrough(data, possible);
    if (moved < count) m_Failed = true;
    return moved;
}

// ---- memory

void VXMemoryMedium::Cut() {
    m_Size = m_Position;
    m_Valid = static_cast<std::size_t>(m_Position);
}

std::size_t VXMemoryMedium::WriteThrough(const unsigned char* data, std::size_t count) {
    if (!Reserve(m_Position + count)) {
        if (m_Position >= m_Room) return 0;
        count = std::min(count, m_Room - static_cast<std::size_t>(m_Position));
    }
    if (m_Position > m_Valid) {
        std::memset(m_Window + m_Valid, 0, static_cast<std::size_t>(m_Position) - m_Valid);
        m_Valid = static_cast<std::size_t>(m_Position);
    }
    return Write(data, count);
}

bool VXMemoryMedium::Reserve(std::uint64_t size) {
    if (size <= m_Room) return true;
    // realloc moves the pages of a large block instead of copying them, so that growth touches no memory
    // twice.
    const auto grow = [this](std::uint64_t capacity) {
        void* const block = std::realloc(m_Window, static_cast<std::size_t>(capacity));
        if (block == nullptr) return false;
        static_cast<void>(m_Block.release());
        m_Block.reset(static_cast<unsigned char*>(block));
        m_Window = m_Block.get();
        m_Room = static_cast<std::size_t>(capacity);
        return true;
    };
    return grow(std::clamp<std::uint64_t>(std::uint64_t{m_Room} * 2, std::max<std::uint64_t>(size, 256),
                                          kMaxSize)) ||
           grow(size);
}

// ---- file

VXFileMedium::VXFileMedium(VXSystemFile file) : m_File(std::move(file)) {
    if (!m_File.IsOpen()) return;
    const std::int64_t size = m_File.GetSize();
    if (size < 0) {
        m_File.Close();
        return;
    }
    m_Buffer = std::make_unique_for_overwrite<unsigned char[]>(kWindowSize);
    m_Window = m_Buffer.get();
    m_Size = static_cast<std::uint64_t>(size);
    MoveWindow();
}

VXFileMedium::~VXFileMedium() { WriteOut(); }

void VXFileMedium::Close() {
    WriteOut();
    if (!m_File.Close()) m_Failed = true;
    m_Size = 0;
    m_Position = 0;
    m_DirtyBegin = kNoDirt;
    m_DirtyEnd = 0;
    MoveWindow();
}

void VXFileMedium::Cut() {
    if (!IsWritable() || !m_File.Truncate(m_Position)) {
        m_Failed = true;
        return;
    }
    m_Size = m_Position;
    const std::uint64_t kept = m_Position > m_WindowStart ? m_Position - m_WindowStart : 0;
    m_Valid = static_cast<std::size_t>(std::min<std::uint64_t>(m_Valid, kept));
    m_DirtyEnd = std::min(m_DirtyEnd, m_Valid);
    if (m_DirtyBegin >= m_DirtyEnd) {
        m_DirtyBegin = kNoDirt;
        m_DirtyEnd = 0;
    }
}

std::size_t VXFileMedium::ReadThrough(unsigned char* data, std::size_t count) {
    std::size_t moved = 0;
    if (const std::uint64_t offset = m_Position - m_WindowStart; offset < m_Valid) {
        moved = Read(data, m_Valid - static_cast<std::size_t>(offset));
    }
    if (!WriteOut()) return moved;

    if (count - moved >= kWindowSize) {
        const std::size_t read = m_File.ReadAt(m_Position, data + moved, count - moved, m_Failed);
        m_Position += read;
        moved += read;
    } else {
        MoveWindow();
        const std::uint64_t wanted = std::min<std::uint64_t>(kWindowSize, GetRemaining());
        m_Valid = m_File.ReadAt(m_Position, m_Window, static_cast<std::size_t>(wanted), m_Failed);
        moved += Read(data + moved, std::min(count - moved, m_Valid));
    }
    // Somebody has cut the file since its size was taken.
    if (moved < count && !m_Failed) m_Size = m_Position;
    return moved;
}

std::size_t VXFileMedium::WriteThrough(const unsigned char* data, std::size_t count) {
    if (!IsWritable() || !WriteOut()) return 0;
    MoveWindow();
    if (count < kWindowSize) return Write(data, count);

    const std::size_t moved = m_File.WriteAt(m_Position, data, count, m_Failed);
    m_Position += moved;
    m_Size = std::max(m_Size, m_Position);
    return moved;
}

bool VXFileMedium::WriteOut() {
    if (m_DirtyEnd == 0) return true;
    m_DirtyBegin += m_File.WriteAt(m_WindowStart + m_DirtyBegin, m_Window + m_DirtyBegin,
                                   m_DirtyEnd - m_DirtyBegin, m_Failed);
    if (m_DirtyBegin < m_DirtyEnd) return false;
    m_DirtyBegin = kNoDirt;
    m_DirtyEnd = 0;
    return true;
}

void VXFileMedium::MoveWindow() {
    m_WindowStart = m_Position;
    m_Valid = 0;
    m_Room = IsWritable()
                 ? static_cast<std::size_t>(std::min<std::uint64_t>(kWindowSize, kMaxSize - m_Position))
                 : 0;
}
