#include "platform/system/VXSystemFile_p.h"

VXSystemFile::VXSystemFile(std::FILE* handle, bool isWritable, const char* path)
    : m_Handle(handle), m_IsWritable(isWritable), m_Path(path) {
    if (handle != nullptr) std::setvbuf(handle, nullptr, _IONBF, 0);
}

std::size_t VXSystemFile::ReadAt(std::uint64_t offset, unsigned char* data, std::size_t count,
                                 bool& isFailed) {
    const std::size_t moved = MoveTo(offset) ? std::fread(data, 1, count, m_Handle.get()) : 0;
    if (moved < count && std::feof(m_Handle.get()) == 0) isFailed = true;
    return moved;
}

std::size_t VXSystemFile::WriteAt(std::uint64_t offset, const unsigned char* data, std::size_t count,
                                  bool& isFailed) {
    const std::size_t moved = MoveTo(offset) ? std::fwrite(data, 1, count, m_Handle.get()) : 0;
    if (moved < count) isFailed = true;
    return moved;
}

bool VXSystemFile::Close() { return m_Handle == nullptr || std::fclose(m_Handle.release()) == 0; }
