#include <filesystem>
#include <limits>

#include "platform/system/VXSystemFile_p.h"

namespace fs = std::filesystem;

VXSystemFile VXSystemFile::OpenExisting(const char* path) {
    // A pipe would make its opener wait.
    std::error_code error;
    const fs::file_type type = fs::status(path, error).type();
    if (type == fs::file_type::fifo || type == fs::file_type::directory) return {};
    return VXSystemFile(std::fopen(path, "rb"), false, path);
}

VXSystemFile VXSystemFile::CreateOrEmpty(const char* path) {
    return VXSystemFile(std::fopen(path, "w+b"), true, path);
}

VXSystemFile VXSystemFile::OpenTemporary() { return VXSystemFile(std::tmpfile(), true); }

VXSystemFile VXSystemFile::Adopt(int) { return {}; }

bool VXSystemFile::IsRegular() const {
    std::error_code error;
    return m_Path.empty() || fs::is_regular_file(m_Path, error);
}

std::int64_t VXSystemFile::GetSize() const {
    return std::fseek(m_Handle.get(), 0, SEEK_END) == 0 ? std::ftell(m_Handle.get()) : -1;
}

bool VXSystemFile::MoveTo(std::uint64_t offset) {
    return offset <= static_cast<std::uint64_t>(std::numeric_limits<long>::max()) &&
           std::fseek(m_Handle.get(), static_cast<long>(offset), SEEK_SET) == 0;
}

bool VXSystemFile::Truncate(std::uint64_t size) {
    std::error_code error;
    fs::resize_file(m_Path, size, error);
    return !error;
}
