#define WIN32_LEAN_AND_MEAN
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include "platform/system/VXSystemFile_p.h"

namespace {

/// Empty when the text is no UTF-8.
std::wstring Wide(const char* text) {
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, nullptr, 0);
    std::wstring wide(length > 0 ? static_cast<std::size_t>(length) : 1, L'\0');
    if (length > 0) MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, wide.data(), length);
    wide.pop_back();  // the NUL
    return wide;
}

std::FILE* Open(const char* path, const wchar_t* mode) {
    const std::wstring wide = Wide(path);
    return wide.empty() ? nullptr : _wfsopen(wide.c_str(), mode, _SH_DENYNO);
}

bool Describe(std::FILE* handle, struct _stat64& status) { return _fstat64(_fileno(handle), &status) == 0; }

}  // namespace

// In a mode, N keeps the file from programs that are started, D deletes it when it is closed.

VXSystemFile VXSystemFile::OpenExisting(const char* path) { return VXSystemFile(Open(path, L"rbN"), false); }

VXSystemFile VXSystemFile::CreateOrEmpty(const char* path) { return VXSystemFile(Open(path, L"w+bN"), true); }

VXSystemFile VXSystemFile::OpenTemporary() {
    // The system asks the environment itself (TMP, TEMP).
    wchar_t directory[MAX_PATH + 1];
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, directory);
    if (length == 0 || length > MAX_PATH || GetTempFileNameW(directory, L"vxs", 0, path) == 0) return {};
    return VXSystemFile(_wfsopen(path, L"w+bTDN", _SH_DENYRW), true);
}

VXSystemFile VXSystemFile::Adopt(int descriptor) {
    if (descriptor < 0) return {};
    _setmode(descriptor, _O_BINARY);
    // The run-time library does not tell how a descriptor was opened; a write that it refuses fails later.
    std::FILE* handle = _fdopen(descriptor, "r+b");
    if (handle == nullptr) _close(descriptor);
    return VXSystemFile(handle, true);
}

bool VXSystemFile::IsRegular() const {
    struct _stat64 status = {};
    return Describe(m_Handle.get(), status) && (status.st_mode & _S_IFREG) != 0;
}

std::int64_t VXSystemFile::GetSize() const {
    return IsRegular() ? _filelengthi64(_fileno(m_Handle.get())) : -1;
}

bool VXSystemFile::MoveTo(std::uint64_t offset) {
    return _fseeki64(m_Handle.get(), static_cast<std::int64_t>(offset), SEEK_SET) == 0;
}

bool VXSystemFile::Truncate(std::uint64_t size) {
    return _chsize_s(_fileno(m_Handle.get()), static_cast<std::int64_t>(size)) == 0;
}
