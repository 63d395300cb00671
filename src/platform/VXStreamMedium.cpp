#include "platform/VXStreamMedium_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

static_assert(sizeof(off_t) == 8, "files reach beyond 2 GiB");

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

bool VXFileDescriptor::Close() {
    if (!IsOpen()) return true;
    const int result = close(m_Descriptor);
    m_Descriptor = -1;
    // After EINTR the descriptor is gone all the same.
    return result == 0 || errno == EINTR;
}

VXFileMedium::VXFileMedium(VXFileDescriptor file) : m_File(std::move(file)) {
    if (!m_File.IsOpen()) return;
    const int descriptor = m_File.Get();
    struct stat status = {};
    off_t size = -1;
    if (fstat(descriptor, &status) == 0 && !S_ISDIR(status.st_mode)) {
        size = S_ISREG(status.st_mode) ? status.st_size : lseek(descriptor, 0, SEEK_END);
    }
    if (size < 0) {
        m_File.Close();
        return;
    }
    m_Buffer = std::make_unique_for_overwrite<unsigned char[]>(kWindowSize);
    m_Window = m_Buffer.get();
    m_Size = static_cast<std::uint64_t>(size);
    m_Writable = (fcntl(descriptor, F_GETFL) & O_ACCMODE) != O_RDONLY;
    MoveWindow();
}

VXFileMedium::~VXFileMedium() { WriteOut(); }

void VXFileMedium::Close() {
    WriteOut();
    if (!m_File.Close()) m_Failed = true;
    m_Writable = false;
    m_Size = 0;
    m_Position = 0;
    m_DirtyBegin = kNoDirt;
    m_DirtyEnd = 0;
    MoveWindow();
}

void VXFileMedium::Cut() {
    if (!m_Writable) {
        m_Failed = true;
        return;
    }
    int result = 0;
    do {
        result = ftruncate(m_File.Get(), static_cast<off_t>(m_Position));
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
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
        const std::size_t read = ReadAt(m_Position, data + moved, count - moved);
        m_Position += read;
        moved += read;
    } else {
        MoveWindow();
        m_Valid = ReadAt(m_Position, m_Window,
                         static_cast<std::size_t>(std::min<std::uint64_t>(kWindowSize, GetRemaining())));
        moved += Read(data + moved, std::min(count - moved, m_Valid));
    }
    // Somebody has cut the file since its size was taken.
    if (moved < count && !m_Failed) m_Size = m_Position;
    return moved;
}

std::size_t VXFileMedium::WriteThrough(const unsigned char* data, std::size_t count) {
    if (!m_Writable || !WriteOut()) return 0;
    MoveWindow();
    if (count < kWindowSize) return Write(data, count);

    const std::size_t moved = WriteAt(m_Position, data, count);
    m_Position += moved;
    m_Size = std::max(m_Size, m_Position);
    return moved;
}

bool VXFileMedium::WriteOut() {
    if (m_DirtyEnd == 0) return true;
    m_DirtyBegin += WriteAt(m_WindowStart + m_DirtyBegin, m_Window + m_DirtyBegin, m_DirtyEnd - m_DirtyBegin);
    if (m_DirtyBegin < m_DirtyEnd) return false;
    m_DirtyBegin = kNoDirt;
    m_DirtyEnd = 0;
    return true;
}

void VXFileMedium::MoveWindow() {
    m_WindowStart = m_Position;
    m_Valid = 0;
    m_Room = m_Writable
                 ? static_cast<std::size_t>(std::min<std::uint64_t>(kWindowSize, kMaxSize - m_Position))
                 : 0;
}

std::size_t VXFileMedium::ReadAt(std::uint64_t offset, unsigned char* data, std::size_t count) {
    std::size_t moved = 0;
    while (moved < count) {
        const ssize_t step =
            pread(m_File.Get(), data + moved, count - moved, static_cast<off_t>(offset + moved));
        if (step < 0 && errno == EINTR) continue;
        if (step < 0) m_Failed = true;
        if (step <= 0) break;
        moved += static_cast<std::size_t>(step);
    }
    return moved;
}

std::size_t VXFileMedium::WriteAt(std::uint64_t offset, const unsigned char* data, std::size_t count) {
    std::size_t moved = 0;
    while (moved < count) {
        const ssize_t step =
            pwrite(m_File.Get(), data + moved, count - moved, static_cast<off_t>(offset + moved));
        if (step < 0 && errno == EINTR) continue;
        if (step <= 0) {
            m_Failed = true;
            break;
        }
        moved += static_cast<std::size_t>(step);
    }
    return moved;
}
