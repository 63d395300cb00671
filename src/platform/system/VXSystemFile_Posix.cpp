#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/system/VXSystemFile_p.h"

static_assert(sizeof(off_t) == 8, "files reach beyond 2 GiB");

namespace {

int Open(const char* path, int flags) {
    int descriptor = -1;
    do {
        descriptor = open(path, flags | O_CLOEXEC, 0666);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

int OpenUnnamed(std::string directory) {
#ifdef O_TMPFILE
    if (const int descriptor = open(directory.c_str(), O_TMPFILE | O_RDWR | O_EXCL | O_CLOEXEC, 0600);
        descriptor >= 0) {
        return descriptor;
    }
#endif
    // Not every file system makes files without a name.
    directory += "/vxtempXXXXXX";
    const int descriptor = mkstemp(directory.data());
    if (descriptor < 0) return -1;
    unlink(directory.c_str());
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return descriptor;
}

/// Null in a program with raised rights, where the environment does not choose the place.
const char* ChosenDirectory() {
    const bool isRaised = getuid() != geteuid() || getgid() != getegid();
    const char* const chosen = isRaised ? nullptr : std::getenv("TMPDIR");
    return chosen != nullptr && *chosen != '\0' ? chosen : nullptr;
}

}  // namespace

VXSystemFile VXSystemFile::OpenExisting(const char* path) { return Adopt(Open(path, O_RDONLY | O_NONBLOCK)); }

VXSystemFile VXSystemFile::CreateOrEmpty(const char* path) {
    return Adopt(Open(path, O_RDWR | O_CREAT | O_TRUNC));
}

VXSystemFile VXSystemFile::OpenTemporary() {
    int descriptor = -1;
    if (const char* chosen = ChosenDirectory(); chosen != nullptr) descriptor = OpenUnnamed(chosen);
    return Adopt(descriptor >= 0 ? descriptor : OpenUnnamed("/tmp"));
}

VXSystemFile VXSystemFile::Adopt(int descriptor) {
    if (descriptor < 0) return {};
    const int access = fcntl(descriptor, F_GETFL) & O_ACCMODE;
    const bool isWritable = access != O_RDONLY;
    const char* const mode = access == O_WRONLY ? "wb" : isWritable ? "r+b" : "rb";
    std::FILE* const handle = fdopen(descriptor, mode);
    if (handle == nullptr) close(descriptor);
    return VXSystemFile(handle, isWritable);
}

bool VXSystemFile::IsRegular() const {
    struct stat status = {};
    return fstat(fileno(m_Handle.get()), &status) == 0 && S_ISREG(status.st_mode);
}

std::int64_t VXSystemFile::GetSize() const {
    struct stat status = {};
    const int descriptor = fileno(m_Handle.get());
    if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) return -1;
    return S_ISREG(status.st_mode) ? status.st_size : lseek(descriptor, 0, SEEK_END);
}

bool VXSystemFile::MoveTo(std::uint64_t offset) {
    return fseeko(m_Handle.get(), static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool VXSystemFile::Truncate(std::uint64_t size) {
    return ftruncate(fileno(m_Handle.get()), static_cast<off_t>(size)) == 0;
}
